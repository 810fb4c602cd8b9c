#include "help/help_window.h"

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/program_file_win.h"
#include "exposure/daily_exposure.h"
#include "exposure/daily_exposure_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Guida di Tonvale";
constexpr char kCaption[] = "Guida in linea";
constexpr char kNoHelpFile[] =
    "Il file della guida tonvale.hlp non è nella cartella del programma.";
constexpr char kProgramHelp[] = "Tonvale.hlp";

constexpr unsigned long kFirst = 10;
constexpr unsigned long kLong = 11;
constexpr unsigned long kLongMiddle = 12;  // a control explained in the middle of the long topic
constexpr unsigned long kUnknown = 999;

std::string HelpText() {
    std::string text =
        "@topic 0 Indice\n\nSi veda [[10|il primo]] oppure [[20|il secondo]].\n"
        "@topic 10 Primo\n\nIl rumore e l'età.\n"
        "@subtopic 11 Lungo\n\n";
    for (int i = 0; i < 40; ++i) text += "Riga prima.\n\n";
    text += "@context 12\nSpiegazione del controllo.\n\n";
    for (int i = 0; i < 40; ++i) text += "Riga dopo.\n\n";
    return text + "@topic 20 Secondo\n\nUn'altra eta.\n@topic 110025 Uso\n\nLa guida.\n";
}

HWND Text(HWND help) {
    return GetDlgItem(help, IDC_HELP_TEXT);
}

std::string TextFrom(HWND help, LONG start, LONG length) {
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    TEXTRANGEW range{{start, start + length}, text.data()};
    const LRESULT copied =
        SendMessageW(Text(help), EM_GETTEXTRANGE, 0, reinterpret_cast<LPARAM>(&range));
    text.resize(static_cast<std::size_t>(copied));
    return Narrow(text);
}

// What the text begins with: the title of the topic.
std::string Topic(HWND help) {
    const std::string text = WindowText(Text(help));
    return text.substr(0, text.find('\r'));
}

// The beginning of the topmost line that is seen.
std::string TopLine(HWND help, LONG length) {
    RECT area{};
    SendMessageW(Text(help), EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
    POINTL corner{area.left, area.top};
    const LRESULT position =
        SendMessageW(Text(help), EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&corner));
    return TextFrom(help, static_cast<LONG>(position), length);
}

std::string Selected(HWND help) {
    CHARRANGE range{};
    SendMessageW(Text(help), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return TextFrom(help, range.cpMin, range.cpMax - range.cpMin);
}

void ClickOn(HWND help, const wchar_t* words) {
    FINDTEXTEXW find{{0, -1}, words, {}};
    const LRESULT position = SendMessageW(Text(help), EM_FINDTEXTEXW, FR_DOWN | FR_MATCHCASE,
                                          reinterpret_cast<LPARAM>(&find));
    POINTL place{};
    SendMessageW(Text(help), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), position + 1);
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
        PostMessageW(Text(help), message, 0, MAKELPARAM(place.x + 1, place.y + 4));
    }
}

HWND List(HWND help) {
    return GetDlgItem(help, IDC_HELP_LIST);
}

std::string ItemText(HWND list, HTREEITEM item) {
    wchar_t text[64] = {};
    TVITEMW row{};
    row.mask = TVIF_TEXT;
    row.hItem = item;
    row.pszText = text;
    row.cchTextMax = static_cast<int>(std::size(text));
    TreeView_GetItem(list, &row);
    return Narrow(text);
}

// The list as it is seen, "|" behind each title, subtopics with a blank before them.
std::string Listed(HWND help) {
    HWND list = List(help);
    std::string titles;
    for (HTREEITEM item = TreeView_GetRoot(list); item;
         item = TreeView_GetNextVisible(list, item)) {
        titles += (TreeView_GetParent(list, item) ? " " : "") + ItemText(list, item) + "|";
    }
    return titles;
}

std::string SelectedInList(HWND help) {
    const HTREEITEM item = TreeView_GetSelection(List(help));
    return item ? ItemText(List(help), item) : std::string();
}

int FocusedControl() {
    return GetDlgCtrlID(GetFocus());
}

// True when the text at the caret has a background of its own.
bool IsMarkedAtCaret(HWND help) {
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    SendMessageW(Text(help), EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    return (format.dwEffects & CFE_AUTOBACKCOLOR) == 0;
}

class HelpWindowUiTest : public DialogTest {
  protected:
    HelpWindowUiTest() {
        WriteFile("tonvale.hlp", HelpText());
        app_.help = &viewer_;
    }

    // Opens the help at a context and goes on inside it.
    void Open(UiDriver& ui, unsigned long context, UiDriver::WindowAction action = {}) {
        ui.Do([this, context] { viewer_.ShowTopic(owner_, context); });
        ui.OnWindow(kTitle, std::move(action));
    }

    static UiDriver& ExpectTopic(UiDriver& ui, const char* topic) {
        return ui.OnWindow(kTitle, [topic](HWND help) { EXPECT_EQ(Topic(help), topic); });
    }
    static UiDriver& ExpectSelected(UiDriver& ui, const char* words) {
        return ui.OnWindow(kTitle, [words](HWND help) { EXPECT_EQ(Selected(help), words); });
    }

    HelpWindow viewer_{app_};
    DailyExposureState state_;
};

TEST_F(HelpWindowUiTest, OpensAtTopicsAndGoesBack) {
    UiDriver ui;
    Open(ui, kHelpIndex, [](HWND help) {
        EXPECT_EQ(Topic(help), "Indice");
        EXPECT_EQ(Listed(help), "Indice|Primo| Lungo|Secondo|Uso|");
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(help, IDC_HELP_BACK)));
        EXPECT_EQ(FocusedControl(), IDC_HELP_TEXT);
        ClickOn(help, L"il secondo");
    });
    ui.OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Topic(help), "Secondo");
        EXPECT_EQ(SelectedInList(help), "Secondo");
        ClickOn(help, L"altra");  // no link
    });
    Open(ui, kLongMiddle, [](HWND help) {
        EXPECT_EQ(Topic(help), "Lungo");
        EXPECT_EQ(TopLine(help, 11), "Spiegazione");
        SetFocus(Text(help));
    });
    ui.Press({VK_NEXT});
    Open(ui, kUnknown, [](HWND help) { EXPECT_EQ(Topic(help), "Indice"); });
    ui.Click(IDC_HELP_BACK).OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Topic(help), "Lungo");
        EXPECT_EQ(TopLine(help, 9), "Riga dopo");  // as far as it was scrolled
        SetFocus(GetDlgItem(help, IDC_HELP_BACK));
    });
    ui.Press({VK_MENU, VK_LEFT}).Press({VK_RETURN}).OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Topic(help), "Indice");
        EXPECT_EQ(FocusedControl(), IDC_HELP_TEXT);  // not on a disabled button
        SetFocus(List(help));
    });
    ui.Press({VK_DOWN}).Press({VK_DOWN}).OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Topic(help), "Lungo");
        EXPECT_EQ(FocusedControl(), IDC_HELP_LIST);
    });
    ui.Press({VK_ESCAPE}).WaitClosed(kTitle);
    ui.Run();
    EXPECT_EQ(GetActiveWindow(), owner_);
}

TEST_F(HelpWindowUiTest, KeysAloneReachEverything) {
    std::vector<int> tab_stops;
    const auto note_focus = [&](HWND) { tab_stops.push_back(FocusedControl()); };
    UiDriver ui;
    Open(ui, kHelpIndex);
    ExpectSelected(ui.Press({VK_TAB}).Press({VK_TAB}), "il secondo");
    ExpectSelected(ui.Press({VK_SHIFT, VK_TAB}), "il primo");
    ExpectTopic(ui.Press({VK_RETURN}), "Primo");
    for (int i = 0; i < 7; ++i) ui.Press({VK_TAB}).OnWindow(kTitle, note_focus);
    ui.Press({VK_SHIFT, VK_TAB}).OnWindow(kTitle, note_focus);
    ui.Press({VK_MENU, 'A'}).OnWindow(kTitle, note_focus);
    ui.Press({VK_MENU, 'T'}).OnWindow(kTitle, note_focus);
    ExpectTopic(ui.Press({VK_F1}), "Uso");
    // A plain letter is no access key.
    ui.Do([] { SetFocus(GetDlgItem(GetActiveWindow(), IDC_HELP_TEXT)); }).Press({'C'});
    ui.OnWindow(kTitle).Press({VK_MENU, 'C'}).WaitClosed(kTitle);
    ui.Run();
    EXPECT_EQ(tab_stops, (std::vector<int>{IDC_HELP_BACK, IDC_HELP_FIND_FIELD, IDC_HELP_FIND_NEXT,
                                           IDCANCEL, IDC_HELP_LIST, IDC_HELP_TEXT, IDC_HELP_BACK,
                                           IDC_HELP_TEXT, IDC_HELP_LIST, IDC_HELP_FIND_FIELD}));
}

TEST_F(HelpWindowUiTest, Finds) {
    UiDriver ui;
    Open(ui, kFirst);
    ui.Press({VK_CONTROL, 'F'}).Do([] { EXPECT_EQ(FocusedControl(), IDC_HELP_FIND_FIELD); });
    ui.Press({VK_RETURN}).Type(IDC_HELP_FIND_FIELD, " ETÀ").Press({VK_RETURN});
    ui.OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Listed(help), "Primo|Secondo|");
        EXPECT_EQ(TextOf(help, IDC_HELP_LIST_LABEL), "&Argomenti trovati: 2");
        EXPECT_EQ(Topic(help), "Primo");
        EXPECT_EQ(FocusedControl(), IDC_HELP_FIND_FIELD);
    });
    ui.Press({VK_F3}).OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Topic(help), "Secondo");
        EXPECT_EQ(SelectedInList(help), "Secondo");
    });
    ExpectTopic(ui.Click(IDC_HELP_FIND_NEXT), "Primo");  // round about
    ExpectTopic(ui.Press({VK_SHIFT, VK_F3}), "Secondo");
    ui.SetText(IDC_HELP_FIND_FIELD, "spiegazione").Press({VK_F3});
    ui.OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Topic(help), "Lungo");
        EXPECT_EQ(TopLine(help, 11), "Spiegazione");
    });
    ui.SetText(IDC_HELP_FIND_FIELD, "ornitorinco").Press({VK_F3}).Press({VK_F3});
    ui.OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Listed(help), "");
        EXPECT_EQ(Topic(help), "Lungo");
    });
    ui.SetText(IDC_HELP_FIND_FIELD, "").OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Listed(help), "Indice|Primo| Lungo|Secondo|Uso|");
        EXPECT_EQ(SelectedInList(help), "Lungo");
    });
    ui.Run();
}

// Over a modal dialog, with the program's own texts.
TEST_F(HelpWindowUiTest, ServesModalDialogs) {
    app_.program_folder = ProgramFolder();
    UiDriver ui;
    ui.OnWindow(kDailyExposureTitle, [](HWND dialog) { SetFocus(GetDlgItem(dialog, IDC_ADD)); });
    ui.Press({VK_F1}).OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(GetActiveWindow(), help);
        EXPECT_EQ(SelectedInList(help), "Lep,d: esposizione giornaliera");
        EXPECT_EQ(TopLine(help, 10), "«Aggiungi»");
        EXPECT_TRUE(IsMarkedAtCaret(help));
    });
    // The keys work although the loop is that of the dialog, and return to it.
    ExpectSelected(ui.Screenshot("help_control").Press({VK_TAB}), "livello e tempo");
    ExpectTopic(ui.Press({VK_RETURN}), "Lep,d e gruppi: inserire un livello");
    ui.Press({VK_ESCAPE}).WaitClosed(kTitle).OnWindow(kDailyExposureTitle, [](HWND dialog) {
        EXPECT_EQ(GetActiveWindow(), dialog);
        EXPECT_EQ(FocusedControl(), IDC_ADD);
    });
    ui.Click(IDC_ADD).OnWindow("Aggiungi").Press({VK_F1});
    ui.OnWindow(kTitle).OnWindow("Aggiungi").Click(IDCANCEL).WaitClosed("Aggiungi");
    ui.OnWindow(kTitle);  // the help stays until the calculator closes
    ui.OnWindow(kDailyExposureTitle).Command(CMD_FILE_CLOSE).WaitClosed(kTitle);
    OpenDailyExposure(app_, state_, owner_, "");
    ui.Run();
}

// The loop of the whole program turns keys into commands of the main window; not those of the help,
// which stays open when a calculator closes that did not ask for it.
TEST_F(HelpWindowUiTest, ServesTheMainWindow) {
    UiDriver ui;
    ExpectTopic(ui.OnWindowOfClass(kMainClass).Press({VK_F1}), "Guida di Tonvale");
    ui.Screenshot("help_index").OnWindowOfClass(kMainClass).Command(CMD_DAILY_EXPOSURE);
    ui.OnWindow(kDailyExposureTitle).Command(CMD_FILE_CLOSE).WaitClosed(kDailyExposureTitle);
    ui.OnWindow(kTitle, [](HWND help) { SetActiveWindow(help); }).Press({VK_F1});
    ui.OnWindow(kTitle,
                [](HWND help) { EXPECT_EQ(SelectedInList(help), "Come si usa questa guida"); });
    ui.Press({VK_MENU, VK_F4}).WaitClosed(kTitle);
    ui.OnWindowOfClass(kMainClass, [](HWND window) { EXPECT_EQ(GetActiveWindow(), window); });
    RunToEnd(ui);
}

TEST_F(HelpWindowUiTest, TellsThatTheFileIsMissing) {
    std::filesystem::remove(folder_ / "tonvale.hlp");
    UiDriver ui;
    // A file without topics is none; any other bytes are shown as far as they go.
    for (int i = 0; i < 2; ++i) {
        ui.Do([this] { viewer_.ShowTopic(owner_, kFirst); });
        ui.AnswerMessage(kCaption, kNoHelpFile, IDOK).WaitClosed(kCaption);
        ui.Do([this] { WriteFile("tonvale.hlp", "nulla"); });
    }
    ui.Do([this] {
        std::string damaged = "@topic 7 {\\rtf\x80\n[[7|\n| a |\n|---|\n@context 8\n";
        for (int i = 0; i < 5000; ++i) damaged += static_cast<char>(i * 37);
        WriteFile("tonvale.hlp", damaged);
    });
    Open(ui, 8, [this](HWND help) {
        EXPECT_EQ(std::ranges::count(Listed(help), '|'), 1);
        EXPECT_GT(GetWindowTextLengthW(Text(help)), 1000);
        viewer_.Close(kProgramHelp);
        WriteFile("tonvale.hlp", HelpText());
    });
    Open(ui, kFirst, [](HWND help) { EXPECT_EQ(Topic(help), "Primo"); });
    ui.Run();
}

TEST_F(HelpWindowUiTest, KeepsItsPlace) {
    const int scale = static_cast<int>(GetDpiForSystem());
    const RECT wanted{40, 30, 40 + MulDiv(480, scale, 96), 30 + MulDiv(300, scale, 96)};
    UiDriver ui;
    Open(ui, kFirst, [&](HWND help) {
        SetWindowPos(help, nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                     wanted.bottom - wanted.top, SWP_NOZORDER);
        RECT text{};
        GetWindowRect(Text(help), &text);
        EXPECT_LT(text.right, wanted.right);
        EXPECT_LT(text.bottom, wanted.bottom);
    });
    ui.Do([this] { viewer_.Close(kProgramHelp); });
    Open(ui, kFirst, [&](HWND help) {
        RECT area{};
        GetWindowRect(help, &area);
        EXPECT_TRUE(EqualRect(&area, &wanted));
    });
    ui.Run();
}

}  // namespace
}  // namespace tonvale
