// What is particular to the dialog LEPD, and what all lists of items share.
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "exposure/daily_exposure.h"
#include "exposure/daily_exposure_dialog.h"
#include "resources/help_contexts.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using DailyExposureUiTest = OneCalculatorTest<DailyExposureState, OpenDailyExposure>;
using Texts = std::vector<std::string>;

constexpr char kTitle[] = "Calcolo Lep,d";
constexpr auto kResults = {IDC_EQUIVALENT_LEVEL, IDC_TOTAL_TIME, IDC_DAILY_LEVEL};

TEST_F(DailyExposureUiTest, AddsModifiesAndDeletesItems) {
    UiDriver ui;
    ui.OnWindow(kTitle).Choose(IDC_TIME_UNIT, 1).Click(IDC_MODIFY);
    ui.AnswerMessage("Modifica", kNothingSelected, IDOK).Click(IDC_DELETE);
    ui.AnswerMessage("Elimina", kNothingSelected, IDOK);
    for (const char* level : {"90", "80"}) {
        ui.Click(IDC_ADD).OnWindow("Aggiungi").SetText(IDC_LEVEL_EDIT, level);
        ui.SetText(IDC_TIME_EDIT, "240").Click(IDOK);
    }
    ui.Expect(Rows, "90|240; 80|240").ExpectTexts(kResults, "87.4|   480|87.4");
    ui.OnWindow(kTitle, [](HWND dialog) { DoubleClick(dialog, 1); }).OnWindow("Modifica");
    ui.ExpectTexts({IDC_LEVEL_EDIT, IDC_TIME_EDIT, IDC_TIME_LABEL, IDOK},
                   "80|240|Esposizione (m):|Modifica");
    ui.SetText(IDC_LEVEL_EDIT, "90").Click(IDOK);
    ui.OnWindow(kTitle, [](HWND dialog) { Select(dialog, 0); }).Click(IDC_DELETE);
    ui.OnWindow("Elimina").ExpectEach({IDC_READ_LEVEL}, IsWindowEnabled, false);
    for (int answer : {IDNO, IDCANCEL, IDYES}) {
        ui.Click(IDOK).AnswerMessage("Conferma operazione", kDeletionQuestion, answer);
    }
    ui.Expect(Rows, "90|240").ExpectTexts(kResults, "90.0|   240|87.0");
    // The typed times are read in the new unit.
    ui.Choose(IDC_TIME_UNIT, 2).ExpectTexts(kResults, "90.0|240.00|104.8");
    ui.ExpectText(IDC_TOTAL_TIME_LABEL, "Tempo esposizione (h):").Click(IDC_ADD);
    ui.OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "90");  // as last confirmed
    ui.Click(IDCANCEL).Command(IDCANCEL);
    Open();
    EXPECT_EQ(help_.closed, Texts{"LEPD.HLP"});
}

TEST_F(DailyExposureUiTest, ItemDialogRefusesZerosAndReadsSpectra) {
    const std::string spectrum = WriteFile("rumore.SPR", "[TONVALE]\r\nTipo=spr\r\nLAEQ=91.25\r\n");
    const std::string text = WriteFile("rumore.txt", "[TONVALE]\r\nTipo=SPR\r\nLAEQ=2\r\n");
    const std::string daily = WriteFile("misura.lep", "[TONVALE]\r\nTipo=LEPD\r\nLEPD=2\r\n");
    UiDriver ui;
    ui.OnWindow(kTitle).Click(IDC_ADD).OnWindow("Aggiungi").SetText(IDC_LEVEL_EDIT, "0.0");
    ui.SetText(IDC_TIME_EDIT, "0").Click(IDOK);
    ui.AnswerMessage("Livello di esposizione", kNotNumeric, IDOK).ExpectFocus(IDC_LEVEL_EDIT);
    ui.SetText(IDC_LEVEL_EDIT, "85").Click(IDOK);
    ui.AnswerMessage("Tempo esposizione ", kNotNumeric, IDOK).ExpectFocus(IDC_TIME_EDIT);
    ui.OnWindow("Aggiungi", [=](HWND dialog) {
        Drop(GetParent(dialog), {daily});  // which must wait
        for (const Texts& others : {Texts{daily}, {text}, {spectrum, text}}) Drop(dialog, others);
        EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "85");
        Drop(dialog, {spectrum});
    });
    ui.ExpectText(IDC_LEVEL_EDIT, "91.25").SetText(IDC_LEVEL_EDIT, "").Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, spectrum);
    ui.ExpectText(IDC_LEVEL_EDIT, "91.25").Click(IDCANCEL).Expect(Rows, "").Command(CMD_FILE_CLOSE);
    Open();
}

TEST_F(DailyExposureUiTest, TakesTenThousandItems) {
    DailyExposureForm form;
    for (int i = 1; i <= 10000; ++i) form.items.push_back({"80", std::to_string(i)});
    ProfileFile file;
    StoreForm(form, file);
    const std::string path = WriteFile("molti.lep", file.Serialize());
    const auto start = std::chrono::steady_clock::now();
    UiDriver ui;
    ui.OnWindow(kTitle, [=](HWND dialog) {
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
        // The scroll bar takes its place from both columns.
        RECT area{};
        GetClientRect(List(dialog), &area);
        EXPECT_EQ(ListView_GetColumnWidth(List(dialog), 0), area.right / 2);
    });
    ui.ExpectText(IDC_TOTAL_TIME, "50005000").Command(CMD_FILE_CLOSE);
    Open(path);
}

TEST_F(DailyExposureUiTest, ListKeysAndHelpUnderTheMouse) {
    state_.levels_dba = {85};
    state_.durations = {480};
    UiDriver ui;
    for (const auto& [key, title] : {std::pair<WORD, const char*>{VK_INSERT, "Aggiungi"},
                                     {VK_RETURN, "Modifica"},
                                     {VK_DELETE, "Elimina"}}) {
        ui.OnWindow(kTitle, [key = key](HWND dialog) {
            Select(dialog, 0);
            PostMessageW(List(dialog), WM_KEYDOWN, key, 1);
        });
        ui.OnWindow(title).Click(IDCANCEL);
    }
    ui.OnWindow(kTitle, [](HWND dialog) {
        // A right click on a result, which lets the mouse through to the dialog.
        RECT area{};
        GetWindowRect(GetDlgItem(dialog, IDC_TOTAL_TIME), &area);
        SendMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog),
                     MAKELPARAM(area.left + 1, area.top + 1));
        // And one where nothing is.
        SendMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog), 0);
    });
    ui.Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{kHelpDailyTotalTime});
}

}  // namespace

}  // namespace tonvale
