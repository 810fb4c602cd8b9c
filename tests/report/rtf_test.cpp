// Reading, writing, repairing and printing rich text.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "report/rtf/rich_text_printer.h"
#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_repair.h"
#include "report/rtf/rtf_writer.h"
#include "tests/common/fake_printer.h"
#include "tests/common/golden.h"

namespace tonvale {
namespace {

TEST(RtfReaderTest, BytesAreThoseOfTheFontsCodePage) {
    std::string pages;
    const auto decode = [&pages](std::string_view bytes, int page) {
        pages += std::string(bytes) + std::to_string(page) + ' ';
        return std::string(bytes);
    };
    const RichText text = ReadRichText(
        "{\\rtf1\\ansicpg1250\\deff7{\\fonttbl{\\f7 Arial;}{\\f1\\fcharset204 Cyr;}"
        "{\\f2\\fcharset2 Symbol;}{\\f3\\fcharset0 West;}}a{\\f1 b}\\f3 "
        "c\\f2\\'b7\\plain\\u7?d\te}",
        {.decode = decode});
    EXPECT_EQ(PlainTextOf(text), "abc\uF0B7d\te\n");
    EXPECT_EQ(pages, "a1250 b1251 c1252 d\te1250 ");
    EXPECT_EQ(text.at(0).runs.back().style.face, "Arial");
}

// Those of Windows, whatever the page of the document.
TEST(RtfReaderTest, KnowsTheCodePagesOfCharacterSets) {
    constexpr std::pair<int, int> kPages[] = {
        {0, 1252},   {77, 10000}, {128, 932},  {129, 949},  {134, 936},  {136, 950},
        {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
        {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850}};
    for (const auto& [charset, page] : kPages) {
        int used = 0;
        const auto decode = [&used](std::string_view bytes, int code_page) {
            used = code_page;
            return std::string(bytes);
        };
        ReadRichText("{\\rtf1{\\fonttbl{\\f0\\fcharset" + std::to_string(charset) + " X;}}\\f0 a}",
                     {.decode = decode});
        EXPECT_EQ(used, page) << charset;
    }
}

TEST(RtfReaderTest, EndsWithTheBytesOrBehindTheMostThatIsWanted) {
    EXPECT_TRUE(ReadRichText("}}}").empty());
    EXPECT_EQ(PlainTextOf(ReadRichText(std::string(100000, '{') + "x")), "x\n");
    EXPECT_EQ(PlainTextOf(ReadRichText("{\\rtf1 ab\\par\\par c\\par d}", {.max_characters = 4})),
              "ab\n\nc\n");
}

TEST(RtfReaderTest, TellsWhatItLeavesOut) {
    EXPECT_TRUE(LeavesOut("{\\rtf1 a{\\footnote nota}}"));
    for (const char* whole : {"{\\rtf1 nota}", "{\\rtf1 a{\\footnote  {\\b }}}"}) {
        EXPECT_FALSE(LeavesOut(whole)) << whole;
    }
}

TEST(RtfWriterTest, KeepsWithinWhatControlsTake) {
    RichParagraph paragraph;
    for (int i = 0; i < 60; ++i) paragraph.tabs_twips.push_back(i * 100);
    paragraph.runs = {{"x", {.face = "{F;\\}" + std::string(60, 'o'), .size_twips = 1}, {}}};
    const RichText text = ReadRichText(WriteRichText({paragraph}));
    EXPECT_EQ(text.at(0).tabs_twips.size(), 32U);
    EXPECT_EQ(text[0].runs.at(0).style.face, "F" + std::string(26, 'o'));
    EXPECT_EQ(text[0].runs[0].style.size_twips, 10);
}

TEST(RtfRepairTest, WritesWhatIsMeant) {
    constexpr RtfWriterFaults kAllFaults{true, true, true, true};
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
        {{.confuses_characters = true},
         "{\\urtf\\deff0{\\fonttbl;}\\f0 perché ≥ 85\\{\uF0B7😀}",
         "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0{\\fonttbl;}\\f0 perch\\u233? \\u8805? 85\\{"
         "\\u-3913?\\u-10179?\\u-8704?}"},
        {kAllFaults, "\\sl-240\\slmult1\\li300\\fi360\\up50 a",
         "\\sl240\\slmult1\\li660\\fi-300\\up5 a"},
        // Text and binary data that look like words are none.
        {kAllFaults, "{\\rtf1 \\\\up50\\bin6 \\up50 }", "{\\rtf1 \\\\up50\\bin6 \\up50 }"}};
    for (const auto& [faults, written, repaired] : cases) {
        EXPECT_EQ(RepairWrittenRtf(written, faults), repaired);
    }
}

TEST(RtfRepairTest, WholeMeansThatTheOutermostGroupIsClosed) {
    EXPECT_TRUE(IsWholeRtf("{\\rtf1 a}"));
    EXPECT_TRUE(IsWholeRtf(std::string("{\\rtf1{\\b \\{}\\}\\bin2 {{}\r\n\0", 27)));
    for (const char* torn : {"{\\rtf1 a", "{\\rtf1 {a}", "{\\rtf1 a\\}", "{\\rtf1 \\bin5 a}",
                             "{\\rtf1 a}b}", "testo", ""}) {
        EXPECT_FALSE(IsWholeRtf(torn)) << torn;
    }
}

// 4 by 3.2 inches at 600 dpi: text 2 inches wide from 600 on, 1 inch high from 600 on. A character
// of 10 pt is 41.5 pixels wide and 83 high: 28 characters a line, 7 lines a page.
class RichTextPrinterTest : public testing::Test {
  protected:
    RichTextPrinterTest() { printer_.page = {2400, 1920}; }

    bool Print(const std::string& body) {
        const auto draw_nothing = [](const RichPicture&, const Rect&) {};
        return PrintRichText(printer_, ReadRichText("{\\rtf1\\fs20" + body + "}"), "Prova",
                             draw_nothing);
    }

    FakePrinter printer_;
};

TEST(PrintedAreaTest, TakesWholeInchesOnly) {
    EXPECT_EQ(PrintedAreaTwips({5100, 6600}, {600, 600}), (Rect{1440, 1440, 7 * 1440, 10 * 1440}));
    EXPECT_EQ(PrintedAreaTwips({4799, 6600}, {600, 600}), (Rect{1440, 1440, 6 * 1440, 10 * 1440}));
    EXPECT_EQ(PrintedAreaTwips({1200, 6600}, {600, 600}), Rect());
    EXPECT_EQ(PrintedAreaTwips({1200, 6600}, {0, 0}), Rect());
}

TEST_F(RichTextPrinterTest, LosesNothingOfAWordAsLongAsADocument) {
    ASSERT_TRUE(Print(" " + std::string(20000, 'y')));
    EXPECT_EQ(printer_.document, "Prova");
    EXPECT_TRUE(printer_.ended);
    std::size_t drawn = 0;
    for (const auto& page : printer_.pages) {
        for (const auto& text : page) drawn += text.text.size();
    }
    EXPECT_EQ(drawn, 20000U);
}

std::string Described(const Rect& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + " " +
           std::to_string(rect.Width()) + "x" + std::to_string(rect.Height());
}

// All that is drawn on a page, one line each.
std::string Described(const RecordingCanvas& page) {
    std::string text;
    for (const Rect& fill : page.fills) text += "fill " + Described(fill) + "\n";
    for (const auto& line : page.lines) {
        text += "line " + Described(Rect{line.from.x, line.from.y, line.to.x, line.to.y}) + " by " +
                std::to_string(line.pen.width) + "\n";
    }
    for (const auto& drawn : page.texts) {
        const Font& font = drawn.font;
        text += Described(drawn.rect) + " " + font.face + " " +
                std::to_string(font.character_height) + " " + std::to_string(font.weight) +
                (font.italic ? " italic" : "") + (drawn.color == kBlack ? "" : " coloured") + ": " +
                drawn.text + "\n";
    }
    return text;
}

// Lines, words, pages, formats and pictures of the files there, on paper and in a file.
TEST_F(RichTextPrinterTest, PlacesEveryFormat) {
    for (const std::string& name : FilesIn("tests/golden/report")) {
        const RichText text = ReadRichText(ExampleBytes("../tests/golden/report/" + name));
        FakePrinter printer;
        printer.page = printer_.page;
        std::string output;
        ASSERT_TRUE(PrintRichText(printer, text, name, [&](const RichPicture&, const Rect& place) {
            output += "picture " + Described(place) + "\n";
        }));
        for (const RecordingCanvas& page : printer.canvases) {
            output += "--- page\n" + Described(page);
        }
        const std::string written = WriteRichText(text);
        output.append("--- written anew\n").append(written).append("\n");
        ExpectGolden("report_" + name, output);
        EXPECT_TRUE(IsWholeRtf(written)) << name;
        EXPECT_EQ(WriteRichText(ReadRichText(written)), written) << name;
    }
}

TEST_F(RichTextPrinterTest, GivesUpWithThePrinter) {
    printer_.fail_at_page = 2;
    std::string body;
    for (int i = 0; i < 20; ++i) body += "\\par x";
    EXPECT_FALSE(Print(body));
    EXPECT_TRUE(printer_.aborted);
    EXPECT_FALSE(printer_.ended);
    FakePrinter stamp;
    stamp.page = {1200, 1200};
    EXPECT_FALSE(PrintRichText(stamp, {}, "Prova", {}));
    EXPECT_EQ(stamp.document, "");
}

}  // namespace
}  // namespace tonvale
