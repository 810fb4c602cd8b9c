#include "hearing/result_table.h"

#include <algorithm>
#include <cstddef>

#include "common/text.h"

namespace tonvale {

namespace {

// Columns of the aligned text; a first one narrower than the others.
constexpr std::size_t kFirstColumnCharacters = 6;
constexpr std::size_t kColumnCharacters = 11;

constexpr std::size_t kLinesAboveRows = 3;  // title, parameters, header
constexpr int kSmallestCharacters = 6;      // in height, device units; nobody reads smaller ones

// Writes the lines of a table one under another.
class TablePainter {
  public:
    TablePainter(Canvas& canvas, const Rect& area, int column_count)
        : canvas_(canvas),
          area_(area),
          column_width_(area.Width() / column_count),
          line_height_(canvas.MeasureText("0").height),
          y_(area.top) {}

    // Writes smaller than the canvas does as yet if `count` lines would not fit.
    void FitLines(int count) {
        const int room = area_.Height() / count;
        if (line_height_ <= room) return;
        canvas_.SetFont(
            {.face = "Arial", .character_height = std::max(room * 4 / 5, kSmallestCharacters)});
        line_height_ = canvas_.MeasureText("0").height;
    }

    bool HasRoom() const { return y_ + line_height_ <= area_.bottom; }
    void NextLine() { y_ += line_height_; }

    void DrawWholeLine(std::string_view text) {
        canvas_.SetTextColor(kBlack);
        canvas_.DrawTextAt({area_.left, y_}, text);
    }

    // Numbers and headers end where three quarters of their column do, marks begin there.
    void DrawCell(int column, std::string_view text, std::string_view mark, Color color) {
        const int left = area_.left + column * column_width_;
        const int edge = left + column_width_ * 3 / 4;
        canvas_.SetTextColor(color);
        canvas_.DrawTextIn({left, y_, edge, y_ + line_height_}, text,
                           {.horizontal = HorizontalAlignment::kRight});
        if (!mark.empty()) canvas_.DrawTextAt({edge, y_}, mark);
    }

  private:
    Canvas& canvas_;
    Rect area_;
    int column_width_;
    int line_height_;
    int y_;
};

void DrawHeader(TablePainter& painter, const ResultTable& table, bool use_color) {
    for (std::size_t i = 0; i < table.header.size(); ++i) {
        painter.DrawCell(static_cast<int>(i), table.header[i], {}, use_color ? kTableRed : kBlack);
    }
}

void DrawRow(TablePainter& painter, const std::vector<TableCell>& row,
             const std::vector<Color>& colors, bool use_color) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        const Color color = use_color && i < colors.size() ? colors[i] : kBlack;
        painter.DrawCell(static_cast<int>(i), row[i].text, row[i].mark, color);
    }
}

void AppendCells(std::string& text, const std::vector<std::string>& cells,
                 std::string_view separator) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) text += separator;
        text += WithDecimalComma(cells[i]);
    }
    text += kLineEnd;
}

std::vector<std::string> TextsOf(const std::vector<TableCell>& row) {
    std::vector<std::string> texts;
    texts.reserve(row.size());
    for (const TableCell& cell : row) texts.push_back(cell.text + cell.mark);
    return texts;
}

void AppendAligned(std::string& line, std::size_t column, std::string_view text) {
    const std::size_t width = column == 0 ? kFirstColumnCharacters : kColumnCharacters;
    const std::size_t length = CharacterCount(text);
    if (length < width) line.append(width - length, ' ');
    line += text;
}

std::string AlignedLine(const std::vector<TableCell>& row) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        AppendAligned(line, i, row[i].text);
        line += row[i].mark;
    }
    return line + "\n";
}

}  // namespace

void DrawResultTable(Canvas& canvas, const Rect& area, const ResultTable& table,
                     const DrawingStyle& style) {
    if (area.Width() <= 0 || area.Height() <= 0) return;
    TablePainter painter(canvas, area, table.column_count);
    painter.FitLines(static_cast<int>(kLinesAboveRows + table.rows.size()));
    for (const std::string& line : {" " + table.title, table.parameter_line}) {
        if (painter.HasRoom()) painter.DrawWholeLine(line);
        painter.NextLine();
    }
    if (painter.HasRoom()) DrawHeader(painter, table, style.use_color);
    for (const auto& row : table.rows) {
        painter.NextLine();
        if (painter.HasRoom()) DrawRow(painter, row, table.column_colors, style.use_color);
    }
    canvas.SetTextColor(kBlack);
}

std::string ResultTableCells(const ResultTable& table, std::string_view separator) {
    std::string text;
    AppendCells(text, {table.title}, separator);
    AppendCells(text, table.parameter_cells, separator);
    AppendCells(text, table.header, separator);
    for (const auto& row : table.rows) AppendCells(text, TextsOf(row), separator);
    return text;
}

std::string ResultTableAsText(const ResultTable& table) {
    std::string text = table.title + "\n" + std::string(TrimBlanks(table.parameter_line)) + "\n";
    std::vector<TableCell> header;
    for (const std::string& cell : table.header) header.push_back({cell});
    text += AlignedLine(header);
    for (const auto& row : table.rows) text += AlignedLine(row);
    return text;
}

}  // namespace tonvale
