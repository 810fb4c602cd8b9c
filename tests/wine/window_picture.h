// Pictures of windows, taken inside the program that owns them: without a display, Wine keeps a
// window's pixels in the memory of its own process.
#pragma once

#include <windows.h>

#include <vector>

namespace tonvale {

// The visible top-level windows of this thread, the topmost first.
std::vector<HWND> VisibleWindows();

// Writes a picture of the windows, frames included, as they lie over one another to a PNG file; the
// topmost comes first. False when there is none or the file cannot be written.
bool SavePicture(const std::vector<HWND>& windows, const wchar_t* path);

}  // namespace tonvale
