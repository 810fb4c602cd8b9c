// The place of a dialog in which a picture is drawn.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

#include "common/canvas.h"
#include "dialogs/dialog_win.h"

namespace tonvale {

// Paints a picture into the rectangle of a control that only marks it: a static without
// WS_VISIBLE. The picture is never erased, so that it does not flicker while it changes, and
// follows its mark and the dialog's resolution.
class DrawingArea : public DialogPart {
  public:
    // Draws into the whole of `area`, in the mark's font; all of it has the dialog's own ground,
    // `ground`, already. Called for every painting.
    using Draw = std::function<void(Canvas& canvas, const Rect& area, Color ground)>;

    explicit DrawingArea(Draw draw) : draw_(std::move(draw)) {}
    DrawingArea(const DrawingArea&) = delete;
    DrawingArea& operator=(const DrawingArea&) = delete;

    // Takes over the control that marks the place; before, nothing is drawn.
    void TakeControl(HWND mark) { mark_ = mark; }
    // What the picture shows has changed.
    void Redraw() const;

    void OnResize() override;
    bool OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result) override;

  private:
    HWND dialog() const { return GetParent(mark_); }
    RECT Place() const;  // in the dialog
    void EraseAround(HDC dc) const;
    void Paint() const;

    Draw draw_;
    HWND mark_ = nullptr;
};

}  // namespace tonvale
