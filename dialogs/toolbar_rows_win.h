// Rows of buttons: a toolbar that is too narrow for all of its buttons side by side.
#pragma once

#include <windows.h>

namespace tonvale {

// Places `toolbar` (a child without TBSTYLE_WRAPABLE, which leaves uneven gaps between its rows) at
// `corner` of its parent with the width given, its buttons in as many rows as that takes. A row
// ends at a separator if it has one, which is then hidden. Returns the height of the toolbar.
int PlaceToolbar(HWND toolbar, POINT corner, int width);

}  // namespace tonvale
