#include "hearing/chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "common/svg_canvas.h"
#include "tests/common/golden.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Line = RecordingCanvas::DrawnLine;

Chart SmallChart() {
    Chart chart;
    chart.titles = {"una riga troppo lunga per la fascia del titolo", "breve"};
    chart.horizontal_divisions = 4;
    chart.horizontal_labels = {"1", "2", "3"};
    chart.horizontal_unit = "anni";
    chart.legend = {"a", "b"};
    chart.pen_count = 7;
    SetLossAxis(chart);
    chart.curves = {{{1, 1}, {2, 2}}, {{1, 9}, {2, 8}}};
    return chart;
}

TEST(ChartLayout, MarginsGrowWithTheDistanceFromTheOrigin) {
    EXPECT_EQ(ComputeChartLayout({100, 50, 900, 650}).plot, (Rect{212, 131, 788, 569}));
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

TEST(Chart, PutsItsCurvesAndLabelsAtTheLinesOfTheGrid) {
    for (const Rect& area : {Rect{0, 0, 800, 600}, Rect{60, 30, 860, 630}, Rect{7, 3, 333, 222}}) {
        RecordingCanvas canvas;
        DrawChart(canvas, area, SmallChart(), {});
        canvas.DrawTextAt({}, "note below it");
        EXPECT_EQ(canvas.texts.back().color, kBlack);
        // 4 + 10 lines of the grid, two axes, two of the legend, one a curve.
        ASSERT_THAT(canvas.lines, SizeIs(14 + 2 + 2 + 2));
        const Line* vertical = &canvas.lines[0];
        const Line* horizontal = &canvas.lines[4];
        EXPECT_EQ(canvas.lines[18].from, (Point{vertical[0].from.x, horizontal[0].from.y}));
        EXPECT_EQ(canvas.lines[18].to, (Point{vertical[1].from.x, horizontal[1].from.y}));
        EXPECT_EQ(canvas.lines[19].from.y, horizontal[8].from.y);
        for (std::size_t i = 0; i < 3; ++i) {
            const Rect& cell = canvas.texts[i].rect;
            EXPECT_NEAR(cell.left + cell.right, 2 * vertical[i].from.x, 2) << i;
        }
        for (std::size_t i = 0; i < 9; ++i) {
            const Rect& cell = canvas.texts[3 + i].rect;
            EXPECT_NEAR(cell.top + cell.bottom, 2 * horizontal[i].from.y, 2) << i;
        }
    }
}

std::string Picture(const Chart& chart, Size size, const DrawingStyle& style) {
    SvgCanvas canvas(size);
    DrawChart(canvas, {0, 0, size.width, size.height}, chart, style);
    return canvas.Document();
}

// Seven curves of seven colours and markers, a title that fits, and one curve alone in black.
TEST(Chart, TellsCurvesApart) {
    Chart chart = SmallChart();
    chart.legend = {"a", "b", "c", "d", "e", "f", "g"};
    chart.curves.assign(7, {{1, 1}, {2, 12}, {3, 3}});  // the second point lies outside
    const DrawingStyle second_alone{.use_color = false, .selected_curve = 1};
    ExpectGolden("curve", Picture(chart, {800, 600}, {}) +
                              Picture(SmallChart(), {240, 240}, second_alone) +
                              Picture(SmallChart(), {240, 240}, {.selected_curve = 5}));
}

TEST(Chart, LooksAlikeOnEveryDevice) {
    const auto draw = [](int resolution, const Rect& area) {
        RecordingCanvas canvas;
        canvas.resolution = resolution;
        DrawChart(canvas, area, SmallChart(), {});
        return canvas;
    };
    const RecordingCanvas screen = draw(96, {0, 0, 800, 600});
    const RecordingCanvas paper = draw(600, {0, 0, 5000, 3750});
    for (const auto& [line, on_screen, on_paper] : {std::array{0, 1, 6}, {19, 2, 12}}) {
        EXPECT_EQ(screen.lines.at(static_cast<std::size_t>(line)).pen.width, on_screen);
        EXPECT_EQ(paper.lines.at(static_cast<std::size_t>(line)).pen.width, on_paper);
    }
    const auto side = [](const RecordingCanvas::DrawnShape& shape) {
        return shape.corners[1].x - shape.corners[0].x;
    };
    EXPECT_NEAR(side(paper.shapes.back()), side(screen.shapes.back()) * 600.0 / 96, 1);
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
