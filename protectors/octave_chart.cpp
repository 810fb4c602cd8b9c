#include "protectors/octave_chart.h"

#include <algorithm>
#include <string>

#include "common/numbers.h"

namespace tonvale {

namespace {

constexpr Color kWhite{255, 255, 255};
constexpr int kAxisWidth = 2;
constexpr int kScaleShare = 10;  // of the width, for the labels

constexpr TextLayout kCaption{.horizontal = HorizontalAlignment::kCenter, .word_wrap = true};

// The chart without its scale of labels.
Rect PlotOf(const Rect& area) {
    Rect plot = area;
    plot.left += area.Width() / kScaleShare;
    return plot;
}

// What the bars stand in: the plot within its axes.
Rect BarsOf(const Rect& plot) {
    return {plot.left + kAxisWidth, plot.top, plot.right - kAxisWidth, plot.bottom - kAxisWidth};
}

Rect BarColumn(const Rect& bars, std::size_t band) {
    const int width = bars.Width() / static_cast<int>(kOctaveBandCount);
    const int left = bars.left + static_cast<int>(band) * width;
    return {left, bars.top, left + width, bars.bottom};
}

// One pixel of a screen, on paper as well.
Pen BlackPen(const Canvas& canvas) {
    return {kBlack, canvas.Scaled(1)};
}

void DrawScale(Canvas& canvas, const Rect& area, const OctaveChartScale& scale) {
    const int divisions = scale.full_scale_db / scale.step_db;
    const int step = area.Height() / divisions;
    const Rect plot = PlotOf(area);
    const int ascent = canvas.FontAscent();
    const Pen pen = BlackPen(canvas);
    canvas.SetTextColor(kBlack);
    for (int k = 0; k <= divisions; k += scale.label_steps) {
        canvas.DrawTextAt({area.left, area.bottom - k * step - ascent},
                          FormatInteger(k * scale.step_db));
    }
    for (int k = 0; k <= divisions; ++k) {
        const int y = area.bottom - k * step;
        canvas.DrawLine({plot.left, y}, {plot.right, y}, pen);
    }
}

void DrawOctaveAxes(Canvas& canvas, const Rect& plot) {
    const Pen pen = BlackPen(canvas);
    for (int i = 0; i < kAxisWidth; ++i) {
        canvas.DrawLine({plot.left + i, plot.top}, {plot.left + i, plot.bottom}, pen);
        canvas.DrawLine({plot.right - i, plot.top}, {plot.right - i, plot.bottom}, pen);
        canvas.DrawLine({plot.left, plot.bottom - i}, {plot.right, plot.bottom - i}, pen);
    }
}

}  // namespace

void DrawOctaveChart(Canvas& canvas, const Rect& area, const OctaveChartScale& scale,
                     const OctaveSpectrum& levels_db, Color ground) {
    if (area.Width() <= 0 || area.Height() <= 0) return;
    canvas.FillRectangle(area, ground);
    DrawScale(canvas, area, scale);
    const Rect plot = PlotOf(area);
    DrawOctaveAxes(canvas, plot);
    const Rect bars = BarsOf(plot);
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        const double level_db =
            std::clamp(levels_db[i], 0.0, static_cast<double>(scale.full_scale_db));
        Rect bar = BarColumn(bars, i);
        bar.top = bar.bottom - static_cast<int>(bars.Height() * level_db / scale.full_scale_db);
        if (bar.Width() <= 0 || bar.Height() <= 0) continue;
        canvas.FillRectangle(bar, kWhite);
        canvas.FrameRectangle(bar, BlackPen(canvas));
    }
}

void DrawOctaveBandNames(Canvas& canvas, const Rect& row) {
    const Rect bars = BarsOf(PlotOf(row));
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        Rect column = BarColumn(bars, i);
        column.top = row.top;
        column.bottom = row.bottom;
        canvas.SetTextColor(kBlack);
        canvas.DrawTextIn(column, std::string(kOctaveBands[i].key) + " Hz", kCaption);
    }
}

}  // namespace tonvale
