#include "common/print_frame.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tonvale {

namespace {

constexpr int kFirstPrintoutLine = 2;
constexpr int kPointsPerInch = 72;
constexpr int kPrintoutWeight = 500;
constexpr int kNotesBelowDrawing = 6;  // lines
constexpr TextLayout kWrapped{.word_wrap = true};

Font PrintFont(const Printer& printer, int weight) {
    const int height = PrinterFontHeight(printer.DefaultFontMetrics(), printer.Resolution().height);
    return {.face = "Courier New", .character_height = height, .weight = weight};
}

bool StartNewPage(Printer& printer, const Font& font) {
    if (!printer.EndPage() || !printer.StartPage()) return false;
    printer.canvas().SetFont(font);
    return true;
}

// Draws `text` word-wrapped from `top` down, or at the top of a new page when it does not fit.
// Gives its bottom edge; nothing when the new page cannot be started.
std::optional<int> PrintWrappedText(Printer& printer, const std::string& text, const Font& font,
                                    int top) {
    const Size page = printer.PageSize();
    const int height = printer.canvas().MeasureWrappedText(page.width, text);
    if (top + height > page.height) {
        if (!StartNewPage(printer, font)) return std::nullopt;
        top = 0;
    }
    printer.canvas().DrawTextIn({0, top, page.width, page.height}, text, kWrapped);
    return top + height;
}

// One printout on its way to paper: the page and how far down it the text has come.
class PrintoutPages {
  public:
    PrintoutPages(Printer& printer, int line_height)
        : printer_(printer),
          font_(PrintFont(printer, kPrintoutWeight)),
          line_height_(line_height),
          page_(printer.PageSize()) {}

    // Each draws one piece below the one before. False when a page break has failed, which ends the
    // printout there.
    bool PrintLines(const std::vector<PrintoutLine>& lines);
    bool PrintClosingText(const std::string& text);
    void PrintDrawing(const PrintoutDrawing& drawing, bool use_color);
    bool PrintNotes(const Printout& printout);

  private:
    int SecondColumnX(SecondColumn column) const {
        return column == SecondColumn::kHalf ? page_.width / 2 : page_.width * 2 / 3;
    }
    Printer& printer_;
    Font font_;
    int line_height_;
    Size page_;
    int line_ = kFirstPrintoutLine;
    int last_line_top_ = 0;  // of the last line or of the closing text's last
};

bool PrintoutPages::PrintLines(const std::vector<PrintoutLine>& lines) {
    const int lines_per_page = page_.height / line_height_ - 1;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0 && !NextPrintLine(printer_, line_, lines_per_page)) return false;
        const int top = line_ * line_height_;
        // A new page forgets the font.
        printer_.canvas().SetFont(font_);
        printer_.canvas().DrawTextAt({0, top}, lines[i].left);
        if (lines[i].right.empty()) continue;
        printer_.canvas().DrawTextAt({SecondColumnX(lines[i].column), top}, lines[i].right);
    }
    last_line_top_ = line_ * line_height_;
    return true;
}

bool PrintoutPages::PrintClosingText(const std::string& text) {
    if (text.empty()) return true;
    const std::optional<int> bottom =
        PrintWrappedText(printer_, text, font_, last_line_top_ + 2 * line_height_);
    if (bottom) last_line_top_ = *bottom - line_height_;
    return bottom.has_value();
}

void PrintoutPages::PrintDrawing(const PrintoutDrawing& drawing, bool use_color) {
    const int bottom = page_.height * 2 / 3;
    Canvas& canvas = printer_.canvas();
    canvas.SetFont(font_);
    drawing.draw(canvas, {0, drawing.first_line * line_height_, page_.width, bottom}, use_color);
    canvas.SetFont(font_);
    canvas.SetTextColor(kBlack);
    if (drawing.draw_captions) {
        drawing.draw_captions(canvas,
                              {0, bottom + line_height_, page_.width, bottom + 3 * line_height_});
    }
    last_line_top_ = bottom + kNotesBelowDrawing * line_height_;
}

bool PrintoutPages::PrintNotes(const Printout& printout) {
    if (printout.notes.empty()) return true;
    const int gap = printout.drawing ? 0 : printout.notes_gap * line_height_;
    return PrintWrappedText(printer_, printout.notes, font_, last_line_top_ + gap).has_value();
}

// A device that has more colours than it can count says -1.
bool PrintsInColor(const Printer& printer) {
    const int colors = printer.ColorCount();
    return colors < 0 || colors > 2;
}

bool StartDocumentAndPage(Printer& printer, const std::string& document_name) {
    if (!printer.StartDocument(document_name)) return false;
    if (printer.StartPage()) return true;
    printer.AbortDocument();
    return false;
}

}  // namespace

int PrinterFontHeight(const FontMetrics& default_font, int vertical_dpi) {
    const int character_height = default_font.height - default_font.internal_leading;
    return character_height * kPointsPerInch / vertical_dpi * vertical_dpi / kPointsPerInch;
}

bool NextPrintLine(Printer& printer, int& line, int lines_per_page) {
    ++line;
    if (line <= lines_per_page) return true;
    line = 1;
    return printer.EndPage() && printer.StartPage();
}

void PrintPages(Printer& printer, const Printout& printout) {
    const FontMetrics metrics = printer.DefaultFontMetrics();
    const int line_height = metrics.height + metrics.external_leading;
    if (line_height <= 0 || !StartDocumentAndPage(printer, printout.document_name)) return;
    PrintoutPages pages(printer, line_height);
    bool complete =
        pages.PrintLines(printout.lines) && pages.PrintClosingText(printout.closing_text);
    if (complete && printout.drawing) {
        pages.PrintDrawing(*printout.drawing, PrintsInColor(printer));
    }
    complete = complete && pages.PrintNotes(printout);
    if (complete) printer.EndPage();
    printer.EndDocument();  // with the pages before
}

bool PrintWithFrame(Printer& printer, const std::string& document_name, const std::string& notes,
                    const PageFunction& draw_page) {
    if (!StartDocumentAndPage(printer, document_name)) return false;
    const Size page = printer.PageSize();
    const Font font = PrintFont(printer, 400);
    printer.canvas().SetFont(font);
    draw_page(printer.canvas(), {0, 0, page.width, page.height}, PrintsInColor(printer));
    if (!notes.empty()) {
        printer.canvas().SetFont(font);
        printer.canvas().SetTextColor(kBlack);
        PrintWrappedText(printer, notes, font, page.height - page.height / 16);
    }
    printer.EndPage();
    printer.EndDocument();
    return true;
}

}  // namespace tonvale
