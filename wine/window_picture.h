// Pictures of windows, taken inside the program that owns them: without a display, Wine keeps a
// window's pixels in the memory of its own process.
#pragma once

#include <windows.h>

#include <vector>

namespace tonvale {

// The visible top-level windows of a thread, the topmost first.
inline std::vector<HWND> VisibleWindows(DWORD thread_id = GetCurrentThreadId()) {
    std::vector<HWND> windows;
    EnumThreadWindows(
        thread_id,
        [](HWND window, LPARAM list) -> BOOL {
            if (IsWindowVisible(window)) {
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// Writes a picture of the windows, frames included, as they lie over one another to a PNG file; the
// topmost comes first. False when there is none or the file cannot be written.
bool SavePicture(const std::vector<HWND>& windows, const wchar_t* path);

}  // namespace tonvale
