// The pop-up menus of the report's editor.
#pragma once

#include <windows.h>

#include "report/report_format_win.h"

namespace tonvale {

// The pop-up of menu FORMATO; the caller destroys it. nullptr when it cannot be loaded.
HMENU LoadFormatMenu(HINSTANCE instance);

// Marks the formatting commands in `menu` as the selection has them, and enables those that can be
// used: none unless `usable`, alignments only while the text is wrapped.
void MarkFormatMenu(HMENU menu, const FormatState& state, bool word_wrap, bool usable);

// Shows the pop-up of menu COLORI, a swatch beside each colour, at the mouse; gives the command
// that the user chose, 0 when none.
int ChooseFromColorMenu(HINSTANCE instance, HWND owner);

}  // namespace tonvale
