// Text in XML and HTML.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// `text` as the text of an element or the value of an attribute in double quotes: valid UTF-8, a
// blank for each control character (references to them are not allowed either).
std::string EscapeMarkup(std::string_view text);

}  // namespace tonvale
