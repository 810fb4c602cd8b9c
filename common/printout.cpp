#include "common/printout.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "common/text.h"

namespace tonvale {

namespace {

constexpr std::size_t kColumnGap = 2;

// Column in which the second texts start: past the longest first text that has one beside it.
std::size_t TextColumn(const Printout& printout) {
    std::size_t column = 0;
    for (const PrintoutLine& line : printout.lines) {
        if (!line.right.empty()) column = std::max(column, CharacterCount(line.left) + kColumnGap);
    }
    return column;
}

void AppendParagraphs(std::string_view paragraphs, std::string& text) {
    if (!paragraphs.empty()) text += '\n';
    for (const std::string_view line : SplitLines(paragraphs)) {
        text += line;
        text += '\n';
    }
}

}  // namespace

std::string PrintoutAsText(const Printout& printout) {
    const std::size_t column = TextColumn(printout);
    std::string text;
    for (const PrintoutLine& line : printout.lines) {
        text += line.left;
        if (!line.right.empty()) {
            text.append(column - CharacterCount(line.left), ' ');
            text += line.right;
        }
        text += '\n';
    }
    AppendParagraphs(printout.closing_text, text);
    AppendParagraphs(printout.notes, text);
    return text;
}

SvgCanvas DrawingAsPicture(const PrintoutDrawing& drawing, Size size) {
    constexpr int kMargin = 20;
    constexpr int kTop = 30;       // a label of the scale stands above the drawing
    constexpr int kCaptions = 64;  // what stands below it, and the gap before
    // The scales of all spectra divide a height of a multiple of this without a remainder.
    constexpr int kStep = 42;
    const int height = (size.height - kTop - kCaptions) / kStep * kStep;
    const Rect area{kMargin, kTop, size.width - kMargin, kTop + height};
    SvgCanvas canvas(size);
    drawing.draw(canvas, area, true);
    if (drawing.draw_captions) {
        drawing.draw_captions(canvas, {area.left, area.bottom + 10, area.right, size.height});
    }
    return canvas;
}

}  // namespace tonvale
