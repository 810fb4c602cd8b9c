#include "dialogs/drawing_area_win.h"

#include "dialogs/buffered_paint_win.h"
#include "dialogs/gdi_canvas_win.h"

namespace tonvale {

namespace {

constexpr int kGround = COLOR_3DFACE;  // of dialogs

Color GroundColor() {
    const COLORREF color = GetSysColor(kGround);
    return {GetRValue(color), GetGValue(color), GetBValue(color)};
}

}  // namespace

void DrawingArea::Redraw() const {
    if (!mark_) return;
    const RECT place = Place();
    InvalidateRect(dialog(), &place, FALSE);
}

void DrawingArea::OnResize() {
    if (mark_) InvalidateRect(dialog(), nullptr, TRUE);
}

bool DrawingArea::OnMessage(UINT message, WPARAM wparam, LPARAM /*lparam*/, INT_PTR& result) {
    if (!mark_ || (message != WM_PAINT && message != WM_ERASEBKGND)) return false;
    if (message == WM_PAINT) {
        Paint();
    } else {
        EraseAround(reinterpret_cast<HDC>(wparam));
        SetWindowLongPtrW(dialog(), DWLP_MSGRESULT, TRUE);
    }
    result = TRUE;
    return true;
}

RECT DrawingArea::Place() const {
    RECT place{};
    GetWindowRect(mark_, &place);
    MapWindowPoints(nullptr, dialog(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void DrawingArea::EraseAround(HDC dc) const {
    const RECT place = Place();
    RECT all{};
    GetClientRect(dialog(), &all);
    // The same device context is painted on afterwards.
    const int state = SaveDC(dc);
    ExcludeClipRect(dc, place.left, place.top, place.right, place.bottom);
    FillRect(dc, &all, GetSysColorBrush(kGround));
    RestoreDC(dc, state);
}

void DrawingArea::Paint() const {
    const PaintDc dc(dialog());
    const RECT place = Place();
    if (!RectVisible(dc.get(), &place)) return;
    PaintBuffered(dc.get(), place, [&](HDC memory) {
        const RECT all{0, 0, place.right - place.left, place.bottom - place.top};
        FillRect(memory, &all, GetSysColorBrush(kGround));
        const ScopedSelection font(memory,
                                   reinterpret_cast<HFONT>(SendMessageW(mark_, WM_GETFONT, 0, 0)));
        GdiCanvas canvas(memory, static_cast<int>(GetDpiForWindow(dialog())));
        draw_(canvas, {0, 0, static_cast<int>(all.right), static_cast<int>(all.bottom)},
              GroundColor());
    });
}

}  // namespace tonvale
