// What the commands of the report document do to its text, its menus and the printer.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <functional>
#include <string>

#include "resources/resource.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

constexpr COLORREF kPaper = RGB(255, 255, 210);

TEST_F(ReportTest, StartsEmptyWithItsOwnFormats) {
    EXPECT_EQ(Send(EM_GETLIMITTEXT), 1048575);
    const CHARFORMAT2W format = Format(0, 0);
    EXPECT_EQ(Narrow(format.szFaceName), "Arial");
    EXPECT_EQ(format.yHeight, 200);
    EXPECT_NE(format.dwEffects & CFE_AUTOCOLOR, 0U);
    const PARAFORMAT paragraph = ParagraphFormat(0);
    ASSERT_EQ(paragraph.cTabCount, 8);
    EXPECT_EQ(paragraph.rgxTabs[7], 7000);
    EXPECT_TRUE(IsChecked(CMD_WORD_WRAP));
    EXPECT_TRUE(IsChecked(CMD_ALIGN_LEFT));
    EXPECT_EQ(static_cast<COLORREF>(Send(EM_SETBKGNDCOLOR, 0, kPaper)), kPaper);  // gives the old
}

TEST_F(ReportTest, TogglesEffectsAndShowsThem) {
    Type("uno due tre");
    const struct {
        int command;
        DWORD effect;
    } rows[] = {{CMD_BOLD, CFE_BOLD}, {CMD_ITALIC, CFE_ITALIC}, {CMD_UNDERLINE, CFE_UNDERLINE}};
    for (const auto& [command, effect] : rows) {
        Select(0, 3);
        Command(command);
        EXPECT_TRUE(IsChecked(command));
        Select(4, 7);
        EXPECT_FALSE(IsChecked(command));
        SelectAll();
        Command(command);  // mixed: all of it has the effect
        EXPECT_NE(Format(0, 11).dwMask & effect, 0U);
        EXPECT_EQ(Format(0, 11).dwEffects & effect, effect);
        Command(command);
        EXPECT_EQ(Format(0, 11).dwEffects & effect, 0U);
    }
}

TEST_F(ReportTest, RaisesLowersAndColorsText) {
    Type("H2O");
    Select(1, 2);
    const struct {
        int command;
        LONG offset, height;
    } steps[] = {{CMD_SUBSCRIPT, -50, 150}, {CMD_SUPERSCRIPT, 50, 150}, {CMD_SUPERSCRIPT, 0, 200}};
    for (const auto& step : steps) {
        Command(step.command);
        EXPECT_EQ(Format(1, 2).yOffset, step.offset);
        EXPECT_EQ(Format(1, 2).yHeight, step.height);
        EXPECT_EQ(IsChecked(CMD_SUBSCRIPT), step.offset < 0);
        EXPECT_EQ(IsChecked(CMD_SUPERSCRIPT), step.offset > 0);
    }
    Command(CMD_COLOR_FIRST + 2);
    EXPECT_EQ(Format(1, 2).crTextColor, RGB(0, 255, 0));
    Command(CMD_COLOR_AUTOMATIC);
    EXPECT_NE(Format(1, 2).dwEffects & CFE_AUTOCOLOR, 0U);
}

TEST_F(ReportTest, EveryEditIsOneToBeSaved) {
    Type("uno due");
    const std::function<void()> edits[] = {
        [this] { Command(CMD_BOLD); },         [this] { Command(CMD_BULLETS); },
        [this] { Command(CMD_ALIGN_CENTER); }, [this] { document_.Cut(); },
        [this] { document_.Undo(); },          [this] { document_.Redo(); },
        [this] { document_.Paste(); },
    };
    for (const auto& edit : edits) {
        SelectAll();
        Send(EM_SETMODIFY, FALSE);
        edit();
        EXPECT_TRUE(document_.IsModified()) << &edit - edits;
    }
    // What changes nothing does not.
    Select(0, 0);
    Send(EM_EMPTYUNDOBUFFER);
    Send(EM_SETMODIFY, FALSE);
    document_.Cut();
    document_.Undo();
    document_.Redo();
    Command(CMD_WORD_WRAP);
    EXPECT_FALSE(document_.IsModified());
}

TEST_F(ReportTest, ShowsLoweredTextDownToItsFeet) {
    Type("ppp\ro");
    Select(0, 3);
    Command(CMD_SUBSCRIPT);
    // In the uppermost pixels of the second line, which has nothing there.
    const auto has_feet = [this] {
        UpdateWindow(Editor());
        const auto second = static_cast<LONG>(Send(EM_LINEINDEX, 1));
        for (int i = 0; i < 60; ++i) {
            if (DotAt(second, i % 20, i / 20) != kPaper) return true;
        }
        return false;
    };
    Select(0, 0);  // a caret in the second line would look like feet
    EXPECT_TRUE(has_feet());
    Select(0, 3);
    Send(WM_CLEAR);
    EXPECT_FALSE(has_feet());
}

TEST_F(ReportTest, FormatsParagraphsWhileTheyAreWrapped) {
    Type("riga");
    Command(CMD_ALIGN_CENTER);
    EXPECT_EQ(ParagraphFormat(0).wAlignment, PFA_CENTER);
    EXPECT_TRUE(IsChecked(CMD_ALIGN_CENTER));
    for (const bool has_bullets : {true, false, true}) {
        Command(CMD_BULLETS);
        EXPECT_EQ(ParagraphFormat(0).wNumbering, has_bullets ? PFN_BULLET : 0);
        EXPECT_EQ(IsChecked(CMD_BULLETS), has_bullets);
    }
    Type("\raltra");
    Command(CMD_ALIGN_LEFT);
    Command(CMD_BULLETS);
    SelectAll();  // mixed: neither is set
    for (int command : {CMD_BULLETS, CMD_ALIGN_LEFT, CMD_ALIGN_CENTER}) {
        EXPECT_FALSE(IsChecked(command)) << command;
    }
    Command(CMD_ALIGN_CENTER);

    Command(CMD_WORD_WRAP);
    EXPECT_FALSE(IsChecked(CMD_WORD_WRAP));
    EXPECT_FALSE(IsEnabled(CMD_ALIGN_RIGHT));
    Command(CMD_ALIGN_RIGHT);
    EXPECT_EQ(ParagraphFormat(0).wAlignment, PFA_CENTER);
    SelectAll();
    std::wstring line;
    for (int i = 0; i < 100; ++i) line += L"parola ";
    Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(line.c_str()));
    EXPECT_EQ(Send(EM_GETLINECOUNT), 1);
    Command(CMD_WORD_WRAP);
    EXPECT_TRUE(IsEnabled(CMD_ALIGN_RIGHT));
    EXPECT_GT(Send(EM_GETLINECOUNT), 3);
}

TEST_F(ReportTest, ShowsMenus) {
    Type("testo");
    SelectAll();
    Command(CMD_BOLD);
    UiDriver ui;
    ui.Do([this] {
        PostMessageW(Editor(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(20, 10));
        PostMessageW(Editor(), WM_RBUTTONUP, 0, MAKELPARAM(20, 10));
    });
    ui.OnWindowOfClass("#32768", [](HWND window) {
        const auto format = reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
        EXPECT_NE(GetMenuState(format, CMD_BOLD, MF_BYCOMMAND) & MF_CHECKED, 0U);
        EXPECT_EQ(GetMenuState(format, CMD_ITALIC, MF_BYCOMMAND) & MF_CHECKED, 0U);
        EXPECT_NE(GetMenuState(format, CMD_WORD_WRAP, MF_BYCOMMAND) & MF_CHECKED, 0U);
        EXPECT_NE(GetMenuState(format, CMD_COLOR_LAST, MF_BYCOMMAND), UINT_MAX) << "in its submenu";
    });
    ui.Screenshot("report_menu_format").Press({'E'});  // "&Elenco puntato"
    ui.WaitUntil("bullets", [this] { return IsChecked(CMD_BULLETS); });
    ui.Do([this] { PostMessageW(host_.window(), WM_COMMAND, CMD_COLOR_MENU, 0); });
    ui.OnWindowOfClass("#32768");
    ui.Screenshot("report_menu_colors").Press({VK_DOWN}).Press({VK_DOWN}).Press({VK_RETURN});
    ui.WaitUntil("color", [this] { return Format(0, 5).crTextColor == RGB(128, 0, 0); });
    ui.Run();
}

// Only what is chosen changes: the dialog rounds sizes, and what is mixed it shows as empty.
TEST_F(ReportTest, ChoosesFontOnItsOwnScale) {
    constexpr int kFace = 0x470, kSize = 0x472, kColor = 0x473;
    constexpr int kStrikeOut = 0x410, kUnderline = 0x411;
    constexpr DWORD kEffects = CFE_ITALIC | CFE_UNDERLINE | CFE_STRIKEOUT | CFE_AUTOCOLOR;
    const int dpi = static_cast<int>(GetDpiForSystem());
    Type("testo misto");
    CHARFORMAT2W size = Format(0, 5);
    size.dwMask = CFM_SIZE;
    size.yHeight = 220;
    Send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&size));
    Command(CMD_ITALIC);
    Command(CMD_UNDERLINE);
    UiDriver ui;
    const auto ask = [&](LONG last, const UiDriver::WindowAction& change) {
        ui.Do([=, this] {
            Select(0, last);
            PostMessageW(host_.window(), WM_COMMAND, CMD_FONT, 0);
        });
        ui.OnWindowOfClass("#32770", change).Screenshot("report_font_dialog").Command(IDOK);
        ui.WaitUntil("closed", [] { return !FindWindowW(L"#32770", nullptr); });
    };
    ask(5, [dpi](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, kFace), "Arial");
        EXPECT_EQ(TextOf(dialog, kSize), std::to_string(MulDiv(22, 72, dpi)));  // 22 pixels
        SendDlgItemMessageW(dialog, kColor, CB_SETCURSEL, 1, 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(kColor, CBN_SELCHANGE), 0);
    });
    ui.Do([this] { EXPECT_EQ(Format(0, 5).yHeight, 220) << "rounded by the dialog"; });
    ask(11, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, kFace) + TextOf(dialog, kSize) + TextOf(dialog, kColor), "Arial");
        EXPECT_EQ(IsDlgButtonChecked(dialog, kUnderline), UINT{BST_INDETERMINATE});
        SendDlgItemMessageW(dialog, kUnderline, BM_CLICK, 0, 0);  // to none
        SendDlgItemMessageW(dialog, kStrikeOut, BM_CLICK, 0, 0);
        SetDlgItemTextW(dialog, kSize, L"18");
    });
    ui.Run();
    EXPECT_EQ(Format(0, 11).yHeight, 10 * MulDiv(18, dpi, 72));
    EXPECT_EQ(Format(0, 5).dwEffects & kEffects, DWORD{CFE_ITALIC | CFE_STRIKEOUT});
    EXPECT_EQ(Format(0, 5).crTextColor, RGB(128, 0, 0));
    EXPECT_EQ(Format(6, 11).dwEffects & kEffects, DWORD{CFE_STRIKEOUT | CFE_AUTOCOLOR});
}

TEST_F(ReportTest, PrintsTheSelectionOrAll) {
    printer_.page = {5100, 6600};  // 8.5 by 11 inches at 600 dpi
    Type("primo\rsecondo");
    document_.Print();
    EXPECT_EQ(printer_.document, "Senza titolo");
    ASSERT_EQ(printer_.pages.size(), 1U);
    ASSERT_EQ(printer_.pages[0].size(), 2U);
    EXPECT_EQ(printer_.pages[0][0].text, "primo");
    EXPECT_EQ(printer_.pages[0][0].rect.left, 600);             // an inch
    EXPECT_EQ(printer_.pages[0][0].font.character_height, 83);  // 10 pt

    SavedAs("stampa.tnv");
    Select(7, 9);
    document_.Print();
    EXPECT_EQ(printer_.document, Path("stampa.tnv"));
    ASSERT_EQ(printer_.pages.size(), 2U);
    ASSERT_EQ(printer_.pages[1].size(), 1U);
    EXPECT_EQ(printer_.pages[1][0].text, "se");
    app_.open_printer = [] { return nullptr; };
    document_.Print();
    EXPECT_EQ(printer_.pages.size(), 2U);
}

TEST_F(ReportTest, ToolbarBreaksIntoEvenRowsAndTellsTips) {
    constexpr LONG kWidth = 130;
    const auto place_of = [this](int command) {
        RECT place{};
        SendMessageW(Toolbar(), TB_GETRECT, static_cast<WPARAM>(command),
                     reinterpret_cast<LPARAM>(&place));
        return place;
    };
    document_.Layout({0, 0, kWidth, 400});
    RECT before = place_of(CMD_BOLD);
    for (const int command : {CMD_COLOR_MENU, CMD_ALIGN_LEFT, CMD_ALIGN_RIGHT, CMD_WORD_WRAP,
                              CMD_BULLETS, CMD_SUPERSCRIPT, CMD_SUBSCRIPT, CMD_FONT}) {
        const RECT place = place_of(command);
        EXPECT_LE(place.right, kWidth) << command;
        EXPECT_TRUE(place.top == before.top || place.top == before.bottom) << command;
        before = place;
    }
    EXPECT_GT(before.top, 0);
    document_.Layout({0, 0, 640, 400});
    EXPECT_EQ(place_of(CMD_FONT).top, place_of(CMD_BOLD).top);

    NMTTDISPINFOW request{};
    request.hdr.code = TTN_GETDISPINFOW;
    request.hdr.idFrom = CMD_SUPERSCRIPT;
    LRESULT result = 0;
    EXPECT_TRUE(document_.OnNotify(request.hdr, result));
    EXPECT_EQ(Narrow(request.lpszText), "Apice  (CTRL+U)");
    request.hdr.idFrom = CMD_OPEN;
    EXPECT_FALSE(document_.OnNotify(request.hdr, result));
    Command(CMD_BOLD);
    document_.OnDpiChanged();
    EXPECT_TRUE(IsChecked(CMD_BOLD));
}

}  // namespace
}  // namespace tonvale
