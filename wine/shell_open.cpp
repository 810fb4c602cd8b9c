// tonvale-open VERB FILE [TITLE]: does with FILE what Explorer does for the verb, waits until there
// is a window called TITLE and prints the texts in it, UTF-8, one a line. Exits with 0 when the
// window has come.
#include <windows.h>

#include <shellapi.h>

#include <array>
#include <cstdio>

namespace {

constexpr DWORD kPollMs = 200;
constexpr DWORD kDeadlineMs = 60000;
constexpr DWORD kAnswerMs = 5000;
constexpr int kMaxTextLength = 1024;

BOOL CALLBACK PrintText(HWND window, LPARAM) {
    std::array<wchar_t, kMaxTextLength> text{};
    std::array<char, 3 * kMaxTextLength> utf8{};
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                        SMTO_ABORTIFHUNG, kAnswerMs, &length);
    WideCharToMultiByte(CP_UTF8, 0, text.data(), -1, utf8.data(), static_cast<int>(utf8.size()),
                        nullptr, nullptr);
    if (length > 0) std::puts(utf8.data());
    return TRUE;
}

HWND WaitForWindow(const wchar_t* title) {
    const ULONGLONG deadline = GetTickCount64() + kDeadlineMs;
    while (GetTickCount64() < deadline) {
        HWND window = FindWindowW(nullptr, title);
        if (window && IsWindowVisible(window)) return window;
        Sleep(kPollMs);
    }
    return nullptr;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3) return 2;
    SHELLEXECUTEINFOW task{};
    task.cbSize = sizeof task;
    task.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    task.lpVerb = argv[1];
    task.lpFile = argv[2];
    task.nShow = SW_SHOWNORMAL;
    if (!ShellExecuteExW(&task)) {
        std::fprintf(stderr, "tonvale-open: error %lu\n", GetLastError());
        return 1;
    }
    if (argc < 4) return 0;
    HWND window = WaitForWindow(argv[3]);
    if (!window) return 1;
    EnumChildWindows(window, PrintText, 0);
    return 0;
}
