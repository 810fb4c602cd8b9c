#include "report/rtf/rtf_repair.h"

#include <gtest/gtest.h>

#include <string>

namespace tonvale {
namespace {

constexpr RtfWriterFaults kAllFaults{true, true, true, true};

TEST(RtfRepairTest, TurnsNumbersIntoThoseThatAreMeant) {
    const RtfWriterFaults offsets{.offsets_in_twips = true};
    const RtfWriterFaults indents{.indents_swapped = true};
    const RtfWriterFaults spacing{.negative_line_spacing = true};
    const struct {
        RtfWriterFaults faults;
        const char *written, *repaired;
    } cases[] = {
        {offsets, "{\\rtf1\\up50\\fs15 su\\up0\\dn54 gi\\dn-46 x\\li50\\fi60}",
         "{\\rtf1\\up5\\fs15 su\\up0\\dn5 gi\\dn-5 x\\li50\\fi60}"},
        // First line at 360, the others 300 to its right.
        {indents, "{\\pard\\li300\\fi360\\tx5 a\\par}", "{\\pard\\li660\\fi-300\\tx5 a\\par}"},
        {indents, "{\\pard\\fi720 a\\par\\pard b}", "{\\pard\\li720 a\\par\\pard b}"},
        {indents, "{\\pard\\li200\\fi-200 a}", "{\\pard\\li0\\fi-200 a}"},
        {indents, "{\\pard\\li0 a}", "{\\pard\\li0 a}"},
        {indents, "{\\li200}", "{\\li200\\fi-200}"},
        {spacing, "{\\pard\\sl-240\\slmult1 a\\sl-300\\slmult0 b\\sl-240}",
         "{\\pard\\sl240\\slmult1 a\\sl-300\\slmult0 b\\sl-240}"},
        {kAllFaults, "\\sl-240\\slmult1\\li300\\fi360\\up50 a",
         "\\sl240\\slmult1\\li660\\fi-300\\up5 a"}};
    for (const auto& [faults, written, repaired] : cases) {
        EXPECT_EQ(RepairWrittenRtf(written, faults), repaired);
    }
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
    for (const char* torn : {"{\\rtf1 a", "{\\rtf1 {a}", "{\\rtf1 a\\}", "{\\rtf1 \\bin5 a}",
                             "{\\rtf1 a}b}", "testo", ""}) {
        EXPECT_FALSE(IsWholeRtf(torn)) << torn;
    }
}

}  // namespace

}  // namespace tonvale
