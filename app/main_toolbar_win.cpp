#include "app/main_toolbar_win.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "dialogs/toolbar_rows_win.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

struct Position {
    int command;  // 0: a separator
    BYTE style;
    const wchar_t* tip;
};

// The images of the strip follow the buttons one by one.
constexpr Position kPositions[] = {
    {CMD_OPEN, BTNS_BUTTON, L"Apri..."},
    {CMD_SAVE, BTNS_BUTTON, L"Salva"},
    {CMD_PRINT, BTNS_BUTTON, L"Stampa"},
    {0, BTNS_SEP, nullptr},
    {CMD_CUT, BTNS_BUTTON, L"Taglia"},
    {CMD_COPY, BTNS_BUTTON, L"Copia"},
    {CMD_PASTE, BTNS_BUTTON, L"Incolla"},
    {0, BTNS_SEP, nullptr},
    {CMD_VIEW_CHART, BTNS_CHECKGROUP, L"Grafico"},
    {CMD_VIEW_AUDIOGRAM, BTNS_CHECKGROUP, L"Audiogramma"},
    {CMD_VIEW_TABLE, BTNS_CHECKGROUP, L"Tabella"},
    {CMD_VIEW_DOCUMENT, BTNS_BUTTON, L"Ducumento"},  // spelled so on purpose
    {0, BTNS_SEP, nullptr},
    {CMD_DAILY_EXPOSURE, BTNS_BUTTON, L"Lep,d..."},
    {CMD_WEEKLY_EXPOSURE, BTNS_BUTTON, L"Lep,w..."},
    {CMD_GROUP_STATISTICS, BTNS_BUTTON, L"Leq gruppi..."},
    {CMD_UNCERTAINTY, BTNS_BUTTON, L"Errore..."},
    {CMD_NOISE_SPECTRUM, BTNS_BUTTON, L"Spettri rumore..."},
    {CMD_ATTENUATION_SPECTRUM, BTNS_BUTTON, L"Spettri DPI..."},
    {CMD_PROTECTOR_SELECTION, BTNS_BUTTON, L"Scelta DPI..."},
    {CMD_AUDIOGRAM_DAMAGE, BTNS_BUTTON, L"Danno..."},
    {CMD_NIPTS, BTNS_BUTTON, L"NIPTS..."},
    {CMD_HTLA, BTNS_BUTTON, L"HTLA..."},
    {CMD_HTLAN, BTNS_BUTTON, L"HTLAN..."},
    {CMD_PREDICTIONS, BTNS_BUTTON, L"Previsioni..."},
    {CMD_DAMAGE_EVOLUTION, BTNS_BUTTON, L"Evoluzione danno..."},
    {CMD_RISK, BTNS_BUTTON, L"Rischio..."},
    {0, BTNS_SEP, nullptr},
    {CMD_HELP_INDEX, BTNS_BUTTON, L"Help"},
};

// The images behind those of the buttons.
constexpr int kLossByTimeImage = 25;
constexpr int kLossByLevelImage = 26;

int FirstImageOf(int command) {
    int image = 0;
    for (const Position& position : kPositions) {
        if (position.command == command) break;
        if (position.command != 0) ++image;
    }
    return image;
}

TBBUTTON ButtonAt(const Position& position) {
    TBBUTTON button{};
    button.idCommand = position.command;
    button.fsStyle = position.style;
    // A separator has its default width instead.
    if (position.command != 0) button.iBitmap = FirstImageOf(position.command);
    return button;
}

}  // namespace

bool MainToolbar::Create(HINSTANCE instance, HWND parent) {
    instance_ = instance;
    window_ = CreateWindowExW(
        0, TOOLBARCLASSNAMEW, nullptr,
        WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN,
        0, 0, 0, 0, parent, reinterpret_cast<HMENU>(INT_PTR{IDC_TOOLBAR}), instance, nullptr);
    if (!window_) return false;
    SendMessageW(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    OnDpiChanged();
    AddButtons();
    return true;
}

void MainToolbar::AddButtons() const {
    std::array<TBBUTTON, std::size(kPositions)> buttons{};
    std::transform(std::begin(kPositions), std::end(kPositions), buttons.begin(), ButtonAt);
    SendMessageW(window_, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
}

void MainToolbar::OnDpiChanged() {
    images_.GiveTo(window_, instance_, L"TOOLBAR", kLossByLevelImage + 1);
}

int MainToolbar::Layout(int width) const {
    return PlaceToolbar(window_, {0, 0}, width);
}

void MainToolbar::EnableButtons(const std::function<bool(int command)>& is_enabled) const {
    for (const Position& position : kPositions) {
        if (position.command == 0) continue;
        const auto command = static_cast<WPARAM>(position.command);
        const bool shown = SendMessageW(window_, TB_ISBUTTONENABLED, command, 0) != 0;
        const bool wanted = is_enabled(position.command);
        if (shown != wanted) {
            SendMessageW(window_, TB_ENABLEBUTTON, command, MAKELPARAM(wanted, 0));
        }
    }
}

void MainToolbar::CheckButton(int command, bool checked) const {
    SendMessageW(window_, TB_CHECKBUTTON, static_cast<WPARAM>(command), MAKELPARAM(checked, 0));
}

void MainToolbar::ShowButton(int command, bool shown) const {
    SendMessageW(window_, TB_HIDEBUTTON, static_cast<WPARAM>(command), MAKELPARAM(!shown, 0));
}

void MainToolbar::ShowPredictionImages(bool shown) const {
    SendMessageW(window_, TB_CHANGEBITMAP, CMD_VIEW_CHART,
                 shown ? kLossByTimeImage : FirstImageOf(CMD_VIEW_CHART));
    SendMessageW(window_, TB_CHANGEBITMAP, CMD_VIEW_AUDIOGRAM,
                 shown ? kLossByLevelImage : FirstImageOf(CMD_VIEW_AUDIOGRAM));
}

const wchar_t* CommandTip(int command) {
    const auto* position =
        std::find_if(std::begin(kPositions), std::end(kPositions),
                     [command](const Position& candidate) { return candidate.command == command; });
    return command == 0 || position == std::end(kPositions) ? nullptr : position->tip;
}

}  // namespace tonvale
