#include "common/summary_text.h"

#include <gtest/gtest.h>

#include "common/text.h"

namespace tonvale {
namespace {

TEST(SummaryText, JoinsCellsAndAddsNotes) {
    SummaryText summary(";");
    summary.AddLine({"Lep,d (dBA):", "85,0"});
    summary.AddLine({"", "", "x", ""});
    summary.AddLine({""});
    summary.AddNotes("a;b\r\nc");
    EXPECT_EQ(summary.Take(), "Lep,d (dBA):;85,0\r\n;;x;\r\n\r\nNote:\r\na;b\r\nc\r\n");

    SummaryText without_notes(", ");
    without_notes.AddNotes("");
    EXPECT_EQ(without_notes.Take(), "Note:\r\n\r\n");
}

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
