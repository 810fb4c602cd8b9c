// The pop-up menus of the report's editor.
#pragma once

#include <windows.h>

#include "report/report_format_win.h"

namespace tonvale {

// The pop-up of menu FORMATO with the checks of `state`; the caller destroys it. nullptr when it
// cannot be loaded.
HMENU LoadFormatMenu(HINSTANCE instance, const FormatState& state, bool word_wrap);

// Shows the pop-up of menu COLORI, a swatch beside each colour, at the mouse; gives the command
// that the user chose, 0 when none.
int ChooseFromColorMenu(HINSTANCE instance, HWND owner);

}  // namespace tonvale
