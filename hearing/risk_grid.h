// The risk of hearing damage for many exposures that end at one age.
#pragma once

#include <array>
#include <optional>

#include "common/result_view.h"
#include "hearing/damage_risk.h"
#include "hearing/hearing_fields.h"
#include "hearing/result_table.h"

namespace tonvale {

inline constexpr std::array<double, 8> kGridYears{5, 10, 15, 20, 25, 30, 35, 40};
inline constexpr std::array<double, 5> kGridLevelsDba{80, 85, 90, 95, 100};

struct RiskGrid {
    DamageRisk base;  // age at the end of the exposure, sex and criterion
    // The share at risk: a row for each number of years, a value for each level; none where the
    // exposure would have begun before the age of 18.
    std::array<std::array<std::optional<double>, kGridLevelsDba.size()>, kGridYears.size()> risks;
};

// Takes age, sex and criterion of the form into `base`. Refused fields, and an age at which no
// exposure of the grid is possible, leave it unchanged.
std::optional<HearingRefusal> ConfirmGrid(DamageRiskForm form, DamageRisk& base);

RiskGrid ComputeGrid(const DamageRisk& base);

ResultTable MakeTable(const RiskGrid& grid);
ResultView MakeResultView(const RiskGrid& grid);  // the table alone

}  // namespace tonvale
