#include "dialogs/dialog_win.h"

#include <commctrl.h>

#include <algorithm>
#include <exception>

#include "dialogs/dialog_tips_win.h"
#include "dialogs/file_dialogs_win.h"
#include "dialogs/handles_win.h"
#include "dialogs/help_viewer_win.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

UINT IconFlag(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::kInformation:
            return MB_ICONINFORMATION;
        case MessageIcon::kExclamation:
            return MB_ICONEXCLAMATION;
        case MessageIcon::kStop:
            return MB_ICONSTOP;
        case MessageIcon::kNone:
            break;
    }
    return 0;
}

// The row of a table of controls; nullptr when it has none.
template <typename Row>
const Row* RowOf(std::span<const Row> table, int control) {
    const auto row = std::find_if(table.begin(), table.end(), [control](const Row& candidate) {
        return candidate.control == control;
    });
    return row == table.end() ? nullptr : &*row;
}

bool IsAt(HWND control, POINT screen_position) {
    RECT area{};
    return IsWindowVisible(control) && GetWindowRect(control, &area) &&
           PtInRect(&area, screen_position);
}

}  // namespace

Dialog::Dialog(AppContext& app, const DialogDescription& description)
    : app_(app), description_(description) {}

INT_PTR Dialog::RunModal(HWND owner) {
    HWND served_before = app_.tips ? app_.tips->served() : nullptr;
    const INT_PTR result = DialogBoxParamW(app_.instance, description_.template_name, owner,
                                           Procedure, reinterpret_cast<LPARAM>(this));
    window_ = nullptr;
    // The window below has its tips again.
    if (served_before && IsWindow(served_before)) app_.tips->Serve(served_before);
    return result == -1 ? IDCANCEL : result;
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lparam);
        reinterpret_cast<Dialog*>(lparam)->window_ = window;
    }
    auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog) return FALSE;
    try {
        return dialog->Dispatch(message, wparam, lparam);
    } catch (const std::exception&) {  // the only ones tell that memory is short
        ShowMessageBox(window, {"Errore", "Memoria insufficiente.", MessageIcon::kStop});
        return FALSE;
    }
}

INT_PTR Dialog::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) {
    INT_PTR result = FALSE;
    switch (message) {
        case WM_INITDIALOG:
            return Open();
        case WM_COMMAND:
            return OnCommand(LOWORD(wparam), HIWORD(wparam));
        case WM_NOTIFY:
            return Notify(*reinterpret_cast<NMHDR*>(lparam));
        case WM_DROPFILES:
            TakeDrop(reinterpret_cast<HDROP>(wparam));
            return TRUE;
        case WM_HELP:
            if (!ShowControlHelp(reinterpret_cast<const HELPINFO*>(lparam)->iCtrlId)) {
                app_.help->ShowTopic(window_, description_.main_help_context);
            }
            return TRUE;
        case WM_CONTEXTMENU:
            return ShowHelpUnderMouse(
                reinterpret_cast<HWND>(wparam),
                {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
        case WM_SIZE:  // on a change of the resolution, too
            SendMessageW(Control(IDC_STATUS_BAR), WM_SIZE, 0, 0);
            return OnMessage(message, wparam, lparam, result) ? result : FALSE;
        case WM_DESTROY:
            OnDestroy();
            ReleaseServices();
            return TRUE;
        default:
            return OnMessage(message, wparam, lparam, result) ? result : FALSE;
    }
}

INT_PTR Dialog::Open() {
    for (const ControlTextLimit& limit : description_.text_limits) {
        SendDlgItemMessageW(window_, limit.control, EM_LIMITTEXT,
                            static_cast<WPARAM>(limit.characters), 0);
    }
    CenterOnScreen(window_);
    DragAcceptFiles(window_, description_.accepts_files);
    const bool system_sets_focus = OnInit();
    if (app_.tips) app_.tips->Serve(window_);
    return system_sets_focus;
}

INT_PTR Dialog::Notify(NMHDR& header) {
    LRESULT result = 0;
    if (header.code == TTN_GETDISPINFOW) {
        auto& request = reinterpret_cast<NMTTDISPINFOW&>(header);
        const int control = (request.uFlags & TTF_IDISHWND) != 0
                                ? GetDlgCtrlID(reinterpret_cast<HWND>(header.idFrom))
                                : static_cast<int>(header.idFrom);
        const ControlTip* tip = RowOf(description_.tips, control);
        // The tip only reads the text.
        if (tip) request.lpszText = const_cast<wchar_t*>(tip->text);
    } else {
        result = OnNotify(header);
    }
    SetWindowLongPtrW(window_, DWLP_MSGRESULT, result);
    return TRUE;
}

void Dialog::TakeDrop(HDROP drop) {
    const UniqueDrop owner(drop);
    // Below another dialog nothing may change.
    if (!IsWindowEnabled(window_)) return;
    const std::string path = DroppedFileName(drop);
    if (!path.empty()) OnDrop(path);
}

bool Dialog::ShowControlHelp(int control) {
    const ControlHelp* row = RowOf(description_.help, control);
    if (row) app_.help->ShowTopic(window_, row->context);
    return row != nullptr;
}

bool Dialog::ShowHelpUnderMouse(HWND clicked, POINT screen_position) {
    if (clicked != window_) return ShowControlHelp(GetDlgCtrlID(clicked));
    // Statics and disabled controls let the mouse through to the dialog.
    const auto row = std::find_if(
        description_.help.begin(), description_.help.end(),
        [&](const ControlHelp& help) { return IsAt(Control(help.control), screen_position); });
    return row != description_.help.end() && ShowControlHelp(row->control);
}

void Dialog::ReleaseServices() {
    DragAcceptFiles(window_, FALSE);
    if (description_.help_file) app_.help->Close(description_.help_file);
}

bool Dialog::OnCommand(int id, int /*notification*/) {
    switch (id) {
        case IDCANCEL:
            End(IDCANCEL);
            return true;
        case CMD_DIALOG_HELP:
            app_.help->ShowTopic(window_, description_.main_help_context);
            return true;
        default:
            return false;
    }
}

LRESULT Dialog::OnNotify(const NMHDR& /*header*/) {
    return 0;
}

void Dialog::OnDrop(const std::string& /*path*/) {}

bool Dialog::OnMessage(UINT /*message*/, WPARAM /*wparam*/, LPARAM /*lparam*/,
                       INT_PTR& /*result*/) {
    return false;
}

void Dialog::End(INT_PTR result) {
    EndDialog(window_, result);
}

HWND Dialog::Control(int id) const {
    return GetDlgItem(window_, id);
}

std::string Dialog::ControlText(int id) const {
    return WindowText(Control(id));
}

std::string Dialog::ControlText(int id, std::size_t max_characters) const {
    return std::string(CutToCharacters(ControlText(id), max_characters));
}

void Dialog::SetControlText(int id, std::string_view text) {
    SetWindowTextUtf8(Control(id), text);
}

int Dialog::ShowMessage(const UserMessage& message, UINT buttons) const {
    // While it opens, a dialog is still hidden; the message must not float over nothing.
    if (!IsWindowVisible(window_)) ShowWindow(window_, SW_SHOW);
    return ShowMessageBox(window_, message, buttons);
}

void Dialog::FocusOnField(int id) {
    SetFocus(Control(id));
    SendMessageW(Control(id), EM_SETSEL, 0, -1);
}

void Dialog::Refuse(const UserMessage& refusal, int field) {
    ShowMessage(refusal);
    FocusOnField(field);
}

int ShowMessageBox(HWND owner, const UserMessage& message, UINT buttons) {
    return MessageBoxW(owner, Widen(message.text).c_str(), Widen(message.caption).c_str(),
                       buttons | IconFlag(message.icon));
}

INT_PTR PaintOnMenuColor(HDC device) {
    SetBkColor(device, GetSysColor(COLOR_MENU));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_MENU));
}

void CenterOnScreen(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    RECT area{};
    if (!GetWindowRect(window, &area) ||
        !GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)) {
        return;
    }
    const RECT& work = monitor.rcWork;
    const int left = (work.left + work.right - (area.right - area.left)) / 2;
    const int top = (work.top + work.bottom - (area.bottom - area.top)) / 2;
    // The title bar of a window taller than the screen stays in reach.
    SetWindowPos(window, nullptr, left, std::max(top, static_cast<int>(work.top)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace tonvale
