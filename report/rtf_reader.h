// Reads Rich Text Format into paragraphs and runs.
#pragma once

#include <string>
#include <string_view>

#include "report/rich_text.h"

namespace tonvale {

// Never fails: what cannot be understood is left out. Bytes are taken for Windows-1252. The cells
// of a table's row are one paragraph, parted by tabs that stand where the cells begin.
RichText ReadRichText(std::string_view rtf);

// The text alone: every paragraph ends with a line feed.
std::string PlainTextOf(const RichText& text);

}  // namespace tonvale
