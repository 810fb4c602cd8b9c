// A report of 500 pages (1,000,000 characters): opening, scrolling and saving it, side by side with
// the control by itself, which is what a plain rich-text editor spends. Prints one line a step.
#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <richedit.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

#include "common/app_context_win.h"
#include "common/unicode_win.h"
#include "report/report_document_win.h"
#include "report/rich_edit_win.h"
#include "resources/resource.h"

namespace {

using tonvale::RichEdit;

constexpr std::size_t kCharacters = 1'000'000;
constexpr int kScrolls = 100;

double SecondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count();
}

// Paragraphs with tabs, bold words and lowered text.
std::string MakeReport() {
    constexpr char kParagraph[] =
        "\\pard\\tx1000\\tx3000 L\\dn5\\fs15 ep,d\\up0\\fs20\\tab {\\b 87.3} dB(A)\\tab reparto "
        "presse, addetto alla linea di taglio con protettori auricolari\\par\n";
    constexpr std::size_t kParagraphCharacters = 91;
    std::string rtf = "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs20 ";
    for (std::size_t i = 0; i < kCharacters; i += kParagraphCharacters) rtf += kParagraph;
    return rtf + "}";
}

void ScrollThrough(HWND editor) {
    const LRESULT lines = SendMessageW(editor, EM_GETLINECOUNT, 0, 0);
    for (int i = 0; i < kScrolls; ++i) {
        SendMessageW(editor, EM_LINESCROLL, 0, lines / kScrolls);
        UpdateWindow(editor);
    }
}

void Print(const char* step, double document, double control) {
    std::printf("%-16s %8.0f ms   control alone %8.0f ms   ratio %.2f\n", step, 1000 * document,
                1000 * control, document / control);
}

void Compare(HWND window, const std::string& path, const std::string& rtf) {
    tonvale::AppContext app;
    app.instance = GetModuleHandleW(nullptr);
    app.main_window = window;
    app.files = &tonvale::SystemFiles();
    tonvale::ReportDocument document(app);
    RichEdit control;
    if (!document.Create(window) ||
        !control.Create(app.instance, window, 99, WS_VISIBLE | WS_VSCROLL, 0)) {
        std::puts("no editor");
        return;
    }
    document.Layout({0, 0, 800, 600});
    HWND editor = GetDlgItem(window, IDC_REPORT_EDITOR);
    MoveWindow(control.window(), 0, 0, 800, 560, FALSE);
    control.Send(EM_EXLIMITTEXT, 0, tonvale::kMaxReportCharacters);

    const double open = SecondsOf([&] { document.Open(path); });
    const double read = SecondsOf([&] { control.ReadRtf(rtf, false); });
    Print("open", open, read);
    const double save = SecondsOf([&] { document.Save(); });
    const double write = SecondsOf([&] { control.WriteRtf(false, false); });
    Print("save", save, write);
    const double ours = SecondsOf([&] { ScrollThrough(editor); });
    const double theirs = SecondsOf([&] { ScrollThrough(control.window()); });
    Print("a scroll", ours / kScrolls, theirs / kScrolls);
}

}  // namespace

int main() {
    OleInitialize(nullptr);
    LoadLibraryW(L"RICHED32.DLL");
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    wchar_t folder[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::string path = tonvale::Narrow(folder) + "tonvale_benchmark.tnv";
    const std::string rtf = MakeReport();
    std::ofstream(path, std::ios::binary) << rtf;
    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 800, 600, nullptr,
                                  nullptr, nullptr, nullptr);
    Compare(window, path, rtf);
    DestroyWindow(window);
    DeleteFileW(tonvale::Widen(path).c_str());
    OleUninitialize();
}
