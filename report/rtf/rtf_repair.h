// Rich Text Format as rich-text controls write it, put right where they go wrong.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// What a control is known to write wrongly.
struct RtfWriterFaults {
    bool offsets_in_twips = false;  // \up and \dn, whose unit is the half point
    bool indents_swapped = false;   // \fi the first line's indent, \li that of the others to it
    bool negative_line_spacing = false;  // \sl-240\slmult1 instead of \sl240\slmult1
    // A character that the code page lacks becomes one that looks alike. Such a writer is asked for
    // the kind of the format whose text is UTF-8, "\urtf", which few others read.
    bool confuses_characters = false;
};

// What `rtf` would be had its writer not those faults. Nothing else changes.
std::string RepairWrittenRtf(std::string_view rtf, const RtfWriterFaults& faults);

// True when `bytes` begin as Rich Text Format does.
bool IsRtf(std::string_view bytes);
// True when its outermost group is closed, with nothing but blanks and NULs behind it.
bool IsWholeRtf(std::string_view bytes);

}  // namespace tonvale
