// Text in the code pages of the system.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// As UTF-8; taken for Windows-1252 when the system does not have the code page.
std::string DecodeCodePage(std::string_view bytes, int code_page);

}  // namespace tonvale
