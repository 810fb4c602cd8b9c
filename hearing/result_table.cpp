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

// Rows of a label and its value go on one line each, the values one under another.
bool HasLabels(const ResultTable& table) {
    return table.header.empty();
}

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

// The lines above the header.
std::vector<std::string> Heading(const ResultTable& table) {
    return {" " + table.title, ParameterLine(table.parameters)};
}

// How labelled rows stand in the current font: below the first letter of the heading, a digit's
// width between a label and its value.
struct LabelLayout {
    LabelLayout(Canvas& canvas, const ResultTable& table) : indent(canvas.MeasureText(" ").width) {
        int label_width = 0;
        int value_width = 0;
        for (const auto& row : table.rows) {
            label_width = std::max(label_width, canvas.MeasureText(row[0].text).width);
            value_width = std::max(value_width, canvas.MeasureText(row[1].text).width);
        }
        value_left = indent + label_width + canvas.MeasureText("0").width;
        value_right = value_left + value_width;
    }

    // From the left edge of the table.
    int indent;
    int value_left = 0;
    int value_right = 0;
};

// What limits the size of a table's font.
class TableFit {
  public:
    TableFit(Canvas& canvas, const Rect& area, const ResultTable& table)
        : canvas_(canvas),
          area_(area),
          table_(table),
          column_width_(area.Width() / table.column_count),
          line_count_(static_cast<int>(kLinesAboveRows + table.rows.size())),
          line_(Widest(canvas, Heading(table))) {
        if (HasLabels(table)) return;
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
               (HasLabels(table_) ? LabelLayout(canvas_, table_).value_right <= area_.Width()
                                  : CellsFit(digit.width));
    }

    bool CellsFit(int digit_width) {
        return canvas_.MeasureText(first_cell_).width <= EdgeOf(column_width_) &&
               canvas_.MeasureText(cell_).width + digit_width <= column_width_;
    }

    Canvas& canvas_;
    Rect area_;
    const ResultTable& table_;
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

    void DrawLabelled(const LabelLayout& layout, const std::vector<TableCell>& row, Color color) {
        canvas_.SetTextColor(color);
        canvas_.DrawTextAt({area_.left + layout.indent, y_}, row[0].text);
        canvas_.SetTextColor(kBlack);
        canvas_.DrawTextIn({area_.left + layout.value_left, y_, area_.left + layout.value_right,
                            y_ + line_height_},
                           row[1].text, {.horizontal = HorizontalAlignment::kRight});
    }

  private:
    Canvas& canvas_;
    Rect area_;
    int column_width_;
    int line_height_;
    int y_;
};

Color ColumnColor(const ResultTable& table, std::size_t column, bool use_color) {
    return use_color && column < table.column_colors.size() ? table.column_colors[column] : kBlack;
}

void DrawColumns(TablePainter& painter, const ResultTable& table, bool use_color) {
    for (std::size_t i = 0; painter.HasRoom() && i < table.header.size(); ++i) {
        painter.DrawCell(static_cast<int>(i), table.header[i], {}, use_color ? kTableRed : kBlack);
    }
    for (const auto& row : table.rows) {
        painter.NextLine();
        for (std::size_t i = 0; painter.HasRoom() && i < row.size(); ++i) {
            painter.DrawCell(static_cast<int>(i), row[i].text, row[i].mark,
                             ColumnColor(table, i, use_color));
        }
    }
}

void DrawLabelledRows(TablePainter& painter, const LabelLayout& layout, const ResultTable& table,
                      bool use_color) {
    for (const auto& row : table.rows) {
        painter.NextLine();
        if (painter.HasRoom()) painter.DrawLabelled(layout, row, ColumnColor(table, 0, use_color));
    }
}

// `text` without blanks at its ends, and one instead of several within.
std::string WithSingleBlanks(std::string_view text) {
    std::string result;
    for (const char character : TrimBlanks(text)) {
        if (character != ' ' || !result.ends_with(' ')) result += character;
    }
    return result;
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

std::string AlignedRows(const ResultTable& table) {
    std::vector<TableCell> header;
    for (const std::string& cell : table.header) header.push_back({cell});
    std::string text = AlignedLine(header);
    for (const auto& row : table.rows) text += AlignedLine(row);
    return text;
}

std::string LabelledRows(const ResultTable& table) {
    std::size_t label_width = 0;
    for (const auto& row : table.rows) {
        label_width = std::max(label_width, CharacterCount(row[0].text));
    }
    std::string text;
    for (const auto& row : table.rows) {
        text += row[0].text + std::string(label_width - CharacterCount(row[0].text), ' ');
        text += row[1].text + "\n";
    }
    return text;
}

}  // namespace

std::string ParameterLine(const std::vector<std::string>& parameters) {
    std::string line;
    for (const std::string& parameter : parameters) line += parameter;
    return line;
}

void DrawResultTable(Canvas& canvas, const Rect& area, const ResultTable& table,
                     const DrawingStyle& style) {
    if (area.Width() <= 0 || area.Height() <= 0) return;
    const Font font = canvas.CurrentFont();
    TableFit(canvas, area, table).ChooseFont();
    TablePainter painter(canvas, area, table.column_count);
    for (const std::string& line : Heading(table)) {
        if (painter.HasRoom()) painter.DrawWholeLine(line);
        painter.NextLine();
    }
    if (HasLabels(table)) {
        DrawLabelledRows(painter, LabelLayout(canvas, table), table, style.use_color);
    } else {
        DrawColumns(painter, table, style.use_color);
    }
    canvas.SetFont(font);
    canvas.SetTextColor(kBlack);
}

std::string ResultTableCells(const ResultTable& table, std::string_view separator) {
    std::string text;
    AppendCells(text, {table.title}, separator);
    std::vector<std::string> parameters;
    for (const std::string& parameter : table.parameters) {
        parameters.push_back(WithSingleBlanks(parameter));
    }
    AppendCells(text, parameters, separator);
    if (!HasLabels(table)) AppendCells(text, table.header, separator);
    for (const auto& row : table.rows) AppendCells(text, TextsOf(row), separator);
    return text;
}

std::string ResultTableAsText(const ResultTable& table) {
    std::string text = table.title + "\n";
    text.append(TrimBlanks(ParameterLine(table.parameters))).append("\n");
    return text + (HasLabels(table) ? LabelledRows(table) : AlignedRows(table));
}

}  // namespace tonvale
