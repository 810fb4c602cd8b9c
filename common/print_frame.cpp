#include "common/print_frame.h"

#include <cstddef>

namespace tonvale {

namespace {

constexpr int kFirstReportLine = 2;
constexpr int kPointsPerInch = 72;
constexpr int kReportWeight = 500;
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

// Draws the report from the first line on; `line` is left at the last one. False when a page break
// has failed.
bool PrintLines(Printer& printer, const Report& report, const Font& font, int line_height,
                int& line) {
    const Size page = printer.PageSize();
    const int lines_per_page = page.height / line_height - 1;
    for (std::size_t i = 0; i < report.lines.size(); ++i) {
        if (i > 0 && !NextPrintLine(printer, line, lines_per_page)) return false;
        // A new page forgets the font.
        printer.canvas().SetFont(font);
        printer.canvas().DrawTextAt({0, line * line_height}, report.lines[i].left);
        if (!report.lines[i].right.empty()) {
            printer.canvas().DrawTextAt({page.width / 2, line * line_height},
                                        report.lines[i].right);
        }
    }
    return true;
}

// Draws `notes` word-wrapped from `top` down, or at the top of a new page when they do not fit.
void PrintNotes(Printer& printer, const std::string& notes, const Font& font, int top) {
    const Size page = printer.PageSize();
    Rect area{0, top, page.width, page.height};
    if (top + printer.canvas().MeasureWrappedText(page.width, notes) > page.height) {
        if (!StartNewPage(printer, font)) return;
        area.top = 0;
    }
    printer.canvas().DrawTextIn(area, notes, kWrapped);
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

void EndPageAndDocument(Printer& printer) {
    printer.EndPage();
    printer.EndDocument();
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

void PrintReport(Printer& printer, const Report& report) {
    const FontMetrics metrics = printer.DefaultFontMetrics();
    const int line_height = metrics.height + metrics.external_leading;
    if (line_height <= 0 || !StartDocumentAndPage(printer, report.document_name)) return;
    const Font font = PrintFont(printer, kReportWeight);
    int line = kFirstReportLine;
    if (!PrintLines(printer, report, font, line_height, line)) {
        printer.EndDocument();  // with the pages before
        return;
    }
    if (!report.notes.empty()) {
        PrintNotes(printer, report.notes, font, (line + report.notes_gap) * line_height);
    }
    EndPageAndDocument(printer);
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
        PrintNotes(printer, notes, font, page.height - page.height / 16);
    }
    EndPageAndDocument(printer);
    return true;
}

}  // namespace tonvale
