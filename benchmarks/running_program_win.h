// A program that is started from outside and timed.
#pragma once

#include <windows.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace tonvale {

// How long a program may take for anything.
inline constexpr DWORD kDeadlineMs = 60000;

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start);
// Of at least one value.
double Median(std::vector<double> values);

// What a benchmark is asked for: NAME_benchmark TONVALE.EXE [COUNT].
struct BenchmarkRequest {
    std::wstring program_path;
    int count;  // of starts or turns, at least one
};
// Of the command line; nullopt, having told how it is to be, when that is wrong.
std::optional<BenchmarkRequest> ReadCommandLine(int default_count);

// A process that is ended at the latest when this goes out of scope.
class RunningProgram {
  public:
    // Starts the program at `path`, with the file at `argument` unless that is empty.
    explicit RunningProgram(const std::wstring& path, const std::wstring& argument = {});
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    Clock::time_point start() const { return start_; }
    // Its first visible window of the class; null when it shows none in time.
    HWND WaitForWindow(const std::wstring& window_class) const;
    void Close(HWND window) const;

  private:
    bool IsRunning() const;
    HWND VisibleWindow(const std::wstring& window_class) const;

    Clock::time_point start_ = Clock::now();
    BOOL started_ = FALSE;
    PROCESS_INFORMATION process_{};
};

// Sends a message to a window of another process. nullopt when no answer comes in time, as while a
// dialog waits for the user.
std::optional<DWORD_PTR> Send(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0);

}  // namespace tonvale
