// A register for spreadsheets and for other programs.
#pragma once

#include <string>
#include <string_view>

#include "archive/register.h"

namespace tonvale {

// A head and a line a file, lines ended by CR LF: the members of the JSON rows, of the results a
// column for each that any file has. Numbers have a decimal comma. A text that a spreadsheet would
// take for a formula has an apostrophe before it.
std::string RegisterAsCsv(const Register& archive, std::string_view separator);

// One object on a line of its own: {"title", "rows": [{"folder", "file", "kind", "note", "date",
// "results": {KEY: text}, "band", "consistent", "message"}]}.
std::string RegisterAsJson(const Register& archive);

}  // namespace tonvale
