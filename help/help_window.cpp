#include "help/help_window.h"

#include <algorithm>
#include <array>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/dialog_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

// A hook procedure is given no other way to its object.
HelpWindow* the_help = nullptr;

constexpr wchar_t kTitle[] = L"Guida di Tonvale";
constexpr std::string_view kHelpFile = "tonvale.hlp";
constexpr std::string_view kAllTopics = "&Argomenti:";
constexpr std::string_view kHits = "&Argomenti trovati: ";

// Sizes in pixels of 96 dpi.
constexpr SIZE kFirstSize = {760, 560};
constexpr SIZE kSmallestSize = {440, 280};
constexpr int kFirstMargin = 24;  // to the corner of the screen
constexpr int kGap = 8;
constexpr int kButtonPadding = 20;  // of a button's text, both sides together
constexpr int kRowHeight = 24;
constexpr int kFindFieldWidth = 200;
constexpr int kMaxListWidth = 280;
constexpr int kListPercent = 36;  // of the window, when it is narrow

constexpr DWORD kButtonStyle = WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD kListStyle = WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                             TVS_SHOWSELALWAYS | TVS_NOHSCROLL | TVS_DISABLEDRAGDROP;

UserMessage NoHelpFile() {
    return {"Guida in linea", "Il file della guida tonvale.hlp non è nella cartella del programma.",
            MessageIcon::kExclamation};
}

std::string HelpFilePath(const std::string& folder) {
    std::string path = folder;
    if (!path.empty() && path.back() != '\\') path += '\\';
    return path.append(kHelpFile);
}

void SetIcon(HWND window, HINSTANCE instance, WPARAM which, int width_metric, int height_metric) {
    HANDLE icon =
        LoadImageW(instance, MAKEINTRESOURCEW(IDI_TONVALE), IMAGE_ICON,
                   GetSystemMetrics(width_metric), GetSystemMetrics(height_metric), LR_SHARED);
    SendMessageW(window, WM_SETICON, which, reinterpret_cast<LPARAM>(icon));
}

bool IsMenuOpen() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMENUMODE) != 0;
}

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

void Place(HWND control, int left, int top, int width, int height) {
    SetWindowPos(control, nullptr, left, top, std::max(width, 0), std::max(height, 0),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

HelpWindow::HelpWindow(AppContext& app) : app_(app) {
    the_help = this;
}

HelpWindow::~HelpWindow() {
    if (window()) DestroyWindow(window());
    if (key_hook_) UnhookWindowsHookEx(key_hook_);
    UnregisterClassW(kHelpWindowClass, app_.instance);
    the_help = nullptr;
}

// --- Opening and closing -------------------------------------------------------------------------

void HelpWindow::ShowTopic(HWND owner, unsigned long context) {
    if (!window()) {
        if (!LoadBook()) {
            ShowMessageBox(owner, NoHelpFile());
            return;
        }
        if (!Create(owner)) return;
    }
    asked_by_ = owner;
    GoTo(PlaceOf(context));
    if (IsIconic(window())) ShowWindow(window(), SW_RESTORE);
    SetForegroundWindow(window());
    SetFocus(text_.window());
}

void HelpWindow::Close(std::string_view help_file) {
    if (!window()) return;
    if (EqualsIgnoringCase(help_file, kHelpFile) || asked_by_ != app_.main_window) {
        DestroyAndGoBackToWork();
    }
}

bool HelpWindow::LoadBook() {
    std::string bytes;
    const std::string path = HelpFilePath(app_.program_folder);
    if (app_.files->Read(path, bytes) != FileError::kNone) return false;
    book_ = HelpBook::Parse(bytes);
    return !book_.topics().empty();
}

bool HelpWindow::Create(HWND owner) {
    if (!key_hook_) {
        RegisterWindowClass(app_.instance, kHelpWindowClass, Procedure, 0, IDC_ARROW);
        key_hook_ = SetWindowsHookExW(WH_GETMESSAGE, WatchKeys, nullptr, GetCurrentThreadId());
    }
    CreateWindowExW(WS_EX_APPWINDOW, kHelpWindowClass, kTitle,
                    WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0, 0, 0, nullptr, nullptr,
                    app_.instance, CreationParameter());
    if (!window()) return false;
    if (placement_.length == 0) {
        SetFirstPlace(owner);
    } else {
        WINDOWPLACEMENT hidden = placement_;
        hidden.showCmd = SW_HIDE;
        SetWindowPlacement(window(), &hidden);
    }
    SetFonts();
    ListAllTopics();
    ShowWindow(window(), placement_.showCmd == SW_SHOWMAXIMIZED ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    return true;
}

// At the right of the owner's screen, so that what the help is about stays in sight.
void HelpWindow::SetFirstPlace(HWND owner) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor)) return;
    const RECT& work = monitor.rcWork;
    // Once it is there, the window knows the resolution of the monitor.
    SetWindowPos(window(), nullptr, work.left, work.top, 0, 0, SWP_NOZORDER | SWP_NOACTIVATE);
    const int margin = Scaled(kFirstMargin);
    const int width = std::min<int>(Scaled(kFirstSize.cx), work.right - work.left);
    const int height = std::min<int>(Scaled(kFirstSize.cy), work.bottom - work.top);
    const int left = std::max<int>(work.right - width - margin, work.left);
    const int top = std::min<int>(work.top + margin, work.bottom - height);
    SetWindowPos(window(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void HelpWindow::DestroyAndGoBackToWork() {
    if (GetActiveWindow() == window() && IsWindow(app_.main_window)) {
        // The main window or the dialog on top of it.
        SetActiveWindow(GetLastActivePopup(app_.main_window));
    }
    DestroyWindow(window());
}

void HelpWindow::KeepPlacement() {
    placement_.length = sizeof placement_;
    GetWindowPlacement(window(), &placement_);
}

void HelpWindow::Forget() {
    last_focus_ = nullptr;
    current_.reset();
    history_.clear();
    listed_.clear();
    list_items_.clear();
    searched_.clear();
}

// --- Messages ------------------------------------------------------------------------------------

std::optional<LRESULT> HelpWindow::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE:
            return CreateControls() ? 0 : -1;
        case WM_COMMAND:
            OnCommand(LOWORD(wparam), HIWORD(wparam));
            return 0;
        case WM_NOTIFY:
            OnNotify(*reinterpret_cast<const NMHDR*>(lparam));
            return 0;
        case HelpTextView::kFollowLink:
            GoTo(PlaceOf(static_cast<unsigned long>(lparam)));
            return 0;
        case WM_HELP:
            GoTo(PlaceOf(kHelpUsingHelp));
            return 0;
        case WM_CLOSE:
            DestroyAndGoBackToWork();
            return 0;
        case WM_DESTROY:
            KeepPlacement();
            return 0;
        case WM_NCDESTROY:
            Forget();
            return std::nullopt;
        default:
            return DispatchToFrame(message, wparam, lparam);
    }
}

// Size, looks and focus.
std::optional<LRESULT> HelpWindow::DispatchToFrame(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_ACTIVATE:
            if (LOWORD(wparam) == WA_INACTIVE) KeepFocus();
            return std::nullopt;
        case WM_SETFOCUS:
            SetFocus(last_focus_ ? last_focus_ : text_.window());
            return 0;
        case WM_NEXTDLGCTL:
            SetFocus(LOWORD(lparam) ? reinterpret_cast<HWND>(wparam)
                                    : GetNextDlgTabItem(window(), GetFocus(), wparam != 0));
            return 0;
        case WM_ERASEBKGND:
            Erase(reinterpret_cast<HDC>(wparam));
            return TRUE;
        case WM_SIZE:
            Layout();
            return 0;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {Scaled(kSmallestSize.cx),
                                                                     Scaled(kSmallestSize.cy)};
            return 0;
        case WM_DPICHANGED:
            OnDpiChanged(*reinterpret_cast<const RECT*>(lparam));
            return 0;
        default:
            return std::nullopt;
    }
}

void HelpWindow::OnCommand(int id, int notification) {
    switch (id) {
        case IDOK:
            OnEnter();
            break;
        case IDCANCEL:
            DestroyAndGoBackToWork();
            break;
        case IDC_HELP_BACK:
            GoBack();
            break;
        case IDC_HELP_FIND_NEXT:
            Find(false);
            break;
        case IDC_HELP_FIND_FIELD:
            if (notification == EN_CHANGE && GetWindowTextLengthW(Control(id)) == 0) {
                ListAllTopics();
            }
            break;
        default:
            break;
    }
}

// A button that has the focus is pressed, the list leads on to the text, all else finds.
void HelpWindow::OnEnter() {
    const int id = GetDlgCtrlID(GetFocus());
    if (id == IDC_HELP_BACK || id == IDCANCEL) {
        OnCommand(id, BN_CLICKED);
    } else if (id == IDC_HELP_LIST) {
        SetFocus(text_.window());
    } else if (id != IDC_HELP_TEXT) {
        Find(false);
    }
}

void HelpWindow::OnNotify(const NMHDR& header) {
    if (header.idFrom == IDC_HELP_TEXT && header.code == EN_LINK) {
        text_.OnLink(reinterpret_cast<const ENLINK&>(header));
    } else if (header.idFrom == IDC_HELP_LIST && header.code == TVN_SELCHANGEDW) {
        const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
        // Not when the program itself selects.
        if (change.action == TVC_UNKNOWN) return;
        const auto index = static_cast<std::size_t>(change.itemNew.lParam);
        if (index >= listed_.size()) return;
        hit_ = index;
        GoTo(listed_[index]);
    }
}

void HelpWindow::Erase(HDC dc) const {
    RECT area{};
    GetClientRect(window(), &area);
    FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE));
}

void HelpWindow::KeepFocus() {
    HWND focus = GetFocus();
    if (IsChild(window(), focus)) last_focus_ = focus;
}

// --- Keys ----------------------------------------------------------------------------------------

// Sees the keys before the message loop does, be it that of the program or of a modal dialog:
// neither knows of this window, and the accelerators of the main window are not meant for it.
LRESULT CALLBACK HelpWindow::WatchKeys(int code, WPARAM removal, LPARAM lparam) {
    auto& message = *reinterpret_cast<MSG*>(lparam);
    if (code == HC_ACTION && (removal & PM_REMOVE) != 0 && the_help && the_help->TakeKey(message)) {
        message.message = WM_NULL;
    }
    return CallNextHookEx(nullptr, code, removal, lparam);
}

bool HelpWindow::TakeKey(MSG& message) {
    if (!window() || message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    if (message.hwnd != window() && !IsChild(window(), message.hwnd)) return false;
    if (IsMenuOpen()) return false;
    return TakeShortcut(message) || IsDialogMessageW(window(), &message);
}

bool HelpWindow::TakeShortcut(const MSG& message) {
    const bool is_plain = message.message == WM_KEYDOWN;
    const bool is_alt = message.message == WM_SYSKEYDOWN && IsDown(VK_MENU);
    if (is_alt && message.wParam == VK_LEFT) {
        GoBack();
    } else if (is_plain && message.wParam == VK_F3) {
        Find(IsDown(VK_SHIFT));
    } else if (is_plain && message.wParam == 'F' && IsDown(VK_CONTROL)) {
        SetFocus(Control(IDC_HELP_FIND_FIELD));
        SendMessageW(Control(IDC_HELP_FIND_FIELD), EM_SETSEL, 0, -1);
    } else {
        return false;
    }
    return true;
}

// --- Controls ------------------------------------------------------------------------------------

HWND HelpWindow::CreateChild(int id, const wchar_t* class_name, const wchar_t* text, DWORD style,
                             DWORD extended_style) {
    return CreateWindowExW(extended_style, class_name, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                           0, window(), reinterpret_cast<HMENU>(INT_PTR{id}), app_.instance,
                           nullptr);
}

// In the order that the Tab key follows.
bool HelpWindow::CreateControls() {
    SetIcon(window(), app_.instance, ICON_BIG, SM_CXICON, SM_CYICON);
    SetIcon(window(), app_.instance, ICON_SMALL, SM_CXSMICON, SM_CYSMICON);
    CreateChild(IDC_HELP_LIST_LABEL, WC_STATICW, L"", SS_LEFT, 0);
    CreateChild(IDC_HELP_LIST, WC_TREEVIEWW, L"", kListStyle, WS_EX_CLIENTEDGE);
    const bool has_text = text_.Create(app_.instance, window(), IDC_HELP_TEXT);
    CreateChild(IDC_HELP_BACK, WC_BUTTONW, L"&Indietro", kButtonStyle | WS_DISABLED, 0);
    CreateChild(IDC_HELP_FIND_LABEL, WC_STATICW, L"&Trova:", SS_LEFT | SS_CENTERIMAGE, 0);
    CreateChild(IDC_HELP_FIND_FIELD, WC_EDITW, L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
    CreateChild(IDC_HELP_FIND_NEXT, WC_BUTTONW, L"Trova &successivo", kButtonStyle, 0);
    CreateChild(IDCANCEL, WC_BUTTONW, L"&Chiudi", kButtonStyle, 0);
    return has_text;
}

void HelpWindow::SetFonts() {
    const UINT dpi = GetDpiForWindow(window());
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
    UniqueFont font(CreateFontIndirectW(&metrics.lfMessageFont));
    for (HWND child = GetWindow(window(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        // The text has fonts of its own.
        if (child == text_.window()) continue;
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    }
    font_ = std::move(font);
    text_.SetDpi(dpi);
    Layout();
}

void HelpWindow::OnDpiChanged(const RECT& suggested) {
    SetWindowPos(window(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    SetFonts();
}

int HelpWindow::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(GetDpiForWindow(window())), USER_DEFAULT_SCREEN_DPI);
}

int HelpWindow::WidthWithText(HWND control) const {
    const WindowDc dc(control);
    const ScopedSelection selection(dc.get(), font_ ? font_.get() : GetStockObject(SYSTEM_FONT));
    const std::wstring text = Widen(WindowText(control));
    SIZE size{};
    GetTextExtentPoint32W(dc.get(), text.data(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx) + Scaled(kButtonPadding);
}

// The bar on top, the list on the left below it, the text in all that is left.
void HelpWindow::Layout() {
    RECT area{};
    if (!GetClientRect(window(), &area) || area.right == 0) return;
    const int gap = Scaled(kGap);
    const int row = Scaled(kRowHeight);
    LayoutBar({gap, gap, area.right - gap, gap + row}, gap);
    const int top = gap + row + gap;
    const int bottom = area.bottom - gap;
    const int list_width = std::min<int>(Scaled(kMaxListWidth), area.right * kListPercent / 100);
    const int label_height = row * 3 / 4;
    Place(Control(IDC_HELP_LIST_LABEL), gap, top, list_width, label_height);
    Place(Control(IDC_HELP_LIST), gap, top + label_height, list_width, bottom - top - label_height);
    const int text_left = gap + list_width + gap;
    Place(text_.window(), text_left, top, area.right - gap - text_left, bottom - top);
}

// The field is as wide as the buttons beside it allow.
void HelpWindow::LayoutBar(const RECT& bar, int gap) {
    const int height = bar.bottom - bar.top;
    const auto width_of = [this](int id) { return WidthWithText(Control(id)); };
    const int close_width = width_of(IDCANCEL);
    const int next_width = width_of(IDC_HELP_FIND_NEXT);
    int left = bar.left;
    const auto place = [&](int id, int width) {
        Place(Control(id), left, bar.top, width, height);
        left += width + gap;
    };
    place(IDC_HELP_BACK, width_of(IDC_HELP_BACK));
    left += gap;
    place(IDC_HELP_FIND_LABEL, width_of(IDC_HELP_FIND_LABEL) - Scaled(kButtonPadding));
    const int room = bar.right - close_width - gap - next_width - gap - left;
    place(IDC_HELP_FIND_FIELD, std::min(Scaled(kFindFieldWidth), room));
    place(IDC_HELP_FIND_NEXT, next_width);
    left = bar.right - close_width;
    place(IDCANCEL, close_width);
}

// --- Going from topic to topic -------------------------------------------------------------------

HelpPlace HelpWindow::PlaceOf(unsigned long context) const {
    if (const auto place = book_.Find(context)) return *place;
    return book_.Find(kHelpIndex).value_or(HelpPlace{});
}

void HelpWindow::GoTo(const HelpPlace& place) {
    const bool is_there =
        current_ && current_->place.topic == place.topic && current_->place.block == place.block;
    if (current_ && !is_there) {
        current_->scroll_position = text_.ScrollPosition();
        history_.push_back(*current_);
    }
    Show(place);
}

void HelpWindow::Show(const HelpPlace& place) {
    current_ = Visit{place};
    text_.Show(book_.topics()[place.topic], place.block);
    SelectInList(place.topic);
    UpdateBackButton();
}

void HelpWindow::GoBack() {
    if (history_.empty()) return;
    const Visit visit = history_.back();
    history_.pop_back();
    Show(visit.place);
    text_.ScrollTo(visit.scroll_position);
}

void HelpWindow::UpdateBackButton() {
    HWND button = Control(IDC_HELP_BACK);
    // A disabled control would keep the focus and swallow the keys.
    if (history_.empty() && GetFocus() == button) SetFocus(text_.window());
    EnableWindow(button, !history_.empty());
}

// --- The list and the search ---------------------------------------------------------------------

void HelpWindow::FillList(std::vector<HelpPlace> places, bool indented,
                          const std::string& heading) {
    HWND list = Control(IDC_HELP_LIST);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    TreeView_DeleteAllItems(list);
    list_items_.clear();
    listed_ = std::move(places);
    HTREEITEM parent = TVI_ROOT;
    for (std::size_t i = 0; i < listed_.size(); ++i) {
        const HelpTopic& topic = book_.topics()[listed_[i].topic];
        std::wstring title = Widen(topic.title);
        const bool is_root = !indented || topic.level == 0;
        TVINSERTSTRUCTW row{};
        row.hParent = is_root ? TVI_ROOT : parent;
        row.hInsertAfter = TVI_LAST;
        row.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE;
        row.item.state = row.item.stateMask = TVIS_EXPANDED;
        row.item.pszText = title.data();
        row.item.lParam = static_cast<LPARAM>(i);
        const HTREEITEM item = TreeView_InsertItem(list, &row);
        if (is_root) parent = item;
        list_items_.push_back(item);
    }
    SetWindowTextUtf8(Control(IDC_HELP_LIST_LABEL), heading);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

void HelpWindow::ListAllTopics() {
    std::vector<HelpPlace> places;
    for (std::size_t i = 0; i < book_.topics().size(); ++i) places.push_back({i, std::nullopt});
    searched_.clear();
    FillList(std::move(places), true, std::string(kAllTopics));
    if (current_) SelectInList(current_->place.topic);
}

void HelpWindow::ListHits() {
    std::vector<HelpPlace> hits = book_.Search(searched_);
    std::string heading(kHits);
    heading += FormatInteger(static_cast<int>(hits.size()));
    FillList(std::move(hits), false, heading);
}

void HelpWindow::SelectInList(std::size_t topic) {
    const auto place = std::find_if(listed_.begin(), listed_.end(),
                                    [topic](const HelpPlace& row) { return row.topic == topic; });
    const bool is_listed = place != listed_.end();
    const auto index = static_cast<std::size_t>(place - listed_.begin());
    TreeView_SelectItem(Control(IDC_HELP_LIST), is_listed ? list_items_[index] : nullptr);
}

void HelpWindow::Find(bool backwards) {
    const std::string field = WindowText(Control(IDC_HELP_FIND_FIELD));
    const std::string words(TrimBlanks(field));
    if (words.empty()) {
        SetFocus(Control(IDC_HELP_FIND_FIELD));
        return;
    }
    if (words != searched_) {
        searched_ = words;
        hit_ = 0;
        ListHits();
    } else if (!listed_.empty()) {
        hit_ = (hit_ + (backwards ? listed_.size() - 1 : 1)) % listed_.size();
    }
    if (hit_ < listed_.size()) GoTo(listed_[hit_]);
}

}  // namespace tonvale
