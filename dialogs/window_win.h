// The base of the program's own windows (not dialogs): joins a window to its object.
#pragma once

#include <windows.h>

#include <optional>

namespace tonvale {

class Window {
  public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND window() const { return window_; }  // nullptr before it is created and once it is gone

  protected:
    virtual ~Window() = default;
    // The window procedure of every class; CreateWindowEx is to be given CreationParameter().
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    void* CreationParameter() { return this; }
    // The message's result; nullopt leaves it to the system.
    virtual std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam) = 0;

  private:
    HWND window_ = nullptr;
};

// A class of windows for which this instance has registered `name` already is no failure.
bool RegisterWindowClass(HINSTANCE instance, const wchar_t* name, WNDPROC procedure, UINT style,
                         const wchar_t* cursor);

}  // namespace tonvale
