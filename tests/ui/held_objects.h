// What this process holds of the system: windows, menus, icons, drawing objects, handles.
#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "dialogs/handles_win.h"

namespace tonvale {

template <typename Handle>
int CountHandles(unsigned first, unsigned last, unsigned step, bool (*is_held)(Handle)) {
    int count = 0;
    for (unsigned place = first; place <= last; place += step) {
        if (is_held(reinterpret_cast<Handle>(static_cast<ULONG_PTR>(place)))) ++count;
    }
    return count;
}

inline BOOL CALLBACK CountIfOwn(HWND window, LPARAM count) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) ++*reinterpret_cast<int*>(count);
    return TRUE;
}

// Also those without a place on the desktop.
inline int CountWindows() {
    int count = 0;
    const auto to = reinterpret_cast<LPARAM>(&count);
    EnumChildWindows(GetDesktopWindow(), CountIfOwn, to);
    HWND window = nullptr;
    while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr))) CountIfOwn(window, to);
    return count;
}

inline bool IsIcon(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) return false;
    const UniqueBitmap mask(info.hbmMask);
    const UniqueBitmap color(info.hbmColor);
    return true;
}

// How many there are of each kind, counted one by one (Wine does not count them): a handle without
// its upper half names its place in the table.
inline std::map<std::string, int> CountHeldObjects() {
    constexpr unsigned kFirst = 0x20, kLast = 0xfffe;
    const auto is_menu = [](HMENU menu) { return IsMenu(menu) != FALSE; };
    const auto is_table = [](HACCEL table) { return CopyAcceleratorTableW(table, nullptr, 0) > 0; };
    const auto is_gdi_object = [](HGDIOBJ object) { return GetObjectType(object) != 0; };
    const auto is_kernel_handle = [](HANDLE handle) {
        DWORD flags = 0;
        return GetHandleInformation(handle, &flags) != FALSE;
    };
    return {
        {"windows", CountWindows()},
        {"menus", CountHandles<HMENU>(kFirst, kLast, 2, is_menu)},
        {"icons", CountHandles<HICON>(kFirst, kLast, 2, IsIcon)},
        {"accelerator tables", CountHandles<HACCEL>(kFirst, kLast, 2, is_table)},
        {"GDI objects", CountHandles<HGDIOBJ>(1, 0xffff, 1, is_gdi_object)},
        {"kernel handles", CountHandles<HANDLE>(4, 0x4000, 4, is_kernel_handle)},
    };
}

}  // namespace tonvale
