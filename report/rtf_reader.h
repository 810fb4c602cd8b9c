// Reads Rich Text Format into paragraphs and runs.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "report/rich_text.h"

namespace tonvale {

// Text of a font's character set (its \fcharset number) as UTF-8. The one in use unless another is
// given takes all bytes for Windows-1252.
using CharsetDecoder = std::function<std::string(int charset, std::string_view bytes)>;
std::string DecodeAsWindows1252(int charset, std::string_view bytes);

// Never fails: what cannot be understood is left out. The cells of a table's row are one paragraph,
// parted by tabs that stand where the cells begin.
RichText ReadRichText(std::string_view rtf, const CharsetDecoder& decode = DecodeAsWindows1252);

// The text alone: every paragraph ends with a line feed.
std::string PlainTextOf(const RichText& text);

}  // namespace tonvale
