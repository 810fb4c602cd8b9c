// The dialogs CALCOLOILG and EDIT_ILG, as far as they differ from every calculator's.
#include <string>
#include <vector>

#include "hearing/audiogram_damage.h"
#include "hearing/audiogram_damage_dialog.h"
#include "resources/help_contexts.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using AudiogramDamageUiTest = OneCalculatorTest<AudiogramDamageState, OpenAudiogramDamage>;

constexpr char kTitle[] = "Calcolo Danno Uditivo";
constexpr char kRowTitle[] = "Modifica";

UiDriver& ExpectFormulaUsable(UiDriver& ui, bool usable) {
    return ui.ExpectEach({IDC_FORMULA_INDUSTRY, IDC_FORMULA_GROUP}, IsWindowEnabled, usable);
}

TEST_F(AudiogramDamageUiTest, AnAudiogramIsTypedInOneGo) {
    UiDriver ui;
    ui.OnWindow(kTitle).ExpectFocus(IDC_ITEM_LIST).Expect(SelectedRow, "0");
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_GE(ListView_GetCountPerPage(List(dialog)), 6);  // nothing to scroll
    });
    for (const char* losses :
         {"30\t25\r", "35\t30\r", "50\t40\r", "65\t60\r", "70\t65\r", "65\t60\r"}) {
        ui.OnWindow(kTitle).Press({VK_RETURN}).OnWindow(kRowTitle);
        for (const char* key = losses; *key; ++key) ui.Press({static_cast<WORD>(*key)});
    }
    ui.OnWindow(kTitle)
        .Expect(SelectedRow, "5")
        .ExpectText(IDC_DAMAGE, "  21")
        .Click(IDC_FORMULA_AGRICULTURE);
    ui.ExpectText(IDC_DAMAGE, "  22").Click(IDC_TABLE_BIOLOGICAL).ExpectText(IDC_DAMAGE, "   9");
    ExpectFormulaUsable(ui, false).Click(IDC_TABLE_OLD);
    ExpectFormulaUsable(ui, true).ExpectEach({IDC_FORMULA_AGRICULTURE}, IsChecked);
    ui.Command(IDCANCEL);
    Open();
    EXPECT_EQ(state_.audiogram.left_db, (EarAudiogram{30, 35, 50, 65, 70, 65}));
    EXPECT_EQ(state_.audiogram.right_db, (EarAudiogram{25, 30, 40, 60, 65, 60}));
    EXPECT_TRUE(state_.table == DamageTable::kOld);
}

TEST_F(AudiogramDamageUiTest, ARowChangesLossesAndTheFlag) {
    state_.audiogram = {.left_db = {30, 30, 30, 30, 30, 30}, .right_db = {40, 40, 40, 40, 40, 40}};
    UiDriver ui;
    const auto edit_row = [&ui](int row) -> UiDriver& {
        ui.OnWindow(kTitle, [row](HWND dialog) { Select(dialog, row); }).Click(IDC_MODIFY);
        return ui.OnWindow(kRowTitle);
    };
    edit_row(1).ExpectTexts({IDC_LOSS_FREQUENCY, IDC_LEFT_LOSS}, "1000|30").Screenshot("edit_ilg");
    ui.OnWindow(kRowTitle, [](HWND dialog) {
        HWND edit = FindWindowExW(GetDlgItem(dialog, IDC_LEFT_LOSS), nullptr, L"EDIT", nullptr);
        EXPECT_EQ(GetFocus(), edit);
        // F1 is that of the whole field.
        HELPINFO help{sizeof(HELPINFO), HELPINFO_WINDOW, 1001, edit, 0, {}};
        SendMessageW(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
    });
    ui.Choose(IDC_LEFT_LOSS, 0).Click(IDC_SYMMETRIC);
    ui.ExpectEach({IDC_RIGHT_LOSS}, IsWindowEnabled, false).Click(IDOK);
    ui.Expect(SelectedRow, "2")
        .Expect(Rows, "500|30|30; 1000|-10|-10; 2000|30|30; 3000|30|30; 4000|30|30; 6000|30|30");
    ExpectFormulaUsable(ui.ExpectEach({IDC_SYMMETRIC}, IsChecked), false).Click(IDC_SYMMETRIC);
    ui.Expect(Rows, "500|30|40; 1000|-10|40; 2000|30|40; 3000|30|40; 4000|30|40; 6000|30|40");
    edit_row(3).SetText(IDC_LEFT_LOSS, "25.9").SetText(IDC_RIGHT_LOSS, "abc").Click(IDOK);
    edit_row(4).SetText(IDC_LEFT_LOSS, "99").Click(IDCANCEL);
    edit_row(5).Click(IDC_DELETE).AnswerMessage("Conferma operazione", kDeletionQuestion, IDNO);
    ui.Click(IDC_DELETE).AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.Expect(Rows, "500|30|40; 1000|-10|40; 2000|30|40; 3000|25| 0; 4000|30|40; 6000| 0| 0");
    ui.Command(IDCANCEL);
    Open();
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{kHelpLossLeft});
}

}  // namespace

}  // namespace tonvale
