// What is particular to the dialogs of hearing loss: NIPTS, CONFRONTO, PEPPECUR and RISK.
#include <string>

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
    static UiDriver& Open(UiDriver& ui, int command) {
        ui.OnWindowOfClass(kMainClass).Command(command);
        return ui.OnWindow(command == CMD_RISK ? kRiskTitle : kTitle);
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
    UiDriver ui;
    Open(ui, CMD_HTLAN).ExpectFocus(IDC_EXPOSURE_YEARS);
    ui.ExpectEach({IDC_EXPOSURE_LEVEL, IDC_MALE, IDC_TABLE_NEW}, IsWindowEnabled).Click(IDC_NIPTS);
    ui.ExpectEach({IDC_MALE, IDC_TABLE_NEW}, IsWindowEnabled, false);
    ui.ExpectEach({IDC_EXPOSURE_LEVEL}, IsWindowEnabled);
    ui.ExpectText(IDC_STATUS_BAR, "Noise Induced Permanent Threshold Shift").Click(IDCANCEL);
    // Opened for HTLA, the age is what is typed first.
    Open(ui, CMD_HTLA).ExpectFocus(IDC_AGE).ExpectEach({IDC_MALE, IDC_TABLE_NEW}, IsWindowEnabled);
    ui.ExpectEach({IDC_EXPOSURE_LEVEL}, IsWindowEnabled, false).Click(IDCANCEL);
    RunToEnd(ui);
}

TEST_F(HearingUiTest, ARefusedFieldIsToBeTypedAnew) {
    const struct {
        int command;
        int control;
        const char* refused;
        const char* caption;
        const char* accepted;
    } fields[] = {
        {CMD_HTLAN, IDC_EXPOSURE_YEARS, "41", "Anni di esposizione.", "40"},
        {CMD_HTLAN, IDC_EXPOSURE_LEVEL, "101", "Livello di esposizione.", "100"},
        {CMD_HTLAN, IDC_AGE, "57", "Età individuo.", "58"},
        {CMD_PREDICTIONS, IDC_EXPOSURE_LEVEL, "89", "Livello di esposizione.", "85"},
        {CMD_RISK, IDC_AGE, "52", "Età individuo.", "60"},
        {CMD_DAMAGE_EVOLUTION, IDC_AGE, "69", "Età di inizio esposizione.", "20"},
    };
    UiDriver ui;
    for (const auto& field : fields) {
        Open(ui, field.command).SetText(field.control, field.refused).Click(IDOK);
        ui.AnswerMessage(field.caption, kInvalid, IDOK).ExpectFocus(field.control);
        // The next key typed replaces what the field holds.
        for (const char key : std::string(field.accepted)) ui.Press({static_cast<WORD>(key)});
        ui.ExpectText(field.control, field.accepted).Click(IDOK);
    }
    RunToEnd(ui);
}

TEST_F(HearingUiTest, RemembersClicksAndShowsWhatIsConfirmed) {
    UiDriver ui;
    Open(ui, CMD_HTLAN).SetText(IDC_AGE, "58").Click(IDC_TABLE_BIOLOGICAL).Click(IDC_FEMALE);
    ExpectShown(ui.Click(IDOK), "Sesso: F;Tabella: Biologico");
    Open(ui, CMD_HTLA).ExpectText(IDC_AGE, " 58");
    ui.ExpectEach({IDC_FEMALE, IDC_TABLE_BIOLOGICAL}, IsChecked);
    // Clicks are remembered, but change nothing of what is shown until they are confirmed.
    ui.Click(IDC_TABLE_OLD).Click(IDC_MALE).Click(IDCANCEL);
    ExpectShown(ui, "Sesso: F;Tabella: Biologico");
    Open(ui, CMD_HTLAN).ExpectEach({IDC_MALE, IDC_TABLE_OLD}, IsChecked).Click(IDCANCEL);
    // The dialogs do not share their cases.
    Open(ui, CMD_DAMAGE_EVOLUTION)
        .ExpectText(IDC_AGE, " 18")
        .ExpectEach({IDC_TABLE_NEW}, IsChecked);
    ui.Choose(IDC_FRACTILE_LIST, 16).Click(IDC_TABLE_OLD).Click(IDOK);
    ExpectShown(ui, "Tabella: Vecchia\r\nAnni;5 %;50 %;95 %;90 %");
    Open(ui, CMD_PREDICTIONS).ExpectTexts({IDC_FRACTILE_LIST, IDC_FREQUENCY_LIST}, "10|4000");
    ui.Choose(IDC_FRACTILE_LIST, 9).Click(IDOK);
    ExpectShown(ui, "Frattile: 50 %");
    RunToEnd(ui);
}

TEST_F(HearingUiTest, TheRiskFollowsACriterion) {
    UiDriver ui;
    Open(ui, CMD_RISK);
    ui.ExpectText(IDC_STATUS_BAR, "ISO 1999/90: ((1kHz + 2kHz + 4kHz) / 3) > 27");
    ui.ExpectEach({IDC_FIXED_AGE, IDC_FIXED_LEVEL, IDC_FIXED_VALUE}, IsWindowVisible, false);
    ui.Choose(IDC_CRITERION_LIST, 6)
        .ExpectTexts({IDC_CRITERION_LIST, IDC_STATUS_BAR},
                     "Danno biologico zero|Danno biologico > 0%");
    ui.Choose(IDC_CRITERION_LIST, -1).Click(IDOK);
    ui.AnswerMessage("Criterio di danno.", kInvalid, IDOK).ExpectFocus(IDC_CRITERION_LIST);
    ui.Choose(IDC_CRITERION_LIST, 3).Click(IDOK);
    ui.ExpectText(IDC_STATUS_BAR,
                  "Rischio, 35 anni, 90 dBA, età 60, sesso M, INAIL Vecchia Tabella");
    // What is not confirmed is forgotten.
    Open(ui, CMD_RISK).SetText(IDC_EXPOSURE_YEARS, "10").Click(IDC_FEMALE).Click(IDCANCEL);
    Open(ui, CMD_RISK).ExpectEach({IDC_MALE}, IsChecked);
    ui.ExpectTexts({IDC_EXPOSURE_YEARS, IDC_CRITERION_LIST}, " 35|INAIL Vecchia Tabella");
    ui.Click(IDCANCEL);
    RunToEnd(ui);
}

}  // namespace

}  // namespace tonvale
