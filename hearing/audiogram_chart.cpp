#include "hearing/audiogram_chart.h"

#include <cstddef>
#include <string>

#include "common/numbers.h"
#include "common/result_view.h"
#include "hearing/chart.h"

namespace tonvale {

namespace {

constexpr int kLeastLossDb = -10;
constexpr int kGreatestLossDb = 120;
constexpr int kLossStepDb = 10;
constexpr int kDivisions = (kGreatestLossDb - kLeastLossDb) / kLossStepDb;

constexpr CurveStyle kRightEar{{255, 0, 0}, Marker::kRing};
constexpr CurveStyle kLeftEar{{0, 0, 255}, Marker::kCross};
constexpr CurveStyle kBothEars{kBlack, Marker::kCrossedRing};

Curve CurveOf(const EarAudiogram& losses_db) {
    Curve curve;
    curve.reserve(losses_db.size());
    for (std::size_t i = 0; i < losses_db.size(); ++i) {
        curve.push_back({static_cast<double>(kAudiometricFrequenciesHz[i]),
                         (kGreatestLossDb - losses_db[i]) / kLossStepDb});
    }
    return curve;
}

// One label a division, or one every other where a division is lower than a line of text.
void SetLabels(Chart& chart, bool every_division) {
    for (int loss_db = kGreatestLossDb - kLossStepDb; loss_db >= kLeastLossDb;
         loss_db -= kLossStepDb) {
        const bool has_label = every_division || loss_db % (2 * kLossStepDb) == 0;
        chart.vertical_labels.push_back(has_label ? FormatInteger(loss_db) : std::string());
    }
}

// The bottom of the scale, where the chart itself has the corner of its axes, and its unit, clear
// of the label at its top.
void DrawScaleEnds(Canvas& canvas, const Rect& area) {
    const Rect labels = ComputeChartLayout(area).vertical_labels;
    const int division = labels.Height() / kDivisions;
    if (area.Width() <= 0 || division <= 0) return;
    const std::string label = FormatInteger(kGreatestLossDb);
    DrawVerticalLabels(canvas,
                       {labels.left, labels.top + division, labels.right, labels.bottom + division},
                       {&label, 1}, kDivisions);
    const int line = canvas.MeasureText(label).height;
    DrawVerticalUnit(
        canvas, {labels.left, labels.top - 2 * line, labels.right, labels.top - line / 2}, "dB");
}

void AddCurve(Chart& chart, const char* name, const CurveStyle& style,
              const EarAudiogram& losses_db) {
    chart.legend.emplace_back(name);
    chart.curve_styles.push_back(style);
    chart.curves.push_back(CurveOf(losses_db));
}

}  // namespace

void DrawAudiogram(Canvas& canvas, const Rect& area, const Audiogram& audiogram, bool use_color) {
    Chart chart;
    chart.horizontal_axis = HorizontalAxis::kFrequency;
    chart.horizontal_unit = "f (Hz)";
    chart.vertical_divisions = kDivisions;
    const int division = ComputeChartLayout(area).plot.Height() / kDivisions;
    SetLabels(chart, division >= canvas.MeasureText("0").height);
    if (audiogram.is_symmetric) {
        AddCurve(chart, "Dx = Sx", kBothEars, audiogram.left_db);
    } else {
        // The crosses stay visible in the circles where the ears are alike.
        AddCurve(chart, "Dx", kRightEar, audiogram.right_db);
        AddCurve(chart, "Sx", kLeftEar, audiogram.left_db);
    }
    DrawScaleEnds(canvas, area);
    DrawChart(canvas, area, chart, {.use_color = use_color});
}

}  // namespace tonvale
