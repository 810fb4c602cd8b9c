// The predictions of hearing loss: dialogs NIPTS and CONFRONTO, and their views in the main window.
#include <windows.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "common/canvas.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Previsioni ISO 1999/90";
constexpr char kInvalid[] = "Errore! Dati non validi";

class HearingUiTest : public MainWindowTest {
  protected:
    static void Open(UiDriver& ui, int command) {
        ui.OnWindowOfClass(kMainClass).Command(command);
        ui.OnWindow(kTitle);
    }
    static void SetFields(UiDriver& ui, const char* years, const char* level, const char* age) {
        ui.OnWindow(kTitle).SetText(IDC_EXPOSURE_YEARS, years);
        ui.SetText(IDC_EXPOSURE_LEVEL, level).SetText(IDC_AGE, age);
    }
    // Looks at the view that has come, and leaves a picture of it.
    static void ExpectView(UiDriver& ui, int command, ViewKind kind, const char* picture) {
        ui.WaitClosed(kTitle).OnWindowOfClass(kMainClass);
        if (command != 0) ui.Command(command);
        ui.OnWindowOfClass(kMainClass, [kind](HWND) {
            EXPECT_FALSE(TheProgram().views().ShowsDocument());
            EXPECT_EQ(TheProgram().results().kind(), kind);
        });
        ui.Screenshot(picture);
    }
    static std::string TableText() { return TheProgram().results().result()->TableText(";"); }
};

// The controls of those given that are disabled.
std::set<int> Disabled(HWND dialog, const std::set<int>& controls) {
    std::set<int> disabled;
    for (int control : controls) {
        if (!IsWindowEnabled(GetDlgItem(dialog, control))) disabled.insert(control);
    }
    return disabled;
}

TEST_F(HearingUiTest, EveryQuantityEnablesWhatEntersIt) {
    const std::set<int> noise{IDC_EXPOSURE_YEARS, IDC_EXPOSURE_YEARS_LABEL, IDC_EXPOSURE_LEVEL,
                              IDC_EXPOSURE_LEVEL_LABEL};
    const std::set<int> person{IDC_AGE,       IDC_AGE_LABEL, IDC_SEX_GROUP,
                               IDC_MALE,      IDC_FEMALE,    IDC_TABLE_GROUP,
                               IDC_TABLE_NEW, IDC_TABLE_OLD, IDC_TABLE_BIOLOGICAL};
    std::set<int> all = noise;
    all.insert(person.begin(), person.end());
    UiDriver ui;
    Open(ui, CMD_HTLAN);
    ui.OnWindow(kTitle, [&](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_EXPOSURE_YEARS), " 35");
        EXPECT_EQ(TextOf(dialog, IDC_EXPOSURE_LEVEL), " 90");
        EXPECT_EQ(TextOf(dialog, IDC_AGE), " 60");
        for (int chosen : {IDC_HTLAN, IDC_TABLE_NEW, IDC_MALE}) {
            EXPECT_TRUE(IsDlgButtonChecked(dialog, chosen)) << chosen;
        }
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR),
                  "Hearing Threshold Level associated with Age and Noise");
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_EXPOSURE_YEARS));
        EXPECT_EQ(Disabled(dialog, all), std::set<int>());
    });
    ui.Screenshot("nipts_dialog").Click(IDC_NIPTS).OnWindow(kTitle, [&](HWND dialog) {
        EXPECT_EQ(Disabled(dialog, all), person);
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "Noise Induced Permanent Threshold Shift");
    });
    ui.Click(IDC_HTLA).OnWindow(kTitle, [&](HWND dialog) {
        EXPECT_EQ(Disabled(dialog, all), noise);
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR), "Hearing Threshold Level associated with Age");
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    // Opened for HTLA, the age is what is typed first.
    Open(ui, CMD_HTLA);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_AGE));
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_HTLA));
    });
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    RunToEnd(ui);
}

TEST_F(HearingUiTest, RefusesWhatTheModelDoesNotCoverAndKeepsTheCase) {
    UiDriver ui;
    Open(ui, CMD_HTLAN);
    const char* const refusals[][4] = {{"41", "90", "60", "Anni di esposizione."},
                                       {"30", "100.1", "60", "Livello di esposizione."},
                                       {"15", "95", "30", "Età individuo."}};
    for (const auto& [years, level, age, caption] : refusals) {
        SetFields(ui, years, level, age);
        ui.Click(IDOK).AnswerMessage(caption, kInvalid, IDOK).OnWindow(kTitle);
    }
    ui.Click(IDCANCEL).WaitClosed(kTitle).OnWindowOfClass(kMainClass, [](HWND) {
        EXPECT_EQ(TheProgram().state().loss_prediction.current.years, 35);
        EXPECT_EQ(TheProgram().state().loss_prediction.current.level_dba, 90);
        EXPECT_TRUE(TheProgram().views().ShowsDocument());
    });
    Open(ui, CMD_PREDICTIONS);
    ui.SetText(IDC_EXPOSURE_LEVEL, "89").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione.", kInvalid, IDOK).OnWindow(kTitle);
    ui.Click(IDCANCEL).WaitClosed(kTitle);
    RunToEnd(ui);
}

TEST_F(HearingUiTest, ShowsTheLossesOfOnePerson) {
    UiDriver ui;
    Open(ui, CMD_HTLAN);
    SetFields(ui, "40", "100", "58");
    ui.Click(IDC_TABLE_BIOLOGICAL).Click(IDC_FEMALE).Click(IDOK);
    ExpectView(ui, 0, ViewKind::kTable, "htlan_table");
    ui.OnWindowOfClass(kMainClass, [](HWND) {
        const std::string table = TableText();
        EXPECT_TRUE(table.starts_with("HTLAN - Hearing Threshold Level associated with Age and "));
        EXPECT_NE(table.find("Sesso: F"), std::string::npos);
        EXPECT_NE(table.find("Tabella: Biologico"), std::string::npos);
        EXPECT_EQ(TheProgram().views().view(), kHearingLossView);
    });
    ExpectView(ui, CMD_VIEW_CHART, ViewKind::kChart, "htlan_chart");
    ExpectView(ui, CMD_VIEW_AUDIOGRAM, ViewKind::kAudiogram, "htlan_audiogram");
    // What was confirmed comes back; HTLA alone reads neither years nor level.
    Open(ui, CMD_HTLA);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_AGE), " 58");
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_FEMALE));
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_TABLE_BIOLOGICAL));
    });
    ui.SetText(IDC_AGE, "18").Click(IDOK);
    ExpectView(ui, 0, ViewKind::kTable, "htla_table");
    ui.OnWindowOfClass(kMainClass,
                       [](HWND) { EXPECT_EQ(TableText().find("Leq"), std::string::npos); });
    RunToEnd(ui);
}

TEST_F(HearingUiTest, ShowsTheLossesOverYearsAndLevels) {
    UiDriver ui;
    Open(ui, CMD_PREDICTIONS);
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_FRACTILE_LIST), "10");
        EXPECT_EQ(TextOf(dialog, IDC_FREQUENCY_LIST), "4000");
        EXPECT_EQ(TextOf(dialog, IDC_EXPOSURE_LEVEL), " 88");
        EXPECT_EQ(TextOf(dialog, IDC_STATUS_BAR),
                  "Perdite dovute alla sola esposizione professionale");
        SendDlgItemMessageW(dialog, IDC_FRACTILE_LIST, CB_SETCURSEL, 9, 0);
    });
    ui.Screenshot("confronto_dialog");
    ui.SetText(IDC_EXPOSURE_LEVEL, "85").Click(IDOK);
    ExpectView(ui, 0, ViewKind::kTable, "predictions_table");
    ExpectView(ui, CMD_VIEW_CHART, ViewKind::kChart, "predictions_time");
    ExpectView(ui, CMD_VIEW_AUDIOGRAM, ViewKind::kAudiogram, "predictions_level");
    ui.OnWindowOfClass(kMainClass, [](HWND window) {
        EXPECT_EQ(TheProgram().state().loss_comparison.base.fractile, 50 * 0.01);
        EXPECT_EQ(TheProgram().views().view(), kPredictionsView);
        // A chart that is shrunk to nothing draws nothing.
        ShowWindow(window, SW_RESTORE);
        SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOZORDER);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    });
    RunToEnd(ui);
}

}  // namespace
}  // namespace tonvale
