// The child of the main window that shows the results of a hearing-damage dialog, as a table or a
// chart, in place of the report document.
#pragma once

#include <windows.h>

#include <optional>

#include "app/window_win.h"
#include "common/handles_win.h"
#include "common/result_view.h"

namespace tonvale {

class ResultViewWindow final : public Window {
  public:
    // Creates the window (id 16), hidden, in `parent`; false when it cannot be had.
    bool Create(HINSTANCE instance, HWND parent);
    void Layout(const RECT& area) const;
    void OnDpiChanged();

    // Shows `kind` of `result`, with all its curves. The result is drawn whenever it is asked for:
    // it must live on until it is replaced.
    void Show(const ResultView& result, ViewKind kind);
    void Hide();
    // Draws the result anew, with all its curves.
    void ShowAllCurves();

    // What is shown, or was last; nullptr before.
    const ResultView* result() const { return result_; }
    ViewKind kind() const { return kind_; }
    int selected_curve() const { return selected_curve_; }

    // A picture of the rectangle that the user has drawn, without its frame, else of the whole
    // view; nullptr when there is nothing to be seen.
    UniqueBitmap TakePicture() const;

  private:
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam) override;
    void Paint();
    void DrawResult(HDC dc, const RECT& area) const;
    void BeginFrame(POINT at);
    void DragFrame(POINT at);
    void EndFrame();
    void ClearFrame();
    void ToggleFrame(HDC dc) const;
    RECT Frame() const;
    void ChooseCurve(POINT screen_position);
    RECT ClientArea() const;

    const ResultView* result_ = nullptr;
    ViewKind kind_ = ViewKind::kTable;
    int selected_curve_ = -1;
    UniqueFont font_;
    // The corners of the rectangle that the user draws; both the same: there is none.
    POINT frame_start_{};
    POINT frame_end_{};
    bool dragging_ = false;
};

}  // namespace tonvale
