#include "common/print_frame.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/common/fake_printer.h"

namespace tonvale {
namespace {

Printout PrintoutOfLines(int count) {
    Printout printout;
    printout.document_name = "Prova";
    for (int i = 0; i < count; ++i) {
        printout.lines.push_back({"riga " + std::to_string(i), i % 2 == 0 ? "valore" : ""});
    }
    return printout;
}

TEST(PrinterFontHeight, IsTheDefaultFontsInWholePointsInDeviceUnits) {
    EXPECT_EQ(PrinterFontHeight({60, 10, 0}, 600), 50);   // 6 points exactly
    EXPECT_EQ(PrinterFontHeight({16, 3, 0}, 96), 12);     // 9.75 points: 9 are 12 pixels
    EXPECT_EQ(PrinterFontHeight({100, 17, 0}, 300), 79);  // 19 points of 4.1666 pixels
}

// The places of the lines, and where a page ends, are looked at in the real printouts.
TEST(PrintPages, PutsNotesBelowTheLinesOrOnAPageOfTheirOwn) {
    // The last of 105 lines is in row 106, and notes start in row 109 of 110.
    for (const auto& [line_count, page_count] : {std::pair{105, 1U}, {106, 2U}}) {
        Printout printout = PrintoutOfLines(line_count);
        printout.notes = "nota";
        FakePrinter printer;
        PrintPages(printer, printout);
        ASSERT_EQ(printer.pages.size(), page_count);
        EXPECT_EQ(printer.pages.back().back().rect,
                  (Rect{0, page_count == 1 ? 109 * 60 : 0, 4000, 6600}));
    }
}

TEST(PrintPages, EndsAtAPageBreakThatFails) {
    FakePrinter printer;
    printer.fail_at_page = 2;
    PrintPages(printer, PrintoutOfLines(150));
    EXPECT_EQ(printer.pages.size(), 1U);
    EXPECT_TRUE(printer.ended && !printer.aborted);
}

TEST(PrintWithFrame, DrawsThePageAndItsNotesInTheBottomSixteenth) {
    FakePrinter printer;
    const auto draw = [](Canvas& canvas, const Rect& page, bool use_color) {
        canvas.DrawTextIn(page, use_color ? "colori" : "nero", {});
    };
    EXPECT_TRUE(PrintWithFrame(printer, "Tabella", "in fondo", draw));
    ASSERT_EQ(printer.pages.size(), 1U);
    EXPECT_EQ(printer.pages[0][0].text, "colori");
    EXPECT_EQ(printer.pages[0][0].rect, (Rect{0, 0, 4000, 6600}));
    EXPECT_EQ(printer.pages[0][1].rect, (Rect{0, 6600 - 412, 4000, 6600}));

    FakePrinter other;
    other.colors = 2;
    const std::string long_notes(4000, 'x');  // 4000 x 25 wide: 25 rows of 50, 412 are there
    EXPECT_TRUE(PrintWithFrame(other, "Tabella", long_notes, draw));
    ASSERT_EQ(other.pages.size(), 2U);
    EXPECT_EQ(other.pages[0][0].text, "nero");
    EXPECT_EQ(other.pages[1][0].rect.top, 0);

    other.colors = -1;  // more than it can count
    PrintWithFrame(other, "Grafico", "", draw);
    EXPECT_EQ(other.pages[2][0].text, "colori");

    FakePrinter broken;
    broken.fail_at_page = 1;
    EXPECT_FALSE(PrintWithFrame(broken, "Grafico", "", draw));
    EXPECT_TRUE(broken.aborted);
}

}  // namespace
}  // namespace tonvale
