#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exposure/uncertainty_study.h"
#include "exposure/uncertainty_wizard_win.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/live_dialog.h"

namespace tonvale {
namespace {

using Texts = std::vector<std::string>;

constexpr char kStart[] = "Errore di misura";
constexpr char kLevel[] = "Errore sul livello equivalente";
constexpr char kDay[] = "Errore sul livello di esposizione personale quotidiano";
constexpr char kWeek[] = "Errore sul livello di esposizione personale settimanale";
constexpr char kResults[] = "Risultati del calcolo";
constexpr char kStored[] = "Operazione completata";
constexpr char kStoredText[] = "I valori sono stati memorizzati";

// Expects that the dialog, or the page in front, is well described and has room for its texts.
void Examine(HWND window) {
    const Dialog* dialog = DialogBehind(window);
    ASSERT_NE(dialog, nullptr);
    ExpectDescribed(*dialog);
    ExpectTextsFit(*dialog);
}

bool IsShown(HWND sheet, int control) {
    return IsWindowVisible(ControlOf(sheet, control)) != FALSE;
}

// Level, environmental error, total error.
std::string Results(HWND sheet, int level) {
    return TextsOf(sheet, {level, IDC_LEVEL_ERROR, IDC_TOTAL_ERROR});
}

class UncertaintyUiTest : public DialogTest {
  protected:
    void Open(const std::string& path = {}) { OpenUncertainty(app_, study_, owner_, path); }

    void AddSample(UiDriver& ui, const std::string& level, const std::string& time) {
        ui.OnWindow(kLevel).Click(IDC_ADD).OnWindow("Aggiungi", Examine);
        ui.ExpectText(IDCANCEL, "&Chiudi");
        ui.SetText(IDC_LEVEL_EDIT, level).SetText(IDC_TIME_EDIT, time).Click(IDOK);
        ui.WaitClosed("Aggiungi");
    }

    // Opens the dialog of a row by Enter, which elsewhere on the page means "Avanti".
    UiDriver& EditRow(UiDriver& ui, const char* page, int row) {
        ui.OnWindow(page, [row](HWND sheet) {
            Select(PageOf(sheet), row);
            SetFocus(List(PageOf(sheet)));
            PostMessageW(List(PageOf(sheet)), WM_KEYDOWN, VK_RETURN, 1);
        });
        return ui.OnWindow("Modifica");
    }

    UncertaintyStudy study_;
};

TEST_F(UncertaintyUiTest, AsksForTheLevelOnlyWhenItWasNotSampled) {
    UiDriver ui;
    ui.OnWindow(kStart, [this](HWND sheet) {
        EXPECT_EQ(tips_->served(), PageOf(sheet));
        for (const int control : {IDC_MEASURED_LEVEL, IDC_INSTRUMENT_ERROR, IDC_GO_ON}) {
            EXPECT_FALSE(IsShown(sheet, control));
        }
    });
    ui.Click(IDC_NOT_SAMPLED).OnWindow(kStart, [](HWND sheet) {
        Examine(sheet);
        EXPECT_EQ(TextsOf(sheet, {IDC_MEASURED_LEVEL, IDC_INSTRUMENT_ERROR}), " 0.00|0.70");
    });
    ui.SetText(IDC_MEASURED_LEVEL, "85.25").Click(IDC_GO_ON).Screenshot("uncertainty_start");
    ui.Click(IDC_SAMPLED).Click(IDC_NOT_SAMPLED).OnWindow(kStart, [](HWND sheet) {
        EXPECT_EQ(IsDlgButtonChecked(PageOf(sheet), IDC_GO_ON), BST_UNCHECKED);
    });
    ui.Click(kNext).OnWindow(kResults, [](HWND sheet) {
        EXPECT_TRUE(TextOf(sheet, IDC_RESULT_TEXT)
                        .starts_with("Il livello equivalente non è stato campionato.\r\n"
                                     "Il livello equivalente (LEQ) è  85.3 dBA.\r\n"));
    });
    ui.Screenshot("uncertainty_results").Click(kBack);
    ui.OnWindow(kStart).Click(IDC_GO_ON).Click(kNext).OnWindow(kDay).Click(kBack);
    ui.OnWindow(kStart).Click(IDC_SAMPLED).Click(kNext).OnWindow(kLevel).Press({VK_ESCAPE});
    Open();
}

TEST_F(UncertaintyUiTest, CarriesResultsFromPageToPage) {
    UiDriver ui;
    ui.OnWindow(kStart).Press({VK_RETURN}).OnWindow(kLevel, [](HWND sheet) {
        // The list has the focus, so that Ins adds to it.
        EXPECT_EQ(GetFocus(), List(PageOf(sheet)));
    });
    AddSample(ui, "80", "x");
    AddSample(ui, "90", "6");
    ui.OnWindow(kLevel, [](HWND sheet) {
        Examine(sheet);
        EXPECT_EQ(Rows(PageOf(sheet)), (Texts{"80 x x", "90 x 6"}));
        EXPECT_EQ(Results(sheet, IDC_EQUIVALENT_LEVEL), " 90.8|9.49|9.51");
        EXPECT_EQ(TextOf(sheet, IDC_TOTAL_TIME), "     0");
        Choose(sheet, IDC_TIME_UNIT, 2);
        EXPECT_EQ(TextOf(sheet, IDC_TOTAL_TIME_LABEL), "Tempo campionamento (h):");
        EXPECT_EQ(TextOf(sheet, IDC_SAMPLED_TOTAL_TIME_LABEL), "Tempo totale (h):");
    });
    ui.Click(IDC_REMEMBER).AnswerMessage(kStored, kStoredText, IDOK);
    ui.OnWindow(kLevel).Screenshot("uncertainty_level").Click(IDC_GO_ON).Click(kNext);
    ui.OnWindow(kDay).Click(IDC_ADD).OnWindow("Aggiungi").Click(IDC_RECALL);
    ui.AnswerMessage("Errore", kNothingSelected, IDOK);
    ui.OnWindow("Aggiungi", [](HWND dialog) {
        Examine(dialog);
        HWND memory = GetDlgItem(dialog, IDC_MEMORY_LIST);
        EXPECT_EQ(ListView_GetItemCount(memory), 1);
        ListView_SetItemState(memory, 0, LVIS_SELECTED, LVIS_SELECTED);
        EXPECT_EQ(TextOf(dialog, IDC_DURATION_ERROR), "0");
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_DURATION_ERROR)));
    });
    ui.Click(IDC_RECALL).ExpectText(IDC_LEVEL_EDIT, "90.8").ExpectText(IDC_LEVEL_ERROR, "9.49");
    ui.Click(IDC_ERROR_PERCENTAGE).SetText(IDC_ERROR_PERCENT, "5").SetText(IDC_TIME_EDIT, "8");
    ui.ExpectText(IDC_DURATION_ERROR, "   0.40").OnWindow("Aggiungi", [](HWND dialog) {
        // The arrows of the percentage recompute, too.
        SendDlgItemMessageW(dialog, IDC_ERROR_PERCENT_SPIN, WM_LBUTTONDOWN, MK_LBUTTON,
                            MAKELPARAM(4, 2));
        SendDlgItemMessageW(dialog, IDC_ERROR_PERCENT_SPIN, WM_LBUTTONUP, 0, MAKELPARAM(4, 2));
        EXPECT_EQ(TextOf(dialog, IDC_ERROR_PERCENT), "6");
    });
    ui.ExpectText(IDC_DURATION_ERROR, "   0.48").SetText(IDC_ERROR_MINIMUM, "0.5");
    ui.ExpectText(IDC_DURATION_ERROR, "   0.50").Screenshot("uncertainty_period").Click(IDOK);
    ui.WaitClosed("Aggiungi").OnWindow(kDay, [](HWND sheet) {
        Examine(sheet);
        EXPECT_EQ(Results(sheet, IDC_DAILY_LEVEL), " 90.8|9.49|9.52");
        EXPECT_EQ(TextOf(sheet, IDC_TOTAL_TIME), "8.00");
    });
    ui.Screenshot("uncertainty_day").Click(IDC_REMEMBER);
    ui.AnswerMessage(kStored, kStoredText, IDOK);
    ui.OnWindow(kDay).Click(IDC_GO_ON).Click(kNext);
    EditRow(ui, kWeek, 1).ExpectText(IDC_DAY_NAME, "Martedi").OnWindow("Modifica", [](HWND dialog) {
        Examine(dialog);
        HWND memory = GetDlgItem(dialog, IDC_MEMORY_LIST);
        ListView_SetItemState(memory, 0, LVIS_SELECTED, LVIS_SELECTED);
        SetFocus(memory);
        PostMessageW(memory, WM_KEYDOWN, VK_RETURN, 1);
    });
    ui.ExpectText(IDC_LEVEL_ERROR, "9.49").Screenshot("uncertainty_weekday").Click(IDOK);
    ui.WaitClosed("Modifica").OnWindow(kWeek, [](HWND sheet) {
        Examine(sheet);
        EXPECT_EQ(Rows(PageOf(sheet)).at(1), "Martedi x 90.8");
        EXPECT_EQ(Results(sheet, IDC_WEEKLY_LEVEL), " 83.8|9.49|9.52");
    });
    EditRow(ui, kWeek, 1).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.WaitClosed("Modifica").OnWindow(kWeek, [](HWND sheet) {
        EXPECT_EQ(Rows(PageOf(sheet)).at(1), "Martedi x 0.0");
    });
    ui.Screenshot("uncertainty_week").Click(kNext).OnWindow(kResults, [](HWND sheet) {
        EXPECT_TRUE(TextOf(sheet, IDC_RESULT_TEXT)
                        .starts_with("Il livello di esposizione "
                                     "personale settimanale (LEP,W)"));
    });
    // Back along the way that led here; what was typed is still as it was typed.
    ui.Click(kBack).OnWindow(kWeek).Click(kBack).OnWindow(kDay).Click(kBack);
    ui.OnWindow(kLevel, [](HWND sheet) { EXPECT_EQ(Rows(PageOf(sheet)).at(0), "80 x x"); });
    ui.Click(IDC_GO_ON).Click(kNext).OnWindow(kResults).Click(kFinish);
    Open();
    EXPECT_EQ(study_.remembered_levels.size() + study_.remembered_days.size(), 2U);
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
    ui.OnWindow(kLevel).Click(IDC_TIME_CORRECTION).AnswerMessage(kCaption, kText, IDOK);
    // While the total is typed the results follow in silence.
    ui.OnWindow(kLevel).SetText(IDC_SAMPLED_TOTAL_TIME, "1").Type(IDC_SAMPLED_TOTAL_TIME, "0");
    ui.OnWindow(kLevel, [](HWND sheet) {
        SetDlgItemTextW(PageOf(sheet), IDC_SAMPLED_TOTAL_TIME, L"10");
        EXPECT_EQ(Results(sheet, IDC_EQUIVALENT_LEVEL), " 90.8|0.00|0.70");
        EXPECT_EQ(TextOf(sheet, IDC_TOTAL_TIME), "    10");
        SetDlgItemTextW(PageOf(sheet), IDC_SAMPLED_TOTAL_TIME, L"-3");
    });
    ui.Click(kNext).AnswerMessage(kCaption, kText, IDOK).OnWindow(kResults).Click(kBack);
    ui.OnWindow(kLevel).SetText(IDC_INSTRUMENT_ERROR, "abc").OnWindow(kLevel, [](HWND sheet) {
        EXPECT_EQ(Results(sheet, IDC_EQUIVALENT_LEVEL), " 90.8|9.49|9.49");
    });
    ui.Press({VK_ESCAPE});
    Open();
}

TEST_F(UncertaintyUiTest, ALoadedFileStartsFromTheFirstPage) {
    const std::string stored = WriteFile(
        "misura.ERR",
        "[TONVALE]\r\nTipo=err\r\n[SETTINGS]\r\nCAMPLEQ=1\r\nGO_ON_2=1\r\nTIMEFORM=9\r\n[LEQ]\r\n"
        "NUMITEM=2000000000\r\nLEQ_0=85\r\n[LEPD]\r\nNUMITEM=1\r\nLEQ_0=-80\r\nTIME_0=-5\r\n");
    const std::string other = WriteFile("altro.err", "[TONVALE]\r\nTipo=LEPD\r\n");
    UiDriver ui;
    ui.OnWindow(kStart).Click(IDC_NOT_SAMPLED).OnWindow(kStart, [=](HWND sheet) {
        Drop(PageOf(sheet), {other});
        EXPECT_EQ(TextOf(sheet, IDC_WIZARD_FILE), kNoFile);
        Drop(PageOf(sheet), {stored});
        EXPECT_EQ(TextOf(sheet, IDC_WIZARD_FILE), stored);
        EXPECT_FALSE(IsShown(sheet, IDC_INSTRUMENT_ERROR));
    });
    ui.Click(kNext).OnWindow(kLevel, [=](HWND sheet) {
        EXPECT_EQ(Rows(PageOf(sheet)), Texts{"85.0 x 0.0"});
        EXPECT_EQ(Results(sheet, IDC_EQUIVALENT_LEVEL), " 85.0|0.00|0.00");
        EXPECT_EQ(TextOf(sheet, IDC_TIME_UNIT), "");
    });
    // Enter outside the list goes on.
    ui.OnWindow(kLevel, [](HWND sheet) {
        SetFocus(ControlOf(sheet, IDC_INSTRUMENT_ERROR));
        PostMessageW(ControlOf(sheet, IDC_INSTRUMENT_ERROR), WM_KEYDOWN, VK_RETURN, 1);
    });
    ui.OnWindow(kDay, [=](HWND sheet) {
        EXPECT_EQ(Results(sheet, IDC_DAILY_LEVEL), "  0.0|0.00|0.00");
        Drop(PageOf(sheet), {stored});
    });
    ui.OnWindow(kStart).Press({VK_ESCAPE});
    Open();
    EXPECT_EQ(study_.time_unit, 9);
}

}  // namespace
}  // namespace tonvale
