#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/print_notes_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kTitle[] = "Un commento per la stampa?";

class PrintNotesTest : public DialogTest {
  protected:
    bool Ask() { return AskPrintNotes(app_, owner_, notes_); }

    std::string notes_;
};

TEST_F(PrintNotesTest, OnlyConfirmedTextReplacesTheNotes) {
    UiDriver ui;
    ui.OnWindow(kTitle, [](HWND dialog) { EXPECT_EQ(TextOf(dialog, IDC_NOTES_EDIT), ""); });
    ui.SetText(IDC_NOTES_EDIT, "Reparto presse,\r\nperché misurato").Screenshot("add_notes");
    ui.Click(IDOK);
    EXPECT_TRUE(Ask());
    EXPECT_EQ(notes_, "Reparto presse,\r\nperché misurato");

    // Shown again; emptied and confirmed, they stay.
    ui.OnWindow(kTitle, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, IDC_NOTES_EDIT), "Reparto presse,\r\nperché misurato");
    });
    ui.SetText(IDC_NOTES_EDIT, "").Click(IDOK);
    EXPECT_TRUE(Ask());
    EXPECT_EQ(notes_, "Reparto presse,\r\nperché misurato");

    ui.OnWindow(kTitle).SetText(IDC_NOTES_EDIT, "altro").Click(IDC_NO_COMMENT);
    EXPECT_TRUE(Ask());
    EXPECT_EQ(notes_, "Reparto presse,\r\nperché misurato");
    EXPECT_EQ(help_.closed, std::vector<std::string>{"Tonvale.hlp"});
    ui.Finish();
}

TEST_F(PrintNotesTest, CancelsHelpsAndLimitsTheText) {
    notes_ = "vecchie";
    UiDriver ui;
    ui.OnWindow(kTitle).SetText(IDC_NOTES_EDIT, "nuove").Click(CMD_DIALOG_HELP);
    ui.Click(IDCANCEL);
    EXPECT_FALSE(Ask());
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{kHelpPrintNotes});

    ui.OnWindow(kTitle, [](HWND dialog) { PostMessageW(dialog, WM_CLOSE, 0, 0); });
    EXPECT_FALSE(Ask());
    EXPECT_EQ(notes_, "vecchie");

    ui.OnWindow(kTitle).SetText(IDC_NOTES_EDIT, "");
    ui.Type(IDC_NOTES_EDIT, std::string(520, 'x')).Click(IDOK);
    EXPECT_TRUE(Ask());
    EXPECT_EQ(notes_, std::string(512, 'x'));
    ui.Finish();
}

}  // namespace
}  // namespace tonvale
