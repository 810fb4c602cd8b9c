// From the start of a program to its main window, side by side with the system's own notepad:
//
//   start_up_benchmark TONVALE.EXE [STARTS]
//
// The two are started by turns. A start ends when the main window is visible (a splash window does
// not count) and, second figure, when it answers a message. Prints medians, fastest starts and
// their ratios; the fastest are least troubled by what else the machine does.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "benchmarks/running_program_win.h"

namespace {

using tonvale::Median;
using tonvale::MillisecondsSince;
using tonvale::RunningProgram;

constexpr int kDefaultStarts = 30;

struct Program {
    std::wstring path;
    std::wstring window_class;
};

struct StartTimes {
    double visible_ms;
    double answers_ms;
};

// Nothing when the program shows no such window in time.
std::optional<StartTimes> Start(const Program& program) {
    const RunningProgram process(program.path);
    if (HWND window = process.WaitForWindow(program.window_class)) {
        StartTimes times{};
        times.visible_ms = MillisecondsSince(process.start());
        const bool answers = tonvale::Send(window, WM_NULL).has_value();
        times.answers_ms = MillisecondsSince(process.start());
        process.Close(window);
        if (answers) return times;
    }
    std::printf("%ls showed no window\n", program.path.c_str());
    return std::nullopt;
}

// The figure of all starts, the fastest first.
std::vector<double> Sorted(const std::vector<StartTimes>& times, double StartTimes::*figure) {
    std::vector<double> sorted;
    sorted.reserve(times.size());
    for (const StartTimes& start : times) sorted.push_back(start.*figure);
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

int Compare(const Program& ours, const Program& theirs, int starts) {
    std::vector<StartTimes> our_times;
    std::vector<StartTimes> their_times;
    for (int i = -1; i < starts; ++i) {  // the first turn fills the caches
        const std::optional<StartTimes> our_start = Start(ours);
        const std::optional<StartTimes> their_start = Start(theirs);
        if (!our_start || !their_start) return 1;
        if (i < 0) continue;
        our_times.push_back(*our_start);
        their_times.push_back(*their_start);
    }
    const auto print = [&](const char* what, double StartTimes::*figure) {
        const std::vector<double> our = Sorted(our_times, figure);
        const std::vector<double> their = Sorted(their_times, figure);
        std::printf(
            "start until the window %s: median of %d %.0f ms, notepad %.0f ms, ratio %.2f; "
            "fastest %.0f ms, notepad %.0f ms, ratio %.2f\n",
            what, starts, Median(our), Median(their), Median(our) / Median(their), our.front(),
            their.front(), our.front() / their.front());
    };
    print("is visible", &StartTimes::visible_ms);
    print("answers", &StartTimes::answers_ms);
    return 0;
}

}  // namespace

int main() {
    const auto request = tonvale::ReadCommandLine(kDefaultStarts);
    if (!request) return 2;
    wchar_t system_folder[MAX_PATH] = {};
    GetSystemDirectoryW(system_folder, MAX_PATH);
    return Compare({request->program_path, L"Tonvale_Class"},
                   {std::wstring(system_folder) + L"\\notepad.exe", L"Notepad"}, request->count);
}
