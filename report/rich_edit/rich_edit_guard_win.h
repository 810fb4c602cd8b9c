// Guards a rich-text control against faults of its own that end the program.
#pragma once

#include "report/rich_edit/rich_edit_win.h"

namespace tonvale {

// True when the control lets the caret stand between the CR and the LF of a line end, or behind the
// end of the last line: what is typed there spoils its paragraphs, until it crashes. `edit` must be
// empty, as it is afterwards.
bool NeedsGuard(RichEdit& edit);

// From now on the caret and the selection of `editor`, which is empty, end at the text of a line,
// never within or behind the line's end. With it goes what cannot be tried out, as it ends the
// program where it goes wrong: a line end after one of several paragraphs with bullets, and changes
// at a caret that has gone over words or that an undone change has moved, are like any others.
void Guard(HWND editor);

}  // namespace tonvale
