#include "hearing/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "common/numbers.h"
#include "hearing/threshold_model.h"

namespace tonvale {

namespace {

constexpr Pen kGridPen{kGrey, 1};
constexpr Pen kAxisPen{kGrey, 2};
constexpr int kCurveWidth = 2;
constexpr int kLegendLineInset = 8;

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

constexpr int kLossDivisions = 10;
constexpr double kLossPerDivision = 10;  // dB

constexpr TextLayout kCentered{HorizontalAlignment::kCenter, VerticalAlignment::kCenter};
constexpr TextLayout kRightAligned{HorizontalAlignment::kRight, VerticalAlignment::kCenter};

void DrawGreyText(Canvas& canvas, const Rect& rect, std::string_view text, TextLayout layout) {
    canvas.SetTextColor(kGrey);
    canvas.DrawTextIn(rect, text, layout);
}

void DrawHorizontalLines(Canvas& canvas, const Rect& grid, int ny) {
    const int step = grid.Height() / ny;
    for (int i = 1; i <= ny; ++i) {
        const int y = grid.bottom - i * step;
        canvas.DrawLine({grid.left, y}, {grid.right, y}, kGridPen);
    }
}

void DrawVerticalLine(Canvas& canvas, const Rect& grid, int x) {
    canvas.DrawLine({x, grid.bottom}, {x, grid.top}, kGridPen);
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

void DrawTitle(Canvas& canvas, const Rect& rect, std::span<const std::string> titles) {
    if (titles.empty()) return;
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
    Rect cell{rect.left + step / 2, rect.top, rect.left + 3 * step / 2, rect.bottom};
    for (const std::string& label : labels) {
        DrawGreyText(canvas, cell, label, kCentered);
        cell.left += step;
        cell.right += step;
    }
}

void DrawVerticalLabels(Canvas& canvas, const Rect& rect, std::span<const std::string> labels,
                        int n) {
    const int step = rect.Height() / n;
    Rect cell{rect.left, rect.bottom - 3 * step / 2, rect.right, rect.bottom - step / 2};
    for (const std::string& label : labels) {
        DrawGreyText(canvas, cell, label, kRightAligned);
        cell.top -= step;
        cell.bottom -= step;
    }
}

void DrawAxes(Canvas& canvas, const Rect& plot) {
    canvas.DrawLine({plot.left, plot.top}, {plot.left, plot.bottom}, kAxisPen);
    canvas.DrawLine({plot.left, plot.bottom}, {plot.right, plot.bottom}, kAxisPen);
}

void DrawHorizontalUnit(Canvas& canvas, const Rect& rect, std::string_view text) {
    DrawGreyText(canvas, rect, text, kCentered);
}

void DrawVerticalUnit(Canvas& canvas, const Rect& rect, std::string_view text) {
    DrawGreyText(canvas, rect, text, kRightAligned);
}

CurvePens CreateCurvePens(int count, bool use_color) {
    const std::size_t size =
        std::min(static_cast<std::size_t>(std::max(count, 0)), kCurveColors.size());
    const std::size_t first = size == kFullSet ? kCurveColors.size() - kFullSet : 0;
    CurvePens pens;
    for (std::size_t i = 0; i < size; ++i) {
        pens.push_back({use_color ? kCurveColors[first + i] : kBlack, kCurveWidth});
    }
    return pens;
}

void DrawLegend(Canvas& canvas, const Rect& rect, const CurvePens& pens,
                std::span<const std::string> labels, int selected_curve) {
    if (labels.empty()) return;
    const int count = static_cast<int>(std::min(labels.size(), pens.size()));
    const int width = rect.Width() / static_cast<int>(labels.size());
    for (int i = 0; i < count; ++i) {
        if (selected_curve != kAllCurves && selected_curve != i) continue;
        const Rect cell{rect.left + i * width, rect.top, rect.left + (i + 1) * width, rect.bottom};
        canvas.DrawLine({cell.left + kLegendLineInset, cell.top},
                        {cell.right - kLegendLineInset, cell.top},
                        pens[static_cast<std::size_t>(i)]);
        DrawGreyText(canvas, cell, labels[static_cast<std::size_t>(i)],
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
    const int half_cell = axis.OctaveWidth() / 2;
    for (const int frequency_hz : kAudiometricFrequenciesHz) {
        const int x = Rounded(axis.X(frequency_hz));
        DrawGreyText(canvas, {x - half_cell, rect.top, x + half_cell, rect.bottom},
                     FormatInteger(frequency_hz), kCentered);
    }
}

void DrawCurve(Canvas& canvas, const Rect& plot, const Curve& points, const Pen& pen) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        CurvePoint from = points[i - 1];
        CurvePoint to = points[i];
        if (!IsFinite(from) || !IsFinite(to) || !ClipLine(from, to, plot)) continue;
        canvas.DrawLine({Rounded(from.x), Rounded(from.y)}, {Rounded(to.x), Rounded(to.y)}, pen);
    }
}

void DrawChart(Canvas& canvas, const Rect& area, const Chart& chart, const DrawingStyle& style) {
    const ChartLayout layout = ComputeChartLayout(area);
    if (area.Width() <= 0 || area.Height() <= 0) return;
    if (layout.plot.Width() <= 0 || layout.plot.Height() <= 0) return;
    DrawHorizontalAxis(canvas, layout, chart);
    DrawVerticalLabels(canvas, layout.vertical_labels, chart.vertical_labels,
                       chart.vertical_divisions);
    DrawAxes(canvas, layout.plot);
    DrawHorizontalUnit(canvas, layout.horizontal_unit, chart.horizontal_unit);
    DrawVerticalUnit(canvas, layout.vertical_unit, chart.vertical_unit);
    DrawTitle(canvas, layout.title, chart.titles);
    const CurvePens pens = CreateCurvePens(chart.pen_count, style.use_color);
    DrawLegend(canvas, layout.legend, pens, chart.legend, style.selected_curve);
    for (std::size_t i = 0; i < std::min(chart.curves.size(), pens.size()); ++i) {
        if (style.selected_curve != kAllCurves && style.selected_curve != static_cast<int>(i))
            continue;
        DrawCurve(canvas, layout.plot, ToDeviceUnits(chart.curves[i], chart, layout.plot), pens[i]);
    }
    canvas.SetTextColor(kBlack);
}

bool ShowsAnyPoint(const Chart& chart) {
    return std::any_of(chart.curves.begin(), chart.curves.end(), [&](const Curve& curve) {
        return std::any_of(curve.begin(), curve.end(), [&](const CurvePoint& point) {
            return point.y >= 0 && point.y <= chart.vertical_divisions;
        });
    });
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
