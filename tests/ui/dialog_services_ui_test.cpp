#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/clipboard_win.h"
#include "dialogs/file_dialogs_win.h"
#include "dialogs/gdi_canvas_win.h"
#include "dialogs/print_notes_dialog.h"
#include "dialogs/printer_win.h"
#include "dialogs/status_bar_win.h"
#include "exposure/daily_exposure_dialog.h"
#include "resources/help_contexts.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Calcolo Lep,d";
constexpr char kDialogTitle[] = "Titolo";
constexpr char kConfirm[] = "Conferma operazione";
constexpr char kDailyFilter[] = "Lep,d (*.lep)|*.lep|";
constexpr char kFilters[] = "Uno (*.lep)|*.lep|Due (*.csv)|*.csv|";

using DialogServicesUiTest = OneCalculatorTest<DailyExposureState, OpenDailyExposure>;

TEST_F(DialogServicesUiTest, TipsServeTheTopmostDialogAndFollowTheMouse) {
    const auto tools = [this] { return SendMessageW(tips_->window(), TTM_GETTOOLCOUNT, 0, 0); };
    LRESULT outer_tools = 0;
    UiDriver ui;
    ui.OnWindow(kTitle, [&](HWND) { outer_tools = tools(); }).Click(IDC_ADD);
    ui.OnWindow("Aggiungi", [&](HWND dialog) {
        EXPECT_EQ(tips_->served(), dialog);
        // Texts let the mouse through to the dialog, and have no tip of their own.
        EXPECT_EQ(tools(), 5);
    });
    // Back in the outer dialog its own tips are there again: a mouse move over a child reaches the
    // tip, which asks for its text.
    ui.Click(IDCANCEL).WaitClosed("Aggiungi").OnWindow(kTitle, [&](HWND dialog) {
        EXPECT_EQ(tools(), outer_tools);
        SendMessageW(tips_->window(), TTM_SETDELAYTIME, TTDT_INITIAL, 0);
        RECT area{};
        GetWindowRect(GetDlgItem(dialog, IDC_ADD), &area);
        SetCursorPos(area.left + 5, area.top + 5);
        PostMessageW(GetDlgItem(dialog, IDC_ADD), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    });
    ui.WaitUntil("tip shown", [this] { return IsWindowVisible(tips_->window()) != FALSE; });
    ui.OnWindow(kTitle).Command(IDCANCEL);
    Open();
}

TEST_F(DialogServicesUiTest, NumericFieldsTakeNumbersOnly) {
    constexpr int kRelaxed = 1567;
    UiDriver ui;
    ui.OnWindow(kTitle, [this](HWND dialog) {
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, dialog,
                        reinterpret_cast<HMENU>(INT_PTR{kRelaxed}), instance_, nullptr);
    });
    ui.Type(kRelaxed, "1.2.-a3\b4").Type(IDC_NOTES_EDIT, "a-1 .b");
    ui.ExpectTexts({kRelaxed, IDC_NOTES_EDIT}, "1.2.4|a-1 .b").Click(IDC_ADD).OnWindow("Aggiungi");
    ui.SetText(IDC_LEVEL_EDIT, "").Type(IDC_LEVEL_EDIT, "9\x16 x,-7e\b.\x03 .2");
    // A point beyond the first 15 characters is not looked for.
    ui.Do([] { SendDlgItemMessageW(GetActiveWindow(), IDC_TIME_EDIT, EM_LIMITTEXT, 40, 0); });
    ui.SetText(IDC_TIME_EDIT, "123456789012345.").Type(IDC_TIME_EDIT, ".");
    ui.ExpectTexts({IDC_LEVEL_EDIT, IDC_TIME_EDIT}, "9.2|.123456789012345.").Click(IDCANCEL);
    ui.Command(IDCANCEL);
    Open();
}

// Selects the file of this name in the list of the file dialog, as a click does.
UiDriver& SelectFile(UiDriver& ui, const std::string& name) {
    return ui.OnWindow(kDialogTitle, [name](HWND dialog) {
        HWND view = FindWindowExW(dialog, nullptr, L"SHELLDLL_DefView", nullptr);
        HWND list = FindWindowExW(view, nullptr, WC_LISTVIEWW, nullptr);
        const std::wstring wide = Widen(name);
        LVFINDINFOW wanted{};
        wanted.flags = LVFI_STRING;
        wanted.psz = wide.c_str();
        const int row = ListView_FindItem(list, -1, &wanted);
        ASSERT_GE(row, 0) << name;
        ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
        ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
    });
}

// Selects a file, of which no notes are edited yet.
UiDriver& ExpectNotes(UiDriver& ui, const std::string& file, const std::string& notes) {
    SelectFile(ui, file).ExpectText(IDC_NOTES_EDIT, notes);
    return ui.ExpectEach({IDC_MODIFY_NOTES}, IsWindowEnabled, false);
}

// Presses "Modifica" and answers whether to do so.
UiDriver& Modify(UiDriver& ui, int answer) {
    return ui.Click(IDC_MODIFY_NOTES)
        .AnswerMessage(kConfirm, "Volete procedere con la modifica?", answer);
}

TEST_F(DialogServicesUiTest, OpenDialogShowsAndModifiesNotes) {
    const std::string bytes =
        "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\nNum=2\r\n1=caff\xe8\r\n2=due\r\n";
    const std::string path = WriteFile("con note.lep", bytes);
    WriteFile("senza.lep", "[TONVALE]\r\nTipo=LEPD\r\n");
    WriteFile("tabella.csv", bytes);
    std::optional<HeldFile> held;
    UiDriver ui;
    // Notes that could not be read are not written over, even if they could be now.
    ui.OnWindow(kDialogTitle, [&](HWND) { held.emplace(path, GENERIC_READ, 0); });
    SelectFile(ui, "con note.lep").OnWindow(kDialogTitle, [&](HWND) { held.reset(); });
    Modify(ui.Type(IDC_NOTES_EDIT, "X"), IDYES)
        .AnswerMessage(path, "Impossibile salvare: un'altra applicazione sta usando il file.",
                       IDOK);
    ExpectNotes(ui, "senza.lep", "");
    ExpectNotes(ui, "con note.lep", "caffè\r\ndue").Screenshot("open_file_notes");
    ui.ExpectEach({chx1}, IsWindowVisible, false);  // the read-only box
    // Typing makes the button usable; only Yes writes.
    ui.Type(IDC_NOTES_EDIT, "X");
    for (int answer : {IDNO, IDCANCEL, IDYES}) {
        ui.OnWindow(kDialogTitle, [=, this](HWND) { EXPECT_EQ(ReadFile("con note.lep"), bytes); });
        Modify(ui, answer);
    }
    ui.WaitUntil("notes written", [=, this] { return ReadFile("con note.lep") != bytes; });
    ExpectNotes(ui, "senza.lep", "");
    // What is no data file has none.
    ui.OnWindow(kDialogTitle, [](HWND dialog) { ChooseFilter(dialog, 2); });
    ExpectNotes(ui, "tabella.csv", "").Command(pshHelp);
    ui.AnswerMessage("Avviso", "Funzione non implementata", IDOK).Command(IDOK);
    EXPECT_EQ(ChooseFileToOpen(app_, owner_, kFilters, kDialogTitle), Path("tabella.csv"));
    EXPECT_EQ(ReadFile("con note.lep"),
              "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\nNum=2\r\n1=Xcaff\xe8\r\n2=due\r\n");
}

TEST_F(DialogServicesUiTest, OpenDialogHidesNotesOfTheEighthFilter) {
    UiDriver ui;
    for (int index : {8, 9, 8, 1}) {
        ui.OnWindow("Apri", [index](HWND dialog) { ChooseFilter(dialog, index); });
        ui.ExpectEach({IDC_NOTES_EDIT}, IsWindowVisible, index != 8);
    }
    ui.Command(IDCANCEL);
    EXPECT_FALSE(ChooseAnyFile(app_, owner_));
}

TEST_F(DialogServicesUiTest, SaveDialogAsksAndCompletesNames) {
    WriteFile("vecchio.lep", "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\nNum=1\r\n1=nota\r\n");
    LONG height = 0;
    UiDriver ui;
    for (const std::string filter : {kDailyFilter, "Documento di Tonvale (*.tnv)|*.tnv|",
                                     "Immagine bitmap (*.BMP)|*.BMP|", "CSV (*.csv)|*.csv|"}) {
        const bool shows_notes = filter == kDailyFilter;
        ui.OnWindow(kDialogTitle, [=, &height](HWND dialog) {
            ChooseFilter(dialog, 1);
            RECT area{};
            GetWindowRect(dialog, &area);
            if (shows_notes) height = area.bottom - area.top;
            EXPECT_EQ(area.bottom - area.top == height, shows_notes);  // no empty band
        });
        ui.ExpectEach({IDC_MODIFY_NOTES}, IsWindowVisible, false);
        ui.ExpectEach({IDC_NOTES_EDIT}, IsWindowVisible, shows_notes).Command(IDCANCEL);
        EXPECT_FALSE(ChooseFileToSave(app_, owner_, filter, kDialogTitle)) << filter;
    }

    // An existing file is only overwritten after a question, whose wording is the system's.
    SelectFile(ui, "vecchio.lep").ExpectText(IDC_NOTES_EDIT, "nota");
    ChooseFile(ui, kDialogTitle, "vecchio");
    ui.OnWindowOfClass("#32770", [](HWND question) {
        EXPECT_NE(TextOf(question, 0xffff), "");
        PostMessageW(question, WM_COMMAND, IDNO, 0);
    });
    ui.OnWindow(kDialogTitle).Command(IDCANCEL);
    EXPECT_FALSE(ChooseFileToSave(app_, owner_, kDailyFilter, kDialogTitle));

    const std::string path = Path("un nome molto lungo è più di sedici caratteri.lep");
    ChooseFile(ui, kDialogTitle, path.substr(0, path.size() - 4));
    const std::string create = path + "\r\nIl file non esiste. Crearlo?";
    ui.AnswerMessage(kConfirm, create, IDNO).Command(IDOK);
    ui.AnswerMessage(kConfirm, create, IDYES);
    EXPECT_EQ(ChooseFileToSave(app_, owner_, kDailyFilter, kDialogTitle), path);
}

TEST(ListSeparatorTest, IsTheSystemsUnlessThatIsTheDecimalSign) {
    const std::wstring before = Widen(ListSeparator());
    for (const auto& [of_system, expected] :
         {std::pair(L";", ";"), std::pair(L"|", "|"), std::pair(L",", ";")}) {
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SLIST, of_system);
        EXPECT_EQ(ListSeparator(), expected);
    }
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SLIST, before.c_str());
}

TEST(PrinterPlaceTest, IsTakenApart) {
    EXPECT_EQ(ParsePrinterPlace(L"HP Laser 4,winspool, Ne00:"),
              (PrinterPlace{L"HP Laser 4", L"winspool", L"Ne00:"}));
    for (const wchar_t* incomplete : {L"", L"a", L"a,b", L"a,b, ", L",b,c", L"a,,c"}) {
        EXPECT_FALSE(ParsePrinterPlace(incomplete)) << Narrow(incomplete);
    }
}

TEST(GdiCanvasTest, DrawsWhereItIsTold) {
    const UniqueDc dc(CreateCompatibleDC(nullptr));
    const WindowDc screen(nullptr);
    const UniqueBitmap bitmap(CreateCompatibleBitmap(screen.get(), 100, 100));
    const ScopedSelection selection(dc.get(), bitmap.get());
    const HGDIOBJ font_before = GetCurrentObject(dc.get(), OBJ_FONT);
    {
        GdiCanvas canvas(dc.get());
        canvas.FillRectangle({0, 0, 100, 100}, {255, 255, 255});
        canvas.DrawLine({10, 10}, {20, 10}, {{255, 0, 0}, 1});
        canvas.FrameRectangle({30, 30, 40, 40}, {{0, 0, 255}, 2});
        for (const int end : {10, 20}) EXPECT_EQ(GetPixel(dc.get(), end, 10), RGB(255, 0, 0));
        for (const int corner : {30, 39}) {
            EXPECT_EQ(GetPixel(dc.get(), corner, corner), RGB(0, 0, 255));
        }
        for (const POINT white : {POINT{21, 10}, POINT{34, 34}, POINT{40, 40}}) {
            EXPECT_EQ(GetPixel(dc.get(), white.x, white.y), RGB(255, 255, 255)) << white.x;
        }
        canvas.SetFont({.face = "Courier New", .character_height = 20});
        const Size one = canvas.MeasureText("è");
        EXPECT_EQ(canvas.MeasureText("èèè").width, 3 * one.width);
        EXPECT_EQ(canvas.MeasureWrappedText(4 * one.width, "uno due tre"), 3 * one.height);
        EXPECT_EQ(canvas.MeasureWrappedText(4 * one.width, "uno\r\n\r\ntre"), 3 * one.height);
    }
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_FONT), font_before);
}

TEST_F(DialogServicesUiTest, StatusBarKeepsTheFileNameOfALongPath) {
    HWND bar = CreateStatusBar(instance_, owner_);
    for (std::size_t length : {200, 300, 3000}) {
        ShowCurrentFile(bar, "C:\\" + std::string(length, 'x') + "\\misura.lep");
        const std::string shown = WindowText(bar);
        EXPECT_LT(shown.size(), 150u);
        EXPECT_TRUE(shown.ends_with("...\\misura.lep")) << shown;
    }
}

TEST_F(DialogServicesUiTest, OnlyConfirmedTextReplacesTheNotesForPrinting) {
    constexpr char kNotesTitle[] = "Un commento per la stampa?";
    std::string notes;
    const std::string kept = "Reparto presse,\r\nperché misurato";
    const struct {
        std::string shown;
        std::string typed;
        int button;
    } askings[] = {{"", kept, IDOK},
                   {kept, "", IDOK},
                   {kept, "altro", IDC_NO_COMMENT},
                   {kept, "nuove", CMD_DIALOG_HELP}};
    UiDriver ui;
    for (const auto& [shown, typed, button] : askings) {
        ui.OnWindow(kNotesTitle).ExpectText(IDC_NOTES_EDIT, shown);
        ui.SetText(IDC_NOTES_EDIT, typed).Click(button);
        if (button == CMD_DIALOG_HELP) ui.Click(IDCANCEL);
        const bool prints = button == IDOK || button == IDC_NO_COMMENT;
        EXPECT_EQ(AskPrintNotes(app_, owner_, notes), prints);
    }
    EXPECT_EQ(notes, kept);
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{kHelpPrintNotes});
    EXPECT_EQ(help_.closed, std::vector<std::string>{"Tonvale.hlp"});
    // What is typed has a limit.
    ui.OnWindow(kNotesTitle).SetText(IDC_NOTES_EDIT, "");
    ui.Type(IDC_NOTES_EDIT, std::string(520, 'x')).Click(IDOK);
    EXPECT_TRUE(AskPrintNotes(app_, owner_, notes));
    EXPECT_EQ(notes.size(), 512U);
}

}  // namespace
}  // namespace tonvale
