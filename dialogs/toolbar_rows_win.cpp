#include "dialogs/toolbar_rows_win.h"

#include <commctrl.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace tonvale {
namespace {

constexpr int kMargin = 2;  // below the buttons, in pixels of 96 dpi

struct Item {
    bool is_separator;
    bool is_hidden;
    LONG left;
    LONG right;
};

TBBUTTON ButtonAt(HWND toolbar, std::size_t index) {
    TBBUTTON button{};
    SendMessageW(toolbar, TB_GETBUTTON, index, reinterpret_cast<LPARAM>(&button));
    return button;
}

void SetStateBit(HWND toolbar, std::size_t index, BYTE bit, bool on) {
    const BYTE state = ButtonAt(toolbar, index).fsState;
    TBBUTTONINFOW info{};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_BYINDEX | TBIF_STATE;
    info.fsState = static_cast<BYTE>(on ? state | bit : state & ~bit);
    if (info.fsState != state) {
        SendMessageW(toolbar, TB_SETBUTTONINFOW, index, reinterpret_cast<LPARAM>(&info));
    }
}

// Puts all items side by side. A hidden one has no width.
std::vector<Item> PutInOneRow(HWND toolbar) {
    std::vector<Item> items(static_cast<std::size_t>(SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0)));
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i].is_separator = (ButtonAt(toolbar, i).fsStyle & BTNS_SEP) != 0;
        SetStateBit(toolbar, i, TBSTATE_WRAP, false);
        if (items[i].is_separator) SetStateBit(toolbar, i, TBSTATE_HIDDEN, false);
    }
    SendMessageW(toolbar, TB_AUTOSIZE, 0, 0);
    RECT place{};
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i].is_hidden = (ButtonAt(toolbar, i).fsState & TBSTATE_HIDDEN) != 0;
        if (items[i].is_hidden) {
            place.left = place.right;
        } else {
            SendMessageW(toolbar, TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&place));
        }
        items[i].left = place.left;
        items[i].right = place.right;
    }
    return items;
}

// The last items of all rows but the last one: separators where a row has one.
std::vector<std::size_t> FindRowEnds(const std::vector<Item>& items, int width) {
    std::vector<std::size_t> ends;
    std::size_t first = 0;  // of the row
    std::optional<std::size_t> separator;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const LONG room = width - items.front().left;
        while (!items[i].is_separator && i > first && items[i].right - items[first].left > room) {
            ends.push_back(separator.value_or(i - 1));
            first = ends.back() + 1;
            separator.reset();
        }
        if (items[i].is_separator) separator = i;
    }
    return ends;
}

void EndRow(HWND toolbar, const std::vector<Item>& items, std::size_t end) {
    if (items[end].is_separator) SetStateBit(toolbar, end, TBSTATE_HIDDEN, true);
    while (end > 0 && (items[end].is_separator || items[end].is_hidden)) --end;
    SetStateBit(toolbar, end, TBSTATE_WRAP, true);
}

}  // namespace

int PlaceToolbar(HWND toolbar, POINT corner, int width) {
    const std::vector<Item> items = PutInOneRow(toolbar);
    for (const std::size_t end : FindRowEnds(items, width)) EndRow(toolbar, items, end);
    SendMessageW(toolbar, TB_AUTOSIZE, 0, 0);
    RECT last{};
    SendMessageW(toolbar, TB_GETITEMRECT, items.size() - 1, reinterpret_cast<LPARAM>(&last));
    const int dpi = static_cast<int>(GetDpiForWindow(toolbar));
    const int height =
        static_cast<int>(last.bottom) + MulDiv(kMargin, dpi, USER_DEFAULT_SCREEN_DPI);
    SetWindowPos(toolbar, nullptr, corner.x, corner.y, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return height;
}

}  // namespace tonvale
