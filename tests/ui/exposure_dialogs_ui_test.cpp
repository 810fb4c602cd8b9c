// What is particular to the dialogs LEPD, LEPW and LEQGROUP, and what all lists of items share:
// LEPD has any number of them, LEPW fixed ones.
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "exposure/daily_exposure.h"
#include "exposure/daily_exposure_dialog.h"
#include "exposure/group_exposure.h"
#include "exposure/group_exposure_dialog.h"
#include "exposure/weekly_exposure.h"
#include "exposure/weekly_exposure_dialog.h"
#include "resources/help_contexts.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using DailyExposureUiTest = OneCalculatorTest<DailyExposureState, OpenDailyExposure>;
using Texts = std::vector<std::string>;

constexpr char kDailyTitle[] = "Calcolo Lep,d";
constexpr auto kDailyResults = {IDC_EQUIVALENT_LEVEL, IDC_TOTAL_TIME, IDC_DAILY_LEVEL};

TEST_F(DailyExposureUiTest, AddsModifiesAndDeletesItems) {
    UiDriver ui;
    ui.OnWindow(kDailyTitle).Choose(IDC_TIME_UNIT, 1).Click(IDC_MODIFY);
    ui.AnswerMessage("Modifica", kNothingSelected, IDOK).Click(IDC_DELETE);
    ui.AnswerMessage("Elimina", kNothingSelected, IDOK);
    for (const char* level : {"90", "80"}) {
        ui.Click(IDC_ADD).OnWindow("Aggiungi").SetText(IDC_LEVEL_EDIT, level);
        ui.SetText(IDC_TIME_EDIT, "240").Click(IDOK);
    }
    ui.Expect(Rows, "90|240; 80|240").ExpectTexts(kDailyResults, "87.4|   480|87.4");
    ui.OnWindow(kDailyTitle, [](HWND dialog) { DoubleClick(dialog, 1); }).OnWindow("Modifica");
    ui.ExpectTexts({IDC_LEVEL_EDIT, IDC_TIME_EDIT, IDC_TIME_LABEL, IDOK},
                   "80|240|Esposizione (m):|Modifica");
    ui.SetText(IDC_LEVEL_EDIT, "90").Click(IDOK);
    ui.OnWindow(kDailyTitle, [](HWND dialog) { Select(dialog, 0); }).Click(IDC_DELETE);
    ui.OnWindow("Elimina").ExpectEach({IDC_READ_LEVEL}, IsWindowEnabled, false);
    for (int answer : {IDNO, IDCANCEL, IDYES}) {
        ui.Click(IDOK).AnswerMessage("Conferma operazione", kDeletionQuestion, answer);
    }
    ui.Expect(Rows, "90|240").ExpectTexts(kDailyResults, "90.0|   240|87.0");
    // The typed times are read in the new unit.
    ui.Choose(IDC_TIME_UNIT, 2).ExpectTexts(kDailyResults, "90.0|240.00|104.8");
    ui.ExpectText(IDC_TOTAL_TIME_LABEL, "Tempo esposizione (h):").Click(IDC_ADD);
    ui.OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "90");  // as last confirmed
    ui.Click(IDCANCEL).Command(IDCANCEL);
    Open();
    EXPECT_EQ(help_.closed, Texts{"LEPD.HLP"});
}

TEST_F(DailyExposureUiTest, ItemDialogRefusesZerosAndReadsSpectra) {
    const std::string spectrum = WriteFile("rumore.SPR", "[TONVALE]\r\nTipo=spr\r\nLAEQ=91.25\r\n");
    const std::string text = WriteFile("rumore.txt", "[TONVALE]\r\nTipo=SPR\r\nLAEQ=2\r\n");
    const std::string daily =
        WriteFile("misura.lep", "[TONVALE]\nTipo=LEPD\nLEPD=2\nITEMS=1\n[LEQ]\n1=85\n");
    UiDriver ui;
    ui.OnWindow(kDailyTitle).Click(IDC_ADD).OnWindow("Aggiungi").SetText(IDC_LEVEL_EDIT, "0.0");
    ui.SetText(IDC_TIME_EDIT, "0").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK).ExpectFocus(IDC_LEVEL_EDIT);
    ui.SetText(IDC_LEVEL_EDIT, "85").Click(IDOK);
    ui.AnswerMessage("Tempo esposizione ", kNotNumeric, IDOK).ExpectFocus(IDC_TIME_EDIT);
    ui.OnWindow("Aggiungi", [=](HWND dialog) {
        Drop(GetParent(dialog), {daily});  // which must wait
        for (const Texts& others : {Texts{daily}, {text}, {spectrum, text}}) Drop(dialog, others);
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "85");
        Drop(dialog, {spectrum});
    });
    ui.ExpectText(IDC_LEVEL_EDIT, "91.25").SetText(IDC_LEVEL_EDIT, "").Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, spectrum);
    ui.ExpectText(IDC_LEVEL_EDIT, "91.25").Click(IDCANCEL).Expect(Rows, "").Command(CMD_FILE_CLOSE);
    Open();
}

TEST_F(DailyExposureUiTest, TakesTenThousandItems) {
    DailyExposureForm form;
    form.items.assign(10000, {"80", "1"});
    ProfileFile file;
    StoreForm(form, file);
    const std::string path = WriteFile("molti.lep", file.Serialize());
    const auto start = std::chrono::steady_clock::now();
    UiDriver ui;
    ui.OnWindow(kDailyTitle, [=](HWND dialog) {
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
        // The scroll bar takes its place from both columns.
        RECT area{};
        GetClientRect(List(dialog), &area);
        EXPECT_EQ(ListView_GetColumnWidth(List(dialog), 0), area.right / 2);
    });
    ui.ExpectText(IDC_TOTAL_TIME, " 10000").Command(CMD_FILE_CLOSE);
    Open(path);
}

TEST_F(DailyExposureUiTest, ListKeysAndHelpUnderTheMouse) {
    state_.levels_dba = {85};
    state_.durations = {480};
    UiDriver ui;
    for (const auto& [key, title] : {std::pair<WORD, const char*>{VK_INSERT, "Aggiungi"},
                                     {VK_RETURN, "Modifica"},
                                     {VK_DELETE, "Elimina"}}) {
        ui.OnWindow(kDailyTitle, [key = key](HWND dialog) {
            Select(dialog, 0);
            PostMessageW(List(dialog), WM_KEYDOWN, key, 1);
        });
        ui.OnWindow(title).Click(IDCANCEL);
    }
    ui.OnWindow(kDailyTitle, [](HWND dialog) {
        // A right click on a result, which lets the mouse through to the dialog.
        RECT area{};
        GetWindowRect(GetDlgItem(dialog, IDC_TOTAL_TIME), &area);
        SendMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog),
                     MAKELPARAM(area.left + 1, area.top + 1));
        // And one where nothing is.
        SendMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog), 0);
    });
    ui.Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{kHelpDailyTotalTime});
}

using WeeklyExposureUiTest = OneCalculatorTest<WeeklyExposureState, OpenWeeklyExposure>;

constexpr char kWeeklyTitle[] = "Calcolo Lep,w";
constexpr char kDayTitle[] = "Modifica";

// Opens EDIT_LEPW on a day.
UiDriver& EditDay(UiDriver& ui, int day) {
    ui.OnWindow(kWeeklyTitle, [day](HWND dialog) { Select(dialog, day); }).Click(IDC_MODIFY);
    return ui.OnWindow(kDayTitle);
}

TEST_F(WeeklyExposureUiTest, TheListHasTheFocusAndARow) {
    UiDriver ui;
    ui.OnWindow(kWeeklyTitle).ExpectFocus(IDC_ITEM_LIST).OnWindow(kWeeklyTitle, [](HWND dialog) {
        EXPECT_GE(ListView_GetCountPerPage(List(dialog)), 7);  // nothing to scroll
        EXPECT_EQ(SelectedRow(dialog), "0");
        // Away with the selection, and back with the focus.
        for (int row : {4, 0}) {
            ListView_SetItemState(List(dialog), -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
            SetFocus(GetDlgItem(dialog, IDC_NOTES_EDIT));
            if (row != 0) ListView_SetItemState(List(dialog), row, LVIS_FOCUSED, LVIS_FOCUSED);
            SetFocus(List(dialog));
            EXPECT_EQ(SelectedRow(dialog), std::to_string(row));
        }
        // A letter goes to the day that begins with it, if there is one.
        for (const wchar_t letter : {L'v', L'x'}) SendMessageW(List(dialog), WM_CHAR, letter, 1);
        EXPECT_EQ(SelectedRow(dialog), "4");
        // No day can be added or taken away.
        for (int key : {VK_INSERT, VK_DELETE}) {
            SendMessageW(List(dialog), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
        }
    });
    ui.ExpectText(IDC_WEEKLY_LEVEL, "90.0").Command(CMD_FILE_CLOSE);
    Open();
}

TEST_F(WeeklyExposureUiTest, EditsClearsAndReadsDays) {
    const std::string daily =
        WriteFile("giornata.LEP", "[TONVALE]\r\nTipo=lepd\r\nLAEQ=70.1\r\nLEPD=84.75\r\n");
    UiDriver ui;
    EditDay(ui, 2).ExpectTexts({IDC_DAY_NAME, IDC_LEVEL_EDIT}, "Mercoledi|90.0");
    ui.SetText(IDC_LEVEL_EDIT, "abc").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.SetText(IDC_LEVEL_EDIT, "-3").Click(IDOK);
    EditDay(ui, 1).SetText(IDC_LEVEL_EDIT, "1").Click(IDCANCEL);
    EditDay(ui, 0).Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, daily);
    ui.ExpectText(IDC_LEVEL_EDIT, "84.75").SetText(IDC_LEVEL_EDIT, "");
    ui.OnWindow(kDayTitle, [=](HWND dialog) { Drop(dialog, {daily}); }).Click(IDOK);
    EditDay(ui, 4).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDNO).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.ExpectText(IDC_WEEKLY_LEVEL, "86.6")
        .Expect(Rows,
                "Lunedi|84.75; Martedi|90.0; Mercoledi|-3; Giovedi|90.0; Venerdi|0.0; Sabato| 0.0; "
                "Domenica| 0.0");
    ui.Command(CMD_FILE_CLOSE);
    Open();
}

using GroupExposureUiTest = OneCalculatorTest<GroupExposureState, OpenGroupExposure>;

constexpr char kGroupTitle[] = "Livello equivalente per gruppi di lavoratori";
constexpr char kNeeded[] = "Per validare i risultati è necessario inserire almeno 4 campioni";
constexpr char kMoreNeeded[] = "Per validare i risultati è necessario inserire almeno 5 campioni";
constexpr char kEnough[] = "Sono stati inseriti i campioni necessari per validare i risultati";

// Count, mean and deviation, which are marked when hidden, and the verdict.
std::string Results(HWND dialog) {
    std::string results;
    for (const int control : {IDC_SAMPLE_COUNT, IDC_EQUIVALENT_LEVEL, IDC_STANDARD_DEVIATION}) {
        const bool shown = IsWindowVisible(GetDlgItem(dialog, control)) != FALSE;
        results += (shown ? "" : "(hidden)") + TextOf(dialog, control) + "|";
    }
    return results + TextOf(dialog, IDC_RESULT_TEXT);
}

TEST_F(GroupExposureUiTest, HidesMeanAndDeviationUntilThereAreSamplesEnough) {
    const std::string hidden = "3|(hidden)87.0|(hidden) 2.0|";
    state_.levels_dba = {85, 87, 89};
    UiDriver ui;
    ui.OnWindow(kGroupTitle);
    ui.ExpectTexts({IDC_TOTAL_WORKERS, IDC_CONFIDENCE, IDC_INTERVAL}, "10|95|2");
    ui.Expect(Results, hidden + kNeeded).Choose(IDC_INTERVAL, 2);
    ui.Expect(Results, std::string("3|87.0| 2.0|") + kEnough).Choose(IDC_CONFIDENCE, 3);
    ui.Expect(Results, hidden + kMoreNeeded).Choose(IDC_CONFIDENCE, 1).Choose(IDC_INTERVAL, 1);
    ui.Click(IDC_ADD).OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "90");
    ui.SetText(IDC_LEVEL_EDIT, "87").Click(IDOK);
    ui.Expect(Results, std::string("4|87.0| 1.6|") + kEnough);
    ui.OnWindow(kGroupTitle, [](HWND dialog) { Select(dialog, 0); }).Click(IDC_DELETE);
    ui.OnWindow("Elimina").ExpectText(IDC_LEVEL_EDIT, "85.0").Click(IDOK);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.Expect(SelectedRow, "0");  // what has come to its place
    ui.Click(IDC_ADD).OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "87").Click(IDCANCEL);
    ui.Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(state_.levels_dba, (std::vector<double>{87, 89, 87}));
}

TEST_F(GroupExposureUiTest, ASampleIsALevelAlone) {
    state_.levels_dba = {85};
    UiDriver ui;
    ui.OnWindow(kGroupTitle, [](HWND dialog) { DoubleClick(dialog, 0); });
    ui.OnWindow("Modifica", [](HWND dialog) {
        // The buttons have moved up to it.
        RECT button{};
        RECT window{};
        GetWindowRect(GetDlgItem(dialog, IDOK), &button);
        GetWindowRect(dialog, &window);
        EXPECT_LT(button.bottom, window.bottom);
    });
    ui.ExpectFocus(IDC_LEVEL_EDIT).ExpectEach({IDC_TIME_EDIT}, IsWindowVisible, false);
    ui.Screenshot("add_lepd_group");
    ui.SetText(IDC_LEVEL_EDIT, "abc").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.SetText(IDC_LEVEL_EDIT, "-1").Click(IDOK).Expect(Rows, "-1").Command(IDCANCEL);
    Open();
}

TEST_F(GroupExposureUiTest, WarnsOfSmallGroupsAtEveryKeystroke) {
    state_.levels_dba = {85, 85, 85};
    const std::string before = std::string("3|85.0| 0.0|") + kEnough;
    UiDriver ui;
    const auto expect_warning = [&ui]() -> UiDriver& {
        return ui.AnswerMessage("Attenzione: dato incompleto o mancante",
                                "Inserire un valore maggiore di 3 per il totale dei lavoratori",
                                IDOK);
    };
    ui.OnWindow(kGroupTitle).Expect(Results, before).SetText(IDC_TOTAL_WORKERS, "");
    expect_warning().Type(IDC_TOTAL_WORKERS, "a1");
    expect_warning().Type(IDC_TOTAL_WORKERS, "2").Expect(Results, before);
    ui.ExpectText(IDC_TOTAL_WORKERS, "12").SetText(IDC_TOTAL_WORKERS, "3");
    expect_warning().Expect(Results, before).Command(CMD_FILE_CLOSE);
    Open();
    // The kept total is told again, over the visible dialog.
    expect_warning().OnWindow(kGroupTitle).Command(IDCANCEL);
    Open();
}

}  // namespace

}  // namespace tonvale
