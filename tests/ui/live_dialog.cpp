#include "tests/ui/live_dialog.h"

#include <commctrl.h>
#include <gtest/gtest.h>
#include <prsht.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/handles_win.h"
#include "dialogs/wizard_win.h"
#include "resources/resource.h"
#include "tests/ui/control_layout.h"
#include "wine/window_picture.h"

namespace tonvale {
namespace {

bool HasClass(HWND window, const wchar_t* name) {
    return lstrcmpiW(ClassOf(window).c_str(), name) == 0;
}

std::vector<HWND> ChildrenOf(HWND window) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

std::string CellOf(HWND list, int row, int column) {
    std::array<wchar_t, 64> text{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return Narrow(item.pszText);
}

std::string ContentOf(HWND control) {
    if (HasClass(control, WC_LISTVIEWW)) return RowsOf(control);
    return WindowText(control) + (HasClass(control, L"BUTTON") && IsChecked(control) ? " (x)" : "");
}

// A text that a control shows, and the part of its width that it has.
struct ShownText {
    std::wstring text;
    double share = 1;
};

// A number stands for longer ones.
std::wstring Longest(const std::wstring& text) {
    const std::string number(TrimBlanks(Narrow(text)));
    const bool is_number = number.find_first_not_of("0123456789.-") == std::string::npos;
    return is_number && !number.empty() ? L"-1" + Widen(number) : text;
}

std::vector<ShownText> TextsOfList(HWND list) {
    std::vector<ShownText> texts;
    RECT area{};
    GetClientRect(list, &area);
    std::array<wchar_t, 64> title{};
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = title.data();
    column.cchTextMax = static_cast<int>(title.size());
    for (int i = 0; ListView_GetColumn(list, i, &column); ++i) {
        const double share = 1.0 * column.cx / area.right;
        texts.push_back({title.data(), share});
        for (int row = 0; row < ListView_GetItemCount(list); ++row) {
            texts.push_back({Longest(Widen(CellOf(list, row, i))), share});
        }
    }
    return texts;
}

std::vector<ShownText> TextsOfCombo(HWND combo) {
    std::vector<ShownText> texts;
    for (LRESULT row = 0; row < SendMessageW(combo, CB_GETCOUNT, 0, 0); ++row) {
        std::array<wchar_t, 256> text{};
        SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(text.data()));
        texts.push_back({text.data()});
    }
    return texts;
}

// Those that a control has got at run time; what its user types may be longer than it.
std::vector<ShownText> TextsOf(HWND control) {
    if (HasClass(control, WC_LISTVIEWW)) return TextsOfList(control);
    if (HasClass(control, L"COMBOBOX")) return TextsOfCombo(control);
    const ControlKind kind = KindOf(control);
    if (kind == ControlKind::kField || kind == ControlKind::kOther) return {};
    return {{Longest(TextOfWindow(control))}};
}

COLORREF ColorOf(Surface surface) {
    if (surface == Surface::kMenu) return GetSysColor(COLOR_MENU);
    return surface == Surface::kYellow ? RGB(255, 255, 0) : RGB(255, 255, 255);
}

std::wstring TemplateOf(const Dialog& dialog) {
    const auto* page = dynamic_cast<const WizardPage*>(&dialog);
    return page ? L"#" + std::to_wstring(page->id()) : dialog.description().template_name;
}

// The dialog that can be used now, the others being below it; nullptr when there is none.
HWND DialogInFront() {
    for (HWND window : VisibleWindows()) {
        if (IsWindowEnabled(window) && HasClass(window, L"#32770")) return window;
    }
    return nullptr;
}

// The program's dialog, or page of a wizard, behind a window; nullptr for windows of the system.
const Dialog* DialogBehind(HWND window) {
    HWND page = PageOf(window);
    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(page, GWLP_HINSTANCE));
    if (!HasClass(page, L"#32770") || instance != GetModuleHandleW(nullptr)) return nullptr;
    return reinterpret_cast<const Dialog*>(GetWindowLongPtrW(page, DWLP_USER));
}

// Where the mouse and the keys are on a control: that of a list that takes any text is inside it.
HWND TypedInto(HWND control) {
    HWND part = GetWindow(control, GW_CHILD);
    return part ? part : control;
}

void ExpectTip(HWND dialog, HWND control, const wchar_t* text) {
    NMTTDISPINFOW request{};
    request.hdr = {nullptr, reinterpret_cast<UINT_PTR>(TypedInto(control)), TTN_GETDISPINFOW};
    request.uFlags = TTF_IDISHWND;
    SendMessageW(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&request));
    EXPECT_STREQ(request.lpszText, text);
}

void ExpectColors(HWND dialog, const ControlColors& colors) {
    HWND control = GetDlgItem(dialog, colors.control);
    const WindowDc dc(dialog);
    SendMessageW(dialog, HasClass(control, L"EDIT") ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC,
                 reinterpret_cast<WPARAM>(dc.get()), reinterpret_cast<LPARAM>(control));
    EXPECT_EQ(GetBkColor(dc.get()), ColorOf(colors.surface)) << colors.control;
    EXPECT_EQ(GetDCBrushColor(dc.get()), ColorOf(colors.surface)) << colors.control;
    EXPECT_EQ(GetTextColor(dc.get()), colors.text.value_or(GetTextColor(dc.get())));
}

void ExpectTextsFit(const Dialog& dialog) {
    for (const int dpi : kScales) {
        const TemplateDialog scaled(TemplateOf(dialog), dpi);
        SCOPED_TRACE(scaled.name() + " at " + std::to_string(dpi) + " dpi");
        for (HWND control : ChildrenOf(dialog.window())) {
            const int id = GetDlgCtrlID(control);
            HWND twin = id > 0 ? GetDlgItem(scaled.window(), id) : nullptr;
            if (!twin) continue;
            for (const auto& [text, share] : TextsOf(control)) {
                ExpectTextFits(twin, text, share, dpi);
            }
        }
    }
}

}  // namespace

HWND PageOf(HWND window) {
    const LRESULT page = SendMessageW(window, PSM_GETCURRENTPAGEHWND, 0, 0);
    return page ? reinterpret_cast<HWND>(page) : window;
}

std::string RowsOf(HWND list) {
    std::string rows;
    const int columns = Header_GetItemCount(ListView_GetHeader(list));
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
        for (int column = 0; column < columns; ++column) {
            rows += (column > 0 ? "|" : row > 0 ? "; " : "") + CellOf(list, row, column);
        }
    }
    return rows;
}

std::string Shown(HWND window) {
    std::string shown;
    for (HWND control : ChildrenOf(PageOf(window))) {
        const int id = GetDlgCtrlID(control);
        if (!IsWindowVisible(control) || id == IDC_STATUS_BAR || id == IDC_WIZARD_FILE) continue;
        shown += std::to_string(id) + ": " + ContentOf(control) + "\n";
    }
    return shown;
}

void LeaveByKey(HWND window) {
    if (GetDlgItem(window, IDNO)) {
        PostMessageW(window, WM_COMMAND, IDNO, 0);
        return;
    }
    HWND focus = GetFocus();
    PostMessageW(IsChild(window, focus) ? focus : window, WM_KEYDOWN, VK_ESCAPE, 1);
}

ButtonWalk::~ButtonWalk() {
    for (const auto& [row, found] : found_) EXPECT_TRUE(found) << "no control " << row.second;
}

void ButtonWalk::Examine(const Dialog& dialog) {
    const DialogDescription& description = dialog.description();
    HWND window = dialog.window();
    SCOPED_TRACE("dialog \"" + WindowText(window) + "\"");
    EXPECT_NE(description.main_help_context, 0U);
    const auto control_of = [&](const void* table, int id) {
        HWND control = GetDlgItem(window, id);
        found_[{table, id}] |= control != nullptr;
        return control;
    };
    for (const ControlHelp& help : description.help)
        control_of(description.help.data(), help.control);
    for (const ControlTip& tip : description.tips) {
        HWND control = control_of(description.tips.data(), tip.control);
        if (control) ExpectTip(window, control, tip.text);
    }
    for (const ControlColors& colors : description.colors) ExpectColors(window, colors);
    for (const auto& [control, characters] : description.text_limits) {
        HWND field = TypedInto(GetDlgItem(window, control));
        EXPECT_EQ(SendMessageW(field, EM_GETLIMITTEXT, 0, 0), characters) << control;
    }
    for (const auto& [control, items] : description.items) {
        const LRESULT count = SendDlgItemMessageW(window, control, CB_GETCOUNT, 0, 0);
        EXPECT_EQ(static_cast<std::size_t>(count), items().size()) << control;
    }
    ExpectTextsFit(dialog);
}

HWND ButtonWalk::NextButton(HWND page) {
    constexpr std::array<int, 9> kOthers = {IDOK,          IDCANCEL,         CMD_FILE_OPEN,
                                            CMD_FILE_SAVE, CMD_FILE_SAVE_AS, IDC_WIZARD_PRINT,
                                            IDHELP,        CMD_DIALOG_HELP,  -1};
    const std::wstring name = TextOfWindow(GetAncestor(page, GA_ROOT));
    for (HWND control : ChildrenOf(page)) {
        const int id = GetDlgCtrlID(control);
        if (KindOf(control) == ControlKind::kPushButton && IsWindowVisible(control) &&
            IsWindowEnabled(control) &&
            std::find(kOthers.begin(), kOthers.end(), id) == kOthers.end() &&
            pressed_.insert({name, id}).second) {
            return control;
        }
    }
    return nullptr;
}

bool ButtonWalk::Step(UiDriver& ui) {
    HWND front = DialogInFront();
    if (!front) return false;
    if (!IsWindow(dialog_)) dialog_ = front;
    const Dialog* own = DialogBehind(front);
    if (own && seen_.insert(TemplateOf(*own)).second) {
        Examine(*own);
        ui.RestartDeadline();
    }
    if (front != dialog_) {
        LeaveByKey(front);
        return false;
    }
    ListView_SetItemState(ControlOf(front, IDC_ITEM_LIST), 0, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
    HWND button = NextButton(PageOf(front));
    if (!button) return true;
    ui.RestartDeadline();
    PostMessageW(button, BM_CLICK, 0, 0);
    return false;
}

}  // namespace tonvale
