// The child of the main window that shows the results of a hearing-damage dialog, as a table or a
// chart, in place of the report document.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <optional>

#include "common/result_view.h"
#include "dialogs/handles_win.h"
#include "dialogs/window_win.h"

namespace tonvale {

class ResultViewWindow final : public Window {
  public:
    // Creates the window (id 16), hidden, in `parent`; false when it cannot be had.
    bool Create(HINSTANCE instance, HWND parent);
    void Layout(const RECT& area) const;
    void OnDpiChanged();

    // Shows the table of another result, of whose charts all curves are drawn.
    void ShowResult(ResultView result);
    // Shows another kind of the last result, with the curves chosen for it.
    void ShowKind(ViewKind kind);
    void Hide();

    // What is shown, or was last; nullptr before.
    const ResultView* result() const { return result_ ? &*result_ : nullptr; }
    // The page of it that is shown; nullptr before.
    const ResultPage* page() const { return result_ ? result_->Page(kind_) : nullptr; }
    ViewKind kind() const { return kind_; }
    // The one curve that is drawn of what is shown, or kAllCurves.
    int selected_curve() const { return selected_curves_[static_cast<std::size_t>(kind_)]; }

    // A picture of the rectangle that the user has drawn, without its frame, else of the whole
    // view; nullptr when there is nothing to be seen.
    UniqueBitmap TakePicture() const;

  private:
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam) override;
    void OnKey(WPARAM key);
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

    std::optional<ResultView> result_;
    ViewKind kind_ = ViewKind::kTable;
    // One a kind, whose curves differ: those of a chart are frequencies, those of an audiogram
    // fractiles.
    std::array<int, kViewKindCount> selected_curves_{kAllCurves, kAllCurves, kAllCurves};
    UniqueFont font_;
    // The corners of the rectangle that the user draws; both the same: there is none.
    POINT frame_start_{};
    POINT frame_end_{};
    bool dragging_ = false;
};

}  // namespace tonvale
