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

using Texts = std::vector<std::string>;

constexpr char kTitle[] = "Livello equivalente per gruppi di lavoratori";
constexpr char kFourNeeded[] = "Per validare i risultati è necessario inserire almeno 4 campioni";
constexpr char kEnough[] = "Sono stati inseriti i campioni necessari per validare i risultati";
constexpr char kSmallGroupCaption[] = "Attenzione: dato incompleto o mancante";
constexpr char kSmallGroup[] = "Inserire un valore maggiore di 3 per il totale dei lavoratori";

// Count, mean and deviation, which are marked when hidden, and the verdict.
std::string Results(HWND dialog) {
    std::string results = TextOf(dialog, IDC_SAMPLE_COUNT);
    for (const int control : {IDC_EQUIVALENT_LEVEL, IDC_STANDARD_DEVIATION}) {
        const bool shown = IsWindowVisible(GetDlgItem(dialog, control)) != FALSE;
        results += (shown ? "|" : "|(hidden)") + TextOf(dialog, control);
    }
    return results + "|" + TextOf(dialog, IDC_RESULT_TEXT);
}

class GroupExposureUiTest : public DialogTest {
  protected:
    void Open() { OpenGroupExposure(app_, state_, owner_, {}); }

    GroupExposureState state_;
};

TEST_F(GroupExposureUiTest, HidesMeanAndDeviationUntilThereAreSamplesEnough) {
    state_.levels_dba = {85, 87, 89};
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextsOf(dialog, {IDC_TOTAL_WORKERS, IDC_CONFIDENCE, IDC_INTERVAL}), "10|95|2");
        EXPECT_EQ(Results(dialog), std::string("3|(hidden)87.0|(hidden) 2.0|") + kFourNeeded);
        Choose(dialog, IDC_INTERVAL, 2);
        EXPECT_EQ(Results(dialog), std::string("3|87.0| 2.0|") + kEnough);
        Choose(dialog, IDC_CONFIDENCE, 3);
        EXPECT_NE(TextOf(dialog, IDC_RESULT_TEXT), kEnough);
        Choose(dialog, IDC_CONFIDENCE, 1);
        Choose(dialog, IDC_INTERVAL, 1);
    });
    ui.Click(IDC_ADD).OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "90");
    ui.SetText(IDC_LEVEL_EDIT, "87").Click(IDOK).WaitClosed("Aggiungi");
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Results(dialog), std::string("4|87.0| 1.6|") + kEnough);
        Select(dialog, 0);
    });
    ui.Click(IDC_DELETE).OnWindow("Elimina", [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "85.0");
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, IDC_TIME_EDIT)));
    });
    ui.Click(IDOK).AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.WaitClosed("Elimina").OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(SelectedRow(dialog), 0);  // what has come to its place
    });
    ui.Click(IDC_ADD);
    ui.OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "87").Click(IDCANCEL).WaitClosed("Aggiungi");
    ui.OnWindow(kTitle).Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(state_.levels_dba, (std::vector<double>{87, 89, 87}));
}

TEST_F(GroupExposureUiTest, ASampleIsALevelAlone) {
    const std::string spectrum = WriteFile("rumore.SPR", "[TONVALE]\r\nTipo=spr\r\nLAEQ=91.25\r\n");
    state_.levels_dba = {85};
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) { DoubleClick(dialog, 0); });
    ui.OnWindow("Modifica", [=](HWND dialog) {
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_LEVEL_EDIT));
        // The buttons have moved up to it.
        RECT area{};
        RECT client{};
        GetWindowRect(GetDlgItem(dialog, IDOK), &area);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
        GetClientRect(dialog, &client);
        EXPECT_LT(area.bottom, client.bottom);
        Drop(dialog, {spectrum});
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "91.25");
    });
    ui.Screenshot("add_lepd_group").SetText(IDC_LEVEL_EDIT, "abc").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.OnWindow("Modifica").SetText(IDC_LEVEL_EDIT, "-1").Click(IDOK).WaitClosed("Modifica");
    ui.OnWindow(kTitle, [](HWND dialog) { EXPECT_EQ(Cell(dialog, 0, 0), "-1"); });
    ui.Command(IDCANCEL);
    Open();
}

TEST_F(GroupExposureUiTest, WarnsOfSmallGroupsAtEveryKeystroke) {
    state_.levels_dba = {85, 85, 85};
    const std::string before = std::string("3|85.0| 0.0|") + kEnough;
    UiDriver ui;
    ui.OnWindow(kTitle, [=](HWND dialog) { EXPECT_EQ(Results(dialog), before); });
    ui.SetText(IDC_TOTAL_WORKERS, "").AnswerMessage(kSmallGroupCaption, kSmallGroup, IDOK);
    ui.OnWindow(kTitle).Type(IDC_TOTAL_WORKERS, "a1");
    ui.AnswerMessage(kSmallGroupCaption, kSmallGroup, IDOK);
    ui.OnWindow(kTitle).Type(IDC_TOTAL_WORKERS, "2").OnWindow(kTitle, [=](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_TOTAL_WORKERS), "12");
        EXPECT_EQ(Results(dialog), before);
    });
    ui.SetText(IDC_TOTAL_WORKERS, "3").AnswerMessage(kSmallGroupCaption, kSmallGroup, IDOK);
    ui.OnWindow(kTitle, [=](HWND dialog) { EXPECT_EQ(Results(dialog), before); });
    ui.Command(CMD_FILE_CLOSE);
    Open();
    // The kept total is told again, over the visible dialog.
    ui.AnswerMessage(kSmallGroupCaption, kSmallGroup, IDOK).OnWindow(kTitle).Command(IDCANCEL);
    Open();
}

}  // namespace

}  // namespace tonvale
