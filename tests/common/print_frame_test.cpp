#include "common/print_frame.h"

#include <gtest/gtest.h>

#include "tests/common/fake_printer.h"

namespace tonvale {
namespace {

Report ReportOfLines(int count) {
    Report report;
    report.document_name = "Prova";
    for (int i = 0; i < count; ++i) {
        report.lines.push_back({"riga " + std::to_string(i), i % 2 == 0 ? "valore" : ""});
    }
    return report;
}

TEST(PrinterFontHeight, IsTheDefaultFontsInWholePointsInDeviceUnits) {
    EXPECT_EQ(PrinterFontHeight({60, 10, 0}, 600), 50);   // 6 points exactly
    EXPECT_EQ(PrinterFontHeight({67, 10, 3}, 600), 50);   // 6.84 points: down to 6
    EXPECT_EQ(PrinterFontHeight({16, 3, 0}, 96), 12);     // 9.75 points: 9 are 12 pixels
    EXPECT_EQ(PrinterFontHeight({100, 17, 0}, 300), 79);  // 19 points of 4.1666 pixels
}

TEST(PrintReport, StartsAtLineTwoAndPutsValuesAtHalfThePage) {
    FakePrinter printer;
    PrintReport(printer, ReportOfLines(3));
    ASSERT_EQ(printer.pages.size(), 1U);
    const auto& texts = printer.pages[0];
    ASSERT_EQ(texts.size(), 5U);
    EXPECT_EQ(texts[0].rect, (Rect{0, 120, 0, 120}));
    EXPECT_EQ(texts[1].rect, (Rect{2000, 120, 2000, 120}));
    EXPECT_EQ(texts[2].text, "riga 1");
    EXPECT_EQ(texts[2].rect.top, 180);
    EXPECT_EQ(texts[3].rect.top, 240);
    EXPECT_EQ(texts[0].font, (Font{"Courier New", 50, 500, false}));
    EXPECT_EQ(printer.document, "Prova");
    EXPECT_TRUE(printer.ended);
}

TEST(PrintReport, BreaksThePageAfterItsLastLineAndResumesAtLineOne) {
    FakePrinter printer;  // 6600 / 60 - 1 = 109 lines a page: lines 2 to 109, then 1 to 109
    PrintReport(printer, ReportOfLines(108 + 109 + 1));
    ASSERT_EQ(printer.pages.size(), 3U);
    EXPECT_EQ(printer.pages[0].back().rect.top, 109 * 60);
    EXPECT_EQ(printer.pages[0].back().text, "riga 107");
    EXPECT_EQ(printer.pages[1].front().text, "riga 108");
    EXPECT_EQ(printer.pages[1].front().rect.top, 60);
    EXPECT_EQ(printer.pages[1].front().font.weight, 500);
    EXPECT_EQ(printer.pages[2].front().text, "riga 217");
}

TEST(PrintReport, PutsNotesBelowTheLinesOrOnAPageOfTheirOwn) {
    Report report = ReportOfLines(1);
    report.notes = "nota";
    FakePrinter fits;
    PrintReport(fits, report);
    ASSERT_EQ(fits.pages.size(), 1U);
    EXPECT_EQ(fits.pages[0].back().text, "nota");
    EXPECT_EQ(fits.pages[0].back().rect, (Rect{0, (2 + 3) * 60, 4000, 6600}));
    EXPECT_TRUE(fits.pages[0].back().layout.word_wrap);

    report = ReportOfLines(106);  // the last line is 107, the notes would start at 110
    report.notes = "nota";
    FakePrinter overflows;
    PrintReport(overflows, report);
    ASSERT_EQ(overflows.pages.size(), 2U);
    ASSERT_EQ(overflows.pages[1].size(), 1U);
    EXPECT_EQ(overflows.pages[1][0].rect, (Rect{0, 0, 4000, 6600}));
}

TEST(PrintReport, EndsAtAPageBreakThatFails) {
    FakePrinter printer;
    printer.fail_at_page = 2;
    Report report = ReportOfLines(150);
    report.notes = "nota";
    PrintReport(printer, report);
    EXPECT_EQ(printer.pages.size(), 1U);
    EXPECT_FALSE(printer.aborted);
    EXPECT_TRUE(printer.ended);
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
    EXPECT_EQ(printer.pages[0][0].font.weight, 400);
    EXPECT_EQ(printer.pages[0][1].rect, (Rect{0, 6600 - 412, 4000, 6600}));

    FakePrinter monochrome;
    monochrome.colors = 2;
    const std::string long_notes(4000, 'x');  // 4000 x 25 wide: 25 rows of 50, 412 are there
    EXPECT_TRUE(PrintWithFrame(monochrome, "Tabella", long_notes, draw));
    ASSERT_EQ(monochrome.pages.size(), 2U);
    EXPECT_EQ(monochrome.pages[0][0].text, "nero");
    EXPECT_EQ(monochrome.pages[1][0].rect.top, 0);

    FakePrinter many_colors;
    many_colors.colors = -1;
    PrintWithFrame(many_colors, "Grafico", "", draw);
    EXPECT_EQ(many_colors.pages[0][0].text, "colori");

    FakePrinter broken;
    broken.fail_at_page = 1;
    EXPECT_FALSE(PrintWithFrame(broken, "Grafico", "", draw));
    EXPECT_TRUE(broken.aborted);
}

}  // namespace
}  // namespace tonvale
