// Owners of Windows handles: each gives its handle back when it goes out of scope.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <memory>

namespace tonvale {

// `Closer` is a type with a static Close(Handle).
template <typename Handle, typename Closer>
struct HandleDeleter {
    using pointer = Handle;
    void operator()(Handle handle) const noexcept { Closer::Close(handle); }
};

template <typename Handle, typename Closer>
using UniqueHandle = std::unique_ptr<Handle, HandleDeleter<Handle, Closer>>;

struct GdiObjectCloser {
    static void Close(HGDIOBJ object) noexcept { DeleteObject(object); }
};
struct DeviceContextCloser {
    static void Close(HDC dc) noexcept { DeleteDC(dc); }
};
struct GlobalMemoryCloser {
    static void Close(HGLOBAL memory) noexcept { GlobalFree(memory); }
};
struct MenuCloser {
    static void Close(HMENU menu) noexcept { DestroyMenu(menu); }
};
struct AcceleratorsCloser {
    static void Close(HACCEL table) noexcept { DestroyAcceleratorTable(table); }
};
struct ImageListCloser {
    static void Close(HIMAGELIST images) noexcept { ImageList_Destroy(images); }
};
struct DropCloser {
    static void Close(HDROP drop) noexcept { DragFinish(drop); }
};

using UniqueFont = UniqueHandle<HFONT, GdiObjectCloser>;
using UniquePen = UniqueHandle<HPEN, GdiObjectCloser>;
using UniqueBrush = UniqueHandle<HBRUSH, GdiObjectCloser>;
using UniqueBitmap = UniqueHandle<HBITMAP, GdiObjectCloser>;
using UniqueDc = UniqueHandle<HDC, DeviceContextCloser>;  // of CreateDC, CreateCompatibleDC
using UniqueGlobal = UniqueHandle<HGLOBAL, GlobalMemoryCloser>;
using UniqueMenu = UniqueHandle<HMENU, MenuCloser>;
using UniqueAccelerators = UniqueHandle<HACCEL, AcceleratorsCloser>;
using UniqueImageList = UniqueHandle<HIMAGELIST, ImageListCloser>;
using UniqueDrop = UniqueHandle<HDROP, DropCloser>;

// The device context of a window's client area.
class WindowDc {
  public:
    explicit WindowDc(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~WindowDc() { ReleaseDC(window_, dc_); }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    HDC get() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

// A GDI object selected for a while. It must outlive this, as must the device context.
class ScopedSelection {
  public:
    ScopedSelection(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
    ~ScopedSelection() { SelectObject(dc_, previous_); }
    ScopedSelection(const ScopedSelection&) = delete;
    ScopedSelection& operator=(const ScopedSelection&) = delete;

  private:
    HDC dc_;
    HGDIOBJ previous_;
};

}  // namespace tonvale
