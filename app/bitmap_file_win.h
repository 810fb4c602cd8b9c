// Pictures as bitmap files.
#pragma once

#include <windows.h>

#include <string>

namespace tonvale {

// The bytes of a bitmap file holding `picture`, which no device context may have selected, with
// `depth` bits per pixel (1, 4, 8, 16, 24 or 32). Empty when the picture cannot be read.
std::string BitmapFile(HBITMAP picture, int depth);

// The bits per pixel of the display, rounded up to what a bitmap file can have.
int DisplayDepth();

}  // namespace tonvale
