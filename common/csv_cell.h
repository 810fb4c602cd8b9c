// A cell of a text whose lines are cells parted by a separator.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// Appends `text` to `line` as a cell: in quotes where it holds the separator, a quote or a line
// end.
void AppendCsvCell(std::string_view text, std::string_view separator, std::string& line);

}  // namespace tonvale
