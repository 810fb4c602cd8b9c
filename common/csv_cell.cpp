#include "common/csv_cell.h"

#include <algorithm>

namespace tonvale {

namespace {

bool NeedsQuotes(std::string_view text, std::string_view separator) {
    if (!separator.empty() && text.find(separator) != std::string_view::npos) return true;
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return c == '"' || c == '\r' || c == '\n'; });
}

}  // namespace

void AppendCsvCell(std::string_view text, std::string_view separator, std::string& line) {
    if (!NeedsQuotes(text, separator)) {
        line += text;
        return;
    }
    line += '"';
    for (const char character : text) {
        if (character == '"') line += '"';
        line += character;
    }
    line += '"';
}

}  // namespace tonvale
