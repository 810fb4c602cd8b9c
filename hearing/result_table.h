// The table of a hearing-damage view: drawn, as aligned text and as cells parted by a separator.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/canvas.h"
#include "common/result_view.h"

namespace tonvale {

inline constexpr Color kTableRed{255, 0, 0};
inline constexpr Color kTableGreen{0, 128, 0};  // dark: full green on white is hard to read

struct TableCell {
    std::string text;       // a number as printed, with a decimal point
    std::string mark = {};  // drawn and written behind it
};

struct ResultTable {
    std::string title;  // without a leading blank
    // Each begins with the blanks that part it from the one before.
    std::vector<std::string> parameters;
    int column_count = 1;              // what the width is divided by
    std::vector<std::string> header;   // red; without one, each row is a label and its value
    std::vector<Color> column_colors;  // of the rows, as far as they are not black
    std::vector<std::vector<TableCell>> rows;
};

// All parameters on one line.
std::string ParameterLine(const std::vector<std::string>& parameters);

// One text line under another from the top left corner, in the face of the current font: as large
// as `area` allows, but at most twice as large as that font; lines without room are left out.
void DrawResultTable(Canvas& canvas, const Rect& area, const ResultTable& table,
                     const DrawingStyle& style);

// Cells joined by the separator, decimal commas, lines ended by CR LF.
std::string ResultTableCells(const ResultTable& table, std::string_view separator);

// Columns aligned by blanks, lines ended by LF.
std::string ResultTableAsText(const ResultTable& table);

}  // namespace tonvale
