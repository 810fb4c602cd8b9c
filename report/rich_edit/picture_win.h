// Pictures of the report document between the forms that the system has for them.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "report/rtf/rich_text.h"

namespace tonvale {

// A device-independent bitmap (header, colour table, pixel rows) as an enhanced metafile, in its
// own size at 96 dpi; nullopt when it is no such bitmap.
std::optional<RichPicture> PictureOfBitmap(std::string_view dib);

// A picture of any format as an enhanced metafile, in the size that it says to have; nullopt when
// it cannot be decoded.
std::optional<RichPicture> AsMetafile(const RichPicture& picture);

// Draws a picture into `place` of a device context; one that cannot be decoded leaves it empty.
void DrawPicture(HDC dc, const RichPicture& picture, const RECT& place);

}  // namespace tonvale
