// What is particular to the dialog LEPW, and what all lists of fixed rows share.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "exposure/weekly_exposure.h"
#include "exposure/weekly_exposure_dialog.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Calcolo Lep,w";
constexpr char kDayTitle[] = "Modifica";

class WeeklyExposureUiTest : public DialogTest {
  protected:
    void Open() { OpenWeeklyExposure(app_, state_, owner_, {}); }
    // Opens EDIT_LEPW on a day.
    UiDriver& EditDay(UiDriver& ui, int day) {
        ui.OnWindow(kTitle, [day](HWND dialog) { Select(dialog, day); }).Click(IDC_MODIFY);
        return ui.OnWindow(kDayTitle);
    }

    WeeklyExposureState state_;
};

TEST_F(WeeklyExposureUiTest, TheListHasTheFocusAndARow) {
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_WEEKLY_LEVEL), "90.0");
        EXPECT_GE(ListView_GetCountPerPage(List(dialog)), 7);  // nothing to scroll
        EXPECT_EQ(GetFocus(), List(dialog));
        EXPECT_EQ(SelectedRow(dialog), 0);
        // Away with the selection, and back with the focus.
        for (int row : {4, 0}) {
            ListView_SetItemState(List(dialog), -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
            SetFocus(GetDlgItem(dialog, IDC_NOTES_EDIT));
            if (row != 0) ListView_SetItemState(List(dialog), row, LVIS_FOCUSED, LVIS_FOCUSED);
            SetFocus(List(dialog));
            EXPECT_EQ(SelectedRow(dialog), row);
        }
        // A letter goes to the day that begins with it, if there is one.
        for (const wchar_t letter : {L'v', L'x'}) SendMessageW(List(dialog), WM_CHAR, letter, 1);
        EXPECT_EQ(SelectedRow(dialog), 4);
    });
    ui.Command(IDCANCEL);
    Open();
}

TEST_F(WeeklyExposureUiTest, EditsClearsAndReadsDays) {
    const std::string daily =
        WriteFile("giornata.LEP", "[TONVALE]\r\nTipo=lepd\r\nLAEQ=70.1\r\nLEPD=84.75\r\n");
    UiDriver ui;
    EditDay(ui, 2).ExpectText(IDC_DAY_NAME, "Mercoledi").ExpectText(IDC_LEVEL_EDIT, "90.0");
    ui.SetText(IDC_LEVEL_EDIT, "abc").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.OnWindow(kDayTitle).SetText(IDC_LEVEL_EDIT, "-3").Click(IDOK).WaitClosed(kDayTitle);
    EditDay(ui, 1).SetText(IDC_LEVEL_EDIT, "1").Click(IDCANCEL).WaitClosed(kDayTitle);
    EditDay(ui, 0).Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, daily);
    ui.WaitClosed(kOpenTitle).OnWindow(kDayTitle).ExpectText(IDC_LEVEL_EDIT, "84.75");
    ui.SetText(IDC_LEVEL_EDIT, "").OnWindow(kDayTitle, [=](HWND dialog) { Drop(dialog, {daily}); });
    ui.Click(IDOK).WaitClosed(kDayTitle);
    EditDay(ui, 4).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDNO);
    ui.OnWindow(kDayTitle).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.WaitClosed(kDayTitle).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Rows(dialog),
                  (std::vector<std::string>{"Lunedi x 84.75", "Martedi x 90.0", "Mercoledi x -3",
                                            "Giovedi x 90.0", "Venerdi x 0.0", "Sabato x  0.0",
                                            "Domenica x  0.0"}));
        EXPECT_EQ(TextOf(dialog, IDC_WEEKLY_LEVEL), "86.6");
        // No day can be added or taken away.
        SetFocus(List(dialog));
        for (int key : {VK_INSERT, VK_DELETE}) {
            SendMessageW(List(dialog), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
        }
    });
    ui.OnWindow(kTitle).Command(CMD_FILE_CLOSE);
    Open();
}

}  // namespace

}  // namespace tonvale
