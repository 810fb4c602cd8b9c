#include "tests/ui/control_layout.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <iterator>
#include <utility>

#include "common/unicode_win.h"
#include "dialogs/handles_win.h"

namespace tonvale {
namespace {

// What the button says of itself to its dialog.
ControlKind ButtonKind(HWND button) {
    const LRESULT code = SendMessageW(button, WM_GETDLGCODE, 0, 0);
    if (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) return ControlKind::kPushButton;
    if (code & DLGC_RADIOBUTTON) return ControlKind::kRadioButton;
    return code & DLGC_STATIC ? ControlKind::kGroupBox : ControlKind::kCheckBox;
}

// Hides the dialog of an extended template and sets the size of its font.
void Adapt(std::vector<BYTE>& bytes, int dpi) {
    auto* words = reinterpret_cast<WORD*>(bytes.data());
    constexpr std::size_t kStyle = 6, kMenu = 13;  // positions of words
    ASSERT_EQ(words[1], 0xffff) << "not an extended template";
    DWORD style = MAKELONG(words[kStyle], words[kStyle + 1]);
    ASSERT_NE(style & DS_SETFONT, 0u) << "a template without a font";
    style &= ~WS_VISIBLE;
    words[kStyle + 1] = HIWORD(style);
    WORD* field = words + kMenu;
    for (int i = 0; i < 3; ++i) {  // menu, window class, title
        if (*field == 0xffff) {
            field += 2;
        } else {
            while (*field++) {
            }
        }
    }
    const WindowDc screen(nullptr);
    *field = static_cast<WORD>(MulDiv(*field, dpi, GetDeviceCaps(screen.get(), LOGPIXELSY)));
}

// What a text needs in the control's font; a text of several words may be broken into lines no
// wider than `width`.
SIZE RoomNeeded(HWND control, const std::wstring& text, LONG width) {
    const ControlKind kind = KindOf(control);
    const DWORD style = StyleOf(control);
    UINT format = DT_CALCRECT | DT_EXPANDTABS;
    const bool breaks_lines = kind == ControlKind::kText
                                  ? (style & SS_TYPEMASK) <= SS_RIGHT
                                  : kind != ControlKind::kGroupBox && kind != ControlKind::kField &&
                                        (style & BS_MULTILINE) != 0;
    format |= breaks_lines ? DT_WORDBREAK : DT_SINGLELINE;
    if (kind == ControlKind::kField || (kind == ControlKind::kText && (style & SS_NOPREFIX) != 0)) {
        format |= DT_NOPREFIX;
    }
    const WindowDc dc(control);
    const ScopedSelection font(dc.get(),
                               reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT area{0, 0, width, 0};
    DrawTextW(dc.get(), text.c_str(), static_cast<int>(text.size()), &area, format);
    return {area.right, area.bottom};
}

// What the control has for its text, less frames, margins, check marks and arrows, which grow with
// the scale.
SIZE RoomOffered(HWND control, double share, int dpi) {
    constexpr std::pair<ControlKind, SIZE> kTaken[] = {
        {ControlKind::kPushButton, {8, 4}},   {ControlKind::kCheckBox, {18, 0}},
        {ControlKind::kRadioButton, {18, 0}}, {ControlKind::kGroupBox, {18, 0}},
        {ControlKind::kField, {24, 0}},
    };
    constexpr LONG kHeadingMargins = 14;  // of a column, which has no arrow
    RECT area{};
    GetClientRect(control, &area);
    SIZE room{static_cast<LONG>(area.right * share), area.bottom};
    for (const auto& [kind, taken] : kTaken) {
        if (kind != KindOf(control)) continue;
        room.cx -= MulDiv(share < 1 ? kHeadingMargins : taken.cx, dpi, 96);
        room.cy -= MulDiv(taken.cy, dpi, 96);
    }
    return room;
}

}  // namespace

std::wstring ClassOf(HWND control) {
    wchar_t name[64] = {};
    GetClassNameW(control, name, static_cast<int>(std::size(name)));
    std::transform(name, name + std::size(name), name, std::towupper);
    return name;
}

DWORD StyleOf(HWND control) {
    return static_cast<DWORD>(GetWindowLongW(control, GWL_STYLE));
}

ControlKind KindOf(HWND control) {
    const std::wstring name = ClassOf(control);
    const DWORD style = StyleOf(control);
    if (name == L"BUTTON") return ButtonKind(control);
    if (name == L"STATIC") {
        const DWORD type = style & SS_TYPEMASK;
        const bool is_text = type <= SS_RIGHT || type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP;
        return is_text ? ControlKind::kText : ControlKind::kOther;
    }
    // What only decorates a field, or reports.
    const bool is_field = name != L"MSCTLS_UPDOWN32" && name != L"MSCTLS_PROGRESS32" &&
                          name != L"MSCTLS_STATUSBAR32" && name != L"TOOLBARWINDOW32";
    return is_field ? ControlKind::kField : ControlKind::kOther;
}

bool IsShown(HWND control) {
    return (StyleOf(control) & WS_VISIBLE) != 0;
}

std::string Describe(HWND control) {
    return Narrow(ClassOf(control)) + " " + std::to_string(GetDlgCtrlID(control)) + " \"" +
           WindowText(control) + "\"";
}

std::wstring TextOfWindow(HWND window) {
    return Widen(WindowText(window));
}

TemplateDialog::TemplateDialog(const std::wstring& name, int dpi) : name_(Narrow(name)) {
    const LPCWSTR id =
        name.front() == L'#' ? MAKEINTRESOURCEW(std::stoi(name.substr(1))) : name.c_str();
    HRSRC resource = FindResourceW(Instance(), id, RT_DIALOG);
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(Instance(), resource)));
    std::vector<BYTE> copy(bytes, bytes + SizeofResource(Instance(), resource));
    copy.resize((copy.size() + 3) & ~std::size_t{3});
    Adapt(copy, dpi);
    window_ = CreateDialogIndirectParamW(
        Instance(), reinterpret_cast<const DLGTEMPLATE*>(copy.data()), GetDesktopWindow(),
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    EXPECT_NE(window_, nullptr) << name_ << " cannot be created";
}

TemplateDialog::~TemplateDialog() {
    DestroyWindow(window_);
}

std::vector<HWND> TemplateDialog::Controls() const {
    std::vector<HWND> controls;
    for (HWND child = GetWindow(window_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        controls.push_back(child);
    }
    return controls;
}

RECT TemplateDialog::AreaOf(HWND control) const {
    RECT area{};
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

void ExpectTextFits(HWND control, const std::wstring& text, double share, int dpi) {
    const SIZE offered = RoomOffered(control, share, dpi);
    const SIZE needed = RoomNeeded(control, text, offered.cx);
    EXPECT_LE(needed.cx, offered.cx) << Describe(control) << ": " << Narrow(text);
    EXPECT_LE(needed.cy, offered.cy) << Describe(control) << ": " << Narrow(text);
}

}  // namespace tonvale
