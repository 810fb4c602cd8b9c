#include "help/help_window.h"

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <filesystem>
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

constexpr unsigned long kFirst = 10;
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
    return text + "@topic 20 Secondo\n\nUn'altra eta.\n@topic 110025 Uso\n\nLa guida. Età.\n";
}

HWND Text(HWND help) {
    return GetDlgItem(help, IDC_HELP_TEXT);
}

std::string LineOf(HWND help, LRESULT line) {
    wchar_t text[256] = {255};  // its size comes first
    SendMessageW(Text(help), EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text));
    const std::string narrow = Narrow(text);
    return narrow.substr(0, narrow.find('\r'));
}

// The title of the topic.
std::string Topic(HWND help) {
    return LineOf(help, 0);
}

std::string TopLine(HWND help) {
    return LineOf(help, SendMessageW(Text(help), EM_GETFIRSTVISIBLELINE, 0, 0));
}

std::string Selected(HWND help) {
    wchar_t text[64] = {};
    SendMessageW(Text(help), EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(text));
    return Narrow(text);
}

void ClickOn(HWND help, const wchar_t* words) {
    FINDTEXTW find{{0, -1}, words};
    const LRESULT position =
        SendMessageW(Text(help), EM_FINDTEXTW, FR_DOWN, reinterpret_cast<LPARAM>(&find));
    POINTL place{};
    SendMessageW(Text(help), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), position + 1);
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
        PostMessageW(Text(help), message, 0, MAKELPARAM(place.x + 1, place.y + 4));
    }
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

// The list as it is seen, "|" behind each title, subtopics with a blank before them, "*" before the
// one that is selected.
std::string Listed(HWND help) {
    HWND list = GetDlgItem(help, IDC_HELP_LIST);
    std::string titles;
    for (HTREEITEM item = TreeView_GetRoot(list); item;
         item = TreeView_GetNextVisible(list, item)) {
        titles += TreeView_GetParent(list, item) ? " " : "";
        titles += item == TreeView_GetSelection(list) ? "*" : "";
        titles += ItemText(list, item) + "|";
    }
    return titles;
}

int FocusedControl() {
    return GetDlgCtrlID(GetFocus());
}

void Focus(HWND help, int control) {
    SetFocus(GetDlgItem(help, control));
}

class HelpWindowUiTest : public DialogTest {
  protected:
    HelpWindowUiTest() {
        WriteFile("tonvale.hlp", HelpText());
        app_.help = &viewer_;
    }

    // Opens the help at a context and goes on inside it.
    UiDriver& Open(UiDriver& ui, unsigned long context) {
        return ui.Do([this, context] { viewer_.ShowTopic(owner_, context); }).OnWindow(kTitle);
    }
    // Expects the title of the topic, and that the list shows it as selected.
    static UiDriver& ExpectTopic(UiDriver& ui, const std::string& topic) {
        return ui.OnWindow(kTitle, [topic](HWND help) {
            EXPECT_EQ(Topic(help), topic);
            EXPECT_THAT(Listed(help), testing::HasSubstr("*" + topic + "|"));
        });
    }
    static UiDriver& ExpectSelected(UiDriver& ui, const char* words) {
        return ui.OnWindow(kTitle, [words](HWND help) { EXPECT_EQ(Selected(help), words); });
    }

    HelpWindow viewer_{app_};
    DailyExposureState state_;
};

TEST_F(HelpWindowUiTest, OpensAtTopicsAndGoesBack) {
    UiDriver ui;
    Open(ui, kHelpIndex).OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Listed(help), "*Indice|Primo| Lungo|Secondo|Uso|");
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(help, IDC_HELP_BACK)));
        EXPECT_EQ(FocusedControl(), IDC_HELP_TEXT);
        ClickOn(help, L"il secondo");
    });
    ExpectTopic(ui, "Secondo").OnWindow(kTitle, [](HWND help) {
        ClickOn(help, L"altra");  // no link
    });
    ExpectTopic(Open(ui, kLongMiddle), "Lungo").OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(TopLine(help), "Spiegazione del controllo.");
        Focus(help, IDC_HELP_TEXT);
    });
    ExpectTopic(Open(ui.Press({VK_NEXT}), kUnknown), "Indice").Click(IDC_HELP_BACK);
    ExpectTopic(ui, "Lungo").OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(TopLine(help), "Riga dopo.");  // as far as it was scrolled
        Focus(help, IDC_HELP_BACK);
    });
    ExpectTopic(ui.Press({VK_MENU, VK_LEFT}).Press({VK_RETURN}), "Indice");
    ui.OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(FocusedControl(), IDC_HELP_TEXT);  // not on a disabled button
        Focus(help, IDC_HELP_LIST);
    });
    ExpectTopic(ui.Press({VK_DOWN}).Press({VK_DOWN}), "Lungo").Do([] {
        EXPECT_EQ(FocusedControl(), IDC_HELP_LIST);
    });
    ui.Press({VK_ESCAPE}).WaitClosed(kTitle);
    ui.Run();
    EXPECT_EQ(GetActiveWindow(), owner_);
}

TEST_F(HelpWindowUiTest, KeysAloneReachEverything) {
    std::vector<int> tab_stops;
    const auto note_focus = [&] { tab_stops.push_back(FocusedControl()); };
    UiDriver ui;
    ExpectSelected(Open(ui, kHelpIndex).Press({VK_TAB}).Press({VK_TAB}), "il secondo");
    ExpectSelected(ui.Press({VK_SHIFT, VK_TAB}), "il primo");
    ExpectTopic(ui.Press({VK_RETURN}), "Primo");
    for (int i = 0; i < 7; ++i) ui.Press({VK_TAB}).Do(note_focus);
    ui.Press({VK_SHIFT, VK_TAB}).Do(note_focus);
    ui.Press({VK_MENU, 'A'}).Do(note_focus).Press({VK_MENU, 'T'}).Do(note_focus);
    ExpectTopic(ui.Press({VK_F1}), "Uso");
    // A plain letter is no access key.
    ui.Do([] { Focus(GetActiveWindow(), IDC_HELP_TEXT); }).Press({'C'});
    ui.OnWindow(kTitle).Press({VK_MENU, 'C'}).WaitClosed(kTitle);
    ui.Run();
    EXPECT_EQ(tab_stops, (std::vector<int>{IDC_HELP_BACK, IDC_HELP_FIND_FIELD, IDC_HELP_FIND_NEXT,
                                           IDCANCEL, IDC_HELP_LIST, IDC_HELP_TEXT, IDC_HELP_BACK,
                                           IDC_HELP_TEXT, IDC_HELP_LIST, IDC_HELP_FIND_FIELD}));
}

TEST_F(HelpWindowUiTest, Finds) {
    UiDriver ui;
    Open(ui, kFirst).Press({VK_CONTROL, 'F'}).Press({VK_RETURN});
    ui.Type(IDC_HELP_FIND_FIELD, " ETÀ").Press({VK_RETURN}).OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Listed(help), "*Primo|Secondo|Uso|");
        EXPECT_EQ(TextOf(help, IDC_HELP_LIST_LABEL), "&Argomenti trovati: 3");
        EXPECT_EQ(FocusedControl(), IDC_HELP_FIND_FIELD);
    });
    ExpectTopic(ui.Press({VK_F3}), "Secondo");
    ExpectTopic(ui.Click(IDC_HELP_FIND_NEXT), "Uso");
    ExpectTopic(ui.Press({VK_F3}), "Primo");  // round about
    ExpectTopic(ui.Press({VK_SHIFT, VK_F3}), "Uso");
    ExpectTopic(ui.SetText(IDC_HELP_FIND_FIELD, "spiegazione").Press({VK_F3}), "Lungo");
    ui.OnWindow(kTitle, [](HWND help) { EXPECT_EQ(TopLine(help), "Spiegazione del controllo."); });
    ui.SetText(IDC_HELP_FIND_FIELD, "ornitorinco").Press({VK_F3}).Press({VK_F3});
    ui.OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Listed(help), "");
        EXPECT_EQ(Topic(help), "Lungo");
    });
    ui.SetText(IDC_HELP_FIND_FIELD, "").OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(Listed(help), "Indice|Primo| *Lungo|Secondo|Uso|");
    });
    ui.Run();
}

// Over a modal dialog, with the program's own texts.
TEST_F(HelpWindowUiTest, ServesModalDialogs) {
    app_.program_folder = ProgramFolder();
    UiDriver ui;
    ui.OnWindow(kDailyExposureTitle, [](HWND dialog) { Focus(dialog, IDC_ADD); });
    ExpectTopic(ui.Press({VK_F1}), "Lep,d: esposizione giornaliera");
    ui.OnWindow(kTitle, [](HWND help) {
        EXPECT_EQ(GetActiveWindow(), help);
        EXPECT_TRUE(TopLine(help).starts_with("«Aggiungi» chiede ")) << TopLine(help);
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(Text(help), EM_GETCHARFORMAT, SCF_SELECTION,
                     reinterpret_cast<LPARAM>(&format));
        EXPECT_EQ(format.dwEffects & CFE_AUTOBACKCOLOR, 0U) << "the block is not marked";
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
    ExpectTopic(ui, "Come si usa questa guida").Press({VK_MENU, VK_F4}).WaitClosed(kTitle);
    ui.OnWindowOfClass(kMainClass, [](HWND window) { EXPECT_EQ(GetActiveWindow(), window); });
    RunToEnd(ui);
}

TEST_F(HelpWindowUiTest, TellsThatTheFileIsMissingAndKeepsItsPlace) {
    std::filesystem::remove(folder_ / "tonvale.hlp");
    const auto dpi = static_cast<LONG>(GetDpiForSystem());
    const RECT wanted{40, 30, 40 + 5 * dpi, 30 + 3 * dpi};
    UiDriver ui;
    // A file without topics is none.
    for (const std::string& bytes : {std::string("nulla"), HelpText()}) {
        ui.Do([this] { viewer_.ShowTopic(owner_, kFirst); });
        ui.AnswerMessage("Guida in linea",
                         "Il file della guida tonvale.hlp non è nella cartella del programma.",
                         IDOK);
        ui.WaitClosed("Guida in linea").Do([=, this] { WriteFile("tonvale.hlp", bytes); });
    }
    ExpectTopic(Open(ui, kFirst), "Primo").OnWindow(kTitle, [&](HWND help) {
        SetWindowPos(help, nullptr, wanted.left, wanted.top, 5 * dpi, 3 * dpi, SWP_NOZORDER);
        viewer_.Close("Tonvale.hlp");
    });
    Open(ui, kFirst).OnWindow(kTitle, [&](HWND help) {
        RECT area{};
        GetWindowRect(help, &area);
        EXPECT_TRUE(EqualRect(&area, &wanted));
    });
    ui.Run();
}

}  // namespace
}  // namespace tonvale
