#include "report/rtf_repair.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "report/rtf_reader.h"
#include "report/rtf_tables.h"

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

TEST(RtfTablesTest, RowsBecomeParagraphs) {
    const RichText text = ReadRichText(FlattenTables(
        "{\\rtf1 prima\\par\\trowd\\cellx2000\\cellx4000\\cellx6000\\pard\\intbl{a}\\cell"
        "\\pard\\intbl 5\\cell\\pard\\intbl\\b c\\cell\\row"
        "\\trowd\\cellx1000\\pard\\intbl\\cell\\cell d\\cell\\row\\pard dopo}"));
    EXPECT_EQ(PlainTextOf(text), "prima\na\t5\tc\n\t\td\ndopo\n");
    EXPECT_EQ(text.at(1).tabs_twips, (std::vector<int>{2000, 4000, 6000}));
    EXPECT_EQ(text.at(2).tabs_twips, std::vector<int>{1000});
    EXPECT_TRUE(text.at(3).tabs_twips.empty());
    EXPECT_EQ(FlattenTables("{\\rtf1\\b a\\tab b\\par}"), "{\\rtf1\\b a\\tab b\\par}");
}

// The text with "<offset>" for each mark.
std::string MarkedText(const std::string& rtf) {
    const std::optional<std::string> marked = MarkOffsets(rtf);
    if (!marked) return "none";
    std::string result;
    const std::string text = PlainTextOf(ReadRichText(*marked));
    for (std::size_t i = 0; i < text.size();) {
        // Each of the three characters of a mark takes three bytes: EF B7 xx.
        if (text.compare(i, 3, "\uFDEE") != 0) {
            result += text[i++];
            continue;
        }
        const auto unit = [&text](std::size_t at) {
            return static_cast<char16_t>(0xF000 | (text.at(at + 1) & 0x3F) << 6 |
                                         (text.at(at + 2) & 0x3F));
        };
        result += "<" + std::to_string(OffsetOfMark(unit(i + 3), unit(i + 6)).value()) + ">";
        i += 9;
    }
    return result;
}

TEST(RtfRepairTest, MarksStandWhereTheOffsetChanges) {
    EXPECT_EQ(MarkedText("{\\rtf1 a\\up5 b\\fs15 c\\up0 d\\dn6\\i e{\\up127 f}g\\plain h}"),
              "a<5>bc<0>d<-6>e<127>f<-6>g<0>h\n");
    EXPECT_EQ(MarkedText("{\\rtf1\\up a\\par\\dn\\u945?\\par}"), "<6>a\n<-6>α\n");
    EXPECT_EQ(MarkedText("{\\rtf1{\\stylesheet{\\up5 s;}}{\\info\\up5 x}{\\*\\x\\up5 y} a}"),
              "none");
    EXPECT_EQ(MarkedText("{\\rtf1 a\\up5\\up0 b\\dn0 c}"), "none");
    EXPECT_EQ(OffsetOfMark(u'x', kOffsetDigit), std::nullopt);
}

}  // namespace
}  // namespace tonvale
