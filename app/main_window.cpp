#include "app/main_window.h"

#include <commctrl.h>
#include <richedit.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/command_table_win.h"
#include "app/program_file_win.h"
#include "app/version_info_win.h"
#include "common/file_kinds.h"
#include "common/unicode_win.h"
#include "dialogs/dialog_win.h"
#include "dialogs/file_dialogs_win.h"
#include "dialogs/printer_win.h"
#include "dialogs/status_bar_win.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

constexpr wchar_t kMenuName[] = L"PRIMO";

// The first size of the window in dialog units, and what a unit measures at 96 dpi in the system's
// font: a quarter of its width (8 pixels) by an eighth of its height (16 pixels).
constexpr SIZE kFirstSize = {320, 240};
constexpr int kUnitPixels = 2;

constexpr UINT kPlaceAboutBox = WM_APP + 1;
constexpr UINT kOpenRoutedFile = WM_APP + 2;
constexpr UINT kFormatMenuPosition = 3;  // behind the view menu

HICON LoadProgramIcon(HINSTANCE instance, int width_metric, int height_metric) {
    return static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(IDI_TONVALE), IMAGE_ICON,
                                         GetSystemMetrics(width_metric),
                                         GetSystemMetrics(height_metric), LR_SHARED));
}

ClipboardFormats RegisterClipboardFormats() {
    return {RegisterClipboardFormatW(L"Csv"), RegisterClipboardFormatW(L"Rich Text Format"),
            RegisterClipboardFormatW(L"RichEdit Text and Objects"),
            RegisterClipboardFormatW(L"Embedded Object")};
}

void SetFirstSize(HWND window) {
    const int dpi = static_cast<int>(GetDpiForWindow(window));
    SetWindowPos(window, nullptr, 0, 0,
                 MulDiv(kFirstSize.cx * kUnitPixels, dpi, USER_DEFAULT_SCREEN_DPI),
                 MulDiv(kFirstSize.cy * kUnitPixels, dpi, USER_DEFAULT_SCREEN_DPI),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool IsFormatCommand(UINT id) {
    return id >= CMD_BULLETS && id <= CMD_WORD_WRAP;
}

}  // namespace

MainWindow::WindowClass::WindowClass(HINSTANCE instance) : instance_(instance) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = Procedure;
    description.hInstance = instance;
    description.hIcon = LoadProgramIcon(instance, SM_CXICON, SM_CYICON);
    description.hIconSm = LoadProgramIcon(instance, SM_CXSMICON, SM_CYSMICON);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    description.lpszMenuName = kMenuName;
    description.lpszClassName = kMainWindowClass;
    registered_ = RegisterClassExW(&description) != 0;
}

MainWindow::WindowClass::~WindowClass() {
    if (registered_) UnregisterClassW(kMainWindowClass, instance_);
}

MainWindow::MainWindow(HINSTANCE instance)
    : help_(context_), document_(context_), views_(toolbar_, document_, results_) {
    context_.instance = instance;
    context_.program_folder = ProgramFolder();
    context_.clipboard = RegisterClipboardFormats();
    context_.files = &SystemFiles();
    context_.open_printer = OpenDefaultPrinter;
    context_.help = &help_;
}

bool MainWindow::Create() {
    CreateWindowExW(0, kMainWindowClass, L"Tonvale", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                    context_.instance, CreationParameter());
    return window() != nullptr;
}

void MainWindow::Close() {
    SendMessageW(window(), WM_CLOSE, 0, 0);
}

void MainWindow::ShowSplash() {
    splash_.reset();
    splash_ = std::make_unique<SplashWindow>(context_.instance, window(), kSplashMs);
}

void MainWindow::ShowAbout() {
    ShowSplash();
    PostMessageW(window(), kPlaceAboutBox, 0, 0);  // comes when the box is there
    ShowMessageBox(window(), {"Informazioni su Tonvale", AboutText()});
    splash_.reset();
}

// The box would lie in the middle of the screen as well, hidden by the splash window.
void MainWindow::PlaceAboutBox() const {
    HWND box = GetLastActivePopup(window());
    RECT splash{};
    RECT area{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (box == window() || !splash_ || !GetWindowRect(splash_->window(), &splash) ||
        !GetWindowRect(box, &area) ||
        !GetMonitorInfoW(MonitorFromWindow(box, MONITOR_DEFAULTTONEAREST), &monitor)) {
        return;
    }
    const LONG left = (splash.left + splash.right - (area.right - area.left)) / 2;
    const LONG lowest = monitor.rcWork.bottom - (area.bottom - area.top);
    SetWindowPos(box, HWND_TOPMOST, left, std::min(splash.bottom, lowest), 0, 0,
                 SWP_NOSIZE | SWP_NOACTIVATE);
}

void MainWindow::OpenFileByExtension(const std::string& path) {
    if (!FileKindOfPath(path) || !IsWindowEnabled(window())) return;
    routed_paths_.push_back(path);
    PostRoutedFile();
}

void MainWindow::PostRoutedFile() const {
    PostMessageW(window(), kOpenRoutedFile, 0, 0);
}

// Below a dialog nothing may change: the file waits until the window is enabled again.
void MainWindow::OpenRoutedFile() {
    if (routed_paths_.empty() || !IsWindowEnabled(window())) return;
    const std::string path = std::move(routed_paths_.front());
    routed_paths_.pop_front();
    OpenWith(*FileKindOfPath(path), path);
}

void MainWindow::OpenWith(const FileKindInfo& kind, const std::string& path) {
    Run(CommandOfKind(kind.kind), path);
}

void MainWindow::OpenAnyFile() {
    const std::optional<ChosenFile> chosen = ChooseAnyFile(context_, window());
    if (!chosen) return;
    const FileKindInfo& kind = FileKinds().at(static_cast<std::size_t>(chosen->filter_index - 1));
    OpenWith(kind, chosen->path);
}

void MainWindow::ShowResult(ResultView result) {
    views_.ShowResult(GetMenu(window()), std::move(result));
    ShowWindow(window(), SW_SHOWMAXIMIZED);
    Layout();  // buttons have come or gone, and the status is another
    UpdateButtons();
    UpdateWindow(window());
}

std::optional<LRESULT> MainWindow::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate() ? 0 : -1;
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_QUERYENDSESSION:
            return document_.MayDiscard();
        case WM_DESTROY:
            OnDestroy();
            return 0;
        case WM_SIZE:
            if (wparam != SIZE_MINIMIZED) Layout();
            return 0;
        case WM_SETFOCUS:
            FocusOnContent();
            return 0;
        case WM_DPICHANGED:
            OnDpiChanged(*reinterpret_cast<const RECT*>(lparam));
            return 0;
        case WM_INITMENUPOPUP:
            if (!HIWORD(lparam)) OnMenuOpening(reinterpret_cast<HMENU>(wparam));
            return 0;
        case WM_CLIPBOARDUPDATE:
            UpdateButtons();
            return 0;
        case kPlaceAboutBox:
            PlaceAboutBox();
            return 0;
        case WM_COMMAND:
            Run(LOWORD(wparam), {});
            return 0;
        case WM_ENABLE:
            if (wparam && !routed_paths_.empty()) PostRoutedFile();
            return std::nullopt;
        case kOpenRoutedFile:
            OpenRoutedFile();
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lparam));
        case WM_DROPFILES:
            OnDropFiles(reinterpret_cast<HDROP>(wparam));
            return 0;
        default:
            return std::nullopt;
    }
}

bool MainWindow::OnCreate() {
    context_.main_window = window();
    DragAcceptFiles(window(), TRUE);
    AddClipboardFormatListener(window());
    document_.AddMenuTo(GetMenu(window()), kFormatMenuPosition);
    status_bar_ = CreateStatusBar(context_.instance, window());
    if (!toolbar_.Create(context_.instance, window()) || !document_.Create(window()) ||
        !results_.Create(context_.instance, window())) {
        return false;
    }
    tips_ = std::make_unique<DialogTips>(context_.instance, window());
    context_.tips = tips_.get();
    tips_->Serve(window());
    SetFonts();
    SetFirstSize(window());
    UpdateButtons();
    return true;
}

// What the user is asked about is shown.
void MainWindow::OnClose() {
    if (!views_.ShowsDocument()) {
        views_.ShowDocument();
        UpdateButtons();
        ShowStatus();
    }
    if (document_.MayDiscard()) DestroyWindow(window());
}

void MainWindow::OnDestroy() {
    DragAcceptFiles(window(), FALSE);
    RemoveClipboardFormatListener(window());
    context_.tips = nullptr;
    tips_.reset();
    help_.Close("Tonvale.hlp");
    PostQuitMessage(0);
}

void MainWindow::Run(int id, const std::string& path) {
    if (!views_.ShowsDocument() || !document_.OnCommand(id)) {
        RunCommand(*this, id, path);
    }
    if (!window()) return;
    UpdateButtons();
    if (shown_status_ != StatusText()) ShowStatus();
}

LRESULT MainWindow::OnNotify(NMHDR& header) {
    if (header.code == TTN_GETDISPINFOW) ShowTip(header);
    LRESULT result = 0;
    document_.OnNotify(header, result);
    if (header.code == EN_SELCHANGE) UpdateButtons();
    return result;
}

// A tip that is asked for by window is one of the children's as a whole: they have none.
void MainWindow::ShowTip(NMHDR& header) const {
    auto& request = reinterpret_cast<NMTTDISPINFOW&>(header);
    if ((request.uFlags & TTF_IDISHWND) != 0) return;
    const int command = static_cast<int>(header.idFrom);
    const wchar_t* first_tip = CommandTip(command);
    if (!first_tip) return;
    const std::wstring tip = Widen(views_.Tip(command));
    lstrcpynW(request.szText, tip.empty() ? first_tip : tip.c_str(),
              static_cast<int>(std::size(request.szText)));
}

void MainWindow::OnDropFiles(HDROP drop) {
    const UniqueDrop owner(drop);
    OpenFileByExtension(DroppedFileName(drop));
}

void MainWindow::OnMenuOpening(HMENU menu) const {
    document_.MarkMenu(menu, views_.ShowsDocument());
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        const UINT id = GetMenuItemID(menu, position);
        // Not a separator, a popup or what the document has marked.
        if (id == 0 || id == UINT_MAX || IsFormatCommand(id)) continue;
        const bool enabled = CanRunCommand(*this, static_cast<int>(id));
        EnableMenuItem(menu, id,
                       MF_BYCOMMAND | static_cast<UINT>(enabled ? MF_ENABLED : MF_GRAYED));
    }
    views_.MarkMenu(menu);
}

void MainWindow::UpdateButtons() const {
    toolbar_.EnableButtons([this](int command) { return CanRunCommand(*this, command); });
}

void MainWindow::OnDpiChanged(const RECT& suggested) {
    SetFonts();
    toolbar_.OnDpiChanged();
    document_.OnDpiChanged();
    results_.OnDpiChanged();
    SetWindowPos(window(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    Layout();
}

// The status bar does not follow the resolution of the monitor by itself.
void MainWindow::SetFonts() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                               GetDpiForWindow(window()));
    UniqueFont font(CreateFontIndirectW(&metrics.lfStatusFont));
    SendMessageW(status_bar_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    status_font_ = std::move(font);
}

// Places all children: the toolbar above, the status bar at the foot, the rest between them.
void MainWindow::Layout() {
    RECT content{};
    GetClientRect(window(), &content);
    content.top += toolbar_.Layout(content.right);
    SendMessageW(status_bar_, WM_SIZE, 0, 0);
    RECT bar{};
    GetWindowRect(status_bar_, &bar);
    content.bottom = std::max(content.bottom - (bar.bottom - bar.top), content.top);
    document_.Layout(content);
    results_.Layout(content);
    ShowStatus();
}

// The path of the document, or what the result is about.
std::string MainWindow::StatusText() const {
    if (views_.ShowsDocument()) return document_.path();
    return results_.result()->StatusText(results_.kind());
}

void MainWindow::ShowStatus() {
    shown_status_ = StatusText();
    if (views_.ShowsDocument()) {
        ShowCurrentFile(status_bar_, shown_status_);
    } else {
        SetWindowTextUtf8(status_bar_, shown_status_);
    }
}

void MainWindow::FocusOnContent() {
    if (views_.ShowsDocument()) {
        document_.SetFocus();
    } else {
        SetFocus(results_.window());
    }
}

}  // namespace tonvale
