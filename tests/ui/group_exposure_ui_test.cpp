#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialogs/handles_win.h"
#include "exposure/group_exposure.h"
#include "exposure/group_exposure_dialog.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using Texts = std::vector<std::string>;

constexpr char kTitle[] = "Livello equivalente per gruppi di lavoratori";
constexpr char kTooFew[] = "Per far partire il calcolo è necessario inserire almeno 3 campioni";
constexpr char kFourNeeded[] = "Per validare i risultati è necessario inserire almeno 4 campioni";
constexpr char kEnough[] = "Sono stati inseriti i campioni necessari per validare i risultati";
constexpr char kSmallGroupCaption[] = "Attenzione: dato incompleto o mancante";
constexpr char kSmallGroup[] = "Inserire un valore maggiore di 3 per il totale dei lavoratori";

Texts Samples(HWND dialog) {
    Texts samples;
    for (int i = 0; i < ListView_GetItemCount(List(dialog)); ++i) {
        samples.push_back(Cell(dialog, i, 0));
    }
    return samples;
}

// Count, mean and deviation, which are marked when hidden, and the verdict.
std::string Results(HWND dialog) {
    std::string results = TextOf(dialog, IDC_SAMPLE_COUNT);
    for (const int control : {IDC_EQUIVALENT_LEVEL, IDC_STANDARD_DEVIATION}) {
        const bool shown = IsWindowVisible(GetDlgItem(dialog, control)) != FALSE;
        results += (shown ? "|" : "|(hidden)") + TextOf(dialog, control);
    }
    return results + "|" + TextOf(dialog, IDC_RESULT_TEXT);
}

void Choose(HWND dialog, int combo, int item) {
    SendDlgItemMessageW(dialog, combo, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(combo, CBN_SELCHANGE), 0);
}

class GroupExposureUiTest : public DialogTest {
  protected:
    void Open(const std::string& path = {}) { OpenGroupExposure(app_, state_, owner_, path); }

    // What the dialog of a sample shows first, and what is typed over it.
    void AddSample(UiDriver& ui, const std::string& shown, const std::string& level) {
        ui.OnWindow(kTitle).Click(IDC_ADD);
        ui.OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, shown).SetText(IDC_LEVEL_EDIT, level);
        ui.Click(IDOK).WaitClosed("Aggiungi");
    }

    GroupExposureState state_;
};

TEST_F(GroupExposureUiTest, HidesMeanAndDeviationUntilThereAreSamplesEnough) {
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_TOTAL_WORKERS), "10");
        EXPECT_EQ(TextOf(dialog, IDC_CONFIDENCE) + "/" + TextOf(dialog, IDC_INTERVAL), "95/2");
        EXPECT_EQ(Results(dialog), std::string("0|(hidden) nan|(hidden) nan|") + kTooFew);
        const WindowDc device(dialog);
        SendMessageW(dialog, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(device.get()),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDC_TOTAL_WORKERS)));
        EXPECT_EQ(GetTextColor(device.get()), RGB(255, 0, 0));
        EXPECT_EQ(GetBkColor(device.get()), RGB(255, 255, 0));
    });
    AddSample(ui, "90", "85");
    AddSample(ui, "85", "87");
    AddSample(ui, "87", "89");
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Results(dialog), std::string("3|(hidden)87.0|(hidden) 2.0|") + kFourNeeded);
        Choose(dialog, IDC_INTERVAL, 2);
        EXPECT_EQ(Results(dialog), std::string("3|87.0| 2.0|") + kEnough);
        Choose(dialog, IDC_CONFIDENCE, 3);
        EXPECT_NE(TextOf(dialog, IDC_RESULT_TEXT), kEnough);
        Choose(dialog, IDC_CONFIDENCE, 1);
        Choose(dialog, IDC_INTERVAL, 1);
    });
    AddSample(ui, "89", "87");
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Results(dialog), std::string("4|87.0| 1.6|") + kEnough);
        Select(dialog, 0);
    });
    ui.Screenshot("leqgroup").Click(IDC_DELETE).OnWindow("Elimina", [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "85");
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, IDC_TIME_EDIT)));
    });
    ui.Click(IDOK).AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.WaitClosed("Elimina").OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Samples(dialog), (Texts{"87", "89", "87"}));
        EXPECT_EQ(SelectedRow(dialog), 0);
    });
    ui.Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(state_.levels_dba, (std::vector<double>{87, 89, 87}));
}

TEST_F(GroupExposureUiTest, ASampleIsALevelAlone) {
    const std::string spectrum = WriteFile("rumore.SPR", "[TONVALE]\r\nTipo=spr\r\nLAEQ=91.25\r\n");
    const std::string daily = WriteFile("misura.lep", "[TONVALE]\r\nTipo=LEPD\r\nLEPD=2\r\n");
    state_.levels_dba = {85};
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) { DoubleClick(dialog, 0); });
    ui.OnWindow("Modifica", [=](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "85.0");
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_LEVEL_EDIT));
        RECT area{};
        RECT client{};
        GetWindowRect(GetDlgItem(dialog, IDOK), &area);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
        GetClientRect(dialog, &client);
        EXPECT_LT(area.bottom, client.bottom);
        Drop(dialog, {daily});
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "85.0");
        Drop(dialog, {spectrum});
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "91.25");
    });
    ui.Screenshot("add_lepd_group").SetText(IDC_LEVEL_EDIT, "abc").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.OnWindow("Modifica").SetText(IDC_LEVEL_EDIT, "-1").Click(IDOK).WaitClosed("Modifica");
    ui.OnWindow(kTitle, [](HWND dialog) { EXPECT_EQ(Samples(dialog), Texts{"-1"}); });
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

TEST_F(GroupExposureUiTest, AnOpenedFileIsComputedOnce) {
    const std::string stored = WriteFile(
        "gruppo.LEG",
        "[TONVALE]\r\nTipo=leg\r\nSAMPLES=9\r\nLEQGROUP=70.0\r\nDEVST=9.9\r\nTOTLAV=12.9\r\n"
        "FIDUCIA=7\r\nCONFIDENZA=2\r\nITEMS=2000000000\r\n[LEQ]\r\n1=85\r\n2=87\r\n4=89\r\n");
    const std::string zero =
        WriteFile("zero.leg",
                  "[TONVALE]\r\nTipo=LEG\r\nSAMPLES=9\r\nLEQGROUP=70.0\r\nITEMS=2\r\n[LEQ]\r\n"
                  "1=85\r\n2=x\r\n");
    UiDriver ui;
    ui.OnWindow(kTitle).Command(CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, stored);
    ui.WaitClosed(kOpenTitle).OnWindow(kTitle, [=](HWND dialog) {
        EXPECT_EQ(Samples(dialog), (Texts{"85", "87", "89"}));
        EXPECT_EQ(TextOf(dialog, IDC_TOTAL_WORKERS), "12");
        EXPECT_EQ(TextOf(dialog, IDC_CONFIDENCE) + "/" + TextOf(dialog, IDC_INTERVAL), "/3");
        EXPECT_EQ(Results(dialog), std::string("3|87.0| 2.0|") + kEnough);  // t = 0
        Drop(dialog, {zero});
    });
    ui.AnswerMessage("Errore", "Errore nei valori!", IDOK);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Results(dialog), std::string("9|70.0| 2.0|") + kEnough);
        EXPECT_EQ(Status(dialog), "zero.leg");
    });
    ui.Command(CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, zero);
    ui.AnswerMessage("Errore", "Errore nei valori!", IDOK).OnWindow(kTitle);
    ui.Command(CMD_FILE_CLOSE);
    Open();
}

}  // namespace
}  // namespace tonvale
