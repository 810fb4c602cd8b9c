#include "dialogs/toolbar_images_win.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tonvale {
namespace {

constexpr int kFadedPercent = 40;

struct Drawing {
    UINT dpi;  // the lowest that it serves
    SIZE image;
};
constexpr Drawing kDrawings[] = {{192, {32, 30}}, {144, {24, 23}}, {120, {20, 19}}, {0, {16, 15}}};

SIZE ImageSizeFor(UINT dpi) {
    const auto* drawing =
        std::find_if(std::begin(kDrawings), std::end(kDrawings),
                     [dpi](const Drawing& candidate) { return dpi >= candidate.dpi; });
    return drawing->image;
}

// Makes the images of a 32-bit strip grey and pale.
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

UniqueImageList MakeList(HBITMAP strip, SIZE image, int count) {
    UniqueImageList images(ImageList_Create(image.cx, image.cy, ILC_COLOR32, count, 0));
    if (images && strip) ImageList_Add(images.get(), strip, nullptr);
    return images;
}

}  // namespace

void ToolbarImages::GiveTo(HWND toolbar, HINSTANCE instance, const std::wstring& name, int count) {
    const SIZE image = ImageSizeFor(GetDpiForWindow(toolbar));
    const std::wstring resource = name + L"_" + std::to_wstring(image.cx);
    const UniqueBitmap strip(static_cast<HBITMAP>(
        LoadImageW(instance, resource.c_str(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    UniqueImageList images = MakeList(strip.get(), image, count);
    if (strip) Fade(strip.get());
    UniqueImageList faded_images = MakeList(strip.get(), image, count);
    SendMessageW(toolbar, TB_SETBITMAPSIZE, 0, MAKELPARAM(image.cx, image.cy));
    SendMessageW(toolbar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.get()));
    SendMessageW(toolbar, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(faded_images.get()));
    // The toolbar has let the old ones go only now.
    images_ = std::move(images);
    faded_images_ = std::move(faded_images);
}

}  // namespace tonvale
