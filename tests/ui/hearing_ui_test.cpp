// The predictions of hearing loss: dialogs NIPTS, CONFRONTO, PEPPECUR and RISK, and their views in
// the main window.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "common/canvas.h"
#include "resources/resource.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Previsioni ISO 1999/90";
constexpr char kRiskTitle[] = "Rischio di danno uditivo";
constexpr char kInvalid[] = "Errore! Dati non validi";

class HearingUiTest : public MainWindowTest {
  protected:
    static void Open(UiDriver& ui, int command, const char* title = kTitle) {
        ui.OnWindowOfClass(kMainClass).Command(command);
        ui.OnWindow(title);
    }
    // Expects that the next key typed replaces what the field holds.
    static void ExpectSelected(UiDriver& ui, int field, const char* title = kTitle) {
        ui.OnWindow(title, [field](HWND dialog) {
            HWND edit = GetDlgItem(dialog, field);
            EXPECT_EQ(GetFocus(), edit);
            EXPECT_EQ(SendMessageW(edit, EM_GETSEL, 0, 0),
                      MAKELRESULT(0, GetWindowTextLengthW(edit)));
        });
    }
};

TEST_F(HearingUiTest, EveryQuantityEnablesWhatEntersIt) {
    // One control of each group.
    const auto expect_enabled = [](HWND dialog, bool noise, bool person) {
        EXPECT_EQ(IsWindowEnabled(GetDlgItem(dialog, IDC_EXPOSURE_LEVEL)), noise);
        EXPECT_EQ(IsWindowEnabled(GetDlgItem(dialog, IDC_MALE)), person);
        EXPECT_EQ(IsWindowEnabled(GetDlgItem(dialog, IDC_TABLE_NEW)), person);
    };
    UiDriver ui;
    Open(ui, CMD_HTLAN);
    ui.OnWindow(kTitle, [&](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_EXPOSURE_YEARS), " 35");
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_EXPOSURE_YEARS));
        expect_enabled(dialog, true, true);
    });
    ui.Screenshot("nipts_dialog").Click(IDC_NIPTS).OnWindow(kTitle, [&](HWND dialog) {
        expect_enabled(dialog, true, false);
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "Noise Induced Permanent Threshold Shift");
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    // Opened for HTLA, the age is what is typed first.
    Open(ui, CMD_HTLA);
    ui.OnWindow(kTitle, [&](HWND dialog) {
        expect_enabled(dialog, false, true);
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_AGE));
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    RunToEnd(ui);
}

TEST_F(HearingUiTest, ShowsTheLossesOfOnePerson) {
    UiDriver ui;
    Open(ui, CMD_HTLAN);
    ui.SetText(IDC_EXPOSURE_YEARS, "41").SetText(IDC_EXPOSURE_LEVEL, "100").SetText(IDC_AGE, "58");
    ui.Click(IDOK).AnswerMessage("Anni di esposizione.", kInvalid, IDOK);
    ExpectSelected(ui, IDC_EXPOSURE_YEARS);
    // Each refused field is the one to be typed anew.
    ui.SetText(IDC_EXPOSURE_YEARS, "40").SetText(IDC_EXPOSURE_LEVEL, "101").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione.", kInvalid, IDOK);
    ExpectSelected(ui, IDC_EXPOSURE_LEVEL);
    ui.SetText(IDC_EXPOSURE_LEVEL, "100").SetText(IDC_AGE, "57").Click(IDOK);
    ui.AnswerMessage("Età individuo.", kInvalid, IDOK);
    ExpectSelected(ui, IDC_AGE);
    ui.SetText(IDC_AGE, "58");
    ui.Click(IDC_TABLE_BIOLOGICAL).Click(IDC_FEMALE).Click(IDOK);
    ui.WaitClosed(kTitle).OnWindowOfClass(kMainClass, [](HWND) {
        const std::string table = TheProgram().results().result()->table_text(";");
        EXPECT_NE(table.find("Sesso: F;Tabella: Biologico"), std::string::npos) << table;
        EXPECT_EQ(TextOf(Main(), IDC_STATUS_BAR),
                  "HTLAN, 40 anni, 100 dBA, età 58, sesso F, tabella Biologico");
    });
    // What was confirmed comes back.
    Open(ui, CMD_HTLA);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_AGE), " 58");
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_FEMALE));
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_TABLE_BIOLOGICAL));
    });
    // Clicks are remembered, but change nothing of what is shown until they are confirmed.
    ui.Click(IDC_TABLE_OLD).Click(IDC_MALE).Click(IDCANCEL).WaitClosed(kTitle);
    ui.OnWindowOfClass(kMainClass, [](HWND) {
        const std::string table = TheProgram().results().result()->table_text(";");
        EXPECT_NE(table.find("Sesso: F;Tabella: Biologico"), std::string::npos) << table;
    });
    Open(ui, CMD_HTLAN);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_MALE));
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_TABLE_OLD));
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    RunToEnd(ui);
}

TEST_F(HearingUiTest, ShowsTheLossesOverYearsAndLevels) {
    UiDriver ui;
    Open(ui, CMD_PREDICTIONS);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_FRACTILE_LIST), "10");
        EXPECT_EQ(TextOf(dialog, IDC_FREQUENCY_LIST), "4000");
        EXPECT_EQ(TextOf(dialog, IDC_EXPOSURE_LEVEL), " 88");
        SendDlgItemMessageW(dialog, IDC_FRACTILE_LIST, CB_SETCURSEL, 9, 0);
    });
    ui.Screenshot("confronto_dialog");
    ui.SetText(IDC_EXPOSURE_LEVEL, "89").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione.", kInvalid, IDOK);
    ExpectSelected(ui, IDC_EXPOSURE_LEVEL);
    ui.SetText(IDC_EXPOSURE_LEVEL, "85").Click(IDOK);
    ui.WaitClosed(kTitle).OnWindowOfClass(kMainClass).Command(CMD_VIEW_CHART);
    ui.OnWindowOfClass(kMainClass, [](HWND window) {
        EXPECT_EQ(TheProgram().state().loss_comparison.base.fractile, 50 * 0.01);
        // A chart that is shrunk to nothing draws nothing.
        ShowWindow(window, SW_RESTORE);
        SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOZORDER);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    });
    RunToEnd(ui);
}

// What the user does to choose an item of a list.
void Choose(HWND dialog, int list, int position) {
    SendDlgItemMessageW(dialog, list, CB_SETCURSEL, static_cast<WPARAM>(position), 0);
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, list)));
}

TEST_F(HearingUiTest, ShowsTheRiskOfAPopulation) {
    UiDriver ui;
    Open(ui, CMD_RISK, kRiskTitle);
    ui.OnWindow(kRiskTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_EXPOSURE_YEARS) + TextOf(dialog, IDC_AGE), " 35 60");
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "ISO 1999/90: ((1kHz + 2kHz + 4kHz) / 3) > 27");
        for (const int hidden : {IDC_FIXED_AGE, IDC_FIXED_LEVEL, IDC_FIXED_VALUE}) {
            EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, hidden)));
        }
        Choose(dialog, IDC_CRITERION_LIST, 6);
        EXPECT_EQ(TextOf(dialog, IDC_CRITERION_LIST), "Danno biologico zero");
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "Danno biologico > 0%");
    });
    ui.SetText(IDC_AGE, "52").Click(IDOK);
    ui.AnswerMessage("Età individuo.", kInvalid, IDOK);
    ExpectSelected(ui, IDC_AGE, kRiskTitle);
    ui.OnWindow(kRiskTitle, [](HWND dialog) { Choose(dialog, IDC_CRITERION_LIST, -1); });
    ui.Click(IDOK).AnswerMessage("Criterio di danno.", kInvalid, IDOK);
    ui.OnWindow(kRiskTitle, [](HWND dialog) {
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_CRITERION_LIST));
        Choose(dialog, IDC_CRITERION_LIST, 3);
    });
    ui.SetText(IDC_AGE, "60").Click(IDOK);
    ui.WaitClosed(kRiskTitle).OnWindowOfClass(kMainClass, [](HWND) {
        EXPECT_FALSE(TheProgram().views().CanShow(ViewKind::kAudiogram));
        EXPECT_EQ(TextOf(Main(), IDC_STATUS_BAR),
                  "Rischio, 35 anni, 90 dBA, età 60, sesso M, INAIL Vecchia Tabella");
    });
    // What is not confirmed is forgotten.
    Open(ui, CMD_RISK, kRiskTitle);
    ui.SetText(IDC_EXPOSURE_YEARS, "10").Click(IDC_FEMALE).Click(IDCANCEL).WaitClosed(kRiskTitle);
    Open(ui, CMD_RISK, kRiskTitle);
    ui.OnWindow(kRiskTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_EXPOSURE_YEARS), " 35");
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_MALE));
        EXPECT_EQ(TextOf(dialog, IDC_CRITERION_LIST), "INAIL Vecchia Tabella");
    });
    ui.Click(IDCANCEL).WaitClosed(kRiskTitle);
    RunToEnd(ui);
}

TEST_F(HearingUiTest, FollowsTheDamageOfAWorker) {
    UiDriver ui;
    Open(ui, CMD_DAMAGE_EVOLUTION);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_FRACTILE_LIST) + TextOf(dialog, IDC_AGE), "15 18");
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR),
                  "Evoluzione del danno causato dall'età e dal rumore");
        Choose(dialog, IDC_FRACTILE_LIST, 16);
    });
    ui.SetText(IDC_AGE, "69").Click(IDOK);
    ui.AnswerMessage("Età di inizio esposizione.", kInvalid, IDOK);
    ExpectSelected(ui, IDC_AGE);
    ui.SetText(IDC_AGE, "20").Click(IDC_TABLE_OLD).Click(IDOK);
    ui.WaitClosed(kTitle).OnWindowOfClass(kMainClass, [](HWND) {
        const std::string table = TheProgram().results().result()->table_text(";");
        EXPECT_NE(table.find("Tabella: Vecchia\r\nAnni;5 %;50 %;95 %;90 %"), std::string::npos)
            << table;
    });
    // The dialogs do not share their cases.
    Open(ui, CMD_HTLAN);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_AGE), " 60");
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_TABLE_NEW));
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    RunToEnd(ui);
}

}  // namespace
}  // namespace tonvale
