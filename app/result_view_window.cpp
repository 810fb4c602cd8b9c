#include "app/result_view_window.h"

#include <windowsx.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "common/unicode_win.h"
#include "dialogs/buffered_paint_win.h"
#include "dialogs/gdi_canvas_win.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

constexpr wchar_t kClassName[] = L"Tonvale_Result";
constexpr wchar_t kAllCurvesText[] = L"Tutte";
// Commands of the menu of curves; curve 0 and those after it follow. 0 tells that none was chosen.
constexpr UINT kAllCurvesCommand = 1;
constexpr UINT kFirstCurveCommand = 2;

UniqueFont MakeFont(HWND window) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                               GetDpiForWindow(window));
    return UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

LONG WidthOf(const RECT& area) {
    return area.right - area.left;
}

LONG HeightOf(const RECT& area) {
    return area.bottom - area.top;
}

UniqueMenu MakeCurveMenu(const std::vector<std::string>& curves, int selected) {
    UniqueMenu menu(CreatePopupMenu());
    AppendMenuW(menu.get(), MF_STRING, kAllCurvesCommand, kAllCurvesText);
    AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
    UINT command = kFirstCurveCommand;
    for (const std::string& name : curves) {
        AppendMenuW(menu.get(), MF_STRING, command++, Widen(name).c_str());
    }
    const UINT checked =
        selected < 0 ? kAllCurvesCommand : kFirstCurveCommand + static_cast<UINT>(selected);
    CheckMenuItem(menu.get(), checked, MF_BYCOMMAND | MF_CHECKED);
    return menu;
}

}  // namespace

bool ResultViewWindow::Create(HINSTANCE instance, HWND parent) {
    if (!RegisterWindowClass(instance, kClassName, Procedure, CS_HREDRAW | CS_VREDRAW, IDC_ARROW)) {
        return false;
    }
    CreateWindowExW(WS_EX_CLIENTEDGE, kClassName, nullptr, WS_CHILD, 0, 0, 0, 0, parent,
                    reinterpret_cast<HMENU>(INT_PTR{IDC_RESULT_VIEW}), instance,
                    CreationParameter());
    if (window()) OnDpiChanged();
    return window() != nullptr;
}

void ResultViewWindow::Layout(const RECT& area) const {
    SetWindowPos(window(), nullptr, area.left, area.top, WidthOf(area), HeightOf(area),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ResultViewWindow::OnDpiChanged() {
    font_ = MakeFont(window());
    InvalidateRect(window(), nullptr, FALSE);
}

void ResultViewWindow::ShowResult(ResultView result) {
    result_ = std::move(result);
    selected_curves_.fill(kAllCurves);
    ShowKind(ViewKind::kTable);
}

void ResultViewWindow::ShowKind(ViewKind kind) {
    kind_ = kind;
    ClearFrame();
    InvalidateRect(window(), nullptr, FALSE);
    ShowWindow(window(), SW_SHOW);
    SetFocus(window());
}

void ResultViewWindow::Hide() {
    ShowWindow(window(), SW_HIDE);
}

std::optional<LRESULT> ResultViewWindow::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) {
    const POINT at = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
    switch (message) {
        case WM_ERASEBKGND:
            return TRUE;  // all of it is painted
        case WM_PAINT:
            Paint();
            return 0;
        case WM_SIZE:
            ClearFrame();
            return 0;
        case WM_LBUTTONDOWN:
            BeginFrame(at);
            return 0;
        case WM_MOUSEMOVE:
            DragFrame(at);
            return 0;
        case WM_LBUTTONUP:
        case WM_CAPTURECHANGED:
            EndFrame();
            return 0;
        case WM_KEYDOWN:
            OnKey(wparam);
            return 0;
        case WM_CONTEXTMENU:
            ChooseCurve(at);
            return 0;
        default:
            return std::nullopt;
    }
}

void ResultViewWindow::OnKey(WPARAM key) {
    if (key == VK_ESCAPE) ClearFrame();
    if (key == 'C' && GetKeyState(VK_CONTROL) < 0) {
        SendMessageW(GetParent(window()), WM_COMMAND, CMD_COPY, 0);
    }
}

RECT ResultViewWindow::ClientArea() const {
    RECT area{};
    GetClientRect(window(), &area);
    return area;
}

void ResultViewWindow::Paint() {
    const PaintDc dc(window());
    const RECT area = ClientArea();
    PaintBuffered(dc.get(), area, [&](HDC memory) {
        DrawResult(memory, area);
        ToggleFrame(memory);
    });
}

void ResultViewWindow::DrawResult(HDC dc, const RECT& area) const {
    FillRect(dc, &area, GetSysColorBrush(COLOR_WINDOW));
    if (!page()) return;
    const ScopedSelection font(dc, font_.get());
    GdiCanvas canvas(dc, static_cast<int>(GetDpiForWindow(window())));
    page()->draw(canvas, {0, 0, static_cast<int>(area.right), static_cast<int>(area.bottom)},
                 {.use_color = true, .selected_curve = selected_curve()});
}

UniqueBitmap ResultViewWindow::TakePicture() const {
    const RECT all = ClientArea();
    RECT part = Frame();
    if (IsRectEmpty(&part)) {
        part = all;
    } else {
        InflateRect(&part, -1, -1);
        IntersectRect(&part, &part, &all);
    }
    if (IsRectEmpty(&part)) return nullptr;
    const WindowDc screen(window());
    const UniqueDc memory(CreateCompatibleDC(screen.get()));
    UniqueBitmap picture(CreateCompatibleBitmap(screen.get(), WidthOf(part), HeightOf(part)));
    if (!memory || !picture) return nullptr;
    const ScopedSelection selection(memory.get(), picture.get());
    SetViewportOrgEx(memory.get(), -part.left, -part.top, nullptr);
    DrawResult(memory.get(), all);
    return picture;
}

RECT ResultViewWindow::Frame() const {
    return {std::min(frame_start_.x, frame_end_.x), std::min(frame_start_.y, frame_end_.y),
            std::max(frame_start_.x, frame_end_.x), std::max(frame_start_.y, frame_end_.y)};
}

// A frame drawn where it is already disappears.
void ResultViewWindow::ToggleFrame(HDC dc) const {
    const RECT frame = Frame();
    if (IsRectEmpty(&frame)) return;
    SetTextColor(dc, RGB(0, 0, 0));
    SetBkColor(dc, RGB(255, 255, 255));
    DrawFocusRect(dc, &frame);
}

void ResultViewWindow::BeginFrame(POINT at) {
    SetFocus(window());
    ClearFrame();
    frame_start_ = frame_end_ = at;
    dragging_ = true;
    SetCapture(window());
}

void ResultViewWindow::DragFrame(POINT at) {
    if (!dragging_) return;
    // What is not painted yet would be toggled twice.
    UpdateWindow(window());
    const RECT area = ClientArea();
    const WindowDc dc(window());
    ToggleFrame(dc.get());
    frame_end_ = {std::clamp(at.x, area.left, area.right), std::clamp(at.y, area.top, area.bottom)};
    ToggleFrame(dc.get());
}

void ResultViewWindow::EndFrame() {
    if (!dragging_) return;
    dragging_ = false;
    ReleaseCapture();
}

void ResultViewWindow::ClearFrame() {
    frame_start_ = frame_end_ = {};
    InvalidateRect(window(), nullptr, FALSE);
}

void ResultViewWindow::ChooseCurve(POINT screen_position) {
    const std::vector<std::string> curves =
        page() ? page()->curve_names : std::vector<std::string>();
    if (curves.empty()) return;
    if (screen_position.x == -1 && screen_position.y == -1) {  // from the keyboard
        screen_position = {ClientArea().right / 2, ClientArea().bottom / 2};
        ClientToScreen(window(), &screen_position);
    }
    const UniqueMenu menu = MakeCurveMenu(curves, selected_curve());
    const BOOL command = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                        screen_position.x, screen_position.y, 0, window(), nullptr);
    if (command == 0) return;
    selected_curves_[static_cast<std::size_t>(kind_)] =
        command - static_cast<int>(kFirstCurveCommand);
    InvalidateRect(window(), nullptr, FALSE);
}

}  // namespace tonvale
