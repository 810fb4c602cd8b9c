#include "report/format_menus_win.h"

#include <utility>
#include <vector>

#include "dialogs/handles_win.h"
#include "report/text_colors.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

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

HMENU LoadFormatMenu(HINSTANCE instance) {
    const UniqueMenu menu(LoadMenuW(instance, L"FORMATO"));
    if (!menu) return nullptr;
    HMENU popup = GetSubMenu(menu.get(), 0);
    // It outlives the menu bar that it comes with.
    RemoveMenu(menu.get(), 0, MF_BYPOSITION);
    return popup;
}

void MarkFormatMenu(HMENU menu, const FormatState& state, bool word_wrap, bool usable) {
    const std::pair<UINT, bool> marks[] = {
        {CMD_BOLD, state.bold},
        {CMD_ITALIC, state.italic},
        {CMD_UNDERLINE, state.underline},
        {CMD_SUPERSCRIPT, state.superscript},
        {CMD_SUBSCRIPT, state.subscript},
        {CMD_BULLETS, state.bullets},
        {CMD_WORD_WRAP, word_wrap},
        {CMD_ALIGN_LEFT, state.alignment == Alignment::kLeft},
        {CMD_ALIGN_CENTER, state.alignment == Alignment::kCenter},
        {CMD_ALIGN_RIGHT, state.alignment == Alignment::kRight},
    };
    for (const auto& [command, is_marked] : marks) {
        CheckMenuItem(menu, command, static_cast<UINT>(is_marked ? MF_CHECKED : MF_UNCHECKED));
    }
    for (UINT command = CMD_BULLETS; command <= CMD_WORD_WRAP; ++command) {
        const bool is_alignment = command >= CMD_ALIGN_LEFT && command <= CMD_ALIGN_RIGHT;
        const bool enabled = usable && (word_wrap || !is_alignment);
        EnableMenuItem(menu, command, static_cast<UINT>(enabled ? MF_ENABLED : MF_GRAYED));
    }
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
