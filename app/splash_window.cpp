#include "app/splash_window.h"

#include <mmsystem.h>

#include "dialogs/dialog_win.h"

namespace tonvale {
namespace {

constexpr wchar_t kClassName[] = L"Tonvale_Splash";
constexpr wchar_t kPictureName[] = L"TONVALE";
constexpr wchar_t kFinePictureName[] = L"TONVALE_2X";  // for resolutions above 96 dpi
constexpr SIZE kSizeAt96Dpi = {480, 280};
constexpr COLORREF kBackground = RGB(127, 127, 0);
constexpr UINT_PTR kTimerId = 2;
constexpr DWORD kStepMs = 2;
constexpr int kSteps = 100;
constexpr int kRepaintEvery = 10;

// The system's clock ticks every millisecond, so that short waits stay short.
class FineClock {
  public:
    FineClock() { timeBeginPeriod(1); }
    ~FineClock() { timeEndPeriod(1); }
    FineClock(const FineClock&) = delete;
    FineClock& operator=(const FineClock&) = delete;
};

void DrawStretched(HDC target, const RECT& area, HBITMAP picture) {
    BITMAP size{};
    GetObjectW(picture, sizeof size, &size);
    const UniqueDc source(CreateCompatibleDC(target));
    const ScopedSelection selection(source.get(), picture);
    SetStretchBltMode(target, HALFTONE);
    SetBrushOrgEx(target, 0, 0, nullptr);
    StretchBlt(target, 0, 0, area.right, area.bottom, source.get(), 0, 0, size.bmWidth,
               size.bmHeight, SRCCOPY);
}

}  // namespace

SplashWindow::SplashWindow(HINSTANCE instance, HWND owner, UINT duration_ms)
    : owner_(owner), duration_ms_(duration_ms) {
    if (!RegisterWindowClass(instance, kClassName, Procedure, 0, IDC_ARROW)) return;
    const int dpi = static_cast<int>(GetDpiForWindow(owner));
    const bool fine = dpi > USER_DEFAULT_SCREEN_DPI;
    picture_.reset(static_cast<HBITMAP>(LoadImageW(instance, fine ? kFinePictureName : kPictureName,
                                                   IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kClassName, nullptr, WS_POPUP, 0, 0,
                    MulDiv(kSizeAt96Dpi.cx, dpi, USER_DEFAULT_SCREEN_DPI),
                    MulDiv(kSizeAt96Dpi.cy, dpi, USER_DEFAULT_SCREEN_DPI), owner, nullptr, instance,
                    CreationParameter());
    if (!window()) return;
    CenterOnScreen(window());
    ShowWindow(window(), SW_SHOWNOACTIVATE);
    UpdateWindow(window());
}

SplashWindow::~SplashWindow() {
    if (window()) DestroyWindow(window());
}

std::optional<LRESULT> SplashWindow::Dispatch(UINT message, WPARAM /*wparam*/, LPARAM /*lparam*/) {
    switch (message) {
        case WM_CREATE:
            return SetTimer(window(), kTimerId, duration_ms_, nullptr) ? 0 : -1;
        case WM_ERASEBKGND:
            return TRUE;  // all of it is painted
        case WM_PAINT:
            Paint();
            return 0;
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;  // the keyboard stays with the owner
        case WM_TIMER:
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
            ShrinkAway();
            return 0;
        case WM_DESTROY:
            KillTimer(window(), kTimerId);
            picture_.reset();
            return 0;
        default:
            return std::nullopt;
    }
}

void SplashWindow::Paint() {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window(), &paint);
    RECT area{};
    GetClientRect(window(), &area);
    const UniqueBrush background(CreateSolidBrush(kBackground));
    FillRect(dc, &area, background.get());
    if (picture_) DrawStretched(dc, area, picture_.get());
    EndPaint(window(), &paint);
}

void SplashWindow::ShrinkAway() {
    const FineClock clock;
    RECT area{};
    GetWindowRect(window(), &area);
    const POINT middle = {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    const SIZE unit = {(area.right - area.left) / (kSteps + 1),
                       (area.bottom - area.top) / (kSteps + 1)};
    for (int step = kSteps; step >= 2; --step) {
        const int width = unit.cx * step;
        const int height = unit.cy * step;
        SetWindowPos(window(), nullptr, middle.x - width / 2, middle.y - height / 2, width, height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        if (step % kRepaintEvery == 0) RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE);
        UpdateWindow(window());
        UpdateWindow(owner_);
        Sleep(kStepMs);
    }
    DestroyWindow(window());
}

}  // namespace tonvale
