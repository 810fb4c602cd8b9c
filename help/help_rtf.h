// A help topic as rich text, for a rich-edit control.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "help/help_topics.h"

namespace tonvale {

// Character positions as the control (RichEdit 2.0 or later) counts them: UTF-16 units, a tab and
// the end of a paragraph as one each.
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

HelpRtf MakeHelpRtf(const HelpTopic& topic);

// The context of the link at a character position; nullopt where there is none.
std::optional<unsigned long> LinkAt(const HelpRtf& rtf, std::size_t position);

}  // namespace tonvale
