// How the damage of a worker's hearing grows with age and noise (dialog PEPPECUR): form, checks,
// yearly values and result view.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/result_view.h"
#include "hearing/chart.h"
#include "hearing/damage_table.h"
#include "hearing/hearing_fields.h"
#include "hearing/result_table.h"
#include "hearing/threshold_model.h"

namespace tonvale {

inline constexpr std::string_view kEvolutionTitle =
    "Evoluzione del danno causato dall'età e dal rumore";

// The dialog's list: "10", "15", ... "90".
const std::vector<std::string>& EvolutionFractileItems();

// Whose damage is followed, and by which table it is scored.
struct DamageEvolution {
    // Level, sex, and the age at which the exposure starts; years and age are set for each row.
    PredictionCase start{.level_dba = 90, .age = 18, .sex = kMale};
    double fractile = 0.15;  // beside 5, 50 and 95 %
    DamageTable table = DamageTable::kNew;
};

// What the dialog shows.
struct DamageEvolutionForm : HearingFields {
    int fractile_position = 0;  // within its list, or else the nearest counts
};

// What is kept between two openings of the dialog.
struct DamageEvolutionState {
    DamageEvolution confirmed;  // by the last "Ok"
    int fractile_position = 1;  // at the last "Ok", even when it was refused
};

DamageEvolutionForm FormFromState(const DamageEvolutionState& state);

// "Ok": takes the form into the state; a refused field leaves what was confirmed unchanged.
std::optional<HearingRefusal> Confirm(const DamageEvolutionForm& form, DamageEvolutionState& state);

inline constexpr std::size_t kEvolutionFractiles = 4;

// 5, 50 and 95 %, and the chosen one.
std::array<double, kEvolutionFractiles> EvolutionFractiles(const DamageEvolution& evolution);

struct DamageEvolutionRow {
    double years = 0;  // of exposure
    std::array<double, kEvolutionFractiles> damages_percent{};
};

// A row every two years, up to 40 and to the age of 70.
std::vector<DamageEvolutionRow> ComputeRows(const DamageEvolution& evolution);

// A damage as the table shows it.
std::string DamageText(double damage_percent);

ResultTable MakeTable(const DamageEvolution& evolution);
Chart MakeEvolutionChart(const DamageEvolution& evolution);

// The table and the chart over the years.
ResultView MakeResultView(const DamageEvolution& evolution);

}  // namespace tonvale
