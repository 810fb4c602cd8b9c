// Guards a rich-text control against faults of its own that end the program.
#pragma once

#include "report/rich_edit/rich_edit_win.h"

namespace tonvale {

// True when the control lets the caret stand between the CR and the LF of a line end, or behind the
// end of the last line: what is typed there spoils its paragraphs, until it crashes. `edit` must be
// empty, as it is afterwards.
bool NeedsGuard(RichEdit& edit);

// From now on the caret and the selection of `editor`, which is empty, end at the text of a line,
// never within or behind the line's end; and a line end typed after one of several paragraphs with
// bullets, which cannot be tried out and ends the program where that does, is one like any other.
void Guard(HWND editor);

}  // namespace tonvale
