#include "report/rtf/rich_text_printer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "report/rtf/rtf_reader.h"
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
        return PrintRichText(
            printer_, ReadRichText("{\\rtf1{\\fonttbl{\\f0 Arial;}}\\f0\\fs20" + body + "}"),
            "Prova", [this](const RichPicture&, const Rect& place) { pictures_.push_back(place); });
    }

    // The texts of a page, one line each, "x:text|x:text".
    std::vector<std::string> Lines(std::size_t page) const {
        std::vector<std::string> lines;
        int y = -1;
        for (const auto& drawn : printer_.pages.at(page)) {
            if (drawn.rect.top != y) lines.emplace_back();
            if (drawn.rect.top == y) lines.back() += '|';
            y = drawn.rect.top;
            lines.back() += std::to_string(drawn.rect.left) + ":" + drawn.text;
        }
        return lines;
    }

    FakePrinter printer_;
    std::vector<Rect> pictures_;
};

TEST(PrintedAreaTest, TakesWholeInchesOnly) {
    EXPECT_EQ(PrintedAreaTwips({5100, 6600}, {600, 600}), (Rect{1440, 1440, 7 * 1440, 10 * 1440}));
    EXPECT_EQ(PrintedAreaTwips({4799, 6600}, {600, 600}), (Rect{1440, 1440, 6 * 1440, 10 * 1440}));
    EXPECT_EQ(PrintedAreaTwips({1200, 6600}, {600, 600}), Rect());
    EXPECT_EQ(PrintedAreaTwips({1200, 6600}, {0, 0}), Rect());
}

TEST_F(RichTextPrinterTest, BreaksLinesAtWords) {
    ASSERT_TRUE(Print(" uno due tre quattro cinque sei sette otto\\par nuovo\\line capo"));
    EXPECT_EQ(printer_.document, "Prova");
    EXPECT_TRUE(printer_.ended);
    ASSERT_EQ(printer_.pages.size(), 1U);
    EXPECT_EQ(Lines(0), (std::vector<std::string>{"600:uno due tre quattro cinque ",
                                                  "600:sei sette otto", "600:nuovo", "600:capo"}));
    EXPECT_EQ(printer_.pages[0][0].rect.top, 600);
    EXPECT_EQ(printer_.pages[0][1].rect.top, 683);
    EXPECT_EQ(printer_.pages[0][0].font,
              (Font{.face = "Arial", .character_height = 83, .weight = 400, .italic = false}));
}

TEST_F(RichTextPrinterTest, BreaksLongWordsWhereTheLineEnds) {
    const std::string word(70, 'x');
    ASSERT_TRUE(Print(" " + word));
    EXPECT_EQ(Lines(0),
              (std::vector<std::string>{"600:" + word.substr(0, 28), "600:" + word.substr(0, 28),
                                        "600:" + word.substr(0, 14)}));
    // Nothing is lost of one that is as long as a document.
    ASSERT_TRUE(Print(" " + std::string(20000, 'y')));
    std::size_t drawn = 0;
    for (std::size_t page = 1; page < printer_.pages.size(); ++page) {
        for (const auto& text : printer_.pages[page]) drawn += text.text.size();
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
        ExpectGolden("report_" + name, output + "--- written anew\n" + WriteRichText(text) + "\n");
    }
}

TEST_F(RichTextPrinterTest, GoesOnOverPages) {
    std::string body;
    for (int i = 1; i <= 20; ++i) body += " riga" + std::to_string(i) + "\\par";
    ASSERT_TRUE(Print(body));
    ASSERT_EQ(printer_.pages.size(), 3U);
    std::string all;
    for (const auto& page : printer_.pages) {
        EXPECT_LE(page.size(), 7U);
        EXPECT_EQ(page.front().rect.top, 600);
        for (const auto& text : page) {
            EXPECT_LE(text.rect.top + 83, 1200);
            all += text.text + " ";
        }
    }
    std::string expected;
    for (int i = 1; i <= 20; ++i) expected += "riga" + std::to_string(i) + " ";
    EXPECT_EQ(all, expected);
}

TEST_F(RichTextPrinterTest, PicturesTakeTheirPlace) {
    ASSERT_TRUE(
        Print(" a{\\pict\\emfblip\\picwgoal720\\pichgoal360 00}b"
              "\\par{\\pict\\emfblip\\picwgoal20000\\pichgoal20000 00}"));
    ASSERT_EQ(pictures_.size(), 2U);
    EXPECT_EQ(pictures_[0], (Rect{641, 600, 941, 750}));
    EXPECT_EQ(Lines(0), (std::vector<std::string>{"600:a|941:b"}));
    EXPECT_EQ(printer_.pages.size(), 2U);
    EXPECT_EQ(pictures_[1], (Rect{600, 600, 1800, 1200}));  // the most there is
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
