#include "dialogs/dialog_win.h"

#include <commctrl.h>

#include <algorithm>
#include <exception>

#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/dialog_tips_win.h"
#include "dialogs/file_dialogs_win.h"
#include "dialogs/handles_win.h"
#include "dialogs/help_viewer_win.h"
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

COLORREF ColorOf(Surface surface) {
    switch (surface) {
        case Surface::kWhite:
            return RGB(255, 255, 255);
        case Surface::kYellow:
            return RGB(255, 255, 0);
        case Surface::kMenu:
            break;
    }
    return GetSysColor(COLOR_MENU);
}

}  // namespace

Dialog::Dialog(AppContext& app, const DialogDescription& description)
    : app_(app), description_(description) {}

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
        // A wizard's page stays in front.
        SetWindowLongPtrW(window, DWLP_MSGRESULT, -1);
        return message == WM_NOTIFY;
    }
}

INT_PTR Dialog::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return Open();
        case WM_COMMAND:
            Command(LOWORD(wparam), HIWORD(wparam));
            return TRUE;
        case WM_NOTIFY:
            return Notify(*reinterpret_cast<NMHDR*>(lparam));
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLOREDIT:
            return Paint(reinterpret_cast<HDC>(wparam), reinterpret_cast<HWND>(lparam));
        case WM_DROPFILES:
            TakeDrop(reinterpret_cast<HDROP>(wparam));
            return TRUE;
        case WM_HELP:
            if (!ShowControlHelp(HelpedControl(*reinterpret_cast<const HELPINFO*>(lparam)))) {
                app_.help->ShowTopic(window_, description_.main_help_context);
            }
            return TRUE;
        case WM_CONTEXTMENU:
            return ShowHelpUnderMouse(
                reinterpret_cast<HWND>(wparam),
                {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
        case WM_SIZE:  // on a change of the resolution, too
            SendMessageW(Control(IDC_STATUS_BAR), WM_SIZE, 0, 0);
            for (DialogPart* part : parts_) part->OnResize();
            return FALSE;
        case WM_DESTROY:
            OnDestroy();
            ReleaseServices();
            return TRUE;
        default:
            return OfferToParts(message, wparam, lparam);
    }
}

INT_PTR Dialog::Open() {
    for (const ControlTextLimit& limit : description_.text_limits) {
        const UINT message = RowOf(description_.items, limit.control) ? CB_LIMITTEXT : EM_LIMITTEXT;
        SendDlgItemMessageW(window_, limit.control, message, static_cast<WPARAM>(limit.characters),
                            0);
    }
    for (const ControlItems& list : description_.items) {
        for (const std::string& item : list.items()) {
            SendDlgItemMessageW(window_, list.control, CB_ADDSTRING, 0,
                                reinterpret_cast<LPARAM>(Widen(item).c_str()));
        }
    }
    Place();
    DragAcceptFiles(window_, description_.accepts_files);
    const bool system_sets_focus = OnInit();
    ServeTips();
    return system_sets_focus;
}

void Dialog::ServeTips() const {
    if (app_.tips) app_.tips->Serve(window_);
}

void Dialog::Command(int id, int notification) {
    for (DialogPart* part : parts_) {
        if (part->OnCommand(id, notification)) return;
    }
    if (RowOf(description_.items, id)) {
        if (notification == CBN_SELCHANGE) OnItemChosen(id);
    } else if (notification == EN_CHANGE && RowOf(description_.text_limits, id)) {
        if (filling_ == 0) OnEdited(id);
    } else {
        OnCommand(id, notification);
    }
}

INT_PTR Dialog::Notify(NMHDR& header) {
    LRESULT result = 0;
    if (!AnswerTip(header)) {
        const bool handled = std::any_of(parts_.begin(), parts_.end(), [&](DialogPart* part) {
            return part->OnNotify(header, result);
        });
        if (!handled) result = OnNotify(header);
    }
    SetWindowLongPtrW(window_, DWLP_MSGRESULT, result);
    return TRUE;
}

bool Dialog::AnswerTip(NMHDR& header) const {
    if (header.code != TTN_GETDISPINFOW) return false;
    auto& request = reinterpret_cast<NMTTDISPINFOW&>(header);
    const int control = (request.uFlags & TTF_IDISHWND) != 0
                            ? OwningControl(reinterpret_cast<HWND>(header.idFrom))
                            : static_cast<int>(header.idFrom);
    const ControlTip* tip = RowOf(description_.tips, control);
    // The tip only reads the text.
    if (tip) request.lpszText = const_cast<wchar_t*>(tip->text);
    return true;
}

INT_PTR Dialog::Paint(HDC device, HWND control) const {
    const ControlColors* colors = RowOf(description_.colors, GetDlgCtrlID(control));
    if (!colors) return FALSE;
    const COLORREF surface = ColorOf(colors->surface);
    if (colors->text) SetTextColor(device, *colors->text);
    SetBkColor(device, surface);
    SetDCBrushColor(device, surface);
    return reinterpret_cast<INT_PTR>(GetStockObject(DC_BRUSH));
}

INT_PTR Dialog::OfferToParts(UINT message, WPARAM wparam, LPARAM lparam) {
    INT_PTR result = FALSE;
    for (DialogPart* part : parts_) {
        if (part->OnMessage(message, wparam, lparam, result)) return result;
    }
    return FALSE;
}

void Dialog::TakeDrop(HDROP drop) {
    const UniqueDrop owner(drop);
    // Below another dialog nothing may change.
    if (!IsWindowEnabled(window_)) return;
    const std::string path = DroppedFileName(drop);
    if (path.empty()) return;
    for (DialogPart* part : parts_) {
        if (part->OnDrop(path)) return;
    }
    OnDrop(path);
}

int Dialog::HelpedControl(const HELPINFO& request) const {
    auto* part = static_cast<HWND>(request.hItemHandle);
    const bool is_inside = request.iContextType == HELPINFO_WINDOW && IsChild(window_, part);
    return is_inside ? OwningControl(part) : request.iCtrlId;
}

bool Dialog::ShowControlHelp(int control) {
    const ControlHelp* row = RowOf(description_.help, control);
    if (row) app_.help->ShowTopic(window_, row->context);
    return row != nullptr;
}

bool Dialog::ShowHelpUnderMouse(HWND clicked, POINT screen_position) {
    if (clicked != window_) return ShowControlHelp(OwningControl(clicked));
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
    if (id != CMD_DIALOG_HELP) return false;
    app_.help->ShowTopic(window_, description_.main_help_context);
    return true;
}

HWND Dialog::Control(int id) const {
    return GetDlgItem(window_, id);
}

int Dialog::OwningControl(HWND part) const {
    while (part && GetParent(part) != window_) part = GetParent(part);
    return GetDlgCtrlID(part);
}

std::string Dialog::ControlText(int id) const {
    return WindowText(Control(id));
}

std::string Dialog::FieldText(int id) const {
    const ControlTextLimit* limit = RowOf(description_.text_limits, id);
    const std::string text = ControlText(id);
    return limit ? std::string(CutToCharacters(text, static_cast<std::size_t>(limit->characters)))
                 : text;
}

void Dialog::SetControlText(int id, std::string_view text) {
    ++filling_;
    SetWindowTextUtf8(Control(id), text);
    --filling_;
}

int Dialog::ChosenItem(int control) const {
    return static_cast<int>(SendMessageW(Control(control), CB_GETCURSEL, 0, 0));
}

void Dialog::ChooseItem(int control, int position) const {
    const LRESULT count = SendMessageW(Control(control), CB_GETCOUNT, 0, 0);
    const int chosen = position < count ? position : -1;  // Wine would leave the old one chosen
    SendMessageW(Control(control), CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
}

void Dialog::Check(int control, bool checked) const {
    CheckDlgButton(window_, control, checked ? BST_CHECKED : BST_UNCHECKED);
}

bool Dialog::IsChecked(int control) const {
    return IsDlgButtonChecked(window_, control) == BST_CHECKED;
}

void Dialog::ShowChoice(std::span<const int> buttons, int chosen) const {
    for (const int button : buttons) Check(button, button == chosen);
    if (chosen != 0) return;
    // The system has the Tab key stop at a checked button only.
    const auto first = std::find_if(buttons.begin(), buttons.end(), [this](int button) {
        return IsWindowEnabled(Control(button)) != FALSE;
    });
    if (first == buttons.end()) return;
    HWND stop = Control(*first);
    SetWindowLongPtrW(stop, GWL_STYLE, GetWindowLongPtrW(stop, GWL_STYLE) | WS_TABSTOP);
}

void Dialog::Enable(int control, bool enabled) const {
    EnableWindow(Control(control), enabled);
}

void Dialog::Enable(std::span<const int> controls, bool enabled) const {
    for (const int control : controls) Enable(control, enabled);
}

void Dialog::Show(std::span<const int> controls, bool shown) const {
    for (const int control : controls) ShowWindow(Control(control), shown ? SW_SHOW : SW_HIDE);
}

int Dialog::ShowMessage(const UserMessage& message, UINT buttons) const {
    // While it opens, a dialog is still hidden; the message must not float over nothing.
    if (!IsWindowVisible(window_)) ShowWindow(window_, SW_SHOW);
    return ShowMessageBox(window_, message, buttons);
}

void Dialog::FocusOnField(int id) const {
    SetFocus(Control(id));
    SendMessageW(Control(id), EM_SETSEL, 0, -1);
}

void Dialog::FocusBehindText(int id) const {
    HWND field = Control(id);
    const int end = GetWindowTextLengthW(field);
    SetFocus(field);
    SendMessageW(field, EM_SETSEL, static_cast<WPARAM>(end), end);
}

void Dialog::Refuse(const UserMessage& refusal, int field) const {
    ShowMessage(refusal);
    FocusOnField(field);
}

INT_PTR ModalDialog::RunModal(HWND owner) {
    HWND served_before = app().tips ? app().tips->served() : nullptr;
    const INT_PTR result = DialogBoxParamW(app().instance, description().template_name, owner,
                                           Procedure, CreationParameter());
    Forget();
    // The window below has its tips again.
    if (served_before && IsWindow(served_before)) app().tips->Serve(served_before);
    return result == -1 ? IDCANCEL : result;
}

bool ModalDialog::OnCommand(int id, int notification) {
    if (id != IDCANCEL) return Dialog::OnCommand(id, notification);
    End(IDCANCEL);
    return true;
}

void ModalDialog::Place() {
    CenterOnScreen(window());
}

bool ModalDialog::ConfirmsDeletion() const {
    const UserMessage question{"Conferma operazione",
                               "Sei sicuro di voler eliminare questo elemento dalla lista?"};
    return ShowMessage(question, MB_YESNOCANCEL) == IDYES;
}

int ShowMessageBox(HWND owner, const UserMessage& message, UINT buttons) {
    return MessageBoxW(owner, Widen(message.text).c_str(), Widen(message.caption).c_str(),
                       buttons | IconFlag(message.icon));
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
