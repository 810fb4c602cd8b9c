// Writes paragraphs and runs as Rich Text Format.
#pragma once

#include <string>
#include <string_view>

#include "report/rtf/rich_text.h"

namespace tonvale {

// In few and plain words, which every reader of the format knows. ReadRichText gives `text` back,
// sizes and offsets rounded to half points, but for tab stops and names of fonts beyond what
// controls have room for.
std::string WriteRichText(const RichText& text);

// Appends text to a group: what the format reserves is escaped, what is not ASCII spelled out, as
// all of it is when `spell_out`.
void AppendRtfText(std::string& rtf, std::string_view utf8, bool spell_out = false);
void AppendRtfPicture(std::string& rtf, const RichPicture& picture);

}  // namespace tonvale
