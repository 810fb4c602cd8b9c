#include "hearing/loss_comparison.h"

#include <cstddef>

#include "common/numbers.h"
#include "common/text.h"
#include "hearing/loss_prediction.h"
#include "hearing/result_pages.h"

namespace tonvale {

namespace {

// The scale of levels spans 12 dB more and ends at 100.
constexpr double kMaxStartLevelDba = 88;
constexpr double kLevelStep = 2;
constexpr int kLevelDivisions = 13;
constexpr int kYearCurves = 7;

std::vector<std::string> ParametersOf(const LossComparisonState& state) {
    return {" Frequenza: " + FormatInteger(state.base.frequency_hz) + " Hz",
            "   Frattile: " + FormatFixed(state.base.fractile * 100, 2, 0) + " %"};
}

std::vector<std::string> LevelLabels(const LossComparisonState& state) {
    std::vector<std::string> labels;
    for (const double level : ComparedLevels(state)) {
        labels.push_back(FormatFixed(level, 4, 0) + " dBA");
    }
    return labels;
}

std::vector<std::string> YearLabels() {
    std::vector<std::string> labels;
    for (int i = 1; i <= kYearCurves; ++i) labels.push_back(FormatInteger(5LL * i) + " anni");
    return labels;
}

std::vector<TableCell> TableRow(const LossComparisonState& state, double years) {
    std::vector<TableCell> row{{FormatFixed(years, 2, 0)}};
    for (const double level : ComparedLevels(state)) {
        row.push_back({FormatFixed(ComparedLoss(state, years, level), 4, 1)});
    }
    return row;
}

// Title, loss axis and pens of both charts.
Chart MakeLossChart(const LossComparisonState& state) {
    Chart chart;
    const std::string parameters = ParameterLine(ParametersOf(state));
    chart.titles = {QuantityTitle(QuantityKind::kNipts) + "  " + parameters,
                    "NIPTS -" + parameters};
    chart.pen_count = kComparedLevels;
    SetLossAxis(chart);
    return chart;
}

Curve TimeCurve(const LossComparisonState& state, double level_dba) {
    Curve curve;
    for (const double years : YearAxisValues()) {
        curve.push_back({static_cast<double>(curve.size() + 1),
                         LossAxisPosition(ComparedLoss(state, years, level_dba))});
    }
    return curve;
}

Curve LevelCurve(const LossComparisonState& state, double years) {
    Curve curve;
    for (int i = 0; i < kLevelDivisions; ++i) {
        const double loss = ComparedLoss(state, years, state.base.level_dba + i);
        curve.push_back({static_cast<double>(i + 1), LossAxisPosition(loss)});
    }
    return curve;
}

}  // namespace

const std::vector<std::string>& ComparisonFractiles() {
    static const std::vector<std::string> fractiles = FractileItems(5, 95);
    return fractiles;
}

const std::vector<std::string>& ComparisonFrequencies() {
    static const std::vector<std::string> frequencies{"500",  "1000", "2000",
                                                      "3000", "4000", "6000"};
    return frequencies;
}

LossComparisonForm FormFromState(const LossComparisonState& state) {
    return {.fractile_position = state.fractile_position,
            .frequency_position = state.frequency_position,
            .level_dba = FormatFixed(state.base.level_dba, 3, 0)};
}

std::optional<HearingRefusal> Confirm(const LossComparisonForm& form, LossComparisonState& state) {
    if (auto refusal = TakeLevel(form.level_dba, state.base, kMaxStartLevelDba)) return refusal;
    state.base.fractile = ParseNumber(ItemAt(ComparisonFractiles(), form.fractile_position)) * 0.01;
    state.base.frequency_hz =
        ParseInteger(ItemAt(ComparisonFrequencies(), form.frequency_position));
    state.fractile_position = form.fractile_position;
    state.frequency_position = form.frequency_position;
    return std::nullopt;
}

std::array<double, kComparedLevels> ComparedLevels(const LossComparisonState& state) {
    std::array<double, kComparedLevels> levels{};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        levels[i] = state.base.level_dba + kLevelStep * static_cast<double>(i);
    }
    return levels;
}

double ComparedLoss(const LossComparisonState& state, double years, double level_dba) {
    PredictionCase point = state.base;
    point.years = years;
    point.level_dba = level_dba;
    return ComputeNIPTS(point);
}

ResultTable MakeTable(const LossComparisonState& state) {
    ResultTable table;
    table.title = QuantityTitle(QuantityKind::kNipts);
    table.parameters = ParametersOf(state);
    table.column_count = 1 + kComparedLevels;
    table.header = {"Anni"};
    for (const std::string& label : LevelLabels(state)) {
        table.header.emplace_back(TrimBlanks(label));
    }
    table.column_colors = {kTableRed};
    for (const double years : YearAxisValues()) table.rows.push_back(TableRow(state, years));
    return table;
}

Chart MakeTimeChart(const LossComparisonState& state) {
    Chart chart = MakeLossChart(state);
    SetYearAxis(chart, "anni");
    chart.legend = LevelLabels(state);
    for (const double level : ComparedLevels(state)) {
        chart.curves.push_back(TimeCurve(state, level));
    }
    return chart;
}

Chart MakeLevelChart(const LossComparisonState& state) {
    Chart chart = MakeLossChart(state);
    chart.horizontal_divisions = kLevelDivisions;
    chart.horizontal_unit = "dBA  ";
    for (int i = 0; i < kLevelDivisions; ++i) {
        // Without the blanks of the legend, which would push a centred label off its line.
        chart.horizontal_labels.push_back(FormatFixed(state.base.level_dba + i, 0, 0));
    }
    chart.legend = YearLabels();
    for (int i = 1; i <= kYearCurves; ++i) chart.curves.push_back(LevelCurve(state, 5.0 * i));
    return chart;
}

ResultView MakeResultView(const LossComparisonState& state) {
    ResultView view{.subject = ResultSubject::kPredictions,
                    .case_name = "Previsioni NIPTS, " + FormatInteger(state.base.frequency_hz) +
                                 " Hz, frattile " + FormatFixed(state.base.fractile * 100, 0, 0) +
                                 " %, da " + FormatShortest(state.base.level_dba) + " dBA"};
    view.pages = {
        TablePage(MakeTable(state)),
        ChartPage(ViewKind::kChart, "&Perdite-Tempo", MakeTimeChart(state)),
        ChartPage(ViewKind::kAudiogram, "Perdite-&Livello", MakeLevelChart(state)),
    };
    view.table_text = [state](std::string_view list_separator) {
        return ResultTableCells(MakeTable(state), list_separator);
    };
    return view;
}

}  // namespace tonvale
