#include <string>

#include "exposure/uncertainty_study.h"
#include "exposure/uncertainty_wizard_win.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using UncertaintyUiTest = OneCalculatorTest<UncertaintyStudy, OpenUncertainty>;

constexpr char kStart[] = "Errore di misura";
constexpr char kLevel[] = "Errore sul livello equivalente";
constexpr char kDay[] = "Errore sul livello di esposizione personale quotidiano";
constexpr char kWeek[] = "Errore sul livello di esposizione personale settimanale";
constexpr char kResults[] = "Risultati del calcolo";
constexpr char kStored[] = "Operazione completata";
constexpr char kStoredText[] = "I valori sono stati memorizzati";

// Level, environmental error, total error.
constexpr auto kLevelResults = {IDC_EQUIVALENT_LEVEL, IDC_LEVEL_ERROR, IDC_TOTAL_ERROR};
constexpr auto kDayResults = {IDC_DAILY_LEVEL, IDC_LEVEL_ERROR, IDC_TOTAL_ERROR};
constexpr auto kWeekResults = {IDC_WEEKLY_LEVEL, IDC_LEVEL_ERROR, IDC_TOTAL_ERROR};

void AddSample(UiDriver& ui, const std::string& level, const std::string& time) {
    ui.OnWindow(kLevel).Click(IDC_ADD).OnWindow("Aggiungi").ExpectText(IDCANCEL, "&Chiudi");
    ui.SetText(IDC_LEVEL_EDIT, level).SetText(IDC_TIME_EDIT, time).Click(IDOK);
}

// Presses Enter on a control; in a list with a row it edits the row, elsewhere it means "Avanti".
void PressEnter(HWND control) {
    SetFocus(control);
    PostMessageW(control, WM_KEYDOWN, VK_RETURN, 1);
}

UiDriver& EditDay(UiDriver& ui, int row) {
    ui.OnWindow(kWeek, [row](HWND sheet) {
        Select(sheet, row);
        PressEnter(List(sheet));
    });
    return ui.OnWindow("Modifica");
}

void SelectRemembered(HWND dialog) {
    ListView_SetItemState(GetDlgItem(dialog, IDC_MEMORY_LIST), 0, LVIS_SELECTED, LVIS_SELECTED);
}

TEST_F(UncertaintyUiTest, AsksForTheLevelOnlyWhenItWasNotSampled) {
    UiDriver ui;
    ui.OnWindow(kStart).ExpectEach({IDC_MEASURED_LEVEL, IDC_INSTRUMENT_ERROR, IDC_GO_ON},
                                   IsWindowVisible, false);
    ui.Click(IDC_NOT_SAMPLED).SetText(IDC_MEASURED_LEVEL, "85.25").Click(IDC_GO_ON);
    ui.ExpectText(IDC_INSTRUMENT_ERROR, "0.70").Screenshot("uncertainty_start");
    ui.Click(IDC_SAMPLED).Click(IDC_NOT_SAMPLED).ExpectEach({IDC_GO_ON}, IsChecked, false);
    ui.Click(kNext).OnWindow(kResults).SetText(IDC_NOTES_EDIT, "nota").Click(kBack);
    ui.OnWindow(kStart).Click(IDC_GO_ON).Click(kNext);
    ui.OnWindow(kDay).Click(kBack).OnWindow(
        kStart, [this](HWND sheet) { EXPECT_EQ(tips_->served(), PageOf(sheet)); });
    ui.Click(IDC_SAMPLED).Click(kNext).OnWindow(kLevel).Press({VK_ESCAPE});
    Open();
    EXPECT_EQ(state_.measured_level_dba, 85.25);
    EXPECT_EQ(state_.notes, "nota");
}

TEST_F(UncertaintyUiTest, CarriesResultsFromPageToPage) {
    UiDriver ui;
    // The list has the focus, so that Ins adds to it.
    ui.OnWindow(kStart).Press({VK_RETURN}).OnWindow(kLevel).ExpectFocus(IDC_ITEM_LIST);
    AddSample(ui, "80", "x");
    AddSample(ui, "90", "6");
    ui.Expect(Rows, "80|x; 90|6").ExpectTexts(kLevelResults, " 90.8|9.49|9.51");
    ui.ExpectText(IDC_TOTAL_TIME, "     0").Choose(IDC_TIME_UNIT, 2);
    ui.ExpectTexts({IDC_TOTAL_TIME_LABEL, IDC_SAMPLED_TOTAL_TIME_LABEL},
                   "Tempo campionamento (h):|Tempo totale (h):");
    ui.Click(IDC_REMEMBER).AnswerMessage(kStored, kStoredText, IDOK).Click(IDC_GO_ON).Click(kNext);
    ui.OnWindow(kDay).Click(IDC_ADD).OnWindow("Aggiungi").Click(IDC_RECALL);
    ui.AnswerMessage("Errore", kNothingSelected, IDOK);
    ui.OnWindow("Aggiungi", SelectRemembered).ExpectText(IDC_DURATION_ERROR, "0");
    ui.ExpectEach({IDC_DURATION_ERROR}, IsWindowEnabled, false).Click(IDC_RECALL);
    ui.ExpectTexts({IDC_LEVEL_EDIT, IDC_LEVEL_ERROR}, "90.8|9.49").Click(IDC_ERROR_PERCENTAGE);
    ui.SetText(IDC_ERROR_PERCENT, "5").SetText(IDC_TIME_EDIT, "8");
    ui.ExpectText(IDC_DURATION_ERROR, "   0.40").OnWindow("Aggiungi", [](HWND dialog) {
        // The arrows of the percentage recompute, too.
        HWND arrows = GetDlgItem(dialog, IDC_ERROR_PERCENT_SPIN);
        for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
            SendMessageW(arrows, message, MK_LBUTTON, MAKELPARAM(4, 2));
        }
    });
    ui.ExpectTexts({IDC_ERROR_PERCENT, IDC_DURATION_ERROR}, "6|   0.48");
    ui.SetText(IDC_ERROR_MINIMUM, "0.5").ExpectText(IDC_DURATION_ERROR, "   0.50");
    ui.Screenshot("uncertainty_period").Click(IDOK).ExpectTexts(kDayResults, " 90.8|9.49|9.52");
    ui.ExpectText(IDC_TOTAL_TIME, "8.00").Click(IDC_REMEMBER);
    ui.AnswerMessage(kStored, kStoredText, IDOK).Click(IDC_GO_ON).Click(kNext);
    EditDay(ui, 1).ExpectText(IDC_DAY_NAME, "Martedi").OnWindow("Modifica", [](HWND dialog) {
        SelectRemembered(dialog);
        PressEnter(GetDlgItem(dialog, IDC_MEMORY_LIST));
    });
    ui.ExpectTexts({IDC_LEVEL_EDIT, IDC_LEVEL_ERROR}, "90.8|9.49").Click(IDOK);
    ui.ExpectTexts(kWeekResults, " 83.8|9.49|9.52")
        .Expect(Rows,
                "Lunedi|0.0|0.00; Martedi|90.8|9.49; Mercoledi|0.0|0.00; Giovedi|0.0|0.00; "
                "Venerdi|0.0|0.00; Sabato|0.0|0.00; Domenica|0.0|0.00");
    EditDay(ui, 1).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.ExpectTexts(kWeekResults, "  1.5|0.00|0.70").Click(kNext);
    // Back along the way that led here; what was typed is still as it was typed.
    ui.OnWindow(kResults).Click(kBack).OnWindow(kWeek).Click(kBack).OnWindow(kDay).Click(kBack);
    ui.OnWindow(kLevel).Expect(Rows, "80|x; 90|6").Click(IDC_GO_ON).Click(kNext);
    ui.OnWindow(kResults).Click(kFinish);
    Open();
    EXPECT_EQ(state_.remembered_levels.size() + state_.remembered_days.size(), 2U);
}

TEST_F(UncertaintyUiTest, TellsOfTooLongSamplingOnceAComputation) {
    constexpr char kCaption[] = "Errore nell'inserimento dei dati";
    constexpr char kText[] =
        "Il tempo totale è inferiore al tempo di campionamento: la correzione del tempo non verrà "
        "applicata!";
    UiDriver ui;
    ui.OnWindow(kStart).Click(kNext);
    AddSample(ui, "80", "5");
    AddSample(ui, "90", "5");
    ui.Click(IDC_TIME_CORRECTION).AnswerMessage(kCaption, kText, IDOK);
    // While the total is typed the results follow in silence.
    ui.SetText(IDC_SAMPLED_TOTAL_TIME, "1").SetText(IDC_SAMPLED_TOTAL_TIME, "10");
    ui.ExpectTexts(kLevelResults, " 90.8|0.00|0.70").ExpectText(IDC_TOTAL_TIME, "    10");
    ui.SetText(IDC_SAMPLED_TOTAL_TIME, "-3").Click(kNext).AnswerMessage(kCaption, kText, IDOK);
    ui.OnWindow(kResults).Click(kBack).OnWindow(kLevel).SetText(IDC_INSTRUMENT_ERROR, "abc");
    ui.ExpectTexts(kLevelResults, " 90.8|9.49|9.49").Press({VK_ESCAPE});
    Open();
}

TEST_F(UncertaintyUiTest, ALoadedFileStartsFromTheFirstPage) {
    const std::string stored = WriteFile("misura.ERR",
                                         "[TONVALE]\nTipo=err\n[SETTINGS]\nCAMPLEQ=1\nGO_ON_2=1\n"
                                         "TIMEFORM=9\n[LEQ]\nNUMITEM=1\nLEQ_0=85\n");
    UiDriver ui;
    ui.OnWindow(kStart).Click(IDC_NOT_SAMPLED).OnWindow(kStart, [=](HWND sheet) {
        Drop(PageOf(sheet), {stored});
    });
    ui.ExpectText(IDC_WIZARD_FILE, stored);
    ui.ExpectEach({IDC_INSTRUMENT_ERROR}, IsWindowVisible, false).Click(kNext).OnWindow(kLevel);
    ui.Expect(Rows, "85.0|0.0").ExpectTexts(kLevelResults, " 85.0|0.00|0.00");
    // Enter outside the list goes on.
    ui.ExpectText(IDC_TIME_UNIT, "").OnWindow(kLevel, [](HWND sheet) {
        PressEnter(ControlOf(sheet, IDC_INSTRUMENT_ERROR));
    });
    ui.OnWindow(kDay).ExpectTexts(kDayResults, "  0.0|0.00|0.00");
    ui.OnWindow(kDay, [=](HWND sheet) { Drop(PageOf(sheet), {stored}); });
    ui.OnWindow(kStart).Press({VK_ESCAPE});
    Open();
    EXPECT_EQ(state_.time_unit, 9);
}

}  // namespace
}  // namespace tonvale
