// The main window as a whole: toolbar, views of results, splash window, about box, keys.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <winspool.h>

#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/bitmap_file_win.h"
#include "app/splash_window.h"
#include "app/view_switch_win.h"
#include "common/result_view.h"
#include "dialogs/clipboard_win.h"
#include "hearing/loss_comparison.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kNotesTitle[] = "Un commento per la stampa?";
constexpr char kCopyFailure[] = "Impossibile copiare negli appunti!";

// How a page was drawn last.
struct Drawing {
    ViewKind kind = ViewKind::kTable;
    Rect area;
    DrawingStyle style;
};

// A result whose pages are a red diagonal on white, and which writes down how it was drawn.
ResultView FakeResult(Drawing& drawn, bool has_audiogram = true,
                      const std::string& first_cell = "Età") {
    constexpr std::pair<ViewKind, const char*> kPages[] = {{ViewKind::kTable, "&Tabella"},
                                                           {ViewKind::kChart, "&Grafico"},
                                                           {ViewKind::kAudiogram, "&Audiogramma"}};
    ResultView view{.case_name = "NIPTS, 35 anni"};
    for (const auto& [kind, text] : kPages) {
        if (kind == ViewKind::kAudiogram && !has_audiogram) continue;
        ResultPage page{.kind = kind, .menu_text = text};
        if (kind != ViewKind::kTable) {
            page.curve_names = {"500 Hz", "1000 Hz", "2000 Hz"};
            page.empty_reason = "Nessuna curva";
        }
        page.draw = [&drawn, kind = kind](Canvas& canvas, const Rect& area,
                                          const DrawingStyle& style) {
            drawn = {kind, area, style};
            canvas.DrawLine({area.left, area.top}, {area.right, area.bottom}, {{255, 0, 0}, 3});
            canvas.DrawTextAt({20, 5}, "Età 45 anni");
        };
        view.pages.push_back(page);
    }
    view.table_text = [first_cell](std::string_view separator) {
        return first_cell + std::string(separator) + "1,5\r\n";
    };
    return view;
}

class ShellTest : public MainWindowTest {
  protected:
    static HWND Toolbar() { return GetDlgItem(Main(), IDC_TOOLBAR); }
    static HWND Results() { return GetDlgItem(Main(), IDC_RESULT_VIEW); }

    static void Show(UiDriver& ui, const ResultView& result) {
        ui.OnWindowOfClass(kMainClass, [result](HWND) { TheProgram().ShowResult(result); });
    }

    static bool IsButton(int command, UINT state) {
        return (SendMessageW(Toolbar(), TB_GETSTATE, static_cast<WPARAM>(command), 0) & state) != 0;
    }

    // The view items: "text", then "-" when greyed and "*" when checked. Their buttons are alike.
    static std::string ViewItems() {
        std::string items;
        for (const MenuCommand& item : OpenPopup(Main(), GetSubMenu(GetMenu(Main()), 2))) {
            items += item.text.substr(0, item.text.find('\t')) + (item.enabled ? "" : "-") +
                     (item.checked ? "*" : "") + "|";
            EXPECT_EQ(IsButton(item.id, TBSTATE_ENABLED), item.enabled) << item.text;
            EXPECT_EQ(IsButton(item.id, TBSTATE_CHECKED), item.checked) << item.text;
        }
        return items;
    }

    static std::string ToolTipOf(int command) {
        NMTTDISPINFOW request{};
        request.hdr = {Toolbar(), static_cast<UINT_PTR>(command), TTN_GETDISPINFOW};
        request.lpszText = request.szText;
        SendMessageW(Main(), WM_NOTIFY, request.hdr.idFrom, reinterpret_cast<LPARAM>(&request));
        return Narrow(request.lpszText);
    }
};

TEST_F(ShellTest, ToolbarFollowsTheMenusAndGrowsWithTheResolution) {
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [](HWND main) {
        const auto images =
            reinterpret_cast<HIMAGELIST>(SendMessageW(Toolbar(), TB_GETIMAGELIST, 0, 0));
        std::set<int> commands;
        TBBUTTON button{};
        for (WPARAM position = 0;
             SendMessageW(Toolbar(), TB_GETBUTTON, position, reinterpret_cast<LPARAM>(&button));
             ++position) {
            if (button.fsStyle & BTNS_SEP) continue;
            EXPECT_TRUE(commands.insert(button.idCommand).second) << button.idCommand;
            EXPECT_LT(button.iBitmap, ImageList_GetImageCount(images)) << button.idCommand;
            EXPECT_NE(ToolTipOf(button.idCommand), "") << button.idCommand;
        }
        EXPECT_FALSE(IsButton(CMD_COPY, TBSTATE_ENABLED)) << "the document is empty";
        // One rule for menu items and buttons.
        for (int position = 0; position < GetMenuItemCount(GetMenu(main)); ++position) {
            for (const auto& item : OpenPopup(main, GetSubMenu(GetMenu(main), position))) {
                if (commands.erase(item.id) == 0) continue;
                EXPECT_EQ(IsButton(item.id, TBSTATE_ENABLED), item.enabled) << item.text;
            }
        }
        EXPECT_TRUE(commands.empty()) << *commands.begin() << " is not in the menus";
        int width = 0;
        int height = 0;
        EXPECT_TRUE(ImageList_GetIconSize(images, &width, &height));
        const UINT dpi = GetDpiForWindow(main);
        EXPECT_EQ(width, dpi >= 192 ? 32 : dpi >= 144 ? 24 : dpi >= 120 ? 20 : 16);
        // Too narrow for all buttons: they wrap, and the content begins below them.
        SetWindowPos(main, nullptr, 0, 0, 420, 400, SWP_NOMOVE | SWP_NOZORDER);
        RECT toolbar{};
        RECT content{};
        GetWindowRect(Toolbar(), &toolbar);
        GetWindowRect(Results(), &content);
        EXPECT_GT(toolbar.bottom - toolbar.top, 2 * height);
        EXPECT_GE(content.top, toolbar.bottom);
    });
    ui.Screenshot("toolbar_narrow");
    RunToEnd(ui);
}

TEST_F(ShellTest, ShowsResultsAndGoesBackToTheDocument) {
    Drawing drawn;
    const auto chart_image = [] {
        return SendMessageW(Toolbar(), TB_GETBITMAP, CMD_VIEW_CHART, 0);
    };
    LRESULT prediction_image = 0;
    UiDriver ui;
    Show(ui, FakeResult(drawn, false));
    ui.Do([] {
        EXPECT_EQ(ViewItems(), "&Grafico|&Tabella-*|Do&cumento|");
        EXPECT_TRUE(IsButton(CMD_VIEW_AUDIOGRAM, TBSTATE_HIDDEN));
    });
    ui.Command(CMD_VIEW_AUDIOGRAM).Do([&] {
        EXPECT_EQ(TheProgram().results().kind(), ViewKind::kTable) << "there is no audiogram";
    });
    Show(ui, MakeResultView(LossComparisonState()));
    ui.Do([&] {
        EXPECT_EQ(ViewItems(), "Perdite-&Livello|&Perdite-Tempo|&Tabella-*|Do&cumento|");
        EXPECT_EQ(ToolTipOf(CMD_VIEW_CHART), "Perdite-Tempo");
        prediction_image = chart_image();
    });
    Show(ui, FakeResult(drawn));
    ui.OnWindowOfClass(kMainClass, [&](HWND main) {
        EXPECT_TRUE(IsZoomed(main));
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(main, IDC_REPORT_EDITOR)));
        EXPECT_EQ(GetFocus(), Results());
        EXPECT_EQ(ViewItems(), "&Audiogramma|&Grafico|&Tabella-*|Do&cumento|");
        EXPECT_EQ(ToolTipOf(CMD_VIEW_CHART), "Grafico");
        EXPECT_NE(chart_image(), prediction_image);
        EXPECT_FALSE(IsButton(CMD_CUT, TBSTATE_ENABLED));
        EXPECT_FALSE(IsButton(CMD_PASTE, TBSTATE_ENABLED));
        EXPECT_TRUE(IsButton(CMD_COPY, TBSTATE_ENABLED));
    });
    ui.Screenshot("result_view").Command(CMD_VIEW_CHART).OnWindowOfClass(kMainClass, [&](HWND) {
        EXPECT_EQ(ViewItems(), "&Audiogramma|&Grafico-*|&Tabella|Do&cumento|");
        UpdateWindow(Results());
        EXPECT_EQ(drawn.kind, ViewKind::kChart);
    });
    ui.Press({VK_CONTROL, VK_F4}).WaitUntil("document", [] {
        return IsWindowVisible(GetDlgItem(Main(), IDC_REPORT_EDITOR)) != 0;
    });
    ui.Do([] {
        EXPECT_FALSE(IsWindowVisible(Results()));
        EXPECT_EQ(ViewItems(), "&Audiogramma|&Grafico|&Tabella|Do&cumento-|");
    });
    // The last result is still there.
    ui.OnWindowOfClass(kMainClass).Command(CMD_VIEW_AUDIOGRAM).Do([&] {
        UpdateWindow(Results());
        EXPECT_EQ(drawn.kind, ViewKind::kAudiogram);
    });
    RunToEnd(ui);
}

SIZE ClipboardPictureSize() {
    BITMAP size{};
    if (OpenClipboard(nullptr)) {
        GetObjectW(GetClipboardData(CF_BITMAP), sizeof size, &size);
        CloseClipboard();
    }
    return {size.bmWidth, size.bmHeight};
}

TEST_F(ShellTest, CopiesTheTableAsTextAndTheChartAsPictureUnlessTheClipboardIsHeld) {
    const UINT csv = RegisterClipboardFormatW(L"Csv");
    Drawing drawn;
    HWND holder = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                  nullptr, nullptr);
    UiDriver ui;
    Show(ui, FakeResult(drawn));
    ui.Do([holder] { EXPECT_TRUE(OpenClipboard(holder)); });
    for (int view : {CMD_VIEW_CHART, CMD_VIEW_TABLE}) {
        ui.OnWindowOfClass(kMainClass).Command(view).Command(CMD_COPY);
        ui.AnswerMessage("Attenzione:", kCopyFailure, IDOK).WaitClosed("Attenzione:");
    }
    ui.OnWindowOfClass(kMainClass, [holder](HWND) {
        CloseClipboard();
        DestroyWindow(holder);
    });
    ui.Press({VK_CONTROL, 'C'}).WaitUntil("copy", [&] {
        return ClipboardBytes(csv).starts_with("Et");
    });
    ui.Do([&] { TheProgram().ShowResult(FakeResult(drawn, true, std::string(5000, '9'))); });
    ui.Command(CMD_COPY).Do([&] { EXPECT_EQ(std::strlen(ClipboardBytes(csv).c_str()), 4095U); });
    ui.Command(CMD_VIEW_CHART).Command(CMD_COPY).Do([] {
        RECT area{};
        GetClientRect(Results(), &area);
        EXPECT_EQ(ClipboardPictureSize().cx, area.right);
        EXPECT_EQ(ClipboardPictureSize().cy, area.bottom);
    });
    // A rectangle drawn with the mouse, from its lower right corner, marks what is copied.
    ui.Do([] {
        SendMessageW(Results(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(160, 110));
        SendMessageW(Results(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(60, 40));
        SendMessageW(Results(), WM_LBUTTONUP, 0, MAKELPARAM(60, 40));
    });
    ui.OnWindowOfClass(kMainClass).Screenshot("result_view_frame").Command(CMD_COPY).Do([] {
        EXPECT_EQ(ClipboardPictureSize().cx, 98);
        EXPECT_EQ(ClipboardPictureSize().cy, 68);
        // A click draws none.
        SendMessageW(Results(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
        SendMessageW(Results(), WM_LBUTTONUP, 0, MAKELPARAM(10, 10));
    });
    ui.Command(CMD_COPY).Do([] { EXPECT_GT(ClipboardPictureSize().cx, 98); });
    RunToEnd(ui);
}

TEST_F(ShellTest, ExportsTableAndChartByTheirOwnExtensionOnly) {
    Drawing drawn;
    FaultyFileSystem disk(SystemFiles());
    UiDriver ui;
    Show(ui, FakeResult(drawn));
    ui.Command(CMD_SAVE_AS);
    TypeUnsuitableName(ui, Path("prova.bmp"), "\".csv\" oppure \".tnv\"");
    SaveNewFile(ui, Path("tabella.CSV"));
    ui.WaitClosed(kSaveTitle).OnWindowOfClass(kMainClass, [&](HWND) {
        EXPECT_EQ(ReadFile("tabella.CSV"), "Et\xe0" + ListSeparator() + "1,5\r\n");
    });
    ui.Command(CMD_VIEW_CHART).Command(CMD_SAVE_AS);
    TypeUnsuitableName(ui, Path("prova.csv"), "\".bmp\" oppure \".tnv\"");
    SaveNewFile(ui, Path("grafico.bmp"));
    ui.WaitClosed(kSaveTitle).OnWindowOfClass(kMainClass, [&](HWND) {
        EXPECT_EQ(ReadFile("grafico.bmp").substr(0, 2), "BM");
        EXPECT_EQ(FileCount(), 2);
        disk.is_full = true;
        TheProgram().context().files = &disk;
    });
    ui.Command(CMD_SAVE_AS);
    SaveNewFile(ui, Path("altro.bmp"));
    ui.AnswerMessage(Path("altro.bmp"), "Impossibile salvare: il disco è pieno.", IDOK);
    // The document can be saved from any view.
    ui.OnWindowOfClass(kMainClass, [](HWND) { TheProgram().context().files = &SystemFiles(); });
    ui.Command(CMD_SAVE_AS);
    SaveNewFile(ui, Path("relazione.TNV"));
    ui.WaitClosed(kSaveTitle).OnWindowOfClass(kMainClass, [&](HWND window) {
        EXPECT_EQ(ReadFile("relazione.TNV").substr(0, 6), "{\\rtf1");
        EXPECT_EQ(Status(window), "Nessuna curva (NIPTS, 35 anni)");
    });
    ui.Command(CMD_VIEW_TABLE).OnWindowOfClass(kMainClass, [&](HWND window) {
        EXPECT_EQ(Status(window), "NIPTS, 35 anni");
    });
    ui.Command(CMD_VIEW_DOCUMENT).OnWindowOfClass(kMainClass, [&](HWND window) {
        EXPECT_EQ(Status(window), "relazione.TNV");
    });
    RunToEnd(ui);
}

class BitmapFileTest : public FolderTest {};

TEST_F(BitmapFileTest, HoldsTheDotsAtEveryDepth) {
    const WindowDc screen(nullptr);
    const UniqueDc memory(CreateCompatibleDC(screen.get()));
    const UniqueBitmap picture(CreateCompatibleBitmap(screen.get(), 5, 3));
    {
        const ScopedSelection selection(memory.get(), picture.get());
        const RECT all{0, 0, 5, 3};
        FillRect(memory.get(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        SetPixel(memory.get(), 0, 2, RGB(0, 0, 0));
    }
    for (const int depth : {1, 4, 8, 16, 24, 32}) {
        const std::wstring file = Widen(WriteFile("prova.bmp", BitmapFile(picture.get(), depth)));
        const UniqueBitmap loaded(static_cast<HBITMAP>(LoadImageW(
            nullptr, file.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
        ASSERT_TRUE(loaded != nullptr) << depth;
        const ScopedSelection selection(memory.get(), loaded.get());
        EXPECT_EQ(GetPixel(memory.get(), 0, 2), RGB(0, 0, 0)) << depth;
        EXPECT_EQ(GetPixel(memory.get(), 1, 2), RGB(255, 255, 255)) << depth;
        EXPECT_EQ(GetPixel(memory.get(), 0, 0), RGB(255, 255, 255)) << depth;
    }
    EXPECT_TRUE(BitmapFile(nullptr, 24).empty());
}

TEST_F(ShellTest, PrintsWhatIsShownWithTheNotes) {
    Drawing drawn;
    FakePrinter printer;
    printer.colors = 2;
    UiDriver ui;
    Show(ui, FakeResult(drawn));
    ui.Do([&] {
        TheProgram().context().open_printer = [&] {
            return std::make_unique<BorrowedPrinter>(printer);
        };
    });
    ui.Command(CMD_PRINT).OnWindow(kNotesTitle).SetText(IDC_NOTES_EDIT, "al tornio").Click(IDOK);
    ui.WaitClosed(kNotesTitle).OnWindowOfClass(kMainClass, [&](HWND) {
        EXPECT_EQ(printer.document, "Tabella");
        EXPECT_EQ(printer.pages.back().back().text, "al tornio");
        EXPECT_EQ(drawn.area, (Rect{0, 0, 4000, 6600}));
        EXPECT_FALSE(drawn.style.use_color);
    });
    ui.Command(CMD_VIEW_CHART).Command(CMD_PRINT).OnWindow(kNotesTitle).Click(IDCANCEL);
    ui.WaitClosed(kNotesTitle);
    RunToEnd(ui);
    EXPECT_EQ(printer.document, "Tabella");  // still
}

// Opens the menu of curves, expects its items ("*" behind the checked one), and chooses by keys.
void ChooseCurve(UiDriver& ui, const std::string& expected, int steps_down) {
    ui.Do([] {
        HWND results = GetDlgItem(Main(), IDC_RESULT_VIEW);
        PostMessageW(results, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(results),
                     MAKELPARAM(80, 120));
    });
    ui.WaitUntil("menu of curves", [] { return FindWindowW(L"#32768", nullptr) != nullptr; });
    ui.Do([expected] {
        const auto menu = reinterpret_cast<HMENU>(
            SendMessageW(FindWindowW(L"#32768", nullptr), MN_GETHMENU, 0, 0));
        std::string items;
        for (const MenuCommand& item : OpenPopup(GetDesktopWindow(), menu)) {
            items += item.text + (item.checked ? "*|" : "|");
        }
        EXPECT_EQ(items, expected);
    });
    for (int step = 0; step < steps_down; ++step) ui.Press({VK_DOWN});
    ui.Press({VK_RETURN});
    ui.WaitUntil("menu closed", [] { return FindWindowW(L"#32768", nullptr) == nullptr; });
}

TEST_F(ShellTest, PicksOneCurveByTheMouseMenu) {
    Drawing drawn;
    UiDriver ui;
    Show(ui, FakeResult(drawn));
    ui.Do([] {
        SendMessageW(Results(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Results()),
                     MAKELPARAM(80, 120));
        EXPECT_EQ(FindWindowW(L"#32768", nullptr), nullptr) << "a table has no curves";
    });
    ui.OnWindowOfClass(kMainClass).Command(CMD_VIEW_CHART);
    ChooseCurve(ui, "Tutte*|500 Hz|1000 Hz|2000 Hz|", 3);
    ui.OnWindowOfClass(kMainClass, [&](HWND) {
        UpdateWindow(Results());
        EXPECT_EQ(drawn.style.selected_curve, 1);
    });
    ChooseCurve(ui, "Tutte|500 Hz|1000 Hz*|2000 Hz|", 4);
    // It is still chosen after a look at another chart, the table and the document.
    const auto expect_curve = [&](int command, int curve) {
        ui.OnWindowOfClass(kMainClass).Command(command).Do([curve] {
            EXPECT_EQ(TheProgram().results().selected_curve(), curve);
        });
    };
    ChooseCurve(ui, "Tutte|500 Hz|1000 Hz|2000 Hz*|", 2);
    expect_curve(CMD_VIEW_AUDIOGRAM, kAllCurves);
    expect_curve(CMD_VIEW_TABLE, kAllCurves);
    expect_curve(CMD_VIEW_DOCUMENT, kAllCurves);
    expect_curve(CMD_VIEW_CHART, 0);
    // Another result starts with all its curves.
    Show(ui, FakeResult(drawn));
    expect_curve(CMD_VIEW_CHART, kAllCurves);
    RunToEnd(ui);
}

HWND FindSplash() {
    return FindWindowW(L"Tonvale_Splash", nullptr);
}

class SplashTest : public DialogTest {};

TEST_F(SplashTest, LiesAboveItsOwnerUntilItsTimeIsOverOrAClick) {
    SplashWindow splash(instance_, owner_, 300);
    HWND window = splash.window();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GetWindow(window, GW_OWNER), owner_);
    EXPECT_TRUE(IsWindowEnabled(owner_));
    EXPECT_NE(GetActiveWindow(), window);
    EXPECT_TRUE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST);
    const ULONGLONG start = GetTickCount64();
    UiDriver ui;
    ui.WaitUntil("splash closed", [window] { return !IsWindow(window); }).Run();
    EXPECT_GE(GetTickCount64() - start, 290U);
    EXPECT_EQ(splash.window(), nullptr);
    for (UINT click : {WM_LBUTTONDOWN, WM_RBUTTONDOWN}) {
        SplashWindow clicked(instance_, owner_, 60000);
        SendMessageW(clicked.window(), click, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(clicked.window(), nullptr);
    }
    // Nothing is left when its owner goes first.
    SplashWindow left(instance_, owner_, 60000);
    DestroyWindow(owner_);
    EXPECT_EQ(left.window(), nullptr);
}

TEST_F(ShellTest, StartsWithTheSplashWindowAndShowsItInTheAboutBox) {
    constexpr char kAbout[] = "Informazioni su Tonvale";
    UiDriver ui;
    const auto click_splash_away = [&ui] {
        ui.Do([] { PostMessageW(FindSplash(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3)); });
        ui.WaitUntil("splash closed", [] { return FindSplash() == nullptr; });
    };
    ui.OnWindowOfClass(kMainClass, [](HWND main) { EXPECT_EQ(GetActiveWindow(), main); });
    click_splash_away();
    ExpectNoDialog(ui);
    // The splash window goes with the box, or at a click while the box stays.
    const auto show_about = [&] {
        ui.OnWindowOfClass(kMainClass).Command(CMD_ABOUT).OnWindow(kAbout, [](HWND box) {
            ASSERT_NE(FindSplash(), nullptr);
            EXPECT_EQ(GetActiveWindow(), box);
            EXPECT_FALSE(IsWindowEnabled(Main()));
            RECT splash{};
            RECT area{};
            GetWindowRect(FindSplash(), &splash);
            GetWindowRect(box, &area);
            EXPECT_GE(area.top, splash.bottom);
        });
    };
    show_about();
    ui.Command(IDOK).WaitClosed(kAbout);
    ui.OnWindowOfClass(kMainClass, [](HWND) { EXPECT_EQ(FindSplash(), nullptr); });
    show_about();
    click_splash_away();
    ui.AnswerMessage(kAbout,
                     "Tonvale - Esposizione al rumore e danno uditivo\r\n"
                     "Realizzato da Progetto Tonvale\r\n"
                     "Software distribuito gratuitamente dall'autore.\r\n"
                     "Copyright © 2026 Gli sviluppatori di Tonvale\r\n\r\nVersione 1.0.0.0",
                     IDOK);
    ui.WaitClosed(kAbout);
    RunToEnd(ui);
    EXPECT_EQ(FindSplash(), nullptr);
}

// The text of the report's editor.
std::string DocumentText() {
    return TextOf(Main(), IDC_REPORT_EDITOR);
}

bool IsFormatChecked(int command) {
    return SendDlgItemMessageW(Main(), IDC_FORMAT_TOOLBAR, TB_ISBUTTONCHECKED,
                               static_cast<WPARAM>(command), 0) != 0;
}

TEST_F(ShellTest, OpensDocumentsFromEverywhereAndShowsThem) {
    const std::string first = WriteFile("primo.tnv", "{\\rtf1\\ansi uno}");
    const std::string second = WriteFile("secondo.TNV", "{\\rtf1\\ansi due}");
    Drawing drawn;
    UiDriver ui;
    ui.WaitUntil("first document", [] { return DocumentText().starts_with("uno"); });
    ui.OnWindowOfClass(kMainClass, [](HWND main) {
        EXPECT_EQ(Status(main), "primo.tnv");
        EXPECT_FALSE(TheProgram().document().IsModified());
    });
    Show(ui, FakeResult(drawn));
    Drop(ui, {second});
    ui.WaitUntil("second document", [] { return DocumentText().starts_with("due"); });
    ui.Do([] {
        EXPECT_TRUE(TheProgram().views().ShowsDocument());
        EXPECT_EQ(Status(Main()), "secondo.TNV");
    });
    // Formatting keys are the document's only: they do nothing to what is hidden.
    Show(ui, FakeResult(drawn));
    ui.Press({VK_CONTROL, 'G'}).Command(CMD_VIEW_DOCUMENT).Do([] {
        EXPECT_FALSE(IsFormatChecked(CMD_BOLD));
    });
    ui.OnWindowOfClass(kMainClass).Command(CMD_NEW_DOCUMENT).Do([] {
        EXPECT_EQ(DocumentText(), "");
        EXPECT_EQ(TextOf(Main(), IDC_STATUS_BAR), kNoFile);
    });
    RunToEnd(ui, first);
}

TEST_F(ShellTest, SetsThePageUpThroughThePrinterDriver) {
    DWORD length = 0;
    GetDefaultPrinterW(nullptr, &length);
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass).Command(CMD_PAGE_SETUP);
    if (length > 0) ui.OnWindowOfClass("#32770").Command(IDCANCEL);  // of the driver
    ui.OnWindowOfClass(kMainClass);
    ExpectNoDialog(ui);
    RunToEnd(ui);
}

TEST_F(ShellTest, FollowsTheResolutionAndAsksBeforeTheSessionEnds) {
    const std::string question = "Il documento è stato modificato. Salvare le modifiche?";
    const auto may_end = [] { return SendMessageW(Main(), WM_QUERYENDSESSION, 0, 0) != FALSE; };
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [&](HWND main) {
        const RECT suggested{30, 40, 730, 540};
        SendMessageW(main, WM_DPICHANGED, MAKEWPARAM(144, 144),
                     reinterpret_cast<LPARAM>(&suggested));
        RECT area{};
        RECT client{};
        GetWindowRect(main, &area);
        EXPECT_TRUE(EqualRect(&area, &suggested));
        GetClientRect(main, &client);
        GetWindowRect(GetDlgItem(main, IDC_REPORT_EDITOR), &area);
        EXPECT_EQ(area.right - area.left, client.right);
        EXPECT_TRUE(may_end()) << "nothing would be lost";
        SendDlgItemMessageW(main, IDC_REPORT_EDITOR, EM_REPLACESEL, TRUE,
                            reinterpret_cast<LPARAM>(L"abc"));
    });
    for (const auto& [answer, expected] : {std::pair(IDCANCEL, false), {IDNO, true}}) {
        ui.Do([=, expected = expected] { EXPECT_EQ(may_end(), expected); });
        ui.AnswerMessage("Attenzione", question, answer).WaitClosed("Attenzione");
    }
    ui.OnWindowOfClass(kMainClass).Command(CMD_EXIT).AnswerMessage("Attenzione", question, IDNO);
    EXPECT_EQ(RunProgram(), 0);
    ui.Finish();
}

TEST_F(ShellTest, KeysOfTheProgramDoNotDoubleThoseOfTheEditor) {
    RecordingHelp help;
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [&](HWND main) {
        TheProgram().context().help = &help;
        SetFocus(GetDlgItem(main, IDC_REPORT_EDITOR));
        SendMessageW(GetFocus(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"abc"));
        SendMessageW(GetFocus(), EM_SETSEL, 0, 3);
    });
    ui.Press({VK_SHIFT, VK_DELETE}).WaitUntil("cut", [] { return DocumentText().empty(); });
    ui.WaitUntil("paste enabled", [] { return IsButton(CMD_PASTE, TBSTATE_ENABLED); });
    ui.Press({VK_SHIFT, VK_INSERT}).WaitUntil("paste", [] { return DocumentText() == "abc"; });
    ui.Press({VK_SHIFT, VK_INSERT}).WaitUntil("paste", [] { return DocumentText() == "abcabc"; });
    ui.Do([] { SendMessageW(GetFocus(), EM_SETSEL, 0, 3); });
    ui.Press({VK_CONTROL, VK_INSERT}).Do([] {
        SendMessageW(GetFocus(), EM_SETSEL, static_cast<WPARAM>(-1), -1);
    });
    ui.Press({VK_CONTROL, 'I'}).Press({VK_CONTROL, 'G'}).Press({VK_CONTROL, 'S'});
    ui.Press({VK_CONTROL, 'U'}).Press({VK_CONTROL, 'D'}).Press({VK_F1});
    ui.WaitUntil("help", [&] { return help.topics == std::vector<unsigned long>{kHelpIndex}; });
    ui.Do([] {
        EXPECT_EQ(DocumentText(), "abcabc");
        for (int command : {CMD_ITALIC, CMD_BOLD, CMD_UNDERLINE, CMD_SUBSCRIPT}) {
            EXPECT_TRUE(IsFormatChecked(command)) << command;
        }
        EXPECT_FALSE(IsFormatChecked(CMD_SUPERSCRIPT));
    });
    const std::string question = "Il documento è stato modificato. Salvare le modifiche?";
    ui.Press({VK_MENU, VK_F4}).AnswerMessage("Attenzione", question, IDCANCEL);
    ui.WaitClosed("Attenzione").OnWindowOfClass(kMainClass).Command(CMD_EXIT);
    ui.AnswerMessage("Attenzione", question, IDNO);
    EXPECT_EQ(RunProgram(), 0);
    ui.Finish();
}

}  // namespace
}  // namespace tonvale
