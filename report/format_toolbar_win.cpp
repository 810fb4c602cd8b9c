#include "report/format_toolbar_win.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <vector>

#include "dialogs/toolbar_rows_win.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

struct Button {
    int command;
    BYTE style;
    bool ends_group;
    const wchar_t* tip;
};

// In the order of their images.
constexpr std::array<Button, 12> kButtons = {{
    {CMD_BOLD, BTNS_CHECK, false, L"Carattere grassetto  (CTRL+G)"},
    {CMD_ITALIC, BTNS_CHECK, false, L"Carattere corsivo  (CTRL+I)"},
    {CMD_UNDERLINE, BTNS_CHECK, false, L"Carattere sottolineato  (CTRL+S)"},
    {CMD_COLOR_MENU, BTNS_BUTTON, true, L"Colore carattere"},
    {CMD_ALIGN_LEFT, BTNS_CHECK, false, L"Allinea a sinistra"},
    {CMD_ALIGN_CENTER, BTNS_CHECK, false, L"Allinea al centro"},
    {CMD_ALIGN_RIGHT, BTNS_CHECK, false, L"Allinea a destra"},
    {CMD_WORD_WRAP, BTNS_CHECK, true, L"A capo automatico"},
    {CMD_BULLETS, BTNS_CHECK, true, L"Elenco puntato"},
    {CMD_SUPERSCRIPT, BTNS_CHECK, false, L"Apice  (CTRL+U)"},
    {CMD_SUBSCRIPT, BTNS_CHECK, true, L"Pedice  (CTRL+D)"},
    {CMD_FONT, BTNS_BUTTON, false, L"Tipo di carattere"},
}};

void AddButtons(HWND toolbar) {
    std::vector<TBBUTTON> buttons;
    for (std::size_t i = 0; i < kButtons.size(); ++i) {
        TBBUTTON button{};
        button.iBitmap = static_cast<int>(i);
        button.idCommand = kButtons[i].command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = kButtons[i].style;
        buttons.push_back(button);
        if (!kButtons[i].ends_group) continue;
        TBBUTTON separator{};
        separator.fsStyle = BTNS_SEP;
        buttons.push_back(separator);
    }
    SendMessageW(toolbar, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
}

}  // namespace

bool FormatToolbar::Create(HINSTANCE instance, HWND parent) {
    if (window_) DestroyWindow(window_);
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                             CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN;
    window_ =
        CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, kStyle, 0, 0, 0, 0, parent,
                        reinterpret_cast<HMENU>(INT_PTR{IDC_FORMAT_TOOLBAR}), instance, nullptr);
    if (!window_) return false;
    SendMessageW(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    images_.GiveTo(window_, instance, L"FORMAT", static_cast<int>(kButtons.size()));
    AddButtons(window_);
    return true;
}

int FormatToolbar::Layout(POINT corner, int width) const {
    return PlaceToolbar(window_, corner, width);
}

void FormatToolbar::Check(int command, bool checked) {
    SendMessageW(window_, TB_CHECKBUTTON, static_cast<WPARAM>(command), MAKELPARAM(checked, 0));
}

void FormatToolbar::ShowState(const FormatState& state, bool word_wrap) {
    Check(CMD_BOLD, state.bold);
    Check(CMD_ITALIC, state.italic);
    Check(CMD_UNDERLINE, state.underline);
    Check(CMD_SUPERSCRIPT, state.superscript);
    Check(CMD_SUBSCRIPT, state.subscript);
    Check(CMD_BULLETS, state.bullets);
    Check(CMD_WORD_WRAP, word_wrap);
    Check(CMD_ALIGN_LEFT, state.alignment == Alignment::kLeft);
    Check(CMD_ALIGN_CENTER, state.alignment == Alignment::kCenter);
    Check(CMD_ALIGN_RIGHT, state.alignment == Alignment::kRight);
    for (int command : {CMD_ALIGN_LEFT, CMD_ALIGN_CENTER, CMD_ALIGN_RIGHT}) {
        SendMessageW(window_, TB_ENABLEBUTTON, static_cast<WPARAM>(command),
                     MAKELPARAM(word_wrap, 0));
    }
}

const wchar_t* FormatToolbar::TipOf(int command) {
    const auto* button =
        std::find_if(kButtons.begin(), kButtons.end(),
                     [command](const Button& row) { return row.command == command; });
    return button == kButtons.end() ? nullptr : button->tip;
}

}  // namespace tonvale
