// Pictures within Rich Text Format.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "report/rich_text.h"

namespace tonvale {

// The group that stands for a picture in Rich Text Format.
std::string PictureGroup(const RichPicture& picture);

// `rtf` with the group of each PNG and JPEG picture replaced by what `replace` gives for it; where
// that is nothing, the group stays.
std::string ReplacePictures(
    std::string_view rtf,
    const std::function<std::optional<std::string>(const RichPicture& picture)>& replace);

}  // namespace tonvale
