#include "hearing/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "common/numbers.h"
#include "hearing/threshold_model.h"

namespace tonvale {

namespace {

// In pixels of a screen of 96 dpi, see Canvas::Scaled.
constexpr int kGridWidth = 1;
constexpr int kAxisWidth = 2;
constexpr int kCurveWidth = 2;
constexpr int kMarkerOutline = 1;
constexpr int kMarkerRadius = 4;
constexpr int kRingRadius = 5;
constexpr int kMarkerReach = 6;  // of the largest one, with its outline
constexpr int kLegendLineInset = 8;
constexpr int kLabelGap = 4;  // between an axis and its labels

constexpr Color kDarkGrey{64, 64, 64};
constexpr Color kWhite{255, 255, 255};

// The corners of the markers around their middle, in pixels of a screen of 96 dpi.
constexpr Point kSquare[] = {{-4, -4}, {4, -4}, {4, 4}, {-4, 4}};
constexpr Point kDiamond[] = {{0, -5}, {5, 0}, {0, 5}, {-5, 0}};
constexpr Point kTriangleUp[] = {{0, -5}, {5, 4}, {-5, 4}};
constexpr Point kTriangleDown[] = {{0, 5}, {5, -4}, {-5, -4}};
constexpr Point kCross[] = {{0, -2}, {3, -5}, {5, -3}, {2, 0},  {5, 3},   {3, 5},
                            {0, 2},  {-3, 5}, {-5, 3}, {-2, 0}, {-5, -3}, {-3, -5}};
constexpr Point kPlus[] = {{-2, -5}, {2, -5}, {2, -2}, {5, -2}, {5, 2},   {2, 2},
                           {2, 5},   {-2, 5}, {-2, 2}, {-5, 2}, {-5, -2}, {-2, -2}};
// In the order of Marker, as far as a set of pens uses them; a circle has no corners.
constexpr std::array<std::span<const Point>, 7> kMarkerCorners{
    {{}, kSquare, kDiamond, kTriangleUp, kTriangleDown, kCross, kPlus}};

// Magenta, blue, red; then the seven of a full set: magenta, blue, green, black, yellow, cyan, red.
constexpr std::array<Color, 10> kCurveColors{{{255, 0, 255},
                                              {0, 0, 255},
                                              {255, 0, 0},
                                              {255, 0, 255},
                                              {0, 0, 255},
                                              {0, 255, 0},
                                              {0, 0, 0},
                                              {255, 255, 0},
                                              {0, 255, 255},
                                              {255, 0, 0}}};
constexpr std::size_t kFullSet = 7;

// The frequency ratio that the width of a plot spans.
constexpr double kFrequencySpan = 24;

constexpr double kFirstAxisFractile = 0.05001;
constexpr double kFractileStep = 0.05;
constexpr double kFractileEnd = 0.999;
constexpr int kFractileDivisions = 19;

constexpr int kLossDivisions = 10;
constexpr double kLossPerDivision = 10;  // dB

constexpr TextLayout kCentered{HorizontalAlignment::kCenter, VerticalAlignment::kCenter};
constexpr TextLayout kRightAligned{HorizontalAlignment::kRight, VerticalAlignment::kCenter};

void DrawGreyText(Canvas& canvas, const Rect& rect, std::string_view text, TextLayout layout) {
    canvas.SetTextColor(kGrey);
    canvas.DrawTextIn(rect, text, layout);
}

Pen GridPen(const Canvas& canvas) {
    return {kGrey, canvas.Scaled(kGridWidth)};
}

// The place of texts below the axis, a gap away from it.
Rect BelowAxis(const Canvas& canvas, const Rect& rect) {
    const int gap = canvas.Scaled(kLabelGap);
    return {rect.left, rect.top + gap, rect.right, rect.bottom + gap};
}

// The place of texts that end to the left of the axis, a gap away from it.
Rect BesideAxis(const Canvas& canvas, const Rect& rect) {
    return {rect.left, rect.top, rect.right - canvas.Scaled(kLabelGap), rect.bottom};
}

void DrawHorizontalLines(Canvas& canvas, const Rect& grid, int ny) {
    const int step = grid.Height() / ny;
    for (int i = 1; i <= ny; ++i) {
        const int y = grid.bottom - i * step;
        canvas.DrawLine({grid.left, y}, {grid.right, y}, GridPen(canvas));
    }
}

void DrawVerticalLine(Canvas& canvas, const Rect& grid, int x) {
    canvas.DrawLine({x, grid.bottom}, {x, grid.top}, GridPen(canvas));
}

int Rounded(double position) {
    return static_cast<int>(std::lround(position));
}

// Cuts the part of the line off that lies beyond one edge of the plot, whose inner side is where
// `distance` is not negative. False when nothing is left.
template <typename Distance>
bool ClipAtEdge(CurvePoint& from, CurvePoint& to, Distance distance) {
    const double from_distance = distance(from);
    const double to_distance = distance(to);
    if (from_distance < 0 && to_distance < 0) return false;
    if (from_distance >= 0 && to_distance >= 0) return true;
    const double share = from_distance / (from_distance - to_distance);
    const CurvePoint crossing{from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
    (from_distance < 0 ? from : to) = crossing;
    return true;
}

bool ClipLine(CurvePoint& from, CurvePoint& to, const Rect& plot) {
    return ClipAtEdge(from, to, [&](const CurvePoint& point) { return point.x - plot.left; }) &&
           ClipAtEdge(from, to, [&](const CurvePoint& point) { return plot.right - point.x; }) &&
           ClipAtEdge(from, to, [&](const CurvePoint& point) { return point.y - plot.top; }) &&
           ClipAtEdge(from, to, [&](const CurvePoint& point) { return plot.bottom - point.y; });
}

void DrawCircle(Canvas& canvas, Point at, int radius, Color fill, const Pen& outline) {
    const int reach = canvas.Scaled(radius);
    canvas.DrawEllipse({at.x - reach, at.y - reach, at.x + reach, at.y + reach}, fill, outline);
}

void DrawMarker(Canvas& canvas, Point at, const CurvePen& pen) {
    const bool is_crossed_ring = pen.marker == Marker::kCrossedRing;
    if (pen.marker == Marker::kRing || is_crossed_ring) {
        DrawCircle(canvas, at, kRingRadius, kWhite, pen.line);
    }
    if (pen.marker == Marker::kRing) return;
    const Marker filled = is_crossed_ring ? Marker::kCross : pen.marker;
    const Pen outline{kDarkGrey, canvas.Scaled(kMarkerOutline)};
    const std::span<const Point> corners = kMarkerCorners[static_cast<std::size_t>(filled)];
    if (corners.empty()) {
        return DrawCircle(canvas, at, kMarkerRadius, pen.line.color, outline);
    }
    const double scale = canvas.Resolution() / 96.0;
    std::vector<Point> scaled;
    for (const Point& corner : corners) {
        scaled.push_back({at.x + Rounded(corner.x * scale), at.y + Rounded(corner.y * scale)});
    }
    canvas.DrawPolygon(scaled, pen.line.color, outline);
}

Point ToDevicePoint(const CurvePoint& point) {
    return {Rounded(point.x), Rounded(point.y)};
}

bool IsFinite(const CurvePoint& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

// The curve in device units, in step with the lines of the grid.
Curve ToDeviceUnits(const Curve& curve, const Chart& chart, const Rect& plot) {
    const int step_x = plot.Width() / chart.horizontal_divisions;
    const int step_y = plot.Height() / chart.vertical_divisions;
    const LogFrequencyAxis frequency_axis(plot);
    Curve device;
    device.reserve(curve.size());
    for (const CurvePoint& point : curve) {
        const double x = chart.horizontal_axis == HorizontalAxis::kFrequency
                             ? frequency_axis.X(point.x)
                             : plot.left + point.x * step_x;
        device.push_back({x, plot.bottom - point.y * step_y});
    }
    return device;
}

// The markers of the legend reach into the lower end of `band`.
void DrawTitle(Canvas& canvas, const Rect& band, std::span<const std::string> titles) {
    if (titles.empty()) return;
    const Rect rect{band.left, band.top, band.right, band.bottom - canvas.Scaled(kMarkerReach)};
    const auto fitting = std::find_if(titles.begin(), titles.end(), [&](const std::string& title) {
        return canvas.MeasureText(title).width <= rect.Width();
    });
    canvas.SetTextColor(kBlack);
    canvas.DrawTextIn(rect, fitting == titles.end() ? titles.back() : *fitting, kCentered);
}

void DrawHorizontalAxis(Canvas& canvas, const ChartLayout& layout, const Chart& chart) {
    if (chart.horizontal_axis == HorizontalAxis::kFrequency) {
        DrawFrequencyGrid(canvas, layout.grid, chart.vertical_divisions);
        DrawFrequencyLabels(canvas, layout.horizontal_labels);
        return;
    }
    DrawGrid(canvas, layout.grid, chart.horizontal_divisions, chart.vertical_divisions);
    DrawHorizontalLabels(canvas, layout.horizontal_labels, chart.horizontal_labels,
                         chart.horizontal_divisions);
}

// The legend of a chart without a title: where the markers would stand in the labels it takes the
// room of the title and what is left above the plot.
Rect LegendWithoutTitle(Canvas& canvas, const ChartLayout& layout) {
    const int reach = canvas.Scaled(kMarkerReach);
    const int needed = reach + canvas.MeasureText("x").height;
    Rect legend = layout.legend;
    if (legend.Height() >= needed) return legend;
    legend.top = layout.title.top + reach;
    legend.bottom = std::max(legend.bottom, std::min(legend.top + needed, layout.plot.top));
    return legend;
}

CurvePens PensOf(const Canvas& canvas, const Chart& chart, bool use_color) {
    if (chart.curve_styles.empty()) return CreateCurvePens(canvas, chart.pen_count, use_color);
    CurvePens pens;
    for (const CurveStyle& style : chart.curve_styles) {
        const Color color = use_color ? style.color : kBlack;
        pens.push_back({{color, canvas.Scaled(kCurveWidth)}, style.marker});
    }
    return pens;
}

bool IsDrawn(std::size_t curve, int selected_curve) {
    return selected_curve == kAllCurves || selected_curve == static_cast<int>(curve);
}

// All curves or the selected one, and above them the markers of all.
void DrawCurves(Canvas& canvas, const Rect& plot, const Chart& chart, const CurvePens& pens,
                int selected_curve) {
    const std::size_t count = std::min(chart.curves.size(), pens.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (!IsDrawn(i, selected_curve)) continue;
        DrawCurve(canvas, plot, ToDeviceUnits(chart.curves[i], chart, plot), pens[i].line);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (!IsDrawn(i, selected_curve)) continue;
        DrawMarkers(canvas, plot, ToDeviceUnits(chart.curves[i], chart, plot), pens[i]);
    }
}

}  // namespace

ChartLayout ComputeChartLayout(const Rect& chart) {
    const int left = chart.left + chart.right / 8;
    const int right = chart.right - chart.right / 8;
    const int labels_bottom = chart.bottom - chart.bottom / 12;
    ChartLayout layout;
    layout.title = {chart.left, chart.top, chart.right, chart.top + chart.bottom / 24};
    layout.legend = {left, layout.title.bottom, right, chart.top + chart.bottom / 12};
    layout.plot = {left, chart.top + chart.bottom / 8, right, chart.bottom - chart.bottom / 8};
    layout.horizontal_labels = {left, layout.plot.bottom, right, labels_bottom};
    layout.vertical_labels = {chart.left, layout.plot.top, left, layout.plot.bottom};
    layout.horizontal_unit = {right, layout.plot.bottom, chart.right, labels_bottom};
    layout.vertical_unit = {chart.left, layout.legend.bottom, left, layout.plot.top};
    layout.grid = layout.plot;
    return layout;
}

void DrawGrid(Canvas& canvas, const Rect& grid, int nx, int ny) {
    const int step = grid.Width() / nx;
    for (int i = 1; i <= nx; ++i) DrawVerticalLine(canvas, grid, grid.left + i * step);
    DrawHorizontalLines(canvas, grid, ny);
}

void DrawHorizontalLabels(Canvas& canvas, const Rect& rect, std::span<const std::string> labels,
                          int n) {
    const int step = rect.Width() / n;
    const Rect row = BelowAxis(canvas, rect);
    Rect cell{row.left + step / 2, row.top, row.left + 3 * step / 2, row.bottom};
    for (const std::string& label : labels) {
        DrawGreyText(canvas, cell, label, kCentered);
        cell.left += step;
        cell.right += step;
    }
}

void DrawVerticalLabels(Canvas& canvas, const Rect& rect, std::span<const std::string> labels,
                        int n) {
    const int step = rect.Height() / n;
    const Rect column = BesideAxis(canvas, rect);
    Rect cell{column.left, column.bottom - 3 * step / 2, column.right, column.bottom - step / 2};
    for (const std::string& label : labels) {
        DrawGreyText(canvas, cell, label, kRightAligned);
        cell.top -= step;
        cell.bottom -= step;
    }
}

void DrawAxes(Canvas& canvas, const Rect& plot) {
    const std::array<Point, 3> axes{
        {{plot.left, plot.top}, {plot.left, plot.bottom}, {plot.right, plot.bottom}}};
    canvas.DrawPolyline(axes, {kGrey, canvas.Scaled(kAxisWidth)});
}

void DrawHorizontalUnit(Canvas& canvas, const Rect& rect, std::string_view text) {
    DrawGreyText(canvas, BelowAxis(canvas, rect), text, kCentered);
}

void DrawVerticalUnit(Canvas& canvas, const Rect& rect, std::string_view text) {
    DrawGreyText(canvas, BesideAxis(canvas, rect), text, kRightAligned);
}

CurvePens CreateCurvePens(const Canvas& canvas, int count, bool use_color) {
    const std::size_t size =
        std::min(static_cast<std::size_t>(std::max(count, 0)), kCurveColors.size());
    const std::size_t first = size == kFullSet ? kCurveColors.size() - kFullSet : 0;
    CurvePens pens;
    for (std::size_t i = 0; i < size; ++i) {
        pens.push_back({{use_color ? kCurveColors[first + i] : kBlack, canvas.Scaled(kCurveWidth)},
                        static_cast<Marker>(i % kMarkerCorners.size())});
    }
    return pens;
}

void DrawLegend(Canvas& canvas, const Rect& rect, const CurvePens& pens,
                std::span<const std::string> labels, int selected_curve) {
    if (labels.empty()) return;
    const int width = rect.Width() / static_cast<int>(labels.size());
    const int inset = canvas.Scaled(kLegendLineInset);
    for (std::size_t i = 0; i < std::min(labels.size(), pens.size()); ++i) {
        if (!IsDrawn(i, selected_curve)) continue;
        const int left = rect.left + static_cast<int>(i) * width;
        const Rect cell{left, rect.top, left + width, rect.bottom};
        canvas.DrawLine({cell.left + inset, cell.top}, {cell.right - inset, cell.top},
                        pens[i].line);
        DrawMarker(canvas, {left + width / 2, cell.top}, pens[i]);
        DrawGreyText(canvas, cell, labels[i],
                     {HorizontalAlignment::kCenter, VerticalAlignment::kBottom});
    }
}

LogFrequencyAxis::LogFrequencyAxis(const Rect& plot)
    : left_(plot.left), scale_(static_cast<int>(plot.Width() / std::log10(kFrequencySpan))) {}

double LogFrequencyAxis::X(double frequency_hz) const {
    const double octave = scale_ * std::log10(2.0);
    return left_ + octave / 2 + scale_ * std::log10(frequency_hz / kAudiometricFrequenciesHz[0]);
}

int LogFrequencyAxis::OctaveWidth() const {
    return static_cast<int>(scale_ * std::log10(2.0));
}

void DrawFrequencyGrid(Canvas& canvas, const Rect& grid, int ny) {
    const LogFrequencyAxis axis(grid);
    for (const int frequency_hz : kAudiometricFrequenciesHz) {
        DrawVerticalLine(canvas, grid, Rounded(axis.X(frequency_hz)));
    }
    DrawHorizontalLines(canvas, grid, ny);
}

void DrawFrequencyLabels(Canvas& canvas, const Rect& rect) {
    const LogFrequencyAxis axis(rect);
    const Rect row = BelowAxis(canvas, rect);
    const int half_cell = axis.OctaveWidth() / 2;
    for (const int frequency_hz : kAudiometricFrequenciesHz) {
        const int x = Rounded(axis.X(frequency_hz));
        DrawGreyText(canvas, {x - half_cell, row.top, x + half_cell, row.bottom},
                     FormatInteger(frequency_hz), kCentered);
    }
}

void DrawCurve(Canvas& canvas, const Rect& plot, const Curve& points, const Pen& pen) {
    std::vector<Point> run;  // as far as nothing is left out
    for (std::size_t i = 1; i < points.size(); ++i) {
        CurvePoint from = points[i - 1];
        CurvePoint to = points[i];
        if (!IsFinite(from) || !IsFinite(to) || !ClipLine(from, to, plot)) continue;
        if (run.empty() || run.back() != ToDevicePoint(from)) {
            if (!run.empty()) canvas.DrawPolyline(run, pen);
            run = {ToDevicePoint(from)};
        }
        run.push_back(ToDevicePoint(to));
    }
    if (!run.empty()) canvas.DrawPolyline(run, pen);
}

void DrawMarkers(Canvas& canvas, const Rect& plot, const Curve& points, const CurvePen& pen) {
    for (const CurvePoint& point : points) {
        const bool is_inside = point.x >= plot.left && point.x <= plot.right &&
                               point.y >= plot.top && point.y <= plot.bottom;
        if (is_inside) DrawMarker(canvas, ToDevicePoint(point), pen);
    }
}

void DrawChart(Canvas& canvas, const Rect& area, const Chart& chart, const DrawingStyle& style) {
    ChartLayout layout = ComputeChartLayout(area);
    if (area.Width() <= 0 || area.Height() <= 0) return;
    if (layout.plot.Width() <= 0 || layout.plot.Height() <= 0) return;
    DrawHorizontalAxis(canvas, layout, chart);
    DrawVerticalLabels(canvas, layout.vertical_labels, chart.vertical_labels,
                       chart.vertical_divisions);
    DrawAxes(canvas, layout.plot);
    DrawHorizontalUnit(canvas, layout.horizontal_unit, chart.horizontal_unit);
    DrawVerticalUnit(canvas, layout.vertical_unit, chart.vertical_unit);
    DrawTitle(canvas, layout.title, chart.titles);
    if (chart.titles.empty()) layout.legend = LegendWithoutTitle(canvas, layout);
    const CurvePens pens = PensOf(canvas, chart, style.use_color);
    DrawLegend(canvas, layout.legend, pens, chart.legend, style.selected_curve);
    DrawCurves(canvas, layout.plot, chart, pens, style.selected_curve);
    canvas.SetTextColor(kBlack);
}

bool ShowsAnyPoint(const Chart& chart) {
    return std::any_of(chart.curves.begin(), chart.curves.end(), [&](const Curve& curve) {
        return std::any_of(curve.begin(), curve.end(), [&](const CurvePoint& point) {
            return point.y >= 0 && point.y <= chart.vertical_divisions;
        });
    });
}

void SetFractileAxis(Chart& chart) {
    chart.horizontal_divisions = kFractileDivisions;
    chart.horizontal_unit = "q (%)";
    for (int i = 1; i <= kFractileDivisions; ++i) {
        chart.horizontal_labels.push_back(FormatInteger(5LL * i));
    }
}

std::vector<double> FractileAxisValues() {
    return FractilesFrom(kFirstAxisFractile);
}

std::vector<double> FractilesFrom(double first) {
    std::vector<double> fractiles;
    double fractile = first;
    while (fractile < kFractileEnd) {
        fractiles.push_back(fractile);
        fractile += kFractileStep;
    }
    return fractiles;
}

void SetYearAxis(Chart& chart, std::string unit) {
    chart.horizontal_divisions = kAxisYears;
    chart.horizontal_unit = std::move(unit);
    for (const double years : YearAxisValues()) {
        chart.horizontal_labels.push_back(FormatFixed(years, 0, 0));
    }
}

std::array<double, kAxisYears> YearAxisValues() {
    std::array<double, kAxisYears> years{};
    for (std::size_t i = 0; i < years.size(); ++i) years[i] = 2.0 * static_cast<double>(i + 1);
    return years;
}

void SetLossAxis(Chart& chart) {
    chart.vertical_divisions = kLossDivisions;
    chart.vertical_unit = "dB";
    chart.vertical_labels.clear();
    for (int i = 1; i < kLossDivisions; ++i) {
        const double loss = (kLossDivisions - i) * kLossPerDivision;
        std::string label = "- ";
        label += FormatFixed(loss, 0, 0);
        chart.vertical_labels.push_back(std::move(label));
    }
}

double LossAxisPosition(double loss_db) {
    return kLossDivisions - loss_db / kLossPerDivision;
}

}  // namespace tonvale
