#include "common/summary_text.h"

#include "common/notes.h"
#include "common/text.h"

namespace tonvale {

void SummaryText::AddLine(std::initializer_list<std::string_view> cells) {
    bool is_first = true;
    for (const std::string_view cell : cells) {
        if (!is_first) text_ += separator_;
        is_first = false;
        text_ += cell;
    }
    text_ += kLineEnd;
}

void SummaryText::AddNotes(std::string_view notes) {
    AddLine({"Note:"});
    AddLine({CutToCharacters(notes, kMaxSummaryNotesCharacters)});
}

std::string SummaryText::Take() const {
    return std::string(CutToCharacters(text_, kBlockBytes - 1));
}

}  // namespace tonvale
