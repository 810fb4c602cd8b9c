#include "wine/window_picture.h"

#include <objidl.h>

#include <algorithm>

// The library's headers expect these two in the global namespace.
using std::max;
using std::min;
#include <gdiplus.h>

#include "dialogs/handles_win.h"

namespace tonvale {
namespace {

RECT AreaOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

RECT AreaOf(const std::vector<HWND>& windows) {
    RECT all{};
    for (HWND window : windows) {
        const RECT area = AreaOf(window);
        UnionRect(&all, &all, &area);
    }
    return all;
}

// PrintWindow and WM_PRINT give a blank picture under Wine; copying from the window's device
// context does not.
void CopyWindow(HWND window, HDC target, const RECT& whole) {
    const RECT area = AreaOf(window);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    HDC source = GetWindowDC(window);
    BitBlt(target, area.left - whole.left, area.top - whole.top, area.right - area.left,
           area.bottom - area.top, source, 0, 0, SRCCOPY);
    ReleaseDC(window, source);
}

UniqueBitmap TakePicture(const std::vector<HWND>& windows) {
    const RECT area = AreaOf(windows);
    const LONG width = area.right - area.left;
    const LONG height = area.bottom - area.top;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const UniqueDc target(CreateCompatibleDC(nullptr));
    UniqueBitmap picture(CreateDIBSection(target.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!picture) return nullptr;
    const ScopedSelection selection(target.get(), picture.get());
    const RECT whole{0, 0, width, height};
    FillRect(target.get(), &whole, GetSysColorBrush(COLOR_BACKGROUND));
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        CopyWindow(*window, target.get(), area);
    }
    GdiFlush();
    return picture;
}

bool SavePng(HBITMAP picture, const wchar_t* path) {
    constexpr CLSID kPngEncoder = {
        0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) return false;
    const bool saved =
        Gdiplus::Bitmap(picture, nullptr).Save(path, &kPngEncoder, nullptr) == Gdiplus::Ok;
    Gdiplus::GdiplusShutdown(token);
    return saved;
}

}  // namespace

bool SavePicture(const std::vector<HWND>& windows, const wchar_t* path) {
    const UniqueBitmap picture = TakePicture(windows);
    return picture && SavePng(picture.get(), path);
}

}  // namespace tonvale
