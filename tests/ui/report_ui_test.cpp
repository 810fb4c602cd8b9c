// What the commands of the report document do to its text, its menus and the printer.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <functional>
#include <string>
#include <utility>

#include "resources/resource.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

TEST_F(ReportTest, StartsEmptyWithItsOwnFormats) {
    ASSERT_TRUE(host_->created);
    EXPECT_EQ(host_->document.path(), "");
    EXPECT_FALSE(host_->document.IsModified());
    EXPECT_EQ(Send(EM_GETLIMITTEXT), 1048575);
    const CHARFORMAT2W format = Format(0, 0);
    EXPECT_EQ(Narrow(format.szFaceName), "Arial");
    EXPECT_EQ(format.yHeight, 200);
    EXPECT_NE(format.dwEffects & CFE_AUTOCOLOR, 0U);
    const PARAFORMAT paragraph = ParagraphFormat(0);
    ASSERT_EQ(paragraph.cTabCount, 8);
    EXPECT_EQ(paragraph.rgxTabs[0], 0);
    EXPECT_EQ(paragraph.rgxTabs[7], 7000);
    EXPECT_TRUE(IsChecked(CMD_WORD_WRAP));
    EXPECT_TRUE(IsChecked(CMD_ALIGN_LEFT));
    EXPECT_FALSE(IsChecked(CMD_BOLD));
    // Setting the colour gives the one before.
    EXPECT_EQ(static_cast<COLORREF>(Send(EM_SETBKGNDCOLOR, 0, RGB(255, 255, 210))),
              RGB(255, 255, 210));
}

TEST_F(ReportTest, TogglesEffectsAndShowsThem) {
    Type("uno due tre");
    constexpr std::pair<int, DWORD> kEffects[] = {
        {CMD_BOLD, CFE_BOLD}, {CMD_ITALIC, CFE_ITALIC}, {CMD_UNDERLINE, CFE_UNDERLINE}};
    for (const auto& [command, effect] : kEffects) {
        Select(0, 3);
        Command(command);
        EXPECT_TRUE(IsChecked(command));
        EXPECT_TRUE(host_->document.IsModified());
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

TEST_F(ReportTest, EveryEditIsOneToBeSaved) {
    Type("uno due");
    const std::pair<const char*, std::function<void()>> edits[] = {
        {"bold", [this] { Command(CMD_BOLD); }},
        {"subscript", [this] { Command(CMD_SUBSCRIPT); }},
        {"color", [this] { Command(CMD_COLOR_FIRST); }},
        {"bullets", [this] { Command(CMD_BULLETS); }},
        {"alignment", [this] { Command(CMD_ALIGN_CENTER); }},
        {"cut", [this] { host_->document.Cut(); }},
        {"undo", [this] { host_->document.Undo(); }},
        {"redo", [this] { host_->document.Redo(); }},
        {"paste", [this] { host_->document.Paste(); }},
    };
    for (const auto& [name, edit] : edits) {
        SelectAll();
        Send(EM_SETMODIFY, FALSE);
        edit();
        EXPECT_TRUE(host_->document.IsModified()) << name;
    }
    // What changes nothing does not.
    Select(0, 0);
    Send(EM_EMPTYUNDOBUFFER);
    Send(EM_SETMODIFY, FALSE);
    host_->document.Copy();
    host_->document.Cut();
    host_->document.Undo();
    host_->document.Redo();
    Command(CMD_WORD_WRAP);
    EXPECT_FALSE(host_->document.IsModified());
}

TEST_F(ReportTest, RaisesAndLowersText) {
    Type("H2O");
    Select(1, 2);
    const struct {
        int command;
        LONG offset, height;
        bool is_lowered, is_raised;
    } steps[] = {{CMD_SUBSCRIPT, -50, 150, true, false},
                 {CMD_SUPERSCRIPT, 50, 150, false, true},
                 {CMD_SUPERSCRIPT, 0, 200, false, false}};
    for (const auto& step : steps) {
        Command(step.command);
        EXPECT_EQ(Format(1, 2).yOffset, step.offset);
        EXPECT_EQ(Format(1, 2).yHeight, step.height);
        EXPECT_EQ(IsChecked(CMD_SUBSCRIPT), step.is_lowered);
        EXPECT_EQ(IsChecked(CMD_SUPERSCRIPT), step.is_raised);
    }
}

TEST_F(ReportTest, ShowsLoweredTextDownToItsFeet) {
    Type("ppp\ro");
    Select(0, 3);
    Command(CMD_SUBSCRIPT);
    // In the uppermost pixels of the second line, which has nothing there.
    const auto has_feet = [this] {
        UpdateWindow(host_->editor());
        POINTL second{};
        Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&second), Send(EM_LINEINDEX, 1));
        const WindowDc dc(host_->editor());
        for (int i = 0; i < 60; ++i) {
            const COLORREF color = GetPixel(dc.get(), second.x + i % 20, second.y + i / 20);
            if (color != RGB(255, 255, 210)) return true;
        }
        return false;
    };
    Select(5, 5);
    EXPECT_TRUE(has_feet());
    Select(0, 3);
    Send(WM_CLEAR);
    EXPECT_FALSE(has_feet());
}

TEST_F(ReportTest, SetsColors) {
    Type("x");
    SelectAll();
    Command(CMD_COLOR_FIRST + 2);
    EXPECT_EQ(Format(0, 1).crTextColor, RGB(0, 255, 0));
    EXPECT_EQ(Format(0, 1).dwEffects & CFE_AUTOCOLOR, 0U);
    Command(CMD_COLOR_AUTOMATIC);
    EXPECT_NE(Format(0, 1).dwEffects & CFE_AUTOCOLOR, 0U);
}

TEST_F(ReportTest, FormatsParagraphsWhileTheyAreWrapped) {
    Type("riga");
    Command(CMD_ALIGN_CENTER);
    EXPECT_EQ(ParagraphFormat(0).wAlignment, PFA_CENTER);
    EXPECT_TRUE(IsChecked(CMD_ALIGN_CENTER));
    EXPECT_FALSE(IsChecked(CMD_ALIGN_LEFT));
    Command(CMD_BULLETS);
    EXPECT_EQ(ParagraphFormat(0).wNumbering, PFN_BULLET);
    EXPECT_TRUE(IsChecked(CMD_BULLETS));
    Command(CMD_BULLETS);
    EXPECT_EQ(ParagraphFormat(0).wNumbering, 0);
    Command(CMD_BULLETS);
    Type("\raltra");
    Command(CMD_ALIGN_LEFT);
    Command(CMD_BULLETS);
    SelectAll();  // mixed: neither is set
    for (int command : {CMD_BULLETS, CMD_ALIGN_LEFT, CMD_ALIGN_CENTER}) {
        EXPECT_FALSE(IsChecked(command)) << command;
    }
    Command(CMD_BULLETS);
    EXPECT_TRUE(IsChecked(CMD_BULLETS));
    Command(CMD_BULLETS);
    Command(CMD_ALIGN_CENTER);

    Command(CMD_WORD_WRAP);
    EXPECT_FALSE(IsChecked(CMD_WORD_WRAP));
    for (int command : {CMD_ALIGN_LEFT, CMD_ALIGN_CENTER, CMD_ALIGN_RIGHT}) {
        EXPECT_FALSE(IsEnabled(command));
    }
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
    const auto menu = [](HWND window) {
        return reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
    };
    ui.Do([this] {
        PostMessageW(host_->editor(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(20, 10));
        PostMessageW(host_->editor(), WM_RBUTTONUP, 0, MAKELPARAM(20, 10));
    });
    ui.OnWindowOfClass("#32768", [menu](HWND window) {
        HMENU format = menu(window);
        EXPECT_EQ(GetMenuState(format, CMD_BOLD, MF_BYCOMMAND) & MF_CHECKED, UINT{MF_CHECKED});
        EXPECT_EQ(GetMenuState(format, CMD_ITALIC, MF_BYCOMMAND) & MF_CHECKED, 0U);
        EXPECT_EQ(GetMenuState(format, CMD_WORD_WRAP, MF_BYCOMMAND) & MF_CHECKED, UINT{MF_CHECKED});
        EXPECT_NE(GetMenuState(format, CMD_COLOR_LAST, MF_BYCOMMAND), UINT_MAX) << "in its submenu";
    });
    ui.Screenshot("report_menu_format").Press({'E'});  // "&Elenco puntato"
    ui.WaitUntil("bullets", [this] { return IsChecked(CMD_BULLETS); });
    ui.Do([this] { PostMessageW(host_->window, WM_COMMAND, CMD_COLOR_MENU, 0); });
    ui.OnWindowOfClass("#32768", [menu](HWND window) {
        HMENU colors = menu(window);
        wchar_t text[32] = {};
        GetMenuStringW(colors, 32788, text, 32, MF_BYCOMMAND);
        EXPECT_EQ(Narrow(text), "Verde acqua");
        GetMenuStringW(colors, 32797, text, 32, MF_BYCOMMAND);
        EXPECT_EQ(Narrow(text), "Bianco");
    });
    ui.Screenshot("report_menu_colors").Press({VK_DOWN}).Press({VK_DOWN}).Press({VK_RETURN});
    ui.WaitUntil("color", [this] { return Format(0, 5).crTextColor == RGB(128, 0, 0); });
    ui.Run();
}

TEST_F(ReportTest, ChoosesFontOnItsOwnScale) {
    Type("testo misto");
    Select(0, 5);
    Command(CMD_ITALIC);
    UiDriver ui;
    constexpr int kFace = 0x470;
    constexpr int kSize = 0x472;
    constexpr int kColor = 0x473;
    constexpr int kStrikeOut = 0x410;
    constexpr int kUnderline = 0x411;
    const int dpi = static_cast<int>(GetDpiForSystem());
    const auto ask = [this] { PostMessageW(host_->window, WM_COMMAND, CMD_FONT, 0); };
    CHARFORMAT2W size = Format(0, 5);
    size.dwMask = CFM_SIZE;
    size.yHeight = 220;
    Send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&size));
    ui.Do(ask).OnWindowOfClass("#32770", [dpi](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, kFace), "Arial");
        EXPECT_EQ(TextOf(dialog, kSize), std::to_string(MulDiv(22, 72, dpi)));  // 22 pixels
    });
    ui.Screenshot("report_font_dialog").Command(IDOK);
    ui.WaitUntil("closed", [] { return !FindWindowW(L"#32770", nullptr); });
    ui.Do([this, ask] {
        const CHARFORMAT2W format = Format(0, 5);
        EXPECT_EQ(format.yHeight, 220) << "rounded by the dialog";
        EXPECT_NE(format.dwEffects & CFE_ITALIC, 0U);
        EXPECT_NE(format.dwEffects & CFE_AUTOCOLOR, 0U);
        Command(CMD_SUPERSCRIPT);
        Command(CMD_UNDERLINE);
        Command(CMD_COLOR_FIRST + 9);
        SelectAll();
        ask();
    });
    ui.OnWindowOfClass("#32770", [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, kSize), "");  // mixed
        EXPECT_EQ(TextOf(dialog, kFace), "Arial");
        EXPECT_EQ(TextOf(dialog, kColor), "");
        EXPECT_EQ(IsDlgButtonChecked(dialog, kUnderline), UINT{BST_INDETERMINATE});
        SendDlgItemMessageW(dialog, kStrikeOut, BM_CLICK, 0, 0);
    });
    ui.Screenshot("report_font_dialog_mixed").Command(IDOK).WaitUntil("closed", [] {
        return !FindWindowW(L"#32770", nullptr);
    });
    ui.Do([this, ask] {
        // What was mixed still is.
        EXPECT_EQ(Format(0, 5).yHeight, 150);
        EXPECT_EQ(Format(6, 11).yHeight, 200);
        constexpr DWORD kEffects = CFE_ITALIC | CFE_UNDERLINE | CFE_STRIKEOUT | CFE_AUTOCOLOR;
        EXPECT_EQ(Format(0, 5).dwEffects & kEffects,
                  DWORD{CFE_ITALIC | CFE_UNDERLINE | CFE_STRIKEOUT});
        EXPECT_EQ(Format(0, 5).crTextColor, RGB(255, 0, 0));
        EXPECT_EQ(Format(6, 11).dwEffects & kEffects, DWORD{CFE_STRIKEOUT | CFE_AUTOCOLOR});
        SelectAll();
        ask();
    });
    ui.OnWindowOfClass("#32770", [](HWND dialog) {
        SendDlgItemMessageW(dialog, kColor, CB_SETCURSEL, 1, 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(kColor, CBN_SELCHANGE), 0);
        SendDlgItemMessageW(dialog, kUnderline, BM_CLICK, 0, 0);  // to none
    });
    ui.SetText(kSize, "18").Command(IDOK);
    ui.WaitUntil("closed", [] { return !FindWindowW(L"#32770", nullptr); }).Run();
    const CHARFORMAT2W chosen = Format(0, 11);
    EXPECT_EQ(chosen.yHeight, 10 * MulDiv(18, dpi, 72));
    EXPECT_EQ(chosen.dwEffects & (CFE_UNDERLINE | CFE_AUTOCOLOR), 0U);
    EXPECT_NE(chosen.dwMask & CFM_COLOR, 0U);
    EXPECT_EQ(chosen.crTextColor, RGB(128, 0, 0));
}

TEST_F(ReportTest, PrintsTheSelectionOrAll) {
    printer_.page = {5100, 6600};  // 8.5 by 11 inches at 600 dpi
    Type("primo\rsecondo");
    host_->document.Print();
    EXPECT_EQ(printer_.document, "Senza titolo");
    ASSERT_EQ(printer_.pages.size(), 1U);
    ASSERT_EQ(printer_.pages[0].size(), 2U);
    EXPECT_EQ(printer_.pages[0][0].text, "primo");
    EXPECT_EQ(printer_.pages[0][0].rect.left, 600);
    EXPECT_EQ(printer_.pages[0][0].rect.top, 600);
    EXPECT_EQ(printer_.pages[0][0].font.face, "Arial");
    EXPECT_EQ(printer_.pages[0][0].font.character_height, 83);  // 10 pt
    EXPECT_TRUE(printer_.ended);

    SavedAs("stampa.tnv");
    Select(7, 9);
    Command(CMD_ALIGN_RIGHT);
    host_->document.Print();
    EXPECT_EQ(printer_.document, Path("stampa.tnv"));
    ASSERT_EQ(printer_.pages.size(), 2U);
    ASSERT_EQ(printer_.pages[1].size(), 1U);
    EXPECT_EQ(printer_.pages[1][0].text, "se");
    app_.open_printer = [] { return nullptr; };
    host_->document.Print();
    EXPECT_EQ(printer_.pages.size(), 2U);
}

TEST_F(ReportTest, ToolbarBreaksIntoEvenRows) {
    constexpr LONG kWidth = 130;
    const auto place_of = [this](int command) {
        RECT place{};
        SendMessageW(host_->toolbar(), TB_GETRECT, static_cast<WPARAM>(command),
                     reinterpret_cast<LPARAM>(&place));
        return place;
    };
    host_->document.Layout({0, 0, kWidth, 400});
    RECT before = place_of(CMD_BOLD);
    for (const int command : {CMD_COLOR_MENU, CMD_ALIGN_LEFT, CMD_ALIGN_RIGHT, CMD_WORD_WRAP,
                              CMD_BULLETS, CMD_SUPERSCRIPT, CMD_SUBSCRIPT, CMD_FONT}) {
        const RECT place = place_of(command);
        EXPECT_LE(place.right, kWidth) << command;
        EXPECT_TRUE(place.top == before.top || place.top == before.bottom) << command;
        before = place;
    }
    EXPECT_GT(before.top, 0);
    host_->document.Layout({0, 0, 640, 400});
    EXPECT_EQ(place_of(CMD_FONT).top, place_of(CMD_BOLD).top);
}

TEST_F(ReportTest, TipsAndResolution) {
    NMTTDISPINFOW request{};
    request.hdr.code = TTN_GETDISPINFOW;
    request.hdr.idFrom = 32808;
    LRESULT result = 0;
    EXPECT_TRUE(host_->document.OnNotify(request.hdr, result));
    ASSERT_NE(request.lpszText, nullptr);
    EXPECT_EQ(Narrow(request.lpszText), "Apice  (CTRL+U)");
    request.hdr.idFrom = CMD_OPEN;
    EXPECT_FALSE(host_->document.OnNotify(request.hdr, result));
    Type("x");
    SelectAll();
    Command(CMD_BOLD);
    host_->document.OnDpiChanged();
    EXPECT_TRUE(IsChecked(CMD_BOLD));
    EXPECT_EQ(SendMessageW(host_->toolbar(), TB_BUTTONCOUNT, 0, 0), 16);
    host_->document.Show(false);
    EXPECT_FALSE(IsWindowVisible(host_->editor()));
    EXPECT_FALSE(IsWindowVisible(host_->toolbar()));
}

}  // namespace
}  // namespace tonvale
