#include "app/main_window.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
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
        EXPECT_NE(GetClassLongPtrW(main, GCLP_HICON), 0U);
        EXPECT_NE(GetClassLongPtrW(main, GCLP_HICONSM), 0U);
    });
    // A greyed command that comes all the same does nothing, nor does an unknown one.
    ui.Screenshot("main_window").Command(CMD_VIEW_TABLE).Command(39999);
    ExpectNoDialog(ui);
    RunToEnd(ui);
    EXPECT_EQ(VersionText("NoSuchText"), "Informazioni sulla versione non presenti!");
}

TEST_F(MainWindowTest, RoutesOneDroppedFileByItsExtension) {
    const std::string daily = MakeDailyFile("perché no.LEP");
    UiDriver ui;
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

// A calculator opens as it would without a file when there is none.
TEST_F(MainWindowTest, OpensTheFileOfTheCommandLine) {
    const std::string daily = MakeDailyFile("misura.lep");
    const std::string foreign = MakeDailyFile("測定 Ωμέγα.lep");
    std::filesystem::create_directories(folder_ / "cartella.lep");
    const std::pair<std::string, std::string> rows[] = {
        {"misura.lep", daily},  // relative: shown as a full path
        {foreign, foreign},
        {Path("manca.lep"), kNoFile},
        {Path("cartella.lep"), kNoFile},
        {MakeDailyFile("sconosciuto.xyz"), ""},
        {Path("senza"), ""},
        {".", ""},
        {"|?*<>.txt", ""}};
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
    for (const auto& [path, shown] : rows) {
        UiDriver ui;
        if (!shown.empty()) {
            ui.OnWindow(kDailyExposureTitle).ExpectText(IDC_STATUS_BAR, shown);
            ui.Command(CMD_FILE_CLOSE).WaitClosed(kDailyExposureTitle);
        }
        ui.OnWindowOfClass(kMainClass);
        ExpectNoDialog(ui);
        RunToEnd(ui, path);
    }
    std::filesystem::current_path(previous);
}

// The filter decides, not the extension: the weekly calculator refuses the daily file.
TEST_F(MainWindowTest, OpensTheCalculatorOfTheChosenFilter) {
    const std::string daily = MakeDailyFile("misura.lep");
    UiDriver ui;
    for (const auto& [filter, title, shown] :
         {std::tuple(1, kDailyExposureTitle, daily.c_str()), {2, "Calcolo Lep,w", kNoFile}}) {
        ui.OnWindowOfClass(kMainClass).Command(CMD_OPEN);
        ui.OnWindow("Apri", [index = filter](HWND dialog) { ChooseFilter(dialog, index); });
        ChooseFile(ui.Screenshot("open_any_file"), "Apri", daily);
        ui.WaitClosed("Apri").OnWindow(title).ExpectText(IDC_STATUS_BAR, shown);
        ui.Command(CMD_FILE_CLOSE).WaitClosed(title);
    }
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
