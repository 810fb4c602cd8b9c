// From the start of a program to its main window, side by side with the system's own notepad:
//
//   start_up_benchmark TONVALE.EXE [STARTS]
//
// The two are started by turns. A start ends when the main window is visible (a splash window does
// not count) and, second figure, when it answers a message. Prints medians, fastest starts and
// their ratios; the fastest are least troubled by what else the machine does.
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kDeadlineMs = 30000;
constexpr int kDefaultStarts = 30;

struct Program {
    std::wstring path;
    std::wstring window_class;
};

struct StartTimes {
    double visible_ms;
    double answers_ms;
};

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A process that is ended at the latest when this goes out of scope.
class RunningProgram {
  public:
    explicit RunningProgram(const std::wstring& path) {
        std::wstring command_line = L"\"" + path + L"\"";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        started_ = CreateProcessW(path.c_str(), command_line.data(), nullptr, nullptr, FALSE, 0,
                                  nullptr, nullptr, &startup, &process_);
    }
    ~RunningProgram() {
        if (!started_) return;
        if (WaitForSingleObject(process_.hProcess, 0) != WAIT_OBJECT_0) {
            TerminateProcess(process_.hProcess, 0);
            WaitForSingleObject(process_.hProcess, INFINITE);
        }
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // Null when it has none.
    HWND VisibleWindow(const std::wstring& window_class) const {
        for (HWND window = nullptr;;) {
            window = FindWindowExW(nullptr, window, window_class.c_str(), nullptr);
            DWORD process = 0;
            if (window) GetWindowThreadProcessId(window, &process);
            if (!window || (process == process_.dwProcessId && IsWindowVisible(window))) {
                return window;
            }
        }
    }

    bool running() const {
        return started_ && WaitForSingleObject(process_.hProcess, 1) == WAIT_TIMEOUT;
    }
    void Close(HWND window) const {
        PostMessageW(window, WM_CLOSE, 0, 0);
        WaitForSingleObject(process_.hProcess, 5000);
    }

  private:
    BOOL started_ = FALSE;
    PROCESS_INFORMATION process_{};
};

// Nothing when the program shows no such window in time.
std::optional<StartTimes> Start(const Program& program) {
    const Clock::time_point start = Clock::now();
    const RunningProgram process(program.path);
    while (process.running() && MillisecondsSince(start) < kDeadlineMs) {
        HWND window = process.VisibleWindow(program.window_class);
        if (!window) continue;
        StartTimes times{};
        times.visible_ms = MillisecondsSince(start);
        DWORD_PTR answer = 0;
        if (!SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(kDeadlineMs),
                                 &answer)) {
            break;
        }
        times.answers_ms = MillisecondsSince(start);
        process.Close(window);
        return times;
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

double Median(const std::vector<double>& sorted) {
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
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
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> arguments(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    const long starts =
        count > 2 ? std::wcstol(arguments.get()[2], nullptr, 10) : long{kDefaultStarts};
    if (count < 2 || starts < 1) {
        std::printf("Usage: start_up_benchmark TONVALE.EXE [STARTS]\n");
        return 2;
    }
    wchar_t system_folder[MAX_PATH] = {};
    GetSystemDirectoryW(system_folder, MAX_PATH);
    return Compare({arguments.get()[1], L"Tonvale_Class"},
                   {std::wstring(system_folder) + L"\\notepad.exe", L"Notepad"},
                   static_cast<int>(starts));
}
