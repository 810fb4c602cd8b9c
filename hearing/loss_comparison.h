// Noise-induced loss compared over durations and levels (dialog CONFRONTO): form, checks and view.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/result_view.h"
#include "hearing/chart.h"
#include "hearing/hearing_fields.h"
#include "hearing/result_table.h"
#include "hearing/threshold_model.h"

namespace tonvale {

// The dialog's lists: "5", "10", ... "95" and "500", ... "6000".
const std::vector<std::string>& ComparisonFractiles();
const std::vector<std::string>& ComparisonFrequencies();

// What the dialog shows.
struct LossComparisonForm {
    int fractile_position = 0;   // within its list, or else the nearest counts
    int frequency_position = 0;  // likewise
    std::string level_dba;
};

// What is kept between two openings of the dialog: what the last "Ok" confirmed.
struct LossComparisonState {
    // Level (the lowest of seven), frequency and fractile; the years are set for each point.
    PredictionCase base{.level_dba = 88, .frequency_hz = 4000, .fractile = 0.10};
    int fractile_position = 1;
    int frequency_position = 4;
};

LossComparisonForm FormFromState(const LossComparisonState& state);

// "Ok": takes the form into the state; a refused level leaves all of it unchanged.
std::optional<HearingRefusal> Confirm(const LossComparisonForm& form, LossComparisonState& state);

inline constexpr int kComparedLevels = 7;

// The levels L, L + 2, ... L + 12.
std::array<double, kComparedLevels> ComparedLevels(const LossComparisonState& state);

// NIPTS in dB for years of exposure to a level.
double ComparedLoss(const LossComparisonState& state, double years, double level_dba);

ResultTable MakeTable(const LossComparisonState& state);
Chart MakeTimeChart(const LossComparisonState& state);   // "Perdite-Tempo"
Chart MakeLevelChart(const LossComparisonState& state);  // "Perdite-Livello"

// The table and both charts.
ResultView MakeResultView(const LossComparisonState& state);

}  // namespace tonvale
