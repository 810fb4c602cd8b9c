#include "hearing/chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Line = RecordingCanvas::DrawnLine;

std::vector<std::string> TextsOf(const RecordingCanvas& canvas) {
    std::vector<std::string> texts;
    for (const auto& text : canvas.texts) texts.push_back(text.text);
    return texts;
}

Chart SmallChart() {
    Chart chart;
    chart.titles = {"una riga troppo lunga per la fascia del titolo", "breve"};
    chart.horizontal_divisions = 4;
    chart.horizontal_labels = {"1", "2", "3"};
    chart.horizontal_unit = "x";
    chart.legend = {"a", "b"};
    chart.pen_count = 7;
    SetLossAxis(chart);
    chart.curves = {{{1, 1}, {2, 2}}, {{1, 9}, {2, 8}}};
    return chart;
}

TEST(ChartLayout, TakesItsMarginsFromTheFarEdges) {
    const ChartLayout layout = ComputeChartLayout({0, 0, 803, 605});
    EXPECT_EQ(layout.title, (Rect{0, 0, 803, 25}));
    EXPECT_EQ(layout.legend, (Rect{100, 25, 703, 50}));
    EXPECT_EQ(layout.plot, (Rect{100, 75, 703, 530}));
    EXPECT_EQ(layout.horizontal_labels, (Rect{100, 530, 703, 555}));
    EXPECT_EQ(layout.vertical_labels, (Rect{0, 75, 100, 530}));
    EXPECT_EQ(layout.horizontal_unit, (Rect{703, 530, 803, 555}));
    EXPECT_EQ(layout.vertical_unit, (Rect{0, 50, 100, 75}));
    EXPECT_EQ(layout.grid, layout.plot);
    // Off the origin they grow with the distance from it: this is no slip.
    const ChartLayout off_origin = ComputeChartLayout({100, 50, 900, 650});
    EXPECT_EQ(off_origin.title, (Rect{100, 50, 900, 77}));
    EXPECT_EQ(off_origin.legend, (Rect{212, 77, 788, 104}));
    EXPECT_EQ(off_origin.plot, (Rect{212, 131, 788, 569}));
    EXPECT_EQ(off_origin.horizontal_unit, (Rect{788, 569, 900, 596}));
}

TEST(ChartGrid, PutsItsLinesAtWholeStepsFromLeftAndBottom) {
    RecordingCanvas canvas;
    DrawGrid(canvas, {100, 50, 207, 150}, 3, 2);  // steps 35 and 50
    EXPECT_THAT(canvas.lines, ElementsAre(Line{{135, 150}, {135, 50}, {kGrey, 1}},
                                          Line{{170, 150}, {170, 50}, {kGrey, 1}},
                                          Line{{205, 150}, {205, 50}, {kGrey, 1}},
                                          Line{{100, 100}, {207, 100}, {kGrey, 1}},
                                          Line{{100, 50}, {207, 50}, {kGrey, 1}}));
    RecordingCanvas axes;
    DrawAxes(axes, {100, 50, 207, 150});
    EXPECT_THAT(axes.lines, ElementsAre(Line{{100, 50}, {100, 150}, {kGrey, 2}},
                                        Line{{100, 150}, {207, 150}, {kGrey, 2}}));
}

TEST(ChartLabels, StandAtTheirLines) {
    RecordingCanvas canvas;
    const std::vector<std::string> labels{"5", "10"};
    DrawHorizontalLabels(canvas, {100, 150, 207, 170}, labels, 3);
    DrawVerticalLabels(canvas, {0, 50, 100, 151}, labels, 3);  // step 33
    DrawHorizontalUnit(canvas, {207, 150, 240, 170}, "q (%)");
    DrawVerticalUnit(canvas, {0, 30, 100, 50}, "dB");
    ASSERT_THAT(TextsOf(canvas), ElementsAre("5", "10", "5", "10", "q (%)", "dB"));
    EXPECT_EQ(canvas.texts[0].rect, (Rect{117, 150, 152, 170}));
    EXPECT_EQ(canvas.texts[1].rect, (Rect{152, 150, 187, 170}));
    EXPECT_EQ(canvas.texts[2].rect, (Rect{0, 102, 100, 135}));
    EXPECT_EQ(canvas.texts[3].rect, (Rect{0, 69, 100, 102}));
    for (const auto& text : canvas.texts) {
        EXPECT_EQ(text.color, kGrey);
        EXPECT_EQ(text.layout.vertical, VerticalAlignment::kCenter);
    }
    EXPECT_EQ(canvas.texts[0].layout.horizontal, HorizontalAlignment::kCenter);
    EXPECT_EQ(canvas.texts[2].layout.horizontal, HorizontalAlignment::kRight);
    EXPECT_EQ(canvas.texts[4].layout.horizontal, HorizontalAlignment::kCenter);
    EXPECT_EQ(canvas.texts[5].layout.horizontal, HorizontalAlignment::kRight);
}

TEST(CurvePens, SevenDifferAndOtherCountsStartWithThree) {
    const Color magenta{255, 0, 255};
    const Color blue{0, 0, 255};
    const Color green{0, 255, 0};
    const Color yellow{255, 255, 0};
    const Color cyan{0, 255, 255};
    const Color red{255, 0, 0};
    EXPECT_THAT(CreateCurvePens(7, true),
                ElementsAre(Pen{magenta, 2}, Pen{blue, 2}, Pen{green, 2}, Pen{kBlack, 2},
                            Pen{yellow, 2}, Pen{cyan, 2}, Pen{red, 2}));
    EXPECT_THAT(CreateCurvePens(4, true),
                ElementsAre(Pen{magenta, 2}, Pen{blue, 2}, Pen{red, 2}, Pen{magenta, 2}));
    EXPECT_EQ(CreateCurvePens(12, true).size(), 10U);
    EXPECT_EQ(CreateCurvePens(10, true).back(), (Pen{red, 2}));
    EXPECT_THAT(CreateCurvePens(2, false), ElementsAre(Pen{kBlack, 2}, Pen{kBlack, 2}));
    EXPECT_THAT(CreateCurvePens(0, true), IsEmpty());
}

TEST(ChartLegend, HasACellForEachCurveOrFillsOnlyTheSelectedOne) {
    const std::vector<std::string> labels{"a", "b", "c"};
    const CurvePens pens = CreateCurvePens(4, true);
    RecordingCanvas all;
    DrawLegend(all, {100, 20, 401, 40}, pens, labels, -1);
    EXPECT_THAT(all.lines, ElementsAre(Line{{108, 20}, {192, 20}, pens[0]},
                                       Line{{208, 20}, {292, 20}, pens[1]},
                                       Line{{308, 20}, {392, 20}, pens[2]}));
    EXPECT_EQ(all.texts[2].rect, (Rect{300, 20, 400, 40}));
    EXPECT_EQ(all.texts[2].layout.vertical, VerticalAlignment::kBottom);
    RecordingCanvas one;
    DrawLegend(one, {100, 20, 401, 40}, pens, labels, 1);
    EXPECT_THAT(one.lines, ElementsAre(all.lines[1]));
    EXPECT_THAT(TextsOf(one), ElementsAre("b"));
    RecordingCanvas none;
    DrawLegend(none, {100, 20, 401, 40}, pens, labels, 6);
    EXPECT_THAT(none.lines, IsEmpty());
}

TEST(LogFrequencyAxis, SpansARatioOf24WithHalfAnOctaveAtBothEnds) {
    const Rect plot{50, 0, 650, 400};
    const LogFrequencyAxis axis(plot);
    const double decade = 434;  // 600 / lg 24 is 434.7
    EXPECT_NEAR(axis.X(500), 50 + decade * std::log10(2) / 2, 1e-9);
    EXPECT_NEAR(axis.X(1000) - axis.X(500), decade * std::log10(2), 1e-9);
    EXPECT_NEAR(axis.X(6000) - axis.X(500), decade * std::log10(12), 1e-9);
    EXPECT_NEAR(650 - axis.X(6000), axis.X(500) - 50, 1);

    RecordingCanvas canvas;
    DrawFrequencyGrid(canvas, plot, 4);
    DrawFrequencyLabels(canvas, {50, 400, 650, 420});
    ASSERT_THAT(canvas.lines, SizeIs(6 + 4));
    EXPECT_THAT(TextsOf(canvas), ElementsAre("500", "1000", "2000", "3000", "4000", "6000"));
    for (std::size_t i = 0; i < 6; ++i) {
        const Rect cell = canvas.texts[i].rect;
        EXPECT_EQ(canvas.lines[i].from, (Point{(cell.left + cell.right) / 2, 400}));
        EXPECT_EQ(canvas.lines[i].to.y, 0);
    }
}

TEST(ChartCurve, IsCutOffAtTheEdgesOfThePlot) {
    const Rect plot{100, 100, 200, 200};
    const Pen pen{kBlack, 2};
    RecordingCanvas canvas;
    DrawCurve(canvas, plot, {{110, 150}, {120, 50}, {130, 150}, {150, 250}, {190, 90}}, pen);
    EXPECT_THAT(canvas.lines,
                ElementsAre(Line{{110, 150}, {115, 100}, pen}, Line{{125, 100}, {130, 150}, pen},
                            Line{{130, 150}, {140, 200}, pen}, Line{{163, 200}, {188, 100}, pen}));
    RecordingCanvas outside;
    DrawCurve(outside, plot, {{110, 10}, {190, 99}, {210, 150}, {300, 160}, {150, 300}}, pen);
    // The second line passes the corner by.
    for (const Line& line : outside.lines) {
        EXPECT_GE(line.from.x, 100);
        EXPECT_LE(line.to.x, 200);
        EXPECT_GE(line.from.y, 100);
        EXPECT_LE(line.to.y, 200);
    }
    RecordingCanvas gap;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    DrawCurve(gap, plot, {{110, 150}, {120, nan}, {130, 150}, {140, 150}}, pen);
    EXPECT_THAT(gap.lines, ElementsAre(Line{{130, 150}, {140, 150}, pen}));
    DrawCurve(gap, plot, {}, pen);
    DrawCurve(gap, plot, {{110, 150}}, pen);
    EXPECT_THAT(gap.lines, SizeIs(1));
}

TEST(Chart, DrawsItsCurvesOnTheLinesOfTheGrid) {
    for (const Rect& area : {Rect{0, 0, 800, 600}, Rect{60, 30, 860, 630}, Rect{7, 3, 333, 222}}) {
        RecordingCanvas canvas;
        DrawChart(canvas, area, SmallChart(), {});
        // 4 + 10 lines of the grid, two axes, two of the legend, one a curve.
        ASSERT_THAT(canvas.lines, SizeIs(14 + 2 + 2 + 2));
        const auto& vertical = canvas.lines;
        const int first_y = canvas.lines[4].from.y;
        const Line curve = canvas.lines[18];
        EXPECT_EQ(curve.from, (Point{vertical[0].from.x, first_y}));
        EXPECT_EQ(curve.to, (Point{vertical[1].from.x, canvas.lines[5].from.y}));
        EXPECT_EQ(curve.pen, canvas.lines[16].pen);
        EXPECT_EQ(canvas.lines[19].from.y, canvas.lines[12].from.y);
        EXPECT_EQ(canvas.lines[19].pen, (Pen{{0, 0, 255}, 2}));
    }
}

TEST(Chart, ChoosesATitleThatFitsAndTheSelectedCurve) {
    RecordingCanvas canvas;
    DrawChart(canvas, {0, 0, 240, 240}, SmallChart(), {.use_color = false, .selected_curve = 1});
    EXPECT_THAT(TextsOf(canvas),
                ElementsAre("1", "2", "3", "- 90", "- 80", "- 70", "- 60", "- 50", "- 40", "- 30",
                            "- 20", "- 10", "x", "dB", "breve", "b"));
    EXPECT_EQ(canvas.lines.size(), 14U + 2 + 1 + 1);
    EXPECT_EQ(canvas.lines.back().pen, (Pen{kBlack, 2}));
    RecordingCanvas wide;
    DrawChart(wide, {0, 0, 800, 600}, SmallChart(), {.selected_curve = 5});
    EXPECT_EQ(wide.texts.back().text, "una riga troppo lunga per la fascia del titolo");
    EXPECT_EQ(wide.texts.back().color, kBlack);
    EXPECT_EQ(wide.lines.size(), 14U + 2);
}

TEST(Chart, DrawsNothingWhereThereIsNoRoom) {
    RecordingCanvas canvas;
    for (const Rect& area :
         {Rect{0, 0, 0, 0}, Rect{0, 0, 500, 0}, Rect{0, 0, 0, 500}, Rect{10, 10, 5, 400},
          Rect{700, 0, 800, 500}, Rect{0, 700, 500, 800}}) {
        DrawChart(canvas, area, SmallChart(), {});
    }
    EXPECT_THAT(canvas.lines, IsEmpty());
    EXPECT_THAT(canvas.texts, IsEmpty());
    // Smaller than its divisions: all lines fall together, nothing is divided by zero.
    for (int size = 1; size < 30; ++size) DrawChart(canvas, {0, 0, size, size}, SmallChart(), {});
    Chart audiogram = SmallChart();
    audiogram.horizontal_axis = HorizontalAxis::kFrequency;
    for (int size = 1; size < 30; ++size) DrawChart(canvas, {0, 0, size, size}, audiogram, {});
}

}  // namespace
}  // namespace tonvale
