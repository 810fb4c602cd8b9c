#include "archive/file_section.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "archive/level_chart.h"
#include "common/calendar.h"
#include "common/text.h"

namespace tonvale {

namespace {

// Small enough to be read on a phone.
constexpr Size kSectionPicture{580, 388};

void WriteHeading(std::size_t number, const RegisterRow& row, HtmlWriter& html) {
    html.Raw("<section class=\"file\" id=\"");
    WriteAnchor(number, html);
    html.Raw("\">\n<h3>").Text(row.file).Raw("</h3>\n<p class=\"soft\">").Text(KindName(row));
    if (!row.folder.empty()) html.Raw(" · ").Text(row.folder);
    if (!row.date.empty()) html.Raw(" · ").Text(ItalianDate(row.date));
    if (row.band) {
        html.Raw(" · ");
        WriteBand(*row.band, html);
    }
    html.Raw("</p>\n");
}

void WriteMessage(const RegisterRow& row, HtmlWriter& html) {
    if (row.message.empty()) return;
    html.Raw("<p class=\"wrong\">").Text(row.message).Raw("</p>\n");
}

// Paragraphs with line ends of their own.
void WriteLines(Markup element_class, std::string_view text, HtmlWriter& html) {
    if (text.empty()) return;
    html.Raw("<p class=\"").Raw(element_class).Raw("\">");
    bool is_first = true;
    for (const std::string_view line : SplitLines(text)) {
        if (!is_first) html.Raw("<br>");
        is_first = false;
        html.Text(line);
    }
    html.Raw("</p>\n");
}

// Printed with a fixed pitch, such a text stands in columns with those above and below.
bool HasColumns(std::string_view text) {
    return TrimBlanks(text).find("  ") != std::string_view::npos;
}

void WriteReportCell(std::string_view text, HtmlWriter& html) {
    html.Raw(HasColumns(text) ? Markup(" class=\"fixed\">") : Markup(">")).Text(text);
    html.Raw("</td>");
}

void WriteReport(const Printout& printout, HtmlWriter& html) {
    html.Raw("<table class=\"report\">\n");
    for (const PrintoutLine& line : printout.lines) {
        html.Raw(line.right.empty() ? Markup("<tr><td colspan=\"2\"") : Markup("<tr><td"));
        WriteReportCell(line.left, html);
        if (!line.right.empty()) WriteReportCell(line.right, html.Raw("<td"));
        html.Raw("</tr>\n");
    }
    html.Raw("</table>\n");
    WriteLines("closing", printout.closing_text, html);
}

// The largest first: what to quieten first.
void WriteShares(std::vector<Contribution> contributions, HtmlWriter& html) {
    if (contributions.empty()) return;
    std::stable_sort(
        contributions.begin(), contributions.end(),
        [](const Contribution& a, const Contribution& b) { return a.percent > b.percent; });
    html.Raw("<h4>Quote dell'esposizione al rumore</h4>\n<table class=\"shares\">\n");
    for (const Contribution& contribution : contributions) {
        html.Raw("<tr><td>").Text(contribution.part);
        html.Raw("</td><td><svg class=\"bar\" aria-hidden=\"true\"><rect height=\"100%\" width=\"");
        html.Fixed(std::clamp(contribution.percent, 0.0, 100.0), 1);
        html.Raw("%\"/></svg></td><td>").Fixed(contribution.percent, 1).Raw(" %</td></tr>\n");
    }
    html.Raw("</table>\n");
}

void WriteWarnings(const std::vector<std::string>& warnings, HtmlWriter& html) {
    for (const std::string& warning : warnings) WriteLines("closing", warning, html);
}

void WriteAssessment(const Assessment& assessment, HtmlWriter& html) {
    const Printout& printout = assessment.printout;
    if (assessment.message) return;
    html.Raw("<div class=\"columns\">\n<div>\n");
    WriteReport(printout, html);
    WriteWarnings(assessment.warnings, html);
    html.Raw("</div>\n<div>\n");
    if (printout.drawing) {
        html.Raw("<figure>");
        html.Picture(DrawingAsPicture(*printout.drawing, kSectionPicture)).Raw("</figure>\n");
    }
    WriteShares(assessment.contributions, html);
    WriteLines("notes", printout.notes, html);
    html.Raw("</div>\n</div>\n");
}

}  // namespace

void WriteBand(ExposureBand band, HtmlWriter& html) {
    html.Raw("<span class=\"badge ").Raw(BandClass(band)).Raw("\">").Text(BandName(band));
    html.Raw("</span>");
}

Html FileSection(std::size_t number, const RegisterRow& row, const Assessment* assessment) {
    HtmlWriter html;
    WriteHeading(number, row, html);
    WriteMessage(row, html);
    if (assessment != nullptr) WriteAssessment(*assessment, html);
    html.Raw("</section>\n");
    Html section = html.Take();
    section.DropSpareRoom();
    return section;
}

}  // namespace tonvale
