// Reads Rich Text Format into paragraphs and runs.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

#include "common/text.h"
#include "report/rtf/rich_text.h"

namespace tonvale {

struct RtfReading {
    // Turns bytes of a code page of Windows into UTF-8. The default takes all for Windows-1252.
    std::function<std::string(std::string_view bytes, int code_page)> decode =
        [](std::string_view bytes, int) { return Windows1252ToUtf8(bytes); };
    std::string default_face = {};  // of text for which no font is named
    // Nothing is read behind the first character past these; a paragraph's end counts as one.
    std::size_t max_characters = std::numeric_limits<std::size_t>::max();
};

// Never fails: what cannot be understood is left out. The cells of a table's row are one paragraph,
// parted by tabs that stand where the cells begin; numbers of a list are text.
RichText ReadRichText(std::string_view rtf, const RtfReading& reading = {});

// True when `rtf` has text or objects that ReadRichText leaves out: footnotes, comments, headers
// and footers, drawn shapes, embedded objects (but for the pictures of them).
bool LeavesOut(std::string_view rtf);

// The text alone: every paragraph ends with a line feed.
std::string PlainTextOf(const RichText& text);

}  // namespace tonvale
