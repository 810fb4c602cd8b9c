// The threshold model: one threshold, the table of a dialog, a chart from values to lines.
#include <benchmark/benchmark.h>

#include "hearing/damage_risk.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"
#include "hearing/risk_grid.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

constexpr Rect kArea{0, 0, 1280, 900};

void OneThreshold(benchmark::State& state) {
    PredictionCase point{35, 90, 60, kMale, 6000, 0.1};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(point);
        benchmark::DoNotOptimize(ComputeHTLAN(point));
    }
}
BENCHMARK(OneThreshold)->Unit(benchmark::kNanosecond);

// 19 by 6 thresholds and 19 damages.
void WholeTable(benchmark::State& state) {
    const LossPrediction prediction;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ComputeRows(prediction));
}
BENCHMARK(WholeTable)->Unit(benchmark::kMicrosecond);

void WholeTableAsText(benchmark::State& state) {
    const LossPrediction prediction;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(ExportNiptsTable(prediction, ";"));
}
BENCHMARK(WholeTableAsText)->Unit(benchmark::kMicrosecond);

// 91 fractiles, each with six thresholds of both populations, by the criterion that takes longest.
void OneRisk(benchmark::State& state) {
    const DamageRisk risk{.criterion = DamageCriterion::kBiologicalCompensable};
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ComputeRisk(risk));
}
BENCHMARK(OneRisk)->Unit(benchmark::kMicrosecond);

// 40 risks.
void WholeRiskGrid(benchmark::State& state) {
    const DamageRisk risk{.criterion = DamageCriterion::kBiologicalCompensable};
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ComputeGrid(risk));
}
BENCHMARK(WholeRiskGrid)->Unit(benchmark::kMicrosecond);

void Draw(benchmark::State& state, const ResultView& view, ViewKind kind) {
    for ([[maybe_unused]] auto _ : state) {
        RecordingCanvas canvas;
        view.Page(kind)->draw(canvas, kArea, {});
        benchmark::DoNotOptimize(canvas.lines.data());
    }
}

void FractileChart(benchmark::State& state) {
    const LossPrediction prediction;
    Draw(state, MakeResultView(prediction), ViewKind::kChart);
}
BENCHMARK(FractileChart)->Unit(benchmark::kMicrosecond);

void TimeChart(benchmark::State& state) {
    const LossComparisonState comparison;
    Draw(state, MakeResultView(comparison), ViewKind::kChart);
}
BENCHMARK(TimeChart)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tonvale
