// The charts of the hearing-damage calculators: layout, grid, labels, axes, legend and curves.
//
// All lengths are device units, all their divisions truncate. Lines, markers and gaps are as wide
// on every device as on a screen. The operations expect rectangles with a width and a height and at
// least one division.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/canvas.h"
#include "common/result_view.h"

namespace tonvale {

struct ChartLayout {
    Rect title;
    Rect legend;
    Rect plot;
    Rect horizontal_labels;
    Rect vertical_labels;
    Rect horizontal_unit;
    Rect vertical_unit;
    Rect grid;
};

// The parts of `chart`. The margins are fractions of its right and bottom edges themselves, not of
// its width and height: far from the origin the plot may come out with no width or height.
ChartLayout ComputeChartLayout(const Rect& chart);

// nx vertical and ny horizontal lines, none at the left and bottom edges.
void DrawGrid(Canvas& canvas, const Rect& grid, int nx, int ny);
// The first label stands at the first line of a grid of n divisions, counted from the left or from
// the bottom; lines beyond the last label have none.
void DrawHorizontalLabels(Canvas& canvas, const Rect& rect, std::span<const std::string> labels,
                          int n);
void DrawVerticalLabels(Canvas& canvas, const Rect& rect, std::span<const std::string> labels,
                        int n);
void DrawAxes(Canvas& canvas, const Rect& plot);
void DrawHorizontalUnit(Canvas& canvas, const Rect& rect, std::string_view text);
void DrawVerticalUnit(Canvas& canvas, const Rect& rect, std::string_view text);

// Filled with the colour of the curve, which alone would not tell yellow from the paper, nor one
// black curve from another. The last two are a circle filled with white, and one with a cross in
// it.
enum class Marker {
    kCircle,
    kSquare,
    kDiamond,
    kTriangleUp,
    kTriangleDown,
    kCross,
    kPlus,
    kRing,
    kCrossedRing
};

struct CurvePen {
    Pen line;
    Marker marker = Marker::kCircle;
};

// Pens two pixels of a screen wide, one per curve; all black without colour. A set of seven has
// seven colours, any other count (at most ten) repeats the first few. The first seven markers all
// differ.
using CurvePens = std::vector<CurvePen>;
CurvePens CreateCurvePens(const Canvas& canvas, int count, bool use_color);

// One cell per label, a line and the marker of its pen above it; of one selected curve only its
// cell.
void DrawLegend(Canvas& canvas, const Rect& rect, const CurvePens& pens,
                std::span<const std::string> labels, int selected_curve);

// Where the audiometric frequencies lie on a plot: half an octave from its left edge the first,
// 500 Hz, and half an octave from its right edge the last, 6000 Hz.
class LogFrequencyAxis {
  public:
    explicit LogFrequencyAxis(const Rect& plot);
    double X(double frequency_hz) const;  // not rounded
    int OctaveWidth() const;

  private:
    int left_;
    int scale_;  // width of a decade
};

// Vertical lines at the audiometric frequencies, horizontal ones as in DrawGrid.
void DrawFrequencyGrid(Canvas& canvas, const Rect& grid, int ny);
void DrawFrequencyLabels(Canvas& canvas, const Rect& rect);

struct CurvePoint {
    double x = 0;
    double y = 0;
};
using Curve = std::vector<CurvePoint>;

// Joins the points, given in device units, by straight lines and cuts them off at the edges of
// `plot`. A line to or from a point that is not finite is left out.
void DrawCurve(Canvas& canvas, const Rect& plot, const Curve& points, const Pen& pen);
// Marks those of the points, given in device units, that lie in `plot`.
void DrawMarkers(Canvas& canvas, const Rect& plot, const Curve& points, const CurvePen& pen);

// --- A whole chart -------------------------------------------------------------------------------

enum class HorizontalAxis { kDivisions, kFrequency };

// How a curve is drawn whose look has a meaning of its own; black without colour.
struct CurveStyle {
    Color color;
    Marker marker = Marker::kCircle;
};

struct Chart {
    std::vector<std::string> titles;  // the first that fits is drawn, or else the last
    HorizontalAxis horizontal_axis = HorizontalAxis::kDivisions;
    int horizontal_divisions = 1;                // along with kDivisions
    std::vector<std::string> horizontal_labels;  // along with kDivisions
    std::string horizontal_unit;
    int vertical_divisions = 1;
    std::vector<std::string> vertical_labels;  // from the bottom up
    std::string vertical_unit;
    std::vector<std::string> legend;
    int pen_count = 0;                     // at least one per curve
    std::vector<CurveStyle> curve_styles;  // one per curve; empty: a set of `pen_count` pens
    // x in divisions from the left, or in Hz; y in divisions from the bottom up.
    std::vector<Curve> curves;
};

// Draws all curves or the selected one; nothing when `area` has no room for a plot.
void DrawChart(Canvas& canvas, const Rect& area, const Chart& chart, const DrawingStyle& style);

// Whether any point of any curve lies between the ends of the vertical axis.
bool ShowsAnyPoint(const Chart& chart);

// The horizontal axis over the population, 5, 10, ... 95 %, and the fractile at each of its
// nineteen divisions: a little above the whole per cent, so that no sum of steps falls short of it.
void SetFractileAxis(Chart& chart);
std::vector<double> FractileAxisValues();
// The fractiles from the first up to 95 %, each got by adding 0.05 to the one before.
std::vector<double> FractilesFrom(double first);

// The horizontal axis over the years of exposure, 2, 4, ... 40.
inline constexpr int kAxisYears = 20;
void SetYearAxis(Chart& chart, std::string unit);
std::array<double, kAxisYears> YearAxisValues();

// The vertical axis of the charts of losses: 0 dB at the top to 100 dB at the bottom.
void SetLossAxis(Chart& chart);
// The place of a loss on that axis, in divisions from the bottom up.
double LossAxisPosition(double loss_db);

}  // namespace tonvale
