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
constexpr int kSmallestCharacters = 6;      // in height, on a screen; nobody reads smaller ones

// The text of `texts` that takes most room in the current font.
std::string Widest(Canvas& canvas, const std::vector<std::string>& texts) {
    const auto widest = std::max_element(
        texts.begin(), texts.end(), [&](const std::string& left, const std::string& right) {
            return canvas.MeasureText(left).width < canvas.MeasureText(right).width;
        });
    return widest == texts.end() ? std::string() : *widest;
}

// Numbers and headers end where three quarters of their column do, marks begin there.
int EdgeOf(int column_width) {
    return column_width * 3 / 4;
}

// What limits the size of a table's font.
class TableFit {
  public:
    TableFit(Canvas& canvas, const Rect& area, const ResultTable& table)
        : canvas_(canvas),
          area_(area),
          column_width_(area.Width() / table.column_count),
          line_count_(static_cast<int>(kLinesAboveRows + table.rows.size())),
          line_(Widest(canvas, {" " + table.title, table.parameter_line})) {
        std::vector<std::string> first_cells{table.header.front()};
        std::vector<std::string> cells = table.header;
        for (const auto& row : table.rows) {
            first_cells.push_back(row.front().text);
            for (const TableCell& cell : row) cells.push_back(cell.text);
        }
        first_cell_ = Widest(canvas, first_cells);
        cell_ = Widest(canvas, cells);
    }

    // Makes the canvas's font as large as the area allows, but at most twice as large as it is.
    void ChooseFont() {
        Font font = canvas_.CurrentFont();
        int fitting = canvas_.Scaled(kSmallestCharacters);
        int too_large = std::max(font.character_height * 2, fitting) + 1;
        while (too_large - fitting > 1) {
            font.character_height = (fitting + too_large) / 2;
            canvas_.SetFont(font);
            (Fits() ? fitting : too_large) = font.character_height;
        }
        font.character_height = fitting;
        canvas_.SetFont(font);
    }

  private:
    // The lowest sixteenth of a page is for the notes. A wide text begins in the free end of the
    // column before its own, where the first column has none.
    bool Fits() {
        const Size digit = canvas_.MeasureText("0");
        return digit.height * line_count_ <= area_.Height() * 15 / 16 &&
               canvas_.MeasureText(line_).width <= area_.Width() &&
               canvas_.MeasureText(first_cell_).width <= EdgeOf(column_width_) &&
               canvas_.MeasureText(cell_).width + digit.width <= column_width_;
    }

    Canvas& canvas_;
    Rect area_;
    int column_width_;
    int line_count_;
    // The widest ones.
    std::string line_;
    std::string first_cell_;
    std::string cell_;
};

// Writes the lines of a table one under another.
class TablePainter {
  public:
    TablePainter(Canvas& canvas, const Rect& area, int column_count)
        : canvas_(canvas),
          area_(area),
          column_width_(area.Width() / column_count),
          line_height_(canvas.MeasureText("0").height),
          y_(area.top) {}

    bool HasRoom() const { return y_ + line_height_ <= area_.bottom; }
    void NextLine() { y_ += line_height_; }

    void DrawWholeLine(std::string_view text) {
        canvas_.SetTextColor(kBlack);
        canvas_.DrawTextAt({area_.left, y_}, text);
    }

    void DrawCell(int column, std::string_view text, std::string_view mark, Color color) {
        const int left = area_.left + column * column_width_;
        const int edge = left + EdgeOf(column_width_);
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
    const Font font = canvas.CurrentFont();
    TableFit(canvas, area, table).ChooseFont();
    TablePainter painter(canvas, area, table.column_count);
    for (const std::string& line : {" " + table.title, table.parameter_line}) {
        if (painter.HasRoom()) painter.DrawWholeLine(line);
        painter.NextLine();
    }
    if (painter.HasRoom()) DrawHeader(painter, table, style.use_color);
    for (const auto& row : table.rows) {
        painter.NextLine();
        if (painter.HasRoom()) DrawRow(painter, row, table.column_colors, style.use_color);
    }
    canvas.SetFont(font);
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
