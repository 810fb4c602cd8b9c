// A report of 500 pages (1,000,000 characters) opened, scrolled, typed in, saved and made
// bold by the program, side by side with the system's own WordPad:
//
//   report_document_benchmark TONVALE.EXE [TURNS]
//
// The two are driven from outside in the same way, by turns, with text areas of the same size. To
// open counts from the start of the program until its text is painted. Prints medians, fastest
// times and their ratios.
#include <windows.h>

#include <richedit.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "benchmarks/running_program_win.h"
#include "resources/resource.h"

namespace {

using tonvale::Clock;
using tonvale::Median;
using tonvale::MillisecondsSince;
using tonvale::RunningProgram;
using tonvale::Send;

namespace fs = std::filesystem;

constexpr std::size_t kCharacters = 1'000'000;
constexpr int kPages = 100;  // that are scrolled
constexpr int kKeys = 50;    // that are typed in the middle
constexpr int kDefaultTurns = 5;
constexpr UINT kWordPadSave = 1002;  // as its menu has it
constexpr UINT kWordPadBold = 1400;
constexpr wchar_t kWordPadPath[] = L"%ProgramFiles%\\Windows NT\\Accessories\\wordpad.exe";

struct Program {
    std::wstring path;
    std::wstring window_class;
    std::wstring editor_class;
    UINT save_command;
    UINT bold_command;
};

struct Windows {
    HWND main = nullptr;
    HWND editor = nullptr;
};

struct Times {
    double open_ms;
    double page_ms;  // scrolled
    double key_ms;   // typed
    double save_ms;
    double bold_ms;  // all of the text
};

// Paragraphs with tabs and bold words, and lowered text in every fourth.
std::string MakeReport() {
    constexpr char kStart[] = "\\pard\\tx1000\\tx3000 L";
    constexpr char kRest[] =
        "\\tab {\\b 87.3} dB(A)\\tab reparto presse, addetto alla linea di taglio con protettori "
        "auricolari\\par\n";
    constexpr std::size_t kParagraphCharacters = 87;
    std::string rtf = "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs20 ";
    for (std::size_t i = 0; i <= kCharacters / kParagraphCharacters; ++i) {
        rtf += kStart;
        rtf += i % 4 == 0 ? "\\dn5\\fs15 ep,d\\up0\\fs20" : "ep,d";
        rtf += kRest;
    }
    return rtf + "}";
}

std::string ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

HWND EditorOf(HWND main, const Program& program) {
    return main ? FindWindowExW(main, nullptr, program.editor_class.c_str(), nullptr) : nullptr;
}

Windows FindWindows(const RunningProgram& process, const Program& program) {
    HWND main = process.WaitForWindow(program.window_class);
    return {main, EditorOf(main, program)};
}

SIZE TextAreaOf(const Windows& windows) {
    RECT client{};
    GetClientRect(windows.editor, &client);
    return {client.right, client.bottom};
}

// Each works through what was posted before; false when no answer comes in time.
bool Paint(const Windows& windows) {
    UpdateWindow(windows.editor);
    return Send(windows.main, WM_NULL).has_value();
}

// The windows once the text is in them, which may be in a new editor; none when it does not come.
Windows WaitForText(const RunningProgram& process, const Program& program) {
    Windows windows = FindWindows(process, program);
    while (windows.main && MillisecondsSince(process.start()) < tonvale::kDeadlineMs) {
        windows.editor = EditorOf(windows.main, program);
        if (Send(windows.editor, WM_GETTEXTLENGTH).value_or(0) >= kCharacters) return windows;
        Sleep(1);
    }
    return {};
}

bool ScrollPages(const Windows& windows) {
    for (int i = 0; i < kPages; ++i) {
        if (!Send(windows.editor, WM_VSCROLL, SB_PAGEDOWN) || !Paint(windows)) return false;
    }
    return Send(windows.editor, EM_GETFIRSTVISIBLELINE).value_or(0) > kPages;
}

// At the place that has been scrolled to.
bool TypeText(const Windows& windows) {
    const auto line = Send(windows.editor, EM_GETFIRSTVISIBLELINE);
    const auto place = Send(windows.editor, EM_LINEINDEX, line.value_or(0));
    if (!place || !Send(windows.editor, EM_SETSEL, *place, static_cast<LPARAM>(*place))) {
        return false;
    }
    for (int i = 0; i < kKeys; ++i) {
        if (!Send(windows.editor, WM_CHAR, L'x', 1) || !Paint(windows)) return false;
    }
    return true;
}

bool MakeBold(const Windows& windows, const Program& program) {
    return Send(windows.main, WM_COMMAND, program.bold_command) && Paint(windows);
}

std::optional<Times> Fail(const Program& program, const char* what) {
    std::printf("%ls: %s\n", program.path.c_str(), what);
    return std::nullopt;
}

std::optional<Times> Measure(const Program& program, const fs::path& file,
                             const std::string& report) {
    std::ofstream(file, std::ios::binary) << report;
    Times times{};
    const RunningProgram process(program.path, file.wstring());
    const Windows windows = WaitForText(process, program);
    if (!windows.editor || !Paint(windows)) return Fail(program, "did not show the text");
    times.open_ms = MillisecondsSince(process.start());

    const Clock::time_point scroll_start = Clock::now();
    if (!ScrollPages(windows)) return Fail(program, "did not scroll");
    times.page_ms = MillisecondsSince(scroll_start) / kPages;

    const Clock::time_point type_start = Clock::now();
    if (!TypeText(windows)) return Fail(program, "did not let type");
    times.key_ms = MillisecondsSince(type_start) / kKeys;

    const Clock::time_point save_start = Clock::now();
    if (!Send(windows.main, WM_COMMAND, program.save_command)) return Fail(program, "hangs");
    times.save_ms = MillisecondsSince(save_start);
    const std::string saved = ReadBytes(file);
    if (saved == report || saved.size() < kCharacters || !saved.starts_with("{\\")) {
        return Fail(program, "did not save");
    }

    if (!Send(windows.editor, EM_SETSEL, 0, -1) || !Paint(windows)) return Fail(program, "hangs");
    const Clock::time_point bold_start = Clock::now();
    if (!MakeBold(windows, program)) return Fail(program, "did not make bold");
    times.bold_ms = MillisecondsSince(bold_start);

    Send(windows.editor, EM_SETMODIFY, FALSE);
    process.Close(windows.main);
    return times;
}

// WordPad keeps the size that it is closed with for its next start; the program always starts with
// the same. False when the text areas are not alike afterwards.
bool MatchTextAreas(const Program& ours, const Program& wordpad) {
    SIZE wanted{};
    {
        const RunningProgram process(ours.path);
        const Windows windows = FindWindows(process, ours);
        Paint(windows);
        wanted = TextAreaOf(windows);
        process.Close(windows.main);
    }
    for (int start = 0; start < 2; ++start) {
        const RunningProgram process(wordpad.path);
        const Windows windows = FindWindows(process, wordpad);
        Paint(windows);
        const SIZE area = TextAreaOf(windows);
        if (area.cx == wanted.cx && area.cy == wanted.cy) return wanted.cx > 0;
        RECT frame{};
        GetWindowRect(windows.main, &frame);
        SetWindowPos(windows.main, nullptr, 0, 0, frame.right - frame.left + wanted.cx - area.cx,
                     frame.bottom - frame.top + wanted.cy - area.cy,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        process.Close(windows.main);
    }
    return false;
}

// The figure of all turns.
std::vector<double> Figures(const std::vector<Times>& turns, double Times::*figure) {
    std::vector<double> figures;
    figures.reserve(turns.size());
    for (const Times& times : turns) figures.push_back(times.*figure);
    return figures;
}

void Print(const char* step, double Times::*figure, const std::vector<Times>& our_turns,
           const std::vector<Times>& wordpad_turns) {
    const std::vector<double> ours = Figures(our_turns, figure);
    const std::vector<double> wordpads = Figures(wordpad_turns, figure);
    const double fastest = *std::min_element(ours.begin(), ours.end());
    const double wordpads_fastest = *std::min_element(wordpads.begin(), wordpads.end());
    std::printf(
        "report of 500 pages, %s: median of %zu %.1f ms, WordPad %.1f ms, ratio %.2f; "
        "fastest %.1f ms, WordPad %.1f ms, ratio %.2f\n",
        step, ours.size(), Median(ours), Median(wordpads), Median(ours) / Median(wordpads), fastest,
        wordpads_fastest, fastest / wordpads_fastest);
}

int Compare(const Program& ours, const Program& wordpad, int turns) {
    if (!MatchTextAreas(ours, wordpad)) {
        std::printf("the windows are not alike\n");
        return 1;
    }
    const std::string report = MakeReport();
    const fs::path file = fs::temp_directory_path() / "tonvale_benchmark.tnv";
    std::vector<Times> our_turns;
    std::vector<Times> wordpad_turns;
    for (int turn = 0; turn < turns; ++turn) {
        const std::optional<Times> our_times = Measure(ours, file, report);
        const std::optional<Times> wordpad_times =
            our_times ? Measure(wordpad, file, report) : std::nullopt;
        if (!wordpad_times) break;
        our_turns.push_back(*our_times);
        wordpad_turns.push_back(*wordpad_times);
    }
    std::error_code ignored;
    fs::remove(file, ignored);
    if (wordpad_turns.size() < static_cast<std::size_t>(turns)) return 1;
    Print("to open", &Times::open_ms, our_turns, wordpad_turns);
    Print("to save", &Times::save_ms, our_turns, wordpad_turns);
    Print("to scroll by a page", &Times::page_ms, our_turns, wordpad_turns);
    Print("to type a letter", &Times::key_ms, our_turns, wordpad_turns);
    Print("to make all of it bold", &Times::bold_ms, our_turns, wordpad_turns);
    return 0;
}

}  // namespace

int main() {
    const auto request = tonvale::ReadCommandLine(kDefaultTurns);
    if (!request) return 2;
    wchar_t wordpad[MAX_PATH] = {};
    ExpandEnvironmentStringsW(kWordPadPath, wordpad, MAX_PATH);
    return Compare({request->program_path, L"Tonvale_Class", L"RichEdit", CMD_SAVE, CMD_BOLD},
                   {wordpad, L"WORDPADTOP", L"RichEdit20W", kWordPadSave, kWordPadBold},
                   request->count);
}
