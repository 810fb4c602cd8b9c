// Painting aside first, so that what is on the screen never flickers.
#pragma once

#include <windows.h>

#include "dialogs/handles_win.h"

namespace tonvale {

// The device context of a window that answers WM_PAINT.
class PaintDc {
  public:
    explicit PaintDc(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
    ~PaintDc() { EndPaint(window_, &paint_); }
    PaintDc(const PaintDc&) = delete;
    PaintDc& operator=(const PaintDc&) = delete;
    HDC get() const { return dc_; }

  private:
    HWND window_;
    PAINTSTRUCT paint_;
    HDC dc_;
};

// Has `draw` (a function of a device context) draw a picture whose upper left corner is (0, 0) into
// memory and shows it as a whole in `area` of the target. Nothing is shown when memory is short.
template <typename Draw>
void PaintBuffered(HDC target, const RECT& area, const Draw& draw) {
    const int width = static_cast<int>(area.right - area.left);
    const int height = static_cast<int>(area.bottom - area.top);
    const UniqueDc memory(CreateCompatibleDC(target));
    const UniqueBitmap bitmap(CreateCompatibleBitmap(target, width, height));
    if (!memory || !bitmap) return;
    const ScopedSelection selection(memory.get(), bitmap.get());
    draw(memory.get());
    BitBlt(target, area.left, area.top, width, height, memory.get(), 0, 0, SRCCOPY);
}

}  // namespace tonvale
