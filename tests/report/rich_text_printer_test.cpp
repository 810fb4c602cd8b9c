#include "report/rtf/rich_text_printer.h"

#include <gtest/gtest.h>

#include <string>

#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_repair.h"
#include "report/rtf/rtf_writer.h"
#include "tests/common/fake_printer.h"
#include "tests/common/golden.h"

namespace tonvale {
namespace {

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
