#include "report/format_menus_win.h"

#include <array>
#include <cstddef>
#include <utility>

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

HMENU LoadPopup(HINSTANCE instance, const wchar_t* name) {
    const UniqueMenu menu(LoadMenuW(instance, name));
    if (!menu) return nullptr;
    HMENU popup = GetSubMenu(menu.get(), 0);
    // It outlives the menu bar that it comes with.
    RemoveMenu(menu.get(), 0, MF_BYPOSITION);
    return popup;
}

}  // namespace

HMENU FormatMenus::MakeColorMenu() {
    HMENU menu = LoadPopup(app_.instance, L"COLORI");
    if (!menu) return nullptr;
    if (swatches_.empty()) {
        for (const Color& color : kTextColors) swatches_.push_back(MakeSwatch(color));
    }
    for (std::size_t i = 0; i < swatches_.size(); ++i) {
        MENUITEMINFOW item{};
        item.cbSize = sizeof(item);
        // Where check marks stand: there is room behind it, and a highlight does not change it.
        item.fMask = MIIM_CHECKMARKS;
        item.hbmpUnchecked = swatches_[i].get();
        SetMenuItemInfoW(menu, CMD_COLOR_FIRST + static_cast<UINT>(i), FALSE, &item);
    }
    return menu;
}

HMENU FormatMenus::MakeFormatMenu() {
    HMENU menu = LoadPopup(app_.instance, L"FORMATO");
    HMENU colors = menu ? MakeColorMenu() : nullptr;
    if (!colors) return menu;
    MENUITEMINFOW item{};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_SUBMENU;
    item.hSubMenu = colors;  // from now on the format menu's
    SetMenuItemInfoW(menu, CMD_COLOR_MENU, FALSE, &item);
    return menu;
}

void FormatMenus::AddTo(HMENU bar, UINT position) {
    const UniqueMenu titled(LoadMenuW(app_.instance, L"FORMATO"));
    std::array<wchar_t, 64> title{};
    GetMenuStringW(titled.get(), 0, title.data(), static_cast<int>(title.size()), MF_BYPOSITION);
    if (HMENU menu = MakeFormatMenu()) {
        InsertMenuW(bar, position, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(menu),
                    title.data());
    }
}

int FormatMenus::ChooseColor(HWND owner) {
    const UniqueMenu menu(MakeColorMenu());
    if (!menu) return 0;
    POINT mouse{};
    GetCursorPos(&mouse);
    return TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, mouse.x,
                          mouse.y, 0, owner, nullptr);
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

}  // namespace tonvale
