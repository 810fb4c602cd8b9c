// The one tool-tip window of the program and the dialog that it serves.
#pragma once

#include <windows.h>

namespace tonvale {

// Owns the tool-tip window and the hook that relays the mouse moves of the served dialog's
// children to it. One instance, on the user-interface thread.
class DialogTips {
  public:
    DialogTips(HINSTANCE instance, HWND owner);
    ~DialogTips();
    DialogTips(const DialogTips&) = delete;
    DialogTips& operator=(const DialogTips&) = delete;

    // Removes all tools, then makes each child of `dialog` but its STATICs a tool whose text is
    // asked of the dialog (TTN_GETDISPINFO).
    void Serve(HWND dialog);
    HWND served() const { return served_; }
    HWND window() const { return tips_; }

  private:
    static LRESULT CALLBACK RelayMouse(int code, WPARAM wparam, LPARAM lparam);
    void RemoveTools();
    void AddTool(HWND control);

    HWND tips_ = nullptr;
    HWND served_ = nullptr;
    HHOOK mouse_hook_ = nullptr;
};

}  // namespace tonvale
