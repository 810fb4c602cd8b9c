// What is particular to the dialog LEQGROUP.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "exposure/group_exposure.h"
#include "exposure/group_exposure_dialog.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using GroupExposureUiTest = OneCalculatorTest<GroupExposureState, OpenGroupExposure>;

constexpr char kTitle[] = "Livello equivalente per gruppi di lavoratori";
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
    ui.OnWindow(kTitle).ExpectTexts({IDC_TOTAL_WORKERS, IDC_CONFIDENCE, IDC_INTERVAL}, "10|95|2");
    ui.Expect(Results, hidden + kNeeded).Choose(IDC_INTERVAL, 2);
    ui.Expect(Results, std::string("3|87.0| 2.0|") + kEnough).Choose(IDC_CONFIDENCE, 3);
    ui.Expect(Results, hidden + kMoreNeeded).Choose(IDC_CONFIDENCE, 1).Choose(IDC_INTERVAL, 1);
    ui.Click(IDC_ADD).OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "90");
    ui.SetText(IDC_LEVEL_EDIT, "87")
        .Click(IDOK)
        .Expect(Results, std::string("4|87.0| 1.6|") + kEnough);
    ui.OnWindow(kTitle, [](HWND dialog) { Select(dialog, 0); }).Click(IDC_DELETE);
    ui.OnWindow("Elimina").ExpectText(IDC_LEVEL_EDIT, "85.0").Click(IDOK);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(SelectedRow(dialog), 0);  // what has come to its place
    });
    ui.Click(IDC_ADD).OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "87").Click(IDCANCEL);
    ui.Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(state_.levels_dba, (std::vector<double>{87, 89, 87}));
}

TEST_F(GroupExposureUiTest, ASampleIsALevelAlone) {
    state_.levels_dba = {85};
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) { DoubleClick(dialog, 0); });
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
    ui.OnWindow(kTitle).Expect(Results, before).SetText(IDC_TOTAL_WORKERS, "");
    expect_warning().Type(IDC_TOTAL_WORKERS, "a1");
    expect_warning().Type(IDC_TOTAL_WORKERS, "2").Expect(Results, before);
    ui.ExpectText(IDC_TOTAL_WORKERS, "12").SetText(IDC_TOTAL_WORKERS, "3");
    expect_warning().Expect(Results, before).Command(CMD_FILE_CLOSE);
    Open();
    // The kept total is told again, over the visible dialog.
    expect_warning().OnWindow(kTitle).Command(IDCANCEL);
    Open();
}

}  // namespace

}  // namespace tonvale
