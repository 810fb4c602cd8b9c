#include "common/summary_text.h"

#include <gtest/gtest.h>

#include "common/text.h"

namespace tonvale {
namespace {

TEST(SummaryText, CutsNotesAndTheWhole) {
    std::string notes;
    for (int i = 0; i < 254; ++i) notes += "à";
    SummaryText summary(";");
    summary.AddNotes(notes + "\r\nrest");
    EXPECT_EQ(summary.Take(), "Note:\r\n" + notes + "\r\n");  // no half of the notes' line end

    SummaryText long_summary(";");
    for (int i = 0; i < 1000; ++i) long_summary.AddLine({"à", "à"});  // 5 characters each
    const std::string text = long_summary.Take();
    EXPECT_EQ(CharacterCount(text), SummaryText::kBlockBytes - 1);
    EXPECT_EQ(text.substr(text.size() - 2), kLineEnd);

    SummaryText cut_in_line_end(";");
    const std::string line(SummaryText::kBlockBytes - 2, 'x');
    cut_in_line_end.AddLine({line});
    EXPECT_EQ(cut_in_line_end.Take(), line);
}

}  // namespace
}  // namespace tonvale
