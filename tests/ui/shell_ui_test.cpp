// The main window as a whole: toolbar, views of results, splash window, about box, keys.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/bitmap_file_win.h"
#include "app/splash_window.h"
#include "app/view_switch_win.h"
#include "common/result_view.h"
#include "dialogs/clipboard_win.h"
#include "hearing/damage_evolution.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kNotesTitle[] = "Un commento per la stampa?";
constexpr char kModified[] = "Il documento è stato modificato. Salvare le modifiche?";

HWND Part(int id) {
    return GetDlgItem(Main(), id);
}

std::string DocumentText() {
    return WindowText(Part(IDC_REPORT_EDITOR));
}

bool IsButton(int command, UINT state) {
    return (SendMessageW(Part(IDC_TOOLBAR), TB_GETSTATE, static_cast<WPARAM>(command), 0) &
            state) != 0;
}

LRESULT ImageOf(int command) {
    return SendMessageW(Part(IDC_TOOLBAR), TB_GETBITMAP, static_cast<WPARAM>(command), 0);
}

bool IsFormatChecked(int command) {
    return SendDlgItemMessageW(Main(), IDC_FORMAT_TOOLBAR, TB_ISBUTTONCHECKED,
                               static_cast<WPARAM>(command), 0) != 0;
}

std::string ToolTipOf(int command) {
    NMTTDISPINFOW request{};
    request.hdr = {Part(IDC_TOOLBAR), static_cast<UINT_PTR>(command), TTN_GETDISPINFOW};
    request.lpszText = request.szText;
    SendMessageW(Main(), WM_NOTIFY, request.hdr.idFrom, reinterpret_cast<LPARAM>(&request));
    return Narrow(request.lpszText);
}

// Expects that the buttons have tips and stand as the menu items do.
void ExpectButtonsAsMenus() {
    int buttons = 0;
    for (int position = 0; position < GetMenuItemCount(GetMenu(Main())); ++position) {
        for (const auto& item : OpenPopup(Main(), GetSubMenu(GetMenu(Main()), position))) {
            const auto command = static_cast<WPARAM>(item.id);
            if (SendMessageW(Part(IDC_TOOLBAR), TB_COMMANDTOINDEX, command, 0) < 0) continue;
            EXPECT_NE(ToolTipOf(item.id), "") << item.text;
            EXPECT_EQ(IsButton(item.id, TBSTATE_ENABLED), item.enabled) << item.text;
            EXPECT_EQ(IsButton(item.id, TBSTATE_CHECKED), item.checked) << item.text;
            ++buttons;
        }
    }
    EXPECT_GT(buttons, 20);
}

// The view items: "text", then "-" when greyed and "*" when checked.
std::string ViewItems() {
    ExpectButtonsAsMenus();
    std::string items;
    for (const MenuCommand& item : OpenPopup(Main(), GetSubMenu(GetMenu(Main()), 2))) {
        items += item.text.substr(0, item.text.find('\t')) + (item.enabled ? "" : "-") +
                 (item.checked ? "*" : "") + "|";
    }
    return items;
}

class ShellTest : public MainWindowTest {
  protected:
    // A result that writes down how its pages are drawn.
    ResultView RecordedResult() {
        ResultView result = MakeResultView(LossPrediction());
        for (ResultPage& page : result.pages) {
            page.draw = [this, kind = page.kind](Canvas&, const Rect& area,
                                                 const DrawingStyle& style) {
                drawn_kind_ = kind;
                drawn_area_ = area;
                drawn_style_ = style;
            };
        }
        return result;
    }

    static UiDriver& Show(UiDriver& ui, const ResultView& result) {
        return ui.OnWindowOfClass(kMainClass, [result](HWND) { TheProgram().ShowResult(result); });
    }

    // The page that is drawn when the window is.
    ViewKind ShownKind() const {
        UpdateWindow(Part(IDC_RESULT_VIEW));
        return drawn_kind_;
    }

    // How a page was drawn last.
    ViewKind drawn_kind_ = ViewKind::kTable;
    Rect drawn_area_;
    DrawingStyle drawn_style_;
};

TEST_F(ShellTest, ShowsResultsAndGoesBackToTheDocument) {
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [](HWND) {
        EXPECT_EQ(ViewItems(), "&Audiogramma-|&Grafico-|&Tabella-|Do&cumento-|");
        EXPECT_FALSE(IsButton(CMD_COPY, TBSTATE_ENABLED)) << "the document is empty";
    });
    Show(ui, MakeResultView(LossComparisonState())).Do([] {
        EXPECT_EQ(ViewItems(), "Perdite-&Livello|&Perdite-Tempo|&Tabella-*|Do&cumento|");
        EXPECT_EQ(ToolTipOf(CMD_VIEW_CHART), "Perdite-Tempo");
        EXPECT_GT(ImageOf(CMD_VIEW_CHART), ImageOf(CMD_HELP_INDEX));
    });
    Show(ui, MakeResultView(DamageEvolution())).Do([] {
        EXPECT_EQ(ViewItems(), "&Grafico|&Tabella-*|Do&cumento|");
        EXPECT_LT(ImageOf(CMD_VIEW_CHART), ImageOf(CMD_HELP_INDEX));
        EXPECT_TRUE(IsButton(CMD_VIEW_AUDIOGRAM, TBSTATE_HIDDEN));
    });
    Show(ui, RecordedResult()).Do([] {
        EXPECT_TRUE(IsZoomed(Main()));
        EXPECT_FALSE(IsWindowVisible(Part(IDC_REPORT_EDITOR)));
        EXPECT_EQ(GetFocus(), Part(IDC_RESULT_VIEW));
        EXPECT_EQ(ViewItems(), "&Audiogramma|&Grafico|&Tabella-*|Do&cumento|");
        EXPECT_FALSE(IsButton(CMD_CUT, TBSTATE_ENABLED));
        EXPECT_TRUE(IsButton(CMD_COPY, TBSTATE_ENABLED));
    });
    ui.Command(CMD_VIEW_CHART).Do([this] {
        EXPECT_EQ(ViewItems(), "&Audiogramma|&Grafico-*|&Tabella|Do&cumento|");
        EXPECT_EQ(ShownKind(), ViewKind::kChart);
    });
    ui.Press({VK_CONTROL, VK_F4}).WaitUntil("document", [] {
        return IsWindowVisible(Part(IDC_REPORT_EDITOR));
    });
    ui.Do([] {
        EXPECT_EQ(ViewItems(), "&Audiogramma|&Grafico|&Tabella|Do&cumento-|");
        EXPECT_FALSE(IsWindowVisible(Part(IDC_RESULT_VIEW)));
    });
    // The last result is still there.
    ui.OnWindowOfClass(kMainClass).Command(CMD_VIEW_AUDIOGRAM).Do([this] {
        EXPECT_EQ(ShownKind(), ViewKind::kAudiogram);
    });
    RunToEnd(ui);
}

std::pair<LONG, LONG> ClipboardPictureSize() {
    BITMAP size{};
    OpenClipboard(nullptr);
    GetObjectW(GetClipboardData(CF_BITMAP), sizeof size, &size);
    CloseClipboard();
    return {size.bmWidth, size.bmHeight};
}

void DragOverResults(LPARAM from, LPARAM to) {
    SendMessageW(Part(IDC_RESULT_VIEW), WM_LBUTTONDOWN, MK_LBUTTON, from);
    SendMessageW(Part(IDC_RESULT_VIEW), WM_MOUSEMOVE, MK_LBUTTON, to);
    SendMessageW(Part(IDC_RESULT_VIEW), WM_LBUTTONUP, 0, to);
}

TEST_F(ShellTest, CopiesTheTableAsTextAndTheChartAsPictureUnlessTheClipboardIsHeld) {
    const UINT csv = RegisterClipboardFormatW(L"Csv");
    ResultView long_result = RecordedResult();
    long_result.table_text = [](std::string_view) { return std::string(5000, '9'); };
    UiDriver ui;
    Show(ui, RecordedResult()).Do([] { EXPECT_TRUE(OpenClipboard(Part(IDC_TOOLBAR))); });
    for (int view : {CMD_VIEW_CHART, CMD_VIEW_TABLE}) {
        ui.OnWindowOfClass(kMainClass).Command(view).Command(CMD_COPY);
        ui.AnswerMessage("Attenzione:", "Impossibile copiare negli appunti!", IDOK);
        ui.WaitClosed("Attenzione:");
    }
    ui.OnWindowOfClass(kMainClass, [](HWND) { CloseClipboard(); }).Press({VK_CONTROL, 'C'});
    ui.WaitUntil("copy", [csv] { return ClipboardBytes(csv).starts_with("HTLAN"); });
    Show(ui, long_result).Command(CMD_COPY).Do([csv] {
        EXPECT_EQ(std::strlen(ClipboardBytes(csv).c_str()), 4095U);
    });
    ui.Command(CMD_VIEW_CHART).Command(CMD_COPY).Do([] {
        RECT area{};
        GetClientRect(Part(IDC_RESULT_VIEW), &area);
        EXPECT_EQ(ClipboardPictureSize(), std::pair(area.right, area.bottom));
        // A rectangle drawn with the mouse, from its lower right corner, marks what is copied.
        DragOverResults(MAKELPARAM(160, 110), MAKELPARAM(60, 40));
    });
    ui.Screenshot("result_view_frame").Command(CMD_COPY).Do([] {
        EXPECT_EQ(ClipboardPictureSize(), std::pair(98L, 68L));
        DragOverResults(MAKELPARAM(10, 10), MAKELPARAM(10, 10));  // a click draws none
    });
    ui.Command(CMD_COPY).Do([] { EXPECT_GT(ClipboardPictureSize().first, 98); });
    RunToEnd(ui);
}

TEST_F(ShellTest, ExportsTableAndChartByTheirOwnExtensionOnly) {
    const struct {
        int view;
        const char* refused;
        const char* wanted;
        const char* taken;
    } exports[] = {{CMD_VIEW_TABLE, "prova.bmp", "\".csv\" oppure \".tnv\"", "tabella.CSV"},
                   {CMD_VIEW_CHART, "prova.csv", "\".bmp\" oppure \".tnv\"", "grafico.bmp"}};
    FaultyFileSystem disk(SystemFiles());
    const ResultView result = RecordedResult();
    UiDriver ui;
    Show(ui, result);
    for (const auto& [view, refused, wanted, taken] : exports) {
        ui.OnWindowOfClass(kMainClass).Command(view).Command(CMD_SAVE_AS);
        TypeUnsuitableName(ui, Path(refused), wanted);
        SaveNewFile(ui, Path(taken));
        ui.WaitClosed(kSaveTitle);
    }
    ui.OnWindowOfClass(kMainClass, [&](HWND window) {
        EXPECT_EQ(Windows1252ToUtf8(ReadFile("tabella.CSV")), result.table_text(ListSeparator()));
        EXPECT_EQ(ReadFile("grafico.bmp").substr(0, 2), "BM");
        EXPECT_EQ(FileCount(), 2);
        EXPECT_EQ(Status(window), result.case_name);
        disk.is_full = true;
        TheProgram().context().files = &disk;
    });
    ui.Command(CMD_SAVE_AS);
    SaveNewFile(ui, Path("altro.bmp"));
    ui.AnswerMessage(Path("altro.bmp"), "Impossibile salvare: il disco è pieno.", IDOK);
    // The document can be saved from any view.
    ui.OnWindowOfClass(kMainClass, [&](HWND) { disk.is_full = false; }).Command(CMD_SAVE_AS);
    SaveNewFile(ui, Path("relazione.TNV"));
    ui.WaitClosed(kSaveTitle).OnWindowOfClass(kMainClass).Command(CMD_VIEW_DOCUMENT);
    ui.OnWindowOfClass(kMainClass, [&](HWND window) {
        EXPECT_EQ(ReadFile("relazione.TNV").substr(0, 6), "{\\rtf1");
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
        PatBlt(memory.get(), 0, 0, 5, 3, WHITENESS);
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
    FakePrinter printer;
    printer.colors = 2;
    UiDriver ui;
    Show(ui, RecordedResult()).Do([&] {
        TheProgram().context().open_printer = [&] {
            return std::make_unique<BorrowedPrinter>(printer);
        };
    });
    ui.Command(CMD_PRINT).OnWindow(kNotesTitle).SetText(IDC_NOTES_EDIT, "al tornio").Click(IDOK);
    ui.WaitClosed(kNotesTitle).OnWindowOfClass(kMainClass, [&](HWND) {
        ASSERT_FALSE(printer.pages.back().empty());
        EXPECT_EQ(printer.pages.back().back().text, "al tornio");
        EXPECT_EQ(drawn_area_, (Rect{0, 0, 4000, 6600}));
        EXPECT_FALSE(drawn_style_.use_color);
    });
    ui.Command(CMD_VIEW_CHART).Command(CMD_PRINT).OnWindow(kNotesTitle).Click(IDCANCEL);
    ui.WaitClosed(kNotesTitle).OnWindowOfClass(kMainClass).Command(CMD_PAGE_SETUP);
    ui.OnWindowOfClass("#32770").Command(IDCANCEL);  // of the printer's driver
    RunToEnd(ui);
    EXPECT_EQ(printer.document, "Tabella");  // still
}

HWND FindMenu() {
    return FindWindowW(L"#32768", nullptr);
}

// Opens the menu of curves and chooses an item by keys.
void ChooseCurve(UiDriver& ui, int steps_down) {
    ui.Do([] { PostMessageW(Part(IDC_RESULT_VIEW), WM_CONTEXTMENU, 0, MAKELPARAM(80, 120)); });
    ui.WaitUntil("menu of curves", [] { return FindMenu() != nullptr; });
    for (int step = 0; step < steps_down; ++step) ui.Press({VK_DOWN});
    ui.Press({VK_RETURN}).WaitUntil("menu closed", [] { return FindMenu() == nullptr; });
}

TEST_F(ShellTest, PicksOneCurveByTheMouseMenu) {
    UiDriver ui;
    const auto expect_curve = [&](int command, int curve) {
        ui.OnWindowOfClass(kMainClass).Command(command).Do([=, this] {
            UpdateWindow(Part(IDC_RESULT_VIEW));
            EXPECT_EQ(drawn_style_.selected_curve, curve) << command;
        });
    };
    Show(ui, RecordedResult()).Do([] {
        SendMessageW(Part(IDC_RESULT_VIEW), WM_CONTEXTMENU, 0, MAKELPARAM(80, 120));
        EXPECT_EQ(FindMenu(), nullptr) << "a table has no curves";
    });
    ui.Command(CMD_VIEW_CHART);
    ChooseCurve(ui, 3);  // behind "Tutte" and the first
    expect_curve(CMD_VIEW_CHART, 1);
    // It is still chosen after a look at another chart, the table and the document; another result
    // starts with all its curves.
    expect_curve(CMD_VIEW_AUDIOGRAM, kAllCurves);
    expect_curve(CMD_VIEW_TABLE, kAllCurves);
    expect_curve(CMD_VIEW_DOCUMENT, kAllCurves);
    expect_curve(CMD_VIEW_CHART, 1);
    ChooseCurve(ui, 1);
    expect_curve(CMD_VIEW_CHART, kAllCurves);
    ChooseCurve(ui, 2);
    expect_curve(CMD_VIEW_CHART, 0);
    Show(ui, RecordedResult());
    expect_curve(CMD_VIEW_CHART, kAllCurves);
    RunToEnd(ui);
}

HWND FindSplash() {
    return FindWindowW(L"Tonvale_Splash", nullptr);
}

class SplashTest : public DialogTest {};

TEST_F(SplashTest, GoesWhenItsTimeIsOver) {
    const SplashWindow splash(instance_, owner_, 300);
    EXPECT_NE(GetActiveWindow(), splash.window());
    EXPECT_TRUE(GetWindowLongPtrW(splash.window(), GWL_EXSTYLE) & WS_EX_TOPMOST);
    const ULONGLONG start = GetTickCount64();
    UiDriver ui;
    ui.WaitUntil("splash closed", [&] { return splash.window() == nullptr; }).Run();
    EXPECT_GE(GetTickCount64() - start, 290U);
}

TEST_F(ShellTest, StartsWithTheSplashWindowAndShowsItInTheAboutBox) {
    constexpr char kAbout[] = "Informazioni su Tonvale";
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [](HWND main) {
        EXPECT_EQ(GetActiveWindow(), main);
        SendMessageW(FindSplash(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(3, 3));
        EXPECT_EQ(FindSplash(), nullptr);
    });
    ui.Command(CMD_ABOUT).OnWindow(kAbout, [](HWND box) {
        EXPECT_EQ(GetActiveWindow(), box);
        RECT splash{};
        RECT area{};
        EXPECT_TRUE(GetWindowRect(FindSplash(), &splash));
        GetWindowRect(box, &area);
        EXPECT_GE(area.top, splash.bottom);
    });
    ui.AnswerMessage(kAbout,
                     "Tonvale - Esposizione al rumore e danno uditivo\r\n"
                     "Realizzato da Progetto Tonvale\r\n"
                     "Software distribuito gratuitamente dall'autore.\r\n"
                     "Copyright © 2026 Gli sviluppatori di Tonvale\r\n\r\nVersione 1.0.0.0",
                     IDOK);
    ui.WaitClosed(kAbout).Do([] { EXPECT_EQ(FindSplash(), nullptr); });
    RunToEnd(ui);
}

TEST_F(ShellTest, OpensDocumentsFromEverywhereAndShowsThem) {
    const std::string first = WriteFile("primo.tnv", "{\\rtf1\\ansi uno}");
    const std::string second = WriteFile("secondo.TNV", "{\\rtf1\\ansi due}");
    UiDriver ui;
    ui.WaitUntil("first document", [] { return DocumentText().starts_with("uno"); });
    ui.OnWindowOfClass(kMainClass, [](HWND main) { EXPECT_EQ(Status(main), "primo.tnv"); });
    Show(ui, RecordedResult());
    Drop(ui, {second});
    ui.WaitUntil("second document", [] { return DocumentText().starts_with("due"); }).Do([] {
        EXPECT_TRUE(TheProgram().views().ShowsDocument());
        EXPECT_EQ(Status(Main()), "secondo.TNV");
    });
    // Formatting keys are the document's only: they do nothing to what is hidden.
    Show(ui, RecordedResult()).Do([] { SendMessageW(Part(IDC_REPORT_EDITOR), EM_SETSEL, 0, -1); });
    ui.Press({VK_CONTROL, 'G'}).Do([] { EXPECT_FALSE(TheProgram().document().IsModified()); });
    ui.Command(CMD_NEW_DOCUMENT).Do([] {
        EXPECT_EQ(DocumentText(), "");
        EXPECT_EQ(Status(Main()), kNoFile);
    });
    RunToEnd(ui, first);
}

TEST_F(ShellTest, FollowsTheResolutionAndAsksBeforeTheSessionEnds) {
    const auto may_end = [] { return SendMessageW(Main(), WM_QUERYENDSESSION, 0, 0) != FALSE; };
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [&](HWND main) {
        // Too narrow for all buttons: they wrap, and the content begins below them.
        const RECT suggested{30, 40, 450, 440};
        SendMessageW(main, WM_DPICHANGED, MAKEWPARAM(144, 144),
                     reinterpret_cast<LPARAM>(&suggested));
        RECT area{};
        RECT toolbar{};
        RECT status_bar{};
        GetWindowRect(main, &area);
        EXPECT_TRUE(EqualRect(&area, &suggested));
        GetWindowRect(Part(IDC_TOOLBAR), &toolbar);
        GetWindowRect(Part(IDC_RESULT_VIEW), &area);
        EXPECT_GT(SendMessageW(Part(IDC_TOOLBAR), TB_GETROWS, 0, 0), 1);
        EXPECT_GE(area.top, toolbar.bottom);
        GetWindowRect(Part(IDC_STATUS_BAR), &status_bar);
        EXPECT_EQ(area.bottom, status_bar.top);
        EXPECT_TRUE(may_end()) << "nothing would be lost";
        SendMessageW(Part(IDC_REPORT_EDITOR), EM_REPLACESEL, TRUE,
                     reinterpret_cast<LPARAM>(L"abc"));
    });
    for (const auto& [answer, expected] : {std::pair(IDCANCEL, false), {IDNO, true}}) {
        ui.Do([=, expected = expected] { EXPECT_EQ(may_end(), expected); });
        ui.AnswerMessage("Attenzione", kModified, answer).WaitClosed("Attenzione");
    }
    ui.OnWindowOfClass(kMainClass).Press({VK_MENU, VK_F4});
    ui.AnswerMessage("Attenzione", kModified, IDNO);
    EXPECT_EQ(RunProgram(), 0);
    ui.Finish();
}

TEST_F(ShellTest, KeysOfTheProgramDoNotDoubleThoseOfTheEditor) {
    RecordingHelp help;
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [&](HWND) {
        TheProgram().context().help = &help;
        SetFocus(Part(IDC_REPORT_EDITOR));
        SendMessageW(Part(IDC_REPORT_EDITOR), EM_REPLACESEL, TRUE,
                     reinterpret_cast<LPARAM>(L"abc"));
        SendMessageW(Part(IDC_REPORT_EDITOR), EM_SETSEL, 0, 3);
    });
    ui.Press({VK_SHIFT, VK_DELETE}).WaitUntil("cut", [] { return DocumentText().empty(); });
    ui.WaitUntil("paste enabled", [] { return IsButton(CMD_PASTE, TBSTATE_ENABLED); });
    for (const std::string text : {"abc", "abcabc"}) {
        ui.Press({VK_SHIFT, VK_INSERT}).WaitUntil("paste", [=] { return DocumentText() == text; });
    }
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
    ui.Do([] { SendMessageW(Part(IDC_REPORT_EDITOR), EM_SETMODIFY, FALSE, 0); });
    RunToEnd(ui);
}

}  // namespace
}  // namespace tonvale
