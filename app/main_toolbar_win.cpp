#include "app/main_toolbar_win.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

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

constexpr int kFadedPercent = 40;

constexpr int kMargin = 2;  // below and above the buttons, in pixels of 96 dpi

struct ImageStrip {
    UINT dpi;  // the lowest that it is drawn for
    const wchar_t* name;
    int width;  // of an image, pixels
    int height;
};
constexpr ImageStrip kStrips[] = {
    {192, L"TOOLBAR_32", 32, 30},
    {144, L"TOOLBAR_24", 24, 23},
    {120, L"TOOLBAR_20", 20, 19},
    {0, L"TOOLBAR_16", 16, 15},
};

const ImageStrip& StripFor(UINT dpi) {
    return *std::find_if(std::begin(kStrips), std::end(kStrips),
                         [dpi](const ImageStrip& strip) { return dpi >= strip.dpi; });
}

// Makes the images of a 32-bit strip grey and pale, as disabled buttons show them.
void Fade(HBITMAP strip) {
    DIBSECTION section{};
    if (!GetObjectW(strip, sizeof section, &section)) return;
    auto* pixel = static_cast<RGBQUAD*>(section.dsBm.bmBits);
    const auto* end = pixel + section.dsBm.bmWidth * section.dsBm.bmHeight;
    for (; pixel != end; ++pixel) {
        const int grey = (pixel->rgbRed * 3 + pixel->rgbGreen * 6 + pixel->rgbBlue) / 10;
        pixel->rgbRed = pixel->rgbGreen = pixel->rgbBlue = static_cast<BYTE>(grey);
        // Straight alpha.
        pixel->rgbReserved = static_cast<BYTE>(pixel->rgbReserved * kFadedPercent / 100);
    }
}

UniqueImageList LoadImages(HINSTANCE instance, const ImageStrip& strip, bool faded) {
    const UniqueBitmap bitmap(static_cast<HBITMAP>(
        LoadImageW(instance, strip.name, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    UniqueImageList images(
        ImageList_Create(strip.width, strip.height, ILC_COLOR32, kLossByLevelImage + 1, 0));
    if (bitmap && faded) Fade(bitmap.get());
    if (images && bitmap) ImageList_Add(images.get(), bitmap.get(), nullptr);
    return images;
}

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
    window_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                              WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                                  TBSTYLE_WRAPABLE | CCS_NORESIZE | CCS_NOPARENTALIGN,
                              0, 0, 0, 0, parent, reinterpret_cast<HMENU>(INT_PTR{IDC_TOOLBAR}),
                              instance, nullptr);
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
    const ImageStrip& strip = StripFor(GetDpiForWindow(window_));
    UniqueImageList images = LoadImages(instance_, strip, false);
    UniqueImageList disabled_images = LoadImages(instance_, strip, true);
    SendMessageW(window_, TB_SETBITMAPSIZE, 0, MAKELPARAM(strip.width, strip.height));
    SendMessageW(window_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.get()));
    SendMessageW(window_, TB_SETDISABLEDIMAGELIST, 0,
                 reinterpret_cast<LPARAM>(disabled_images.get()));
    // The toolbar has let the old ones go only now.
    images_ = std::move(images);
    disabled_images_ = std::move(disabled_images);
}

// The buttons wrap to the toolbar's width, and the toolbar is made as high as its rows then.
int MainToolbar::Layout(int width) const {
    RECT last{};
    SetWindowPos(window_, nullptr, 0, 0, width, MinHeight(), SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageW(window_, TB_AUTOSIZE, 0, 0);
    SendMessageW(window_, TB_GETITEMRECT, std::size(kPositions) - 1,
                 reinterpret_cast<LPARAM>(&last));
    const int height = std::max(MinHeight(), static_cast<int>(last.bottom) + Margin());
    SetWindowPos(window_, nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    return height;
}

int MainToolbar::Margin() const {
    return MulDiv(kMargin, static_cast<int>(GetDpiForWindow(window_)), USER_DEFAULT_SCREEN_DPI);
}

int MainToolbar::MinHeight() const {
    return HIWORD(SendMessageW(window_, TB_GETBUTTONSIZE, 0, 0)) + 2 * Margin();
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
