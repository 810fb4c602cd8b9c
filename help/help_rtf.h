// A help topic as rich text, for a rich-edit control.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "help/help_topics.h"

namespace tonvale {

// Character positions as the control counts them: UTF-16 units, a tab as one.
struct HelpLinkRange {
    std::size_t start = 0;
    std::size_t end = 0;  // behind the last character
    unsigned long context = 0;
};

struct HelpRtf {
    std::string rtf;                        // 7-bit; the title is its first paragraph
    std::vector<HelpLinkRange> links;       // in ascending order, none empty
    std::vector<std::size_t> block_starts;  // position of each block of the topic
};

// `paragraph_end_units`: how many characters the control counts for the end of a paragraph, 1 in
// RichEdit 2.0 and later, 2 (CR LF) in RICHED32.
HelpRtf MakeHelpRtf(const HelpTopic& topic, std::size_t paragraph_end_units = 1);

// The context of the link at a character position; nullopt where there is none.
std::optional<unsigned long> LinkAt(const HelpRtf& rtf, std::size_t position);

}  // namespace tonvale
