#include "app/main_window.h"

#include "app/calculator_table.h"
#include "app/command_table_win.h"
#include "app/program_file_win.h"
#include "common/file_dialogs_win.h"
#include "common/file_kinds.h"
#include "common/printer_win.h"
#include "common/status_bar_win.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

constexpr wchar_t kMenuName[] = L"PRIMO";

// The first size of the window in dialog units, and what a unit measures at 96 dpi in the system's
// font: a quarter of its width (8 pixels) by an eighth of its height (16 pixels).
constexpr SIZE kFirstSize = {320, 240};
constexpr int kUnitPixels = 2;

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

MainWindow::MainWindow(HINSTANCE instance) {
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
                    context_.instance, this);
    return window_ != nullptr;
}

void MainWindow::Close() {
    SendMessageW(window_, WM_CLOSE, 0, 0);
}

void MainWindow::OpenFileByExtension(const std::string& path) {
    const FileKindInfo* kind = FileKindOfPath(path);
    if (!kind) return;
    routed_path_ = path;
    PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(CalculatorOf(kind->kind).command),
                 reinterpret_cast<LPARAM>(&routed_path_));
}

void MainWindow::OpenAnyFile() {
    const std::optional<ChosenFile> chosen = ChooseAnyFile(context_, window_);
    if (!chosen) return;
    const FileKindInfo& kind = FileKinds().at(static_cast<std::size_t>(chosen->filter_index - 1));
    RunCommand(CalculatorOf(kind.kind).command, chosen->path);
}

LRESULT CALLBACK MainWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
        auto* self = static_cast<MainWindow*>(creation->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    std::optional<LRESULT> result;
    if (self) result = self->Dispatch(message, wparam, lparam);
    if (self && message == WM_NCDESTROY) self->window_ = nullptr;
    return result ? *result : DefWindowProcW(window, message, wparam, lparam);
}

std::optional<LRESULT> MainWindow::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE:
            OnCreate();
            return 0;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        case WM_SIZE:
            Layout();
            return 0;
        case WM_DPICHANGED:
            OnDpiChanged(*reinterpret_cast<const RECT*>(lparam));
            return 0;
        case WM_INITMENUPOPUP:
            if (!HIWORD(lparam)) OnMenuOpening(reinterpret_cast<HMENU>(wparam));
            return 0;
        case WM_COMMAND:
            OnCommand(wparam, lparam);
            return 0;
        case WM_DROPFILES:
            OnDropFiles(reinterpret_cast<HDROP>(wparam));
            return 0;
        default:
            return std::nullopt;
    }
}

void MainWindow::OnCreate() {
    context_.main_window = window_;
    DragAcceptFiles(window_, TRUE);
    status_bar_ = CreateStatusBar(context_.instance, window_);
    tips_ = std::make_unique<DialogTips>(context_.instance, window_);
    context_.tips = tips_.get();
    SetFonts();
    SetFirstSize(window_);
}

void MainWindow::OnDestroy() {
    DragAcceptFiles(window_, FALSE);
    context_.tips = nullptr;
    tips_.reset();
    help_.Close("Tonvale.hlp");
    PostQuitMessage(0);
}

void MainWindow::OnCommand(WPARAM wparam, LPARAM lparam) {
    const bool is_routed = lparam == reinterpret_cast<LPARAM>(&routed_path_);
    RunCommand(LOWORD(wparam), is_routed ? std::string(routed_path_) : std::string());
}

void MainWindow::RunCommand(int id, const std::string& path) {
    if (const CommandFunction run = FindCommand(id)) run(*this, path);
}

void MainWindow::OnDropFiles(HDROP drop) {
    const UniqueDrop owner(drop);
    OpenFileByExtension(DroppedFileName(drop));
}

void MainWindow::OnMenuOpening(HMENU menu) const {
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
        const UINT id = GetMenuItemID(menu, position);
        const bool enabled = FindCommand(static_cast<int>(id)) != nullptr;
        EnableMenuItem(menu, id,
                       MF_BYCOMMAND | static_cast<UINT>(enabled ? MF_ENABLED : MF_GRAYED));
    }
}

void MainWindow::OnDpiChanged(const RECT& suggested) {
    SetFonts();
    SetWindowPos(window_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    Layout();
}

// The status bar does not follow the resolution of the monitor by itself.
void MainWindow::SetFonts() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                               GetDpiForWindow(window_));
    UniqueFont font(CreateFontIndirectW(&metrics.lfStatusFont));
    SendMessageW(status_bar_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    status_font_ = std::move(font);
}

// Places all children: the status bar places itself at the foot.
void MainWindow::Layout() {
    SendMessageW(status_bar_, WM_SIZE, 0, 0);
    ShowCurrentFile(status_bar_, document_path_);
}

}  // namespace tonvale
