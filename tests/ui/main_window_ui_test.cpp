#include "app/main_window.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/version_info_win.h"
#include "common/unicode_win.h"
#include "resources/resource.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

// The letter after the "&", in lower case; 0 when there is none.
int AccessKey(const std::string& text) {
    const std::size_t mark = text.find('&');
    return mark + 1 < text.size() ? std::tolower(static_cast<unsigned char>(text[mark + 1])) : 0;
}

std::string WithoutKey(const std::string& text) {
    return text.substr(0, text.find('\t'));
}

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
        EXPECT_EQ(bar.right, client.right);
        EXPECT_NE(GetClassLongPtrW(main, GCLP_HICON), 0U);
        EXPECT_NE(GetClassLongPtrW(main, GCLP_HICONSM), 0U);
    });
    ui.Screenshot("main_window");
    CloseProgram(ui);
    EXPECT_EQ(RunProgram(), 0);
    ui.Finish();
    EXPECT_EQ(VersionText("CompanyName"), "Gli sviluppatori di Tonvale");
    EXPECT_EQ(VersionText("FileVersion"), "1.0.0.0");
    EXPECT_EQ(VersionText("NoSuchText"), "Informazioni sulla versione non presenti!");
}

TEST_F(MainWindowTest, MenuHoldsEveryCommandAndGreysWhatIsNotThere) {
    constexpr std::pair<int, std::string_view> kTexts[] = {
        {40020, "&Lep,d..."},      {40023, "Lep,&w..."},
        {40022, "Leq &gruppi..."}, {40034, "&Errore..."},
        {40029, "&Rumore..."},     {40021, "&Attenuazione..."},
        {40001, "Scelta DP&I..."}, {40012, "&Danno..."},
        {40006, "&NIPTS..."},      {40007, "&HTLA..."},
        {40008, "H&TLAN..."},      {40010, "&Previsioni..."},
        {40009, "&Rischio..."},    {40011, "E&voluzione Danno..."},
        {40028, "Do&cumento"},     {40030, "&Apri..."},
        {40026, "&Salva"},         {40025, "Sa&lva con nome..."},
        {40019, "Stam&pa"},        {40003, "&Imposta pagina..."},
        {40004, "&Esci"},          {40027, "&Taglia"},
        {40014, "&Copia"},         {40024, "&Incolla"},
        {40016, "&Audiogramma"},   {40017, "&Grafico"},
        {40015, "&Tabella"},       {40018, "Do&cumento"},
        {40002, "&Help"},          {40013, "&Info..."},
    };
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [&](HWND main) {
        std::vector<MenuCommand> commands;
        std::set<int> popup_keys;
        HMENU menu = GetMenu(main);
        for (int position = 0; position < GetMenuItemCount(menu); ++position) {
            wchar_t title[64] = {};
            GetMenuStringW(menu, static_cast<UINT>(position), title,
                           static_cast<int>(std::size(title)), MF_BYPOSITION);
            EXPECT_TRUE(popup_keys.insert(AccessKey(Narrow(title))).second) << Narrow(title);
            if (Narrow(title) == "F&ormato") continue;
            std::set<int> keys;
            for (const MenuCommand& command : OpenPopup(main, GetSubMenu(menu, position))) {
                EXPECT_TRUE(keys.insert(AccessKey(command.text)).second) << command.text;
                commands.push_back(command);
            }
        }
        EXPECT_EQ(commands.size(), std::size(kTexts));
        // With an empty document there is nothing to cut, to copy or to go back to.
        const std::set<int> idle = {CMD_CUT,        CMD_COPY,       CMD_VIEW_AUDIOGRAM,
                                    CMD_VIEW_CHART, CMD_VIEW_TABLE, CMD_VIEW_DOCUMENT};
        const std::set<int> working = {CMD_NEW_DOCUMENT, CMD_OPEN,  CMD_SAVE, CMD_SAVE_AS,
                                       CMD_PAGE_SETUP,   CMD_PRINT, CMD_EXIT, CMD_DAILY_EXPOSURE,
                                       CMD_HELP_INDEX,   CMD_ABOUT};
        for (const auto& [id, text] : kTexts) {
            const auto found = std::find_if(commands.begin(), commands.end(),
                                            [id = id](const auto& row) { return row.id == id; });
            ASSERT_NE(found, commands.end()) << id;
            EXPECT_EQ(WithoutKey(found->text), text);
            EXPECT_FALSE(found->enabled && idle.contains(id)) << text;
            EXPECT_FALSE(!found->enabled && working.contains(id)) << text;
        }
    });
    // A greyed command that comes all the same does nothing, nor does an unknown one.
    ui.Command(CMD_VIEW_TABLE).Command(39999);
    ExpectNoDialog(ui);
    CloseProgram(ui);
    RunProgram();
    ui.Finish();
}

TEST_F(MainWindowTest, OpensCalculatorFromMenuWithoutFileAndClosesByKey) {
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass).Command(CMD_DAILY_EXPOSURE);
    ExpectDailyExposure(ui, kNoFile);
    ui.OnWindowOfClass(kMainClass).Press({VK_MENU, VK_F4});
    EXPECT_EQ(RunProgram(), 0);
    ui.Finish();
}

TEST_F(MainWindowTest, RoutesOneDroppedFileByItsExtension) {
    const std::string daily = MakeDailyFile("perché no.LEP");
    const std::string other = MakeDailyFile("altro.txt");
    UiDriver ui;
    Drop(ui, {other});
    ExpectNoDialog(ui);
    Drop(ui, {daily, daily});
    ExpectNoDialog(ui);
    Drop(ui, {daily});
    ExpectDailyExposure(ui, "perché no.LEP");
    // The file belongs to that one command: from the menu, the calculator opens empty again.
    ui.OnWindowOfClass(kMainClass).Command(CMD_DAILY_EXPOSURE);
    ExpectDailyExposure(ui, kNoFile);
    CloseProgram(ui);
    RunProgram();
    ui.Finish();
}

TEST_F(MainWindowTest, OpensTheFileOfTheCommandLine) {
    const std::string daily = MakeDailyFile("misura.lep");
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
    UiDriver ui;
    ui.OnWindow(kDailyExposureTitle, [](HWND dialog) {
        EXPECT_EQ(ListView_GetItemCount(GetDlgItem(dialog, IDC_ITEM_LIST)), 1);
    });
    ui.Screenshot("main_window_command_line");
    ExpectDailyExposure(ui, "\\misura.lep");
    CloseProgram(ui);
    EXPECT_EQ(RunProgram("misura.lep"), 0);  // relative: shown as a full path
    std::filesystem::current_path(previous);

    ui.OnWindowOfClass(kMainClass);
    ExpectNoDialog(ui);
    CloseProgram(ui);
    RunProgram(MakeDailyFile("sconosciuto.xyz"));
    ui.Finish();
}

// Chooses a file in the "Apri" dialog under the filter at `index`, from 0.
void ChooseFile(UiDriver& ui, int index, const std::string& path) {
    ui.OnWindowOfClass(kMainClass).Command(CMD_OPEN);
    ui.OnWindow("Apri", [index, path](HWND dialog) {
        HWND filter = GetDlgItem(dialog, kFilterField);
        EXPECT_EQ(SendMessageW(filter, CB_GETCOUNT, 0, 0), 9);
        SendMessageW(filter, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(kFilterField, CBN_SELENDOK),
                     reinterpret_cast<LPARAM>(filter));
        SetWindowTextUtf8(GetDlgItem(dialog, kFileNameField), path);
    });
    ui.Screenshot("open_any_file").Command(IDOK).WaitClosed("Apri");
}

TEST_F(MainWindowTest, OpensTheCalculatorOfTheChosenFilter) {
    const std::string daily = MakeDailyFile("misura.lep");
    UiDriver ui;
    ChooseFile(ui, 0, daily);
    ExpectDailyExposure(ui, "misura.lep");
    // The filter decides, not the extension: the weekly calculator refuses the daily file.
    ChooseFile(ui, 1, daily);
    ui.OnWindow(
          "Calcolo Lep,w",
          [](HWND dialog) { EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "Nessun file selezionato"); })
        .Command(CMD_FILE_CLOSE)
        .WaitClosed("Calcolo Lep,w");
    // And this one asks for a calculator that is not there.
    ChooseFile(ui, 2, daily);
    ExpectNoDialog(ui);
    ui.OnWindowOfClass(kMainClass).Command(CMD_OPEN);
    ui.OnWindow("Apri").Click(IDCANCEL).WaitClosed("Apri");
    ExpectNoDialog(ui);
    CloseProgram(ui);
    RunProgram();
    ui.Finish();
}

TEST_F(MainWindowTest, SecondInstanceOnlyTellsSo) {
    const std::string daily = MakeDailyFile("misura.lep");
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass).Do([&] {
        EXPECT_EQ(RunProgram(daily), 0);
        EXPECT_NE(FindWindowW(kMainWindowClass, nullptr), nullptr) << "the first has ended";
    });
    ui.AnswerMessage("Tonvale è già in esecuzione",
                     "Usare il drag & drop per caricare il file nella finestra di dialogo", IDOK);
    ui.WaitClosed("Tonvale è già in esecuzione");
    ExpectNoDialog(ui);
    CloseProgram(ui);
    EXPECT_EQ(RunProgram(), 0);
    ui.Finish();
}

}  // namespace
}  // namespace tonvale
