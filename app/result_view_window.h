// The child of the main window that shows the results of a hearing-damage dialog, as a table or a
// chart, in place of the report document.
#pragma once

#include <windows.h>

#include <memory>
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

    // Shows the table of another result.
    void ShowResult(std::shared_ptr<const ResultView> result);
    // Shows another kind of the last result, with all its curves.
    void ShowKind(ViewKind kind);
    void Hide();

    // What is shown, or was last; nullptr before.
    const ResultView* result() const { return result_.get(); }
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

    std::shared_ptr<const ResultView> result_;
    ViewKind kind_ = ViewKind::kTable;
    int selected_curve_ = -1;
    UniqueFont font_;
    // The corners of the rectangle that the user draws; both the same: there is none.
    POINT frame_start_{};
    POINT frame_end_{};
    bool dragging_ = false;
};

}  // namespace tonvale
