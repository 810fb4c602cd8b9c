// What is particular to the dialog LEPW, and what all lists of fixed rows share.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "exposure/weekly_exposure.h"
#include "exposure/weekly_exposure_dialog.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using WeeklyExposureUiTest = OneCalculatorTest<WeeklyExposureState, OpenWeeklyExposure>;

constexpr char kTitle[] = "Calcolo Lep,w";
constexpr char kDayTitle[] = "Modifica";

// Opens EDIT_LEPW on a day.
UiDriver& EditDay(UiDriver& ui, int day) {
    ui.OnWindow(kTitle, [day](HWND dialog) { Select(dialog, day); }).Click(IDC_MODIFY);
    return ui.OnWindow(kDayTitle);
}

TEST_F(WeeklyExposureUiTest, TheListHasTheFocusAndARow) {
    UiDriver ui;
    ui.OnWindow(kTitle).ExpectFocus(IDC_ITEM_LIST).OnWindow(kTitle, [](HWND dialog) {
        EXPECT_GE(ListView_GetCountPerPage(List(dialog)), 7);  // nothing to scroll
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
        // No day can be added or taken away.
        for (int key : {VK_INSERT, VK_DELETE}) {
            SendMessageW(List(dialog), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
        }
    });
    ui.ExpectText(IDC_WEEKLY_LEVEL, "90.0").Command(CMD_FILE_CLOSE);
    Open();
}

TEST_F(WeeklyExposureUiTest, EditsClearsAndReadsDays) {
    const std::string daily =
        WriteFile("giornata.LEP", "[TONVALE]\r\nTipo=lepd\r\nLAEQ=70.1\r\nLEPD=84.75\r\n");
    UiDriver ui;
    EditDay(ui, 2).ExpectTexts({IDC_DAY_NAME, IDC_LEVEL_EDIT}, "Mercoledi|90.0");
    ui.SetText(IDC_LEVEL_EDIT, "abc").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.SetText(IDC_LEVEL_EDIT, "-3").Click(IDOK);
    EditDay(ui, 1).SetText(IDC_LEVEL_EDIT, "1").Click(IDCANCEL);
    EditDay(ui, 0).Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, daily);
    ui.ExpectText(IDC_LEVEL_EDIT, "84.75").SetText(IDC_LEVEL_EDIT, "");
    ui.OnWindow(kDayTitle, [=](HWND dialog) { Drop(dialog, {daily}); }).Click(IDOK);
    EditDay(ui, 4).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDNO).Click(IDC_DELETE);
    ui.AnswerMessage("Conferma operazione", kDeletionQuestion, IDYES);
    ui.ExpectText(IDC_WEEKLY_LEVEL, "86.6")
        .Expect(Rows,
                "Lunedi|84.75; Martedi|90.0; Mercoledi|-3; Giovedi|90.0; Venerdi|0.0; Sabato| 0.0; "
                "Domenica| 0.0");
    ui.Command(CMD_FILE_CLOSE);
    Open();
}

}  // namespace

}  // namespace tonvale
