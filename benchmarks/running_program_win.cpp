#include "benchmarks/running_program_win.h"

#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <memory>

namespace tonvale {

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::optional<BenchmarkRequest> ReadCommandLine(int default_count) {
    int arguments_count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> arguments(
        CommandLineToArgvW(GetCommandLineW(), &arguments_count), LocalFree);
    const long count =
        arguments_count > 2 ? std::wcstol(arguments.get()[2], nullptr, 10) : long{default_count};
    if (arguments_count < 2 || count < 1) {
        std::printf("Usage: %ls TONVALE.EXE [COUNT]\n", arguments.get()[0]);
        return std::nullopt;
    }
    return BenchmarkRequest{arguments.get()[1], static_cast<int>(count)};
}

RunningProgram::RunningProgram(const std::wstring& path, const std::wstring& argument) {
    std::wstring command_line = L"\"" + path + L"\"";
    if (!argument.empty()) command_line += L" \"" + argument + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    started_ = CreateProcessW(path.c_str(), command_line.data(), nullptr, nullptr, FALSE, 0,
                              nullptr, nullptr, &startup, &process_);
}

RunningProgram::~RunningProgram() {
    if (!started_) return;
    if (IsRunning()) {
        TerminateProcess(process_.hProcess, 0);
        WaitForSingleObject(process_.hProcess, kDeadlineMs);
    }
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

bool RunningProgram::IsRunning() const {
    return started_ && WaitForSingleObject(process_.hProcess, 1) == WAIT_TIMEOUT;
}

HWND RunningProgram::VisibleWindow(const std::wstring& window_class) const {
    for (HWND window = nullptr;;) {
        window = FindWindowExW(nullptr, window, window_class.c_str(), nullptr);
        DWORD process = 0;
        if (window) GetWindowThreadProcessId(window, &process);
        if (!window || (process == process_.dwProcessId && IsWindowVisible(window))) {
            return window;
        }
    }
}

HWND RunningProgram::WaitForWindow(const std::wstring& window_class) const {
    while (IsRunning() && MillisecondsSince(start_) < kDeadlineMs) {
        if (HWND window = VisibleWindow(window_class)) return window;
    }
    return nullptr;
}

void RunningProgram::Close(HWND window) const {
    PostMessageW(window, WM_CLOSE, 0, 0);
    WaitForSingleObject(process_.hProcess, kDeadlineMs);
}

std::optional<DWORD_PTR> Send(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    DWORD_PTR answer = 0;
    if (!SendMessageTimeoutW(window, message, wparam, lparam, SMTO_NORMAL, kDeadlineMs, &answer)) {
        return std::nullopt;
    }
    return answer;
}

}  // namespace tonvale
