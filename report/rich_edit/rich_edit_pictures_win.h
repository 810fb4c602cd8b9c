// Draws the pictures of a rich-text control that leaves them blank.
#pragma once

#include <windows.h>

namespace tonvale {

// True when `editor`, which holds a picture, cannot draw it.
bool LeavesPicturesBlank(HWND editor);

// From now on the metafiles within `editor` are drawn over what it has drawn itself.
void DrawPicturesOf(HWND editor);

}  // namespace tonvale
