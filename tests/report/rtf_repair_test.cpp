#include "report/rtf/rtf_repair.h"

#include <gtest/gtest.h>

#include <string>

namespace tonvale {
namespace {

constexpr RtfWriterFaults kAllFaults{true, true, true, true};

TEST(RtfRepairTest, TurnsOffsetsIntoHalfPoints) {
    const RtfWriterFaults faults{.offsets_in_twips = true};
    EXPECT_EQ(
        RepairWrittenRtf("{\\rtf1\\up50\\fs15 su\\up0\\dn54 gi\\dn-46 x\\li50\\fi60}", faults),
        "{\\rtf1\\up5\\fs15 su\\up0\\dn5 gi\\dn-5 x\\li50\\fi60}");
}

TEST(RtfRepairTest, TurnsIndentsRound) {
    const RtfWriterFaults faults{.indents_swapped = true};
    // First line at 360, the others 300 to its right.
    EXPECT_EQ(RepairWrittenRtf("{\\pard\\li300\\fi360\\tx5 a\\par}", faults),
              "{\\pard\\li660\\fi-300\\tx5 a\\par}");
    EXPECT_EQ(RepairWrittenRtf("{\\pard\\fi720 a\\par\\pard b}", faults),
              "{\\pard\\li720 a\\par\\pard b}");
    EXPECT_EQ(RepairWrittenRtf("{\\pard\\li200\\fi-200 a}", faults), "{\\pard\\li0\\fi-200 a}");
    EXPECT_EQ(RepairWrittenRtf("{\\pard\\li0 a}", faults), "{\\pard\\li0 a}");
    EXPECT_EQ(RepairWrittenRtf("{\\li200}", faults), "{\\li200\\fi-200}");
}

TEST(RtfRepairTest, TurnsLineSpacingPositive) {
    const RtfWriterFaults faults{.negative_line_spacing = true};
    EXPECT_EQ(RepairWrittenRtf("{\\pard\\sl-240\\slmult1 a\\sl-300\\slmult0 b\\sl-240}", faults),
              "{\\pard\\sl240\\slmult1 a\\sl-300\\slmult0 b\\sl-240}");
    EXPECT_EQ(RepairWrittenRtf("\\sl-240\\slmult1\\li300\\fi360\\up50 a", kAllFaults),
              "\\sl240\\slmult1\\li660\\fi-300\\up5 a");
}

TEST(RtfRepairTest, SpellsCharactersOut) {
    const RtfWriterFaults faults{.confuses_characters = true};
    EXPECT_EQ(RepairWrittenRtf("{\\urtf\\deff0{\\fonttbl;}\\f0 perché ≥ 85\\{\uF0B7😀}", faults),
              "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0{\\fonttbl;}\\f0 perch\\u233? \\u8805? 85\\{"
              "\\u-3913?\\u-10179?\\u-8704?}");
}

TEST(RtfRepairTest, LeavesARightWriterAlone) {
    const std::string rtf =
        "{\\rtf1\\up6\\li300\\fi360\\sl-240\\slmult1 \\bin6 \\up50 \\'e8{}}\r\n";
    EXPECT_EQ(RepairWrittenRtf(rtf, {}), rtf);
    // Text and binary data that look like words are none.
    const std::string text = "{\\rtf1 \\\\up50\\bin6 \\up50 }";
    EXPECT_EQ(RepairWrittenRtf(text, kAllFaults), text);
}

TEST(RtfRepairTest, WholeMeansThatTheOutermostGroupIsClosed) {
    EXPECT_TRUE(IsWholeRtf("{\\rtf1 a}"));
    EXPECT_TRUE(IsWholeRtf(std::string("{\\rtf1{\\b \\{}\\}\\bin2 {{}\r\n\0", 27)));
    EXPECT_FALSE(IsWholeRtf("{\\rtf1 a"));
    EXPECT_FALSE(IsWholeRtf("{\\rtf1 {a}"));
    EXPECT_FALSE(IsWholeRtf("{\\rtf1 a\\}"));
    EXPECT_FALSE(IsWholeRtf("{\\rtf1 \\bin5 a}"));
    EXPECT_FALSE(IsWholeRtf("{\\rtf1 a}b}"));
    EXPECT_FALSE(IsWholeRtf("testo"));
    EXPECT_FALSE(IsWholeRtf(""));
}

}  // namespace
}  // namespace tonvale
