// The report of a calculator: what its printout and the command-line companion both show.
#pragma once

#include <string>
#include <vector>

namespace tonvale {

struct ReportLine {
    std::string left;
    std::string right;  // second column, at half the page width; empty when there is none
};

struct Report {
    std::string document_name;  // what the printer's queue shows
    std::vector<ReportLine> lines;
    std::string notes;  // word-wrapped below the lines; empty when there are none
    int notes_gap = 3;  // lines from the last line down to the notes
};

// The report as plain text: the second columns aligned, then an empty line and the notes. Lines end
// with LF.
std::string ReportAsText(const Report& report);

}  // namespace tonvale
