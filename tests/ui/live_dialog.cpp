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
#include "tests/ui/ui_driver.h"
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

std::string RowsOfList(HWND list) {
    std::string rows;
    HWND header = ListView_GetHeader(list);
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
        for (int column = 0; column < Header_GetItemCount(header); ++column) {
            rows += CellOf(list, row, column) + "|";
        }
    }
    return rows;
}

std::string RowsOfListBox(HWND list) {
    std::string rows;
    for (LRESULT row = 0; row < SendMessageW(list, LB_GETCOUNT, 0, 0); ++row) {
        std::array<wchar_t, 256> text{};
        SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(text.data()));
        rows += Narrow(text.data()) + "|";
    }
    return rows;
}

std::string ContentOf(HWND control) {
    if (HasClass(control, WC_LISTVIEWW)) return RowsOfList(control);
    if (HasClass(control, L"LISTBOX")) return RowsOfListBox(control);
    const LRESULT checked = SendMessageW(control, BM_GETCHECK, 0, 0);
    const bool is_button = HasClass(control, L"BUTTON");
    return WindowText(control) + (is_button && checked == BST_CHECKED ? " (x)" : "");
}

void SelectFirstRows(HWND page) {
    for (HWND control : ChildrenOf(page)) {
        if (HasClass(control, WC_LISTVIEWW)) {
            ListView_SetItemState(control, 0, LVIS_SELECTED | LVIS_FOCUSED,
                                  LVIS_SELECTED | LVIS_FOCUSED);
        } else if (HasClass(control, L"LISTBOX")) {
            SendMessageW(control, LB_SETCURSEL, 0, 0);
        }
    }
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
    HWND header = ListView_GetHeader(list);
    for (int column = 0; column < Header_GetItemCount(header); ++column) {
        const double share = 1.0 * ListView_GetColumnWidth(list, column) / area.right;
        std::array<wchar_t, 64> title{};
        HDITEMW item{};
        item.mask = HDI_TEXT;
        item.pszText = title.data();
        item.cchTextMax = static_cast<int>(title.size());
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&item));
        texts.push_back({title.data(), share});
        for (int row = 0; row < ListView_GetItemCount(list); ++row) {
            texts.push_back({Longest(Widen(CellOf(list, row, column))), share});
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

}  // namespace

HWND PageOf(HWND window) {
    const LRESULT page = SendMessageW(window, PSM_GETCURRENTPAGEHWND, 0, 0);
    return page ? reinterpret_cast<HWND>(page) : window;
}

Dialog* DialogBehind(HWND window) {
    HWND page = PageOf(window);
    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(page, GWLP_HINSTANCE));
    if (!HasClass(page, L"#32770") || instance != GetModuleHandleW(nullptr)) return nullptr;
    return reinterpret_cast<Dialog*>(GetWindowLongPtrW(page, DWLP_USER));
}

HWND DialogInFront() {
    const std::vector<HWND> windows = VisibleWindows();
    const auto found = std::find_if(windows.begin(), windows.end(), [](HWND window) {
        return IsWindowEnabled(window) && HasClass(window, L"#32770");
    });
    return found == windows.end() ? nullptr : *found;
}

std::vector<std::string> Shown(HWND window) {
    std::vector<std::string> shown;
    for (HWND control : ChildrenOf(PageOf(window))) {
        const int id = GetDlgCtrlID(control);
        if (!IsWindowVisible(control) || id == IDC_STATUS_BAR || id == IDC_WIZARD_FILE) continue;
        shown.push_back(std::to_string(id) + ": " + ContentOf(control));
    }
    return shown;
}

std::string CurrentFileName(HWND window) {
    HWND bar = ControlOf(window, IDC_STATUS_BAR);
    const std::string path = WindowText(bar ? bar : ControlOf(window, IDC_WIZARD_FILE));
    return path.substr(path.find_last_of('\\') + 1);
}

void ExpectDescribed(const Dialog& dialog) {
    const DialogDescription& description = dialog.description();
    HWND window = dialog.window();
    SCOPED_TRACE("dialog \"" + WindowText(window) + "\"");
    EXPECT_NE(description.main_help_context, 0U);
    for (const ControlTip& tip : description.tips) {
        EXPECT_NE(GetDlgItem(window, tip.control), nullptr) << "tip of " << tip.control;
    }
    for (const ControlHelp& help : description.help) {
        EXPECT_NE(GetDlgItem(window, help.control), nullptr) << "help of " << help.control;
    }
    for (const ControlColors& colors : description.colors) {
        HWND control = GetDlgItem(window, colors.control);
        EXPECT_NE(control, nullptr) << "colour of " << colors.control;
        const WindowDc dc(window);
        SendMessageW(window, HasClass(control, L"EDIT") ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC,
                     reinterpret_cast<WPARAM>(dc.get()), reinterpret_cast<LPARAM>(control));
        EXPECT_EQ(GetBkColor(dc.get()), ColorOf(colors.surface)) << colors.control;
        EXPECT_EQ(GetDCBrushColor(dc.get()), ColorOf(colors.surface)) << colors.control;
        EXPECT_EQ(GetTextColor(dc.get()), colors.text.value_or(GetTextColor(dc.get())));
    }
    for (const ControlTextLimit& limit : description.text_limits) {
        HWND control = GetDlgItem(window, limit.control);
        HWND typed_into = GetWindow(control, GW_CHILD);  // of a list that takes any text
        HWND field = typed_into ? typed_into : control;
        EXPECT_EQ(SendMessageW(field, EM_GETLIMITTEXT, 0, 0), limit.characters) << limit.control;
    }
    for (const ControlItems& list : description.items) {
        HWND combo = GetDlgItem(window, list.control);
        EXPECT_EQ(static_cast<std::size_t>(SendMessageW(combo, CB_GETCOUNT, 0, 0)),
                  list.items().size())
            << list.control;
    }
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

void LeaveByKey(HWND window) {
    if (GetDlgItem(window, IDNO)) {
        PostMessageW(window, WM_COMMAND, IDNO, 0);
        return;
    }
    HWND focus = GetFocus();
    PostMessageW(IsChild(window, focus) ? focus : window, WM_KEYDOWN, VK_ESCAPE, 1);
}

HWND ButtonWalk::NextButton(HWND page) const {
    constexpr std::array<int, 9> kOthers = {IDOK,          IDCANCEL,         CMD_FILE_OPEN,
                                            CMD_FILE_SAVE, CMD_FILE_SAVE_AS, IDC_WIZARD_PRINT,
                                            IDHELP,        CMD_DIALOG_HELP,  -1};
    for (HWND control : ChildrenOf(page)) {
        const int id = GetDlgCtrlID(control);
        if (KindOf(control) == ControlKind::kPushButton && IsWindowVisible(control) &&
            IsWindowEnabled(control) &&
            std::find(kOthers.begin(), kOthers.end(), id) == kOthers.end() &&
            std::find(pressed_.begin(), pressed_.end(), id) == pressed_.end()) {
            return control;
        }
    }
    return nullptr;
}

bool ButtonWalk::Step(HWND dialog) {
    HWND front = DialogInFront();
    if (!front) return false;
    const Dialog* own = DialogBehind(front);
    if (own && seen_.insert(TemplateOf(*own)).second) {
        ExpectDescribed(*own);
        ExpectTextsFit(*own);
    }
    if (front != dialog) {
        LeaveByKey(front);
        return false;
    }
    HWND page = PageOf(dialog);
    SelectFirstRows(page);
    HWND button = NextButton(page);
    if (!button) return true;
    pressed_.push_back(GetDlgCtrlID(button));
    PostMessageW(button, BM_CLICK, 0, 0);
    return false;
}

}  // namespace tonvale
