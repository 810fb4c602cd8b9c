#include "app/main_window.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "app/version_info_win.h"
#include "common/unicode_win.h"
#include "resources/resource.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

TEST_F(MainWindowTest, ShowsItsNameAndNoFile) {
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [](HWND main) {
        EXPECT_EQ(WindowText(main), "Tonvale - Esposizione al rumore e danno uditivo");
        EXPECT_EQ(TextOf(main, IDC_STATUS_BAR), kNoFile);
        RECT client{};
        RECT bar{};
        GetClientRect(main, &client);
        GetWindowRect(GetDlgItem(main, IDC_STATUS_BAR), &bar);
        MapWindowPoints(nullptr, main, reinterpret_cast<POINT*>(&bar), 2);
        EXPECT_EQ(bar.bottom, client.bottom);
        EXPECT_NE(GetClassLongPtrW(main, GCLP_HICON), 0U);
        EXPECT_NE(GetClassLongPtrW(main, GCLP_HICONSM), 0U);
    });
    ui.Screenshot("main_window").OnWindowOfClass(kMainClass);
    // A greyed command that comes all the same does nothing, nor does an unknown one.
    ui.Command(CMD_VIEW_TABLE).Command(39999);
    ExpectNoDialog(ui);
    ui.OnWindowOfClass(kMainClass).Press({VK_MENU, VK_F4});
    EXPECT_EQ(RunProgram(), 0);
    ui.Finish();
    EXPECT_EQ(VersionText("NoSuchText"), "Informazioni sulla versione non presenti!");
}

TEST_F(MainWindowTest, RoutesOneDroppedFileByItsExtension) {
    const std::string daily = MakeDailyFile("perché no.LEP");
    UiDriver ui;
    Drop(ui, {MakeDailyFile("altro.txt")});
    ExpectNoDialog(ui);
    Drop(ui, {daily, daily});
    ExpectNoDialog(ui);
    Drop(ui, {daily});
    // Below the calculator the main window takes no other.
    ui.OnWindow(kDailyExposureTitle, [daily](HWND) {
        SendMessageW(Main(), WM_DROPFILES, reinterpret_cast<WPARAM>(MakeDrop({daily})), 0);
    });
    ExpectDailyExposure(ui, "perché no.LEP");
    ExpectNoDialog(ui);
    // Two in quick succession: each opens with its own, the second when the first is closed.
    const std::string second = MakeDailyFile("secondo.lep");
    ui.OnWindowOfClass(kMainClass, [daily, second](HWND main) {
        for (const std::string& path : {daily, second}) {
            PostMessageW(main, WM_DROPFILES, reinterpret_cast<WPARAM>(MakeDrop({path})), 0);
        }
    });
    ExpectDailyExposure(ui, "perché no.LEP");
    ExpectDailyExposure(ui, "secondo.lep");
    ExpectNoDialog(ui);
    // The file belongs to that one command: from the menu, the calculator opens empty again.
    ui.OnWindowOfClass(kMainClass).Command(CMD_DAILY_EXPOSURE);
    ExpectDailyExposure(ui, kNoFile);
    RunToEnd(ui);
}

TEST_F(MainWindowTest, OpensTheFileOfTheCommandLine) {
    const std::string daily = MakeDailyFile("misura.lep");
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
    UiDriver ui;
    ui.OnWindow(kDailyExposureTitle,
                [&](HWND dialog) { EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), daily); });
    ui.Screenshot("main_window_command_line");
    ExpectDailyExposure(ui, "misura.lep");
    RunToEnd(ui, "misura.lep");  // relative: shown as a full path
    std::filesystem::current_path(previous);

    std::filesystem::create_directories(folder_ / "cartella.lep");
    // A calculator opens as it would without a file.
    const std::pair<std::string, std::string> shown[] = {
        {MakeDailyFile("測定 Ωμέγα.lep"), "測定 Ωμέγα.lep"},
        {Path("manca.lep"), kNoFile},
        {Path("cartella.lep"), kNoFile}};
    for (const auto& [path, file] : shown) {
        UiDriver next;
        ExpectDailyExposure(next, file);
        RunToEnd(next, path);
    }
    for (const std::string& path : {MakeDailyFile("sconosciuto.xyz"), Path("senza"),
                                    std::string("."), std::string("|?*<>.txt")}) {
        UiDriver next;
        next.OnWindowOfClass(kMainClass);
        ExpectNoDialog(next);
        RunToEnd(next, path);
    }
}

// Chooses a file in the "Apri" dialog under the filter at `index`, from 0.
void ChooseFileUnder(UiDriver& ui, int index, const std::string& path) {
    ui.OnWindowOfClass(kMainClass).Command(CMD_OPEN);
    ui.OnWindow("Apri", [index](HWND dialog) { ChooseFilter(dialog, index + 1); });
    ui.Screenshot("open_any_file");
    ChooseFile(ui, "Apri", path);
    ui.WaitClosed("Apri");
}

TEST_F(MainWindowTest, OpensTheCalculatorOfTheChosenFilter) {
    const std::string daily = MakeDailyFile("misura.lep");
    UiDriver ui;
    ChooseFileUnder(ui, 0, daily);
    ExpectDailyExposure(ui, "misura.lep");
    // The filter decides, not the extension: the weekly calculator refuses the daily file.
    ChooseFileUnder(ui, 1, daily);
    ui.OnWindow("Calcolo Lep,w", [](HWND dialog) { EXPECT_EQ(Status(dialog), kNoFile); });
    ui.Command(CMD_FILE_CLOSE).WaitClosed("Calcolo Lep,w");
    RunToEnd(ui);
}

TEST_F(MainWindowTest, SecondInstanceOnlyTellsSo) {
    const std::string daily = MakeDailyFile("misura.lep");
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass).Do([&] {
        EXPECT_EQ(RunProgram(daily), 0);
        EXPECT_NE(Main(), nullptr) << "the first has ended";
    });
    ui.AnswerMessage("Tonvale è già in esecuzione",
                     "Usare il drag & drop per caricare il file nella finestra di dialogo", IDOK);
    ui.WaitClosed("Tonvale è già in esecuzione");
    ExpectNoDialog(ui);
    RunToEnd(ui);
}

}  // namespace
}  // namespace tonvale
