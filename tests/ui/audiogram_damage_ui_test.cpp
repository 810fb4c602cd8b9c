// The dialogs CALCOLOILG and EDIT_ILG, as far as they differ from every calculator's.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hearing/audiogram_damage.h"
#include "hearing/audiogram_damage_dialog.h"
#include "resources/help_contexts.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Calcolo Danno Uditivo";
constexpr char kRowTitle[] = "Modifica";

// The losses at one frequency: "30|25".
std::string Row(HWND dialog, int row) {
    return Cell(dialog, row, 1) + "|" + Cell(dialog, row, 2);
}

std::string Damage(HWND dialog) {
    return TextOf(dialog, IDC_DAMAGE);
}

bool FormulaIsEnabled(HWND dialog) {
    return IsWindowEnabled(GetDlgItem(dialog, IDC_FORMULA_INDUSTRY)) &&
           IsWindowEnabled(GetDlgItem(dialog, IDC_FORMULA_GROUP));
}

class AudiogramDamageUiTest : public DialogTest {
  protected:
    void Open() { OpenAudiogramDamage(app_, state_, owner_, {}); }

    static void PressEach(UiDriver& ui, const std::string& keys) {
        for (const char key : keys) ui.Press({static_cast<WORD>(key)});
    }

    AudiogramDamageState state_;
};

TEST_F(AudiogramDamageUiTest, AnAudiogramIsTypedInOneGo) {
    static constexpr int kLosses[6][2] = {{30, 25}, {35, 30}, {50, 40},
                                          {65, 60}, {70, 65}, {65, 60}};
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(GetFocus(), List(dialog));
        EXPECT_EQ(SelectedRow(dialog), 0);
        EXPECT_GE(ListView_GetCountPerPage(List(dialog)), 6);  // nothing to scroll
    });
    for (const auto& [left, right] : kLosses) {
        ui.OnWindow(kTitle).Press({VK_RETURN}).OnWindow(kRowTitle);
        PressEach(ui, std::to_string(left));
        ui.Press({VK_TAB});
        PressEach(ui, std::to_string(right));
        ui.Press({VK_RETURN}).WaitClosed(kRowTitle);
    }
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Damage(dialog), "  21");
        EXPECT_EQ(SelectedRow(dialog), 5);
    });
    ui.Click(IDC_FORMULA_AGRICULTURE).ExpectText(IDC_DAMAGE, "  22");
    ui.Click(IDC_TABLE_BIOLOGICAL).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Damage(dialog), "   9");
        EXPECT_FALSE(FormulaIsEnabled(dialog));
    });
    ui.Click(IDC_TABLE_OLD).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_TRUE(FormulaIsEnabled(dialog));
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_FORMULA_AGRICULTURE));
    });
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
    edit_row(1).ExpectText(IDC_LOSS_FREQUENCY, "1000").ExpectText(IDC_LEFT_LOSS, "30");
    ui.Screenshot("edit_ilg").OnWindow(kRowTitle, [](HWND dialog) {
        HWND left = GetDlgItem(dialog, IDC_LEFT_LOSS);
        EXPECT_EQ(SendMessageW(left, CB_GETCOUNT, 0, 0), 27);
        HWND edit = FindWindowExW(left, nullptr, L"EDIT", nullptr);
        EXPECT_EQ(GetFocus(), edit);
        EXPECT_EQ(SendMessageW(edit, EM_GETLIMITTEXT, 0, 0), 3);
        // F1 and the tip are those of the whole field.
        HELPINFO help{sizeof(HELPINFO), HELPINFO_WINDOW, 1001, edit, 0, {}};
        SendMessageW(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
        NMTTDISPINFOW tip{};
        tip.hdr = {nullptr, reinterpret_cast<UINT_PTR>(edit), TTN_GETDISPINFOW};
        tip.uFlags = TTF_IDISHWND;
        SendMessageW(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&tip));
        EXPECT_EQ(Narrow(tip.lpszText), "Valore della perdita per l'orecchio sinistro");
        SendMessageW(left, CB_SETCURSEL, 0, 0);
    });
    ui.Click(IDC_SYMMETRIC).OnWindow(kRowTitle, [](HWND dialog) {
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_RIGHT_LOSS)));
    });
    ui.Click(IDOK).WaitClosed(kRowTitle).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_TRUE(IsDlgButtonChecked(dialog, IDC_SYMMETRIC));
        EXPECT_EQ(Row(dialog, 0) + " " + Row(dialog, 1), "30|30 -10|-10");
        EXPECT_EQ(SelectedRow(dialog), 2);
        EXPECT_FALSE(FormulaIsEnabled(dialog));
    });
    ui.Click(IDC_SYMMETRIC).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Row(dialog, 0) + " " + Row(dialog, 1), "30|40 -10|40");
    });
    edit_row(3).SetText(IDC_LEFT_LOSS, "25.9").SetText(IDC_RIGHT_LOSS, "abc").Click(IDOK);
    ui.WaitClosed(kRowTitle);
    edit_row(4).SetText(IDC_LEFT_LOSS, "99").Click(IDCANCEL).WaitClosed(kRowTitle);
    edit_row(5).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDNO);
    ui.OnWindow(kRowTitle).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.WaitClosed(kRowTitle).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Row(dialog, 3) + " " + Row(dialog, 4) + " " + Row(dialog, 5),
                  "25| 0 30|40  0| 0");
    });
    ui.Command(IDCANCEL);
    Open();
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{kHelpLossLeft});
}

}  // namespace

}  // namespace tonvale
