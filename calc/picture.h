// Pictures that the companion writes as SVG.
#pragma once

#include <string>

#include "calc/companion.h"
#include "common/svg_canvas.h"

namespace tonvale {

inline constexpr Size kPictureSize{1000, 640};

// Writes the picture to `path` and gives the exit status; standard error tells of a failure.
int SavePicture(const SvgCanvas& picture, const std::string& path, FileSystem& files,
                Console& console);

}  // namespace tonvale
