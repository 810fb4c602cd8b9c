// The picture shown at start-up and by the about box, which shrinks away by itself or at a click.
#pragma once

#include <windows.h>

#include "dialogs/handles_win.h"
#include "dialogs/window_win.h"

namespace tonvale {

inline constexpr UINT kSplashMs = 4000;

class SplashWindow final : public Window {
  public:
    // Shows the picture above `owner`, which stays in use, for `duration_ms`. When no timer is to
    // be had, it is gone at once.
    SplashWindow(HINSTANCE instance, HWND owner, UINT duration_ms);
    ~SplashWindow() override;

  private:
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam) override;
    void Paint();
    void ShrinkAway();

    HWND owner_;
    UINT duration_ms_;
    UniqueBitmap picture_;
};

}  // namespace tonvale
