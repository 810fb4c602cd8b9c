// Draws the feet of lowered text, which some rich-text controls cut off: to them a line is as high
// as if all of its text stood on it, and what reaches below is painted over by the next line.
#pragma once

#include <windows.h>

#include "report/rich_edit/rich_edit_win.h"

namespace tonvale {

// True when `edit`, whose text this replaces, gives lowered text no room.
bool CutsLoweredText(RichEdit& edit);

// From now on the feet of lowered text in `editor` are drawn over the line below.
void DrawFeetOf(HWND editor);

}  // namespace tonvale
