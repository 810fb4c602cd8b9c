#include "dialogs/dialog_tips_win.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

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

struct IdRange {
    int first;
    int last;
};

// Control identifiers of the fields that take digits, one point and backspace.
constexpr IdRange kNumericFields[] = {
    {362, 362},   {368, 368},   {1005, 1005}, {1007, 1007}, {1019, 1022}, {1106, 1107},
    {1109, 1109}, {1111, 1111}, {1113, 1114}, {1118, 1120}, {1161, 1174}, {1555, 1555},
    {1585, 1585}, {1588, 1589}, {1596, 1596}, {1598, 1598},
};
// The field that takes any number of points.
constexpr int kRelaxedField = 1567;

bool IsNumericField(int id) {
    return std::any_of(
        std::begin(kNumericFields), std::end(kNumericFields),
        [id](const IdRange& range) { return id >= range.first && id <= range.last; });
}

bool HoldsPoint(HWND field) {
    std::array<wchar_t, 16> text{};
    const int length = GetWindowTextW(field, text.data(), static_cast<int>(text.size()));
    const std::wstring_view shown(text.data(), static_cast<std::size_t>(length));
    return shown.find(L'.') != std::wstring_view::npos;
}

bool IsDiscarded(const MSG& message) {
    if (message.message != WM_CHAR || !HasClass(message.hwnd, L"EDIT")) return false;
    const int id = GetDlgCtrlID(message.hwnd);
    const bool relaxed = id == kRelaxedField;
    if (!relaxed && !IsNumericField(id)) return false;
    const WPARAM character = message.wParam;
    if ((character >= L'0' && character <= L'9') || character == L'\b') return false;
    if (character == L'.') return !relaxed && HoldsPoint(message.hwnd);
    return true;
}

LRESULT CALLBACK FilterKeystroke(int code, WPARAM wparam, LPARAM lparam) {
    if (code == MSGF_DIALOGBOX && IsDiscarded(*reinterpret_cast<const MSG*>(lparam))) return TRUE;
    return CallNextHookEx(nullptr, code, wparam, lparam);
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
        if (!HasClass(child, L"STATIC")) AddTool(child);
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
    tool.hwnd = GetParent(control);
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

NumericKeystrokeFilter::NumericKeystrokeFilter()
    : hook_(SetWindowsHookExW(WH_MSGFILTER, FilterKeystroke, nullptr, GetCurrentThreadId())) {}

NumericKeystrokeFilter::~NumericKeystrokeFilter() {
    if (hook_) UnhookWindowsHookEx(hook_);
}

}  // namespace tonvale
