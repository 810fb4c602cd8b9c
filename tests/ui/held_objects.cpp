#include "tests/ui/held_objects.h"

#include <windows.h>

#include "dialogs/handles_win.h"

namespace tonvale {
namespace {

template <typename Handle>
int CountHandles(unsigned first, unsigned last, unsigned step, bool (*is_held)(Handle)) {
    int count = 0;
    for (unsigned place = first; place <= last; place += step) {
        if (is_held(reinterpret_cast<Handle>(static_cast<ULONG_PTR>(place)))) ++count;
    }
    return count;
}

int CountWindows(HWND parent) {
    int count = 0;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        count += 1 + CountWindows(child);
    }
    return count;
}

// Those of this thread, which has them all, also without a place on the desktop.
int CountAllWindows() {
    int count = 0;
    const auto add = [](HWND window, LPARAM to) -> BOOL {
        *reinterpret_cast<int*>(to) += 1 + CountWindows(window);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), add, reinterpret_cast<LPARAM>(&count));
    const DWORD own = GetCurrentProcessId();
    HWND window = nullptr;
    while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr) {
        DWORD process = 0;
        if (GetWindowThreadProcessId(window, &process) != 0 && process == own) ++count;
    }
    return count;
}

bool IsIcon(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) return false;
    const UniqueBitmap mask(info.hbmMask);
    const UniqueBitmap color(info.hbmColor);
    return true;
}

}  // namespace

std::map<std::string, int> CountHeldObjects() {
    constexpr unsigned kFirst = 0x20, kLast = 0xfffe;
    const auto is_menu = [](HMENU menu) { return IsMenu(menu) != FALSE; };
    const auto is_table = [](HACCEL table) { return CopyAcceleratorTableW(table, nullptr, 0) > 0; };
    const auto is_gdi_object = [](HGDIOBJ object) { return GetObjectType(object) != 0; };
    const auto is_kernel_handle = [](HANDLE handle) {
        DWORD flags = 0;
        return GetHandleInformation(handle, &flags) != FALSE;
    };
    HANDLE process = GetCurrentProcess();
    return {
        {"windows", CountAllWindows()},
        {"menus", CountHandles<HMENU>(kFirst, kLast, 2, is_menu)},
        {"icons", CountHandles<HICON>(kFirst, kLast, 2, IsIcon)},
        {"accelerator tables", CountHandles<HACCEL>(kFirst, kLast, 2, is_table)},
        {"GDI objects", CountHandles<HGDIOBJ>(1, 0xffff, 1, is_gdi_object)},
        {"kernel handles", CountHandles<HANDLE>(4, 0x4000, 4, is_kernel_handle)},
        {kSystemsCount, static_cast<int>(GetGuiResources(process, GR_GDIOBJECTS) +
                                         GetGuiResources(process, GR_USEROBJECTS))},
    };
}

}  // namespace tonvale
