// The printout of a calculator: what its printed pages and the command-line companion both show.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/canvas.h"
#include "common/svg_canvas.h"

namespace tonvale {

// Where a line's second text starts, as a part of the page's width.
enum class SecondColumn { kHalf, kTwoThirds };

struct PrintoutLine {
    std::string left;
    std::string right = {};  // empty when there is none
    SecondColumn column = SecondColumn::kHalf;
};

// A picture across the whole width of the page, from a line of text down to two thirds of the page.
struct PrintoutDrawing {
    int first_line = 0;
    // Draws the picture into `area` in the printout's font; `use_color` is false on a device of two
    // colours or fewer.
    std::function<void(Canvas& canvas, const Rect& area, bool use_color)> draw;
    // Draws what stands below the picture into `row`, as wide as it and two lines high; may be
    // none.
    std::function<void(Canvas& canvas, const Rect& row)> draw_captions = {};
};

struct Printout {
    std::string document_name;  // what the printer's queue shows
    std::vector<PrintoutLine> lines;
    // Word-wrapped below the lines, one of them left empty; its own line ends stay. Empty: none.
    std::string closing_text = {};
    std::optional<PrintoutDrawing> drawing = {};
    std::string notes = {};  // word-wrapped below all else; empty when there are none
    // Lines from the last line, or the closing text's last, down to the notes.
    int notes_gap = 3;
};

// The printout as plain text: the second columns aligned, then the closing text and the notes, each
// after an empty line. Lines end with LF.
std::string PrintoutAsText(const Printout& printout);

// The drawing as a picture of its own, with what stands above and below it. At least 200 wide and
// 150 high.
SvgCanvas DrawingAsPicture(const PrintoutDrawing& drawing, Size size);

}  // namespace tonvale
