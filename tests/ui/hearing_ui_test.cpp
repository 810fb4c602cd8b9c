// What is particular to the dialogs of hearing loss: NIPTS, CONFRONTO, PEPPECUR and RISK.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

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
    static UiDriver& Open(UiDriver& ui, int command, const char* title = kTitle) {
        ui.OnWindowOfClass(kMainClass).Command(command);
        return ui.OnWindow(title);
    }
    // The table that is shown holds the text.
    static UiDriver& ExpectShown(UiDriver& ui, const std::string& text) {
        return ui.OnWindowOfClass(kMainClass, [text](HWND) {
            const std::string table = TheProgram().results().result()->table_text(";");
            EXPECT_NE(table.find(text), std::string::npos) << table;
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
    Open(ui, CMD_HTLAN).OnWindow(kTitle, [&](HWND dialog) {
        expect_enabled(dialog, true, true);
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_EXPOSURE_YEARS));
    });
    ui.Click(IDC_NIPTS).OnWindow(kTitle, [&](HWND dialog) {
        expect_enabled(dialog, true, false);
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "Noise Induced Permanent Threshold Shift");
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    // Opened for HTLA, the age is what is typed first.
    Open(ui, CMD_HTLA).OnWindow(kTitle, [&](HWND dialog) {
        expect_enabled(dialog, false, true);
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_AGE));
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    RunToEnd(ui);
}

TEST_F(HearingUiTest, ARefusedFieldIsToBeTypedAnew) {
    struct Field {
        int control;
        const char* refused;
        const char* caption;
        const char* accepted;
    };
    const struct {
        int command;
        const char* title;
        std::vector<Field> fields;
    } dialogs[] = {
        {CMD_HTLAN,
         kTitle,
         {{IDC_EXPOSURE_YEARS, "41", "Anni di esposizione.", "40"},
          {IDC_EXPOSURE_LEVEL, "101", "Livello di esposizione.", "100"},
          {IDC_AGE, "57", "Età individuo.", "58"}}},
        {CMD_PREDICTIONS, kTitle, {{IDC_EXPOSURE_LEVEL, "89", "Livello di esposizione.", "85"}}},
        {CMD_RISK, kRiskTitle, {{IDC_AGE, "52", "Età individuo.", "60"}}},
        {CMD_DAMAGE_EVOLUTION, kTitle, {{IDC_AGE, "69", "Età di inizio esposizione.", "20"}}},
    };
    UiDriver ui;
    for (const auto& [command, title, fields] : dialogs) {
        Open(ui, command, title);
        for (const Field& field : fields) {
            ui.SetText(field.control, field.refused).Click(IDOK);
            ui.AnswerMessage(field.caption, kInvalid, IDOK);
            ui.OnWindow(title, [control = field.control](HWND dialog) {
                ExpectAllSelected(GetDlgItem(dialog, control));
            });
            ui.SetText(field.control, field.accepted);
        }
        ui.Click(IDOK).WaitClosed(title);
    }
    RunToEnd(ui);
}

TEST_F(HearingUiTest, RemembersClicksAndShowsWhatIsConfirmed) {
    UiDriver ui;
    Open(ui, CMD_HTLAN).SetText(IDC_AGE, "58").Click(IDC_TABLE_BIOLOGICAL).Click(IDC_FEMALE);
    ui.Click(IDOK).WaitClosed(kTitle);
    ExpectShown(ui, "Sesso: F;Tabella: Biologico");
    Open(ui, CMD_HTLA).ExpectText(IDC_AGE, " 58").OnWindow(kTitle, [](HWND dialog) {
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_FEMALE));
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_TABLE_BIOLOGICAL));
    });
    // Clicks are remembered, but change nothing of what is shown until they are confirmed.
    ui.Click(IDC_TABLE_OLD).Click(IDC_MALE).Click(IDCANCEL).WaitClosed(kTitle);
    ExpectShown(ui, "Sesso: F;Tabella: Biologico");
    Open(ui, CMD_HTLAN).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_MALE));
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_TABLE_OLD));
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    // The dialogs do not share their cases.
    Open(ui, CMD_DAMAGE_EVOLUTION).ExpectText(IDC_AGE, " 18").OnWindow(kTitle, [](HWND dialog) {
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_TABLE_NEW));
        Choose(dialog, IDC_FRACTILE_LIST, 16);
    });
    ui.Click(IDC_TABLE_OLD).Click(IDOK).WaitClosed(kTitle);
    ExpectShown(ui, "Tabella: Vecchia\r\nAnni;5 %;50 %;95 %;90 %");
    Open(ui, CMD_PREDICTIONS).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextsOf(dialog, {IDC_FRACTILE_LIST, IDC_FREQUENCY_LIST}), "10|4000");
        Choose(dialog, IDC_FRACTILE_LIST, 9);
    });
    ui.Click(IDOK).WaitClosed(kTitle);
    ExpectShown(ui, "Frattile: 50 %")
        .Command(CMD_VIEW_CHART)
        .OnWindowOfClass(kMainClass, [](HWND window) {
            // A chart that is shrunk to nothing draws nothing.
            ShowWindow(window, SW_RESTORE);
            SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOZORDER);
            RedrawWindow(window, nullptr, nullptr,
                         RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        });
    RunToEnd(ui);
}

TEST_F(HearingUiTest, TheRiskFollowsACriterion) {
    UiDriver ui;
    Open(ui, CMD_RISK, kRiskTitle).OnWindow(kRiskTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "ISO 1999/90: ((1kHz + 2kHz + 4kHz) / 3) > 27");
        for (const int hidden : {IDC_FIXED_AGE, IDC_FIXED_LEVEL, IDC_FIXED_VALUE}) {
            EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, hidden)));
        }
        Choose(dialog, IDC_CRITERION_LIST, 6);
        EXPECT_EQ(TextsOf(dialog, {IDC_CRITERION_LIST, IDC_STATUS_BAR}),
                  "Danno biologico zero|Danno biologico > 0%");
        Choose(dialog, IDC_CRITERION_LIST, -1);
    });
    ui.Click(IDOK).AnswerMessage("Criterio di danno.", kInvalid, IDOK);
    ui.OnWindow(kRiskTitle, [](HWND dialog) {
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_CRITERION_LIST));
        Choose(dialog, IDC_CRITERION_LIST, 3);
    });
    ui.Click(IDOK).WaitClosed(kRiskTitle).OnWindowOfClass(kMainClass, [](HWND) {
        EXPECT_EQ(TextOf(Main(), IDC_STATUS_BAR),
                  "Rischio, 35 anni, 90 dBA, età 60, sesso M, INAIL Vecchia Tabella");
    });
    // What is not confirmed is forgotten.
    Open(ui, CMD_RISK, kRiskTitle).SetText(IDC_EXPOSURE_YEARS, "10").Click(IDC_FEMALE);
    ui.Click(IDCANCEL).WaitClosed(kRiskTitle);
    Open(ui, CMD_RISK, kRiskTitle).OnWindow(kRiskTitle, [](HWND dialog) {
        EXPECT_EQ(TextsOf(dialog, {IDC_EXPOSURE_YEARS, IDC_CRITERION_LIST}),
                  " 35|INAIL Vecchia Tabella");
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_MALE));
    });
    ui.Click(IDCANCEL).WaitClosed(kRiskTitle);
    RunToEnd(ui);
}

}  // namespace

}  // namespace tonvale
