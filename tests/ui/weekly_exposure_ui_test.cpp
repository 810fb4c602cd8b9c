#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "common/clipboard_win.h"
#include "common/handles_win.h"
#include "exposure/weekly_exposure.h"
#include "exposure/weekly_exposure_dialog.h"
#include "resources/help_contexts.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using Texts = std::vector<std::string>;

constexpr char kTitle[] = "Calcolo Lep,w";
constexpr char kDayTitle[] = "Modifica";

// A stored result that does not match the days: they would give 83.0. Sunday is missing.
constexpr char kStoredFile[] =
    "[TONVALE]\r\nTipo=lepw\r\nLEPW=70.5\r\n[GIORNI]\r\nLunedi=90\r\nMartedi=0\r\nMercoledi=0\r\n"
    "Giovedi=0\r\nVenerdi=0\r\nSabato=0\r\n[NOTE]\r\nNum=2\r\n1=perch\xe9\r\n2=due\r\n"
    "[ALTRO]\r\nchiave=resta\r\n";
constexpr char kDailyFile[] = "[TONVALE]\r\nTipo=lepd\r\nLAEQ=70.1\r\nLEPD=84.75\r\n";

std::string Result(HWND dialog) {
    return TextOf(dialog, IDC_WEEKLY_LEVEL);
}

// The days' levels, one after the other.
std::string Levels(HWND dialog) {
    std::string levels;
    for (int day = 0; day < static_cast<int>(kWeekDays); ++day) {
        levels += "|" + Cell(dialog, day, 1);
    }
    return levels;
}

class WeeklyExposureUiTest : public DialogTest {
  protected:
    void Open(const std::string& path = {}) { OpenWeeklyExposure(app_, state_, owner_, path); }

    // Opens EDIT_LEPW on a day.
    UiDriver& EditDay(UiDriver& ui, int day) {
        ui.OnWindow(kTitle, [day](HWND dialog) { Select(dialog, day); }).Click(IDC_MODIFY);
        return ui.OnWindow(kDayTitle);
    }
    void SetDay(UiDriver& ui, int day, const std::string& level_dba) {
        EditDay(ui, day).SetText(IDC_LEVEL_EDIT, level_dba).Click(IDOK).WaitClosed(kDayTitle);
    }

    WeeklyExposureState state_;
};

TEST_F(WeeklyExposureUiTest, OpensOnAWeekOfNinety) {
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Rows(dialog),
                  (Texts{"Lunedi x 90.0", "Martedi x 90.0", "Mercoledi x 90.0", "Giovedi x 90.0",
                         "Venerdi x 90.0", "Sabato x  0.0", "Domenica x  0.0"}));
        EXPECT_EQ(Result(dialog), "90.0");
        EXPECT_EQ(Status(dialog), kNoFile);
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_NOTES_EDIT, EM_GETLIMITTEXT, 0, 0), 512);
        RECT area{};
        GetClientRect(List(dialog), &area);
        EXPECT_EQ(ListView_GetColumnWidth(List(dialog), 0), area.right * 2 / 3);
        EXPECT_EQ(ListView_GetColumnWidth(List(dialog), 1), area.right / 3);
        EXPECT_GE(ListView_GetCountPerPage(List(dialog)), 7);  // nothing to scroll
        // The list has the focus, and so a row.
        EXPECT_EQ(GetFocus(), List(dialog));
        EXPECT_EQ(SelectedRow(dialog), 0);
        const WindowDc device(dialog);
        EXPECT_EQ(SendMessageW(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device.get()),
                               reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDC_WEEKLY_LEVEL))),
                  reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_MENU)));
        EXPECT_EQ(GetBkColor(device.get()), GetSysColor(COLOR_MENU));
        // Away with the selection, and back with the focus.
        ListView_SetItemState(List(dialog), -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
        SetFocus(GetDlgItem(dialog, IDC_NOTES_EDIT));
    });
    ui.Click(IDC_MODIFY).AnswerMessage("Modifica", kNothingSelected, IDOK);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(SelectedRow(dialog), -1);
        for (int row : {4, 0}) {
            if (row != 0) ListView_SetItemState(List(dialog), row, LVIS_FOCUSED, LVIS_FOCUSED);
            SetFocus(List(dialog));
            EXPECT_EQ(SelectedRow(dialog), row);
            ListView_SetItemState(List(dialog), -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
            SetFocus(GetDlgItem(dialog, IDC_NOTES_EDIT));
        }
    });
    ui.Command(IDCANCEL);
    Open();
    EXPECT_EQ(help_.closed, Texts{"LEPD.HLP"});
}

TEST_F(WeeklyExposureUiTest, EditsAndClearsDays) {
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) { DoubleClick(dialog, 2); });
    ui.OnWindow(kDayTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_DAY_NAME), "Mercoledi");
        EXPECT_TRUE(GetWindowLongW(GetDlgItem(dialog, IDC_DAY_NAME), GWL_STYLE) & ES_READONLY);
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "90.0");
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_LEVEL_EDIT, EM_GETLIMITTEXT, 0, 0), 15);
    });
    ui.Screenshot("edit_lepw").SetText(IDC_LEVEL_EDIT, "abc").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.OnWindow(kDayTitle,
                [](HWND dialog) { EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_LEVEL_EDIT)); });
    // The field lets no minus sign and no comma through.
    ui.SetText(IDC_LEVEL_EDIT, "").Type(IDC_LEVEL_EDIT, "-9,5.a2").Click(IDOK);
    ui.WaitClosed(kDayTitle).OnWindow(kTitle,
                                      [](HWND dialog) { EXPECT_EQ(Result(dialog), "91.7"); });
    SetDay(ui, 2, "-3");
    SetDay(ui, 6, "90,5");
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Levels(dialog), "|90.0|90.0|-3|90.0|90.0| 0.0|90,5");
        EXPECT_EQ(Result(dialog), "90.0");
        EXPECT_EQ(SelectedRow(dialog), 6);
    });
    EditDay(ui, 6).SetText(IDC_LEVEL_EDIT, "1").Click(IDCANCEL).WaitClosed(kDayTitle);
    EditDay(ui, 6);
    for (int answer : {IDNO, IDCANCEL, IDYES}) {
        ui.OnWindow(kDayTitle).Click(IDC_DELETE);
        ui.AnswerMessage("Conferma operazione", kDeletionQuestion, answer);
    }
    ui.WaitClosed(kDayTitle).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Cell(dialog, 6, 1), "0.0");
        EXPECT_EQ(Result(dialog), "89.0");
        // Enter in the list edits its row; Ins and Del do nothing.
        Select(dialog, 1);
        SetFocus(List(dialog));
        for (int key : {VK_INSERT, VK_DELETE, VK_RETURN}) {
            PostMessageW(List(dialog), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
        }
    });
    ui.OnWindow(kDayTitle).ExpectText(IDC_DAY_NAME, "Martedi");
    ui.Press({VK_ESCAPE}).WaitClosed(kDayTitle).OnWindow(kTitle).Command(CMD_FILE_CLOSE);
    Open();
}

TEST_F(WeeklyExposureUiTest, ADayComesFromADailyFile) {
    const std::string daily = WriteFile("giornata.LEP", kDailyFile);
    const std::string other = WriteFile("altro.lep", "[TONVALE]\r\nTipo=LEPW\r\nLEPD=1\r\n");
    const std::string text = WriteFile("giornata.txt", kDailyFile);
    const std::string empty = WriteFile("vuoto.lep", "[TONVALE]\r\nTipo=LEPD\r\n");
    UiDriver ui;
    EditDay(ui, 0).Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, other);
    ui.WaitClosed(kOpenTitle).OnWindow(kDayTitle, [=](HWND dialog) {
        for (const std::string& ignored : {other, text, empty}) {
            Drop(dialog, {ignored});
            EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "90.0") << ignored;
        }
        Drop(dialog, {daily});
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "84.75");
    });
    ui.SetText(IDC_LEVEL_EDIT, "").Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, daily);
    ui.WaitClosed(kOpenTitle).OnWindow(kDayTitle).Click(IDOK).WaitClosed(kDayTitle);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Cell(dialog, 0, 1), "84.75");
        EXPECT_EQ(Result(dialog), "89.3");
    });
    ui.Command(CMD_FILE_CLOSE);
    Open();
}

TEST_F(WeeklyExposureUiTest, OpensSavesCopiesAndPrints) {
    const std::string stored = WriteFile("settimana.LEW", kStoredFile);
    FakePrinter printer;
    app_.open_printer = [&] { return std::make_unique<BorrowedPrinter>(printer); };
    UiDriver ui;
    // A letter goes to the day that begins with it, if there is one.
    ui.OnWindow(kTitle, [](HWND dialog) {
        for (const wchar_t letter : {L'v', L'x'}) SendMessageW(List(dialog), WM_CHAR, letter, 1);
        EXPECT_EQ(SelectedRow(dialog), 4);
    });
    ui.Command(CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, stored);
    ui.WaitClosed(kOpenTitle).OnWindow(kTitle, [=](HWND dialog) {
        EXPECT_EQ(Levels(dialog), "|90|0|0|0|0|0|");
        EXPECT_EQ(Result(dialog), "70.5");  // as stored
        EXPECT_EQ(SelectedRow(dialog), 4);  // still
        EXPECT_EQ(TextOf(dialog, IDC_NOTES_EDIT), "perché\r\ndue");
        EXPECT_EQ(Status(dialog), "settimana.LEW");
    });
    ui.Command(CMD_FILE_CLOSE);
    Open();

    // What was opened but not computed with is not kept, its notes are.
    ui.OnWindow(kTitle, [=](HWND dialog) {
        EXPECT_EQ(Levels(dialog), "|90.0|90.0|90.0|90.0|90.0| 0.0| 0.0");
        EXPECT_EQ(TextOf(dialog, IDC_NOTES_EDIT), "perché\r\ndue");
        EXPECT_EQ(Status(dialog), kNoFile);
        Drop(dialog, {stored});
        EXPECT_EQ(Result(dialog), "83.0");  // recomputed
    });
    SetDay(ui, 6, "85.5");
    ui.OnWindow(kTitle).SetText(IDC_NOTES_EDIT, "città").Command(CMD_COPY);
    ui.Command(CMD_FILE_PRINT).Command(CMD_FILE_SAVE).OnWindow(kTitle).Screenshot("lepw");
    ui.Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(ReadFile("settimana.LEW"),
              "[TONVALE]\r\nTipo=LEPW\r\nLEPW=84.3\r\n[GIORNI]\r\nLunedi=90\r\nMartedi=0\r\n"
              "Mercoledi=0\r\nGiovedi=0\r\nVenerdi=0\r\nSabato=0\r\nDomenica=85.5\r\n[NOTE]\r\n"
              "Num=1\r\n1=citt\xe0\r\n[ALTRO]\r\nchiave=resta\r\n");
    const std::string s = ListSeparator();
    const std::string summary = ClipboardBytes(app_.clipboard.csv);
    EXPECT_TRUE(summary.ends_with("Domenica" + s + s + "85,5\r\nLep,w (dBA):" + s + s +
                                  "84,3\r\nNote:\r\ncitt\xe0\r\n" + '\0'));
    EXPECT_EQ(printer.document, "Livello di esposizione personale settimanale (Lep,w)");
    ASSERT_EQ(printer.pages.size(), 1u);
    EXPECT_EQ(printer.pages[0].back().text, "città");
}

TEST_F(WeeklyExposureUiTest, EveryControlHasItsTipAndItsHelp) {
    const auto look = [](HWND dialog, const std::map<int, std::string>& tips) {
        for (const auto& [control, tip] : tips) {
            EXPECT_EQ(TipOf(dialog, control), tip);
            AskHelp(dialog, control);
        }
        SendMessageW(dialog, WM_COMMAND, CMD_DIALOG_HELP, 0);
    };
    UiDriver ui;
    ui.OnWindow(kTitle, [&](HWND dialog) {
        look(dialog,
             {{15, "Visualizza il nome del file correntemente selezionato"},
              {1110, "Lista con i livelli d'esposizione quotidiani per giorno della settimana"},
              {1115, "Valore risultante del livello d'esposizione settimanale"},
              {1141, "Inserire qui delle note da salvare insieme ai dati"},
              {1211, "Modifica un elemento della lista"}});
    });
    EditDay(ui, 0).OnWindow(kDayTitle, [&](HWND dialog) {
        look(dialog, {{1, "Modifica un elemento della lista"},
                      {2, "Annulla l'operazione e chiude la finestra di dialogo"},
                      {1111, "Livello di esposizione quotidiano"},
                      {1113, "Giorno della settimana"},
                      {1212, "Azzera un elemento della lista"},
                      {1606, "Carica il valore del livello da un file"}});
    });
    ui.Click(IDCANCEL).WaitClosed(kDayTitle).OnWindow(kTitle).Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(help_.topics,
              (std::vector<unsigned long>{103350383, 264765752, 282132792, 550830392, 269418808,
                                          100115, 269484743, 269484753, 266076861, 268042941,
                                          269484733, 100660, kHelpWeekday}));
}

}  // namespace
}  // namespace tonvale
