// The two frames in which everything is printed: a calculator's printout, line by line, and a view
// of the main window with the print notes at its foot.
#pragma once

#include <functional>
#include <string>

#include "common/printer.h"
#include "common/printout.h"

namespace tonvale {

// The character height of "Courier New" on a device: that of its default font rounded down to
// whole points, in device units. `vertical_dpi` must not be 0.
int PrinterFontHeight(const FontMetrics& default_font, int vertical_dpi);

// Advances `line` by one. When it passes `lines_per_page` the page is ended and a new one started,
// whose first line is 1. False when the page cannot be ended or the next one started.
bool NextPrintLine(Printer& printer, int& line, int lines_per_page);

// Prints a calculator's printout from line 2 of its first page. Nothing happens when the document
// or a page cannot be started; a page break that fails ends the printout there.
void PrintPages(Printer& printer, const Printout& printout);

// Draws one page; `use_color` is false on a device of two colours or fewer.
using PageFunction = std::function<void(Canvas& canvas, const Rect& page, bool use_color)>;

// Prints one page made by `draw_page`, with the notes word-wrapped in its bottom sixteenth, or on
// a page of their own when they do not fit there. False when the document cannot be started.
bool PrintWithFrame(Printer& printer, const std::string& document_name, const std::string& notes,
                    const PageFunction& draw_page);

}  // namespace tonvale
