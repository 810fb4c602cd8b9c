// tonvale-shot PICTURE.png PROGRAM [FILE]: starts PROGRAM, with FILE if given, waits until its
// windows have come to rest, saves a picture of them and closes the program. Exits with 0 when the
// picture is there.
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "wine/window_picture.h"
#include "wine/window_shot.h"

namespace {

constexpr DWORD kPollMs = 100;
constexpr DWORD kRestMs = 5500;  // longer than the program shows its splash window
constexpr DWORD kOpenDeadlineMs = 60000;
constexpr DWORD kShotDeadlineMs = 20000;
constexpr DWORD kCloseDeadlineMs = 10000;

struct Program {
    HANDLE process = nullptr;
    DWORD thread_id = 0;
};

int Fail(const char* what) {
    std::fprintf(stderr, "tonvale-shot: %s\n", what);
    return 1;
}

bool Start(const std::wstring& path, const wchar_t* file, Program& program) {
    std::wstring command = L"\"" + path + L"\"";
    if (file) command += L" \"" + std::wstring(file) + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &started)) {
        return false;
    }
    CloseHandle(started.hThread);
    program = {started.hProcess, started.dwThreadId};
    return true;
}

bool HasEnded(const Program& program, DWORD wait_ms) {
    return WaitForSingleObject(program.process, wait_ms) == WAIT_OBJECT_0;
}

// Waits until the program shows windows and opens and closes none any more.
bool WaitForRest(const Program& program) {
    const ULONGLONG deadline = GetTickCount64() + kOpenDeadlineMs;
    std::vector<HWND> windows;
    ULONGLONG changed = GetTickCount64();
    while (GetTickCount64() < deadline) {
        if (HasEnded(program, kPollMs)) return false;
        std::vector<HWND> now = tonvale::VisibleWindows(program.thread_id);
        if (now != windows) {
            windows = std::move(now);
            changed = GetTickCount64();
        }
        if (!windows.empty() && GetTickCount64() - changed >= kRestMs) return true;
    }
    return false;
}

bool TakeShot(const Program& program) {
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, tonvale::shot::kDoneEvent);
    HMODULE library = LoadLibraryW(tonvale::shot::kHookLibrary);
    if (!done || !library) return false;
    const auto procedure = reinterpret_cast<HOOKPROC>(
        reinterpret_cast<void*>(GetProcAddress(library, tonvale::shot::kHookProcedure)));
    HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, procedure, library, program.thread_id);
    if (!hook) return false;
    PostThreadMessageW(program.thread_id, RegisterWindowMessageW(tonvale::shot::kMessage), 0, 0);
    const bool taken = WaitForSingleObject(done, kShotDeadlineMs) == WAIT_OBJECT_0;
    UnhookWindowsHookEx(hook);
    return taken;
}

// Closes one window after the other as its user would, the topmost first; at last by force.
void Close(const Program& program) {
    const ULONGLONG deadline = GetTickCount64() + kCloseDeadlineMs;
    while (GetTickCount64() < deadline) {
        for (HWND window : tonvale::VisibleWindows(program.thread_id)) {
            if (!IsWindowEnabled(window)) continue;
            PostMessageW(window, WM_CLOSE, 0, 0);
            break;
        }
        if (HasEnded(program, 5 * kPollMs)) return;
    }
    TerminateProcess(program.process, 1);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3 || argc > 4) return Fail("usage: tonvale-shot PICTURE.png PROGRAM [FILE]");
    SetEnvironmentVariableW(tonvale::shot::kFileVariable, argv[1]);
    Program program;
    if (!Start(argv[2], argc > 3 ? argv[3] : nullptr, program)) {
        return Fail("the program could not be started");
    }
    const bool shown = WaitForRest(program);
    if (!shown && HasEnded(program, 0))
        return Fail("the program ended without waiting for its user");
    const bool taken = shown && TakeShot(program);
    Close(program);
    CloseHandle(program.process);
    if (!shown) return Fail("the program's windows did not come to rest");
    return taken ? 0 : Fail("the picture could not be taken");
}
