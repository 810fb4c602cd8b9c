#include "dialogs/window_win.h"

#include <exception>

#include "dialogs/dialog_win.h"

namespace tonvale {

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
        static_cast<Window*>(creation->lpCreateParams)->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    std::optional<LRESULT> result;
    try {
        if (self) result = self->Dispatch(message, wparam, lparam);
    } catch (const std::exception&) {  // the only ones tell that memory is short
        ShowMessageBox(window, {"Errore", "Memoria insufficiente.", MessageIcon::kStop});
    }
    if (self && message == WM_NCDESTROY) {
        self->window_ = nullptr;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    }
    return result ? *result : DefWindowProcW(window, message, wparam, lparam);
}

bool RegisterWindowClass(HINSTANCE instance, const wchar_t* name, WNDPROC procedure, UINT style,
                         const wchar_t* cursor) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = style;
    description.lpfnWndProc = procedure;
    description.hInstance = instance;
    description.hCursor = LoadCursorW(nullptr, cursor);
    description.lpszClassName = name;
    return RegisterClassExW(&description) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

}  // namespace tonvale
