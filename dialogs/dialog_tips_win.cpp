#include "dialogs/dialog_tips_win.h"

#include <commctrl.h>

#include <array>

namespace tonvale {

namespace {

// A hook procedure is given no other way to its object.
DialogTips* the_tips = nullptr;

bool HasClass(HWND window, const wchar_t* name) {
    std::array<wchar_t, 64> class_name{};
    GetClassNameW(window, class_name.data(), static_cast<int>(class_name.size()));
    return lstrcmpiW(class_name.data(), name) == 0;
}

// The size of the structure's first version is known to every version of the library.
TTTOOLINFOW MakeToolInfo() {
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    return tool;
}

}  // namespace

DialogTips::DialogTips(HINSTANCE instance, HWND owner) {
    tips_ = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, instance, nullptr);
    the_tips = this;
    mouse_hook_ = SetWindowsHookExW(WH_GETMESSAGE, RelayMouse, nullptr, GetCurrentThreadId());
}

DialogTips::~DialogTips() {
    if (mouse_hook_) UnhookWindowsHookEx(mouse_hook_);
    the_tips = nullptr;
    if (IsWindow(tips_)) DestroyWindow(tips_);
}

void DialogTips::Serve(HWND dialog) {
    RemoveTools();
    served_ = dialog;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (HasClass(child, L"STATIC")) continue;
        AddTool(child);
        // The mouse is on a part of its own there.
        if (HWND edit = FindWindowExW(child, nullptr, L"EDIT", nullptr)) AddTool(edit);
    }
}

void DialogTips::RemoveTools() {
    TTTOOLINFOW tool = MakeToolInfo();
    while (SendMessageW(tips_, TTM_ENUMTOOLSW, 0, reinterpret_cast<LPARAM>(&tool))) {
        SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        tool = MakeToolInfo();
    }
}

void DialogTips::AddTool(HWND control) {
    TTTOOLINFOW tool = MakeToolInfo();
    tool.uFlags = TTF_IDISHWND;
    tool.hwnd = served_;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

LRESULT CALLBACK DialogTips::RelayMouse(int code, WPARAM wparam, LPARAM lparam) {
    const MSG& message = *reinterpret_cast<const MSG*>(lparam);
    if (code == HC_ACTION && the_tips && message.message == WM_MOUSEMOVE &&
        IsChild(the_tips->served_, message.hwnd)) {
        SendMessageW(the_tips->tips_, TTM_RELAYEVENT, 0, lparam);
    }
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

}  // namespace tonvale
