// Prints a rich text where the system's control cannot: lines, pages and all.
#pragma once

#include <functional>
#include <string>

#include "common/canvas.h"
#include "common/printer.h"
#include "report/rtf/rich_text.h"

namespace tonvale {

// The area of the page that text is printed in, in twips: of a page as many whole inches wide and
// high as the printable area holds, what is left within margins of one inch. Empty when the page
// is too small.
Rect PrintedAreaTwips(Size page_pixels, Size dots_per_inch);

// Draws a picture into a rectangle of the current page.
using PictureDrawer = std::function<void(const RichPicture& picture, const Rect& place)>;

// Prints `text` as document `name`, on as many pages as it takes. False when the document or a page
// cannot be started or the page has no room for text; what was begun is then abandoned.
bool PrintRichText(Printer& printer, const RichText& text, const std::string& name,
                   const PictureDrawer& draw_picture);

}  // namespace tonvale
