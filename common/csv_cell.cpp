#include "common/csv_cell.h"

namespace tonvale {

std::string CsvCell(std::string_view text, std::string_view separator) {
    const bool holds_separator =
        !separator.empty() && text.find(separator) != std::string_view::npos;
    if (!holds_separator && text.find_first_of("\"\r\n") == std::string_view::npos) {
        return std::string(text);
    }
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

}  // namespace tonvale
