#include "dialogs/status_bar_win.h"

#include <windows.h>

#include <commctrl.h>
#include <shlwapi.h>

#include <algorithm>
#include <string>
#include <utility>

#include "common/file_system.h"
#include "common/unicode_win.h"
#include "dialogs/handles_win.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr std::string_view kNoFile = "Nessun file selezionato";
constexpr int kTextMargin = 4;  // left and right of the text, in pixels of 96 dpi

// `path` shortened to `width` pixels in the bar's font.
std::wstring CompactPath(HWND status_bar, std::wstring path, int width) {
    const WindowDc dc(status_bar);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(status_bar, WM_GETFONT, 0, 0));
    const ScopedSelection selection(dc.get(), font ? font : GetStockObject(DEFAULT_GUI_FONT));
    SIZE size{};
    GetTextExtentPoint32W(dc.get(), path.data(), static_cast<int>(path.size()), &size);
    if (size.cx <= width) return path;
    path.resize(std::max<std::size_t>(path.size(), MAX_PATH) + 1, L'\0');
    PathCompactPathW(dc.get(), path.data(), static_cast<UINT>(width));
    return path.c_str();
}

}  // namespace

HWND CreateStatusBar(HINSTANCE instance, HWND parent) {
    return CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | CCS_BOTTOM, 0, 0,
                           0, 0, parent, reinterpret_cast<HMENU>(INT_PTR{IDC_STATUS_BAR}), instance,
                           nullptr);
}

void ShowCurrentFile(HWND status_bar, std::string_view path) {
    RECT area{};
    GetClientRect(status_bar, &area);
    const int margin = MulDiv(kTextMargin, static_cast<int>(GetDpiForWindow(status_bar)), 96);
    std::wstring text = Widen(path.empty() ? kNoFile : path);
    // PathCompactPath takes no longer path.
    if (text.size() >= MAX_PATH) text = L"...\\" + Widen(FileName(path));
    if (text.size() < MAX_PATH && area.right > 2 * margin) {
        text = CompactPath(status_bar, std::move(text), area.right - 2 * margin);
    }
    SendMessageW(status_bar, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

}  // namespace tonvale
