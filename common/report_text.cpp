#include "common/report_text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "common/text.h"

namespace tonvale {

namespace {

constexpr std::size_t kColumnGap = 2;

// Column in which the second texts start: past the longest first text that has one beside it.
std::size_t SecondColumn(const Report& report) {
    std::size_t column = 0;
    for (const ReportLine& line : report.lines) {
        if (!line.right.empty()) column = std::max(column, CharacterCount(line.left) + kColumnGap);
    }
    return column;
}

}  // namespace

std::string ReportAsText(const Report& report) {
    const std::size_t column = SecondColumn(report);
    std::string text;
    for (const ReportLine& line : report.lines) {
        text += line.left;
        if (!line.right.empty()) {
            text.append(column - CharacterCount(line.left), ' ');
            text += line.right;
        }
        text += '\n';
    }
    if (!report.notes.empty()) text += '\n';
    for (const std::string_view line : SplitLines(report.notes)) {
        text += line;
        text += '\n';
    }
    return text;
}

}  // namespace tonvale
