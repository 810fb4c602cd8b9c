#include "report/format_menus_win.h"

#include <array>
#include <iterator>
#include <vector>

#include "common/handles_win.h"
#include "report/text_colors.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

UINT CheckFlag(bool checked) {
    return MF_BYCOMMAND | static_cast<UINT>(checked ? MF_CHECKED : MF_UNCHECKED);
}

// A square of `color` as large as a check mark, with a frame that shows it on any ground.
UniqueBitmap MakeSwatch(Color color) {
    const int width = GetSystemMetrics(SM_CXMENUCHECK);
    const int height = GetSystemMetrics(SM_CYMENUCHECK);
    const WindowDc screen(nullptr);
    const UniqueDc dc(CreateCompatibleDC(screen.get()));
    UniqueBitmap bitmap(CreateCompatibleBitmap(screen.get(), width, height));
    const UniqueBrush brush(CreateSolidBrush(RGB(color.red, color.green, color.blue)));
    const ScopedSelection selection(dc.get(), bitmap.get());
    const RECT area{0, 0, width, height};
    FillRect(dc.get(), &area, brush.get());
    FrameRect(dc.get(), &area, GetSysColorBrush(COLOR_GRAYTEXT));
    return bitmap;
}

std::vector<UniqueBitmap> AddSwatches(HMENU menu) {
    std::vector<UniqueBitmap> swatches;
    for (std::size_t i = 0; i < kTextColors.size(); ++i) {
        swatches.push_back(MakeSwatch(kTextColors.at(i)));
        MENUITEMINFOW item{};
        item.cbSize = sizeof(item);
        item.fMask = MIIM_BITMAP;
        item.hbmpItem = swatches.back().get();
        SetMenuItemInfoW(menu, CMD_COLOR_FIRST + static_cast<UINT>(i), FALSE, &item);
    }
    return swatches;
}

}  // namespace

HMENU LoadFormatMenu(HINSTANCE instance, const FormatState& state, bool word_wrap) {
    const UniqueMenu menu(LoadMenuW(instance, L"FORMATO"));
    if (!menu) return nullptr;
    HMENU popup = GetSubMenu(menu.get(), 0);
    // It outlives the menu bar that it comes with.
    RemoveMenu(menu.get(), 0, MF_BYPOSITION);
    CheckMenuItem(popup, CMD_BOLD, CheckFlag(state.bold));
    CheckMenuItem(popup, CMD_ITALIC, CheckFlag(state.italic));
    CheckMenuItem(popup, CMD_UNDERLINE, CheckFlag(state.underline));
    CheckMenuItem(popup, CMD_SUPERSCRIPT, CheckFlag(state.superscript));
    CheckMenuItem(popup, CMD_SUBSCRIPT, CheckFlag(state.subscript));
    CheckMenuItem(popup, CMD_BULLETS, CheckFlag(state.bullets));
    CheckMenuItem(popup, CMD_WORD_WRAP, CheckFlag(word_wrap));
    CheckMenuRadioItem(popup, CMD_ALIGN_LEFT, CMD_ALIGN_RIGHT,
                       CMD_ALIGN_LEFT + static_cast<UINT>(state.alignment), MF_BYCOMMAND);
    for (UINT command : {CMD_ALIGN_LEFT, CMD_ALIGN_CENTER, CMD_ALIGN_RIGHT}) {
        EnableMenuItem(popup, command,
                       MF_BYCOMMAND | static_cast<UINT>(word_wrap ? MF_ENABLED : MF_GRAYED));
    }
    return popup;
}

int ChooseFromColorMenu(HINSTANCE instance, HWND owner) {
    const UniqueMenu menu(LoadMenuW(instance, L"COLORI"));
    if (!menu) return 0;
    HMENU popup = GetSubMenu(menu.get(), 0);
    const std::vector<UniqueBitmap> swatches = AddSwatches(popup);
    POINT mouse{};
    GetCursorPos(&mouse);
    return TrackPopupMenu(popup, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, mouse.x, mouse.y,
                          0, owner, nullptr);
}

}  // namespace tonvale
