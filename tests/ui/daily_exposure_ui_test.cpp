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
#include "resources/resource.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

using Texts = std::vector<std::string>;

constexpr char kTitle[] = "Calcolo Lep,d";

// LAeq, total time and Lep,d.
std::string Results(HWND dialog) {
    return TextsOf(dialog, {IDC_EQUIVALENT_LEVEL, IDC_TOTAL_TIME, IDC_DAILY_LEVEL});
}

class DailyExposureUiTest : public DialogTest {
  protected:
    void Open(const std::string& path = {}) { OpenDailyExposure(app_, state_, owner_, path); }
    void AddItem(UiDriver& ui, const std::string& level, const std::string& time) {
        ui.OnWindow(kTitle).Click(IDC_ADD);
        ui.OnWindow("Aggiungi").SetText(IDC_LEVEL_EDIT, "").Type(IDC_LEVEL_EDIT, level);
        ui.SetText(IDC_TIME_EDIT, "").Type(IDC_TIME_EDIT, time).Click(IDOK).WaitClosed("Aggiungi");
    }

    DailyExposureState state_;
};

TEST_F(DailyExposureUiTest, AddsModifiesAndDeletesItems) {
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) { Choose(dialog, IDC_TIME_UNIT, 1); });
    ui.Click(IDC_MODIFY).AnswerMessage("Modifica", kNothingSelected, IDOK);
    ui.OnWindow(kTitle).Click(IDC_DELETE).AnswerMessage("Elimina", kNothingSelected, IDOK);
    AddItem(ui, "90", "240");
    AddItem(ui, "80", "240");
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Results(dialog), "87.4|   480|87.4");
        EXPECT_EQ(Rows(dialog), (Texts{"90 x 240", "80 x 240"}));
        DoubleClick(dialog, 1);  // modifies the row
    });
    ui.OnWindow("Modifica").ExpectText(IDC_LEVEL_EDIT, "80").ExpectText(IDC_TIME_EDIT, "240");
    ui.ExpectText(IDC_TIME_LABEL, "Esposizione (m):").ExpectText(IDOK, "Modifica");
    ui.SetText(IDC_LEVEL_EDIT, "90").Click(IDOK).WaitClosed("Modifica");
    ui.OnWindow(kTitle, [](HWND dialog) { Select(dialog, 0); }).Click(IDC_DELETE);
    ui.OnWindow("Elimina", [](HWND dialog) {
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_READ_LEVEL)));
    });
    for (int answer : {IDNO, IDCANCEL, IDYES}) {
        ui.OnWindow("Elimina").Click(IDOK);
        ui.AnswerMessage("Conferma operazione", kDeletionQuestion, answer);
    }
    ui.WaitClosed("Elimina").OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(Rows(dialog), Texts{"90 x 240"});
        EXPECT_EQ(Results(dialog), "90.0|   240|87.0");
        EXPECT_EQ(SelectedRow(dialog), 0);
        Choose(dialog, IDC_TIME_UNIT, 2);  // the typed times are read in the new unit
        EXPECT_EQ(Results(dialog), "90.0|240.00|104.8");
        EXPECT_EQ(TextOf(dialog, IDC_TOTAL_TIME_LABEL), "Tempo esposizione (h):");
    });
    ui.Click(IDC_ADD).OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "90");  // as last confirmed
    ui.Click(IDCANCEL).WaitClosed("Aggiungi");
    ui.OnWindow(kTitle, [](HWND dialog) { EXPECT_EQ(Rows(dialog).size(), 1u); }).Command(IDCANCEL);
    Open();
    EXPECT_EQ(help_.closed, Texts{"LEPD.HLP"});
}

TEST_F(DailyExposureUiTest, ItemDialogRefusesZerosAndReadsSpectra) {
    const std::string spectrum = WriteFile("rumore.SPR", "[TONVALE]\r\nTipo=spr\r\nLAEQ=91.25\r\n");
    const std::string text = WriteFile("rumore.txt", "[TONVALE]\r\nTipo=SPR\r\nLAEQ=2\r\n");
    const std::string daily = WriteFile("misura.lep", "[TONVALE]\r\nTipo=LEPD\r\nLEPD=2\r\n");
    UiDriver ui;
    ui.OnWindow(kTitle).Click(IDC_ADD);
    ui.OnWindow("Aggiungi").SetText(IDC_LEVEL_EDIT, "0.0").SetText(IDC_TIME_EDIT, "0");
    ui.Click(IDOK).AnswerMessage("Livello di esposizione", kNotNumeric, IDOK);
    ui.OnWindow("Aggiungi",
                [](HWND dialog) { EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_LEVEL_EDIT)); });
    ui.SetText(IDC_LEVEL_EDIT, "85").Click(IDOK);
    ui.AnswerMessage("Tempo esposizione ", kNotNumeric, IDOK)
        .OnWindow("Aggiungi", [=](HWND dialog) {
            EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_TIME_EDIT));
            Drop(GetParent(dialog), {daily});  // which must wait
            for (const Texts& others : {Texts{daily}, {text}, {spectrum, text}}) {
                Drop(dialog, others);
            }
            EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "85");
            Drop(dialog, {spectrum});
            EXPECT_EQ(TextOf(dialog, IDC_LEVEL_EDIT), "91.25");
        });
    ui.SetText(IDC_LEVEL_EDIT, "").Click(IDC_READ_LEVEL);
    ChooseFile(ui, kOpenTitle, spectrum);
    ui.WaitClosed(kOpenTitle).OnWindow("Aggiungi").ExpectText(IDC_LEVEL_EDIT, "91.25");
    ui.Click(IDCANCEL).OnWindow(kTitle, [](HWND dialog) { EXPECT_EQ(Rows(dialog), Texts()); });
    ui.Command(CMD_FILE_CLOSE);
    Open();
}

TEST_F(DailyExposureUiTest, TakesTenThousandItems) {
    constexpr int kItems = 10000;
    DailyExposureForm form;
    for (int i = 1; i <= kItems; ++i) form.items.push_back({"80", std::to_string(i)});
    ProfileFile file;
    StoreForm(form, file);
    const std::string path = WriteFile("molti.lep", file.Serialize());
    const auto start = std::chrono::steady_clock::now();
    auto shown = start;
    UiDriver ui;
    ui.OnWindow(kTitle, [&](HWND dialog) {
        shown = std::chrono::steady_clock::now();
        EXPECT_EQ(ListView_GetItemCount(List(dialog)), kItems);
        EXPECT_EQ(TextOf(dialog, IDC_TOTAL_TIME), "50005000");
        // The scroll bar takes its place from both columns.
        RECT area{};
        GetClientRect(List(dialog), &area);
        EXPECT_EQ(ListView_GetColumnWidth(List(dialog), 0), area.right / 2);
    });
    ui.Command(CMD_FILE_CLOSE);
    Open(path);
    EXPECT_LT(shown - start, std::chrono::seconds(3));
}

TEST_F(DailyExposureUiTest, ListKeysAndHelpUnderTheMouse) {
    state_.levels_dba = {85};
    state_.durations = {480};
    UiDriver ui;
    const std::pair<WORD, const char*> keys[] = {
        {VK_INSERT, "Aggiungi"}, {VK_RETURN, "Modifica"}, {VK_DELETE, "Elimina"}};
    for (const auto& [key, title] : keys) {
        ui.OnWindow(kTitle, [key = key](HWND dialog) {
            Select(dialog, 0);
            SetFocus(List(dialog));
            PostMessageW(List(dialog), WM_KEYDOWN, key, 1);
        });
        ui.OnWindow(title).Click(IDCANCEL).WaitClosed(title);
    }
    ui.OnWindow(kTitle, [](HWND dialog) {
        // A right click on a result, which lets the mouse through to the dialog.
        RECT area{};
        GetWindowRect(GetDlgItem(dialog, IDC_TOTAL_TIME), &area);
        SendMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog),
                     MAKELPARAM(area.left + 1, area.top + 1));
        // And one where nothing is.
        GetWindowRect(dialog, &area);
        SendMessageW(dialog, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(dialog),
                     MAKELPARAM(area.left + 1, area.bottom - 1));
    });
    ui.Command(CMD_FILE_CLOSE);
    Open();
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{kHelpDailyTotalTime});
}

}  // namespace

}  // namespace tonvale
