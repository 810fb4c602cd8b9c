// The share of a population that noise puts at risk of hearing damage (dialog RISK): criteria, scan
// of the population, form, checks and result view.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/result_view.h"
#include "hearing/chart.h"
#include "hearing/hearing_fields.h"
#include "hearing/result_table.h"
#include "hearing/threshold_model.h"

namespace tonvale {

// When a hearing counts as damaged.
enum class DamageCriterion : int {
    kIso1990 = 4750,
    kIso1975,
    kInailNewTable,
    kInailOldTable,
    kBiologicalCompensable,
    kBiologicalMinimum,
    kBiologicalAboveZero,
    kBiologicalMeanLoss,
};

enum class RiskChartForm { kLoss, kInailDamage, kBiologicalDamage };

struct DamageCriterionInfo {
    DamageCriterion code;
    std::string_view list_text;
    std::string_view status_text;
    std::string_view report_name;
    // Mean loss in dB or damage of the ear in per cent, and from where on it meets the criterion.
    double (*measure)(const AudiometricLosses& losses_db);
    double limit;
    bool limit_meets;  // or only what lies above it
    RiskChartForm chart_form;
};

// In the order of their codes, which is that of the dialog's list.
std::span<const DamageCriterionInfo> DamageCriteria();
const DamageCriterionInfo& InfoOf(DamageCriterion criterion);
const std::vector<std::string>& DamageCriterionItems();

// "   Criterio: ISO 1999/90", a parameter of a result table.
std::string CriterionParameter(DamageCriterion criterion);

// What the risk is computed for.
struct DamageRisk {
    // Years, level, age at their end, and sex.
    PredictionCase person{.years = 35, .level_dba = 90, .age = 60, .sex = kMale};
    DamageCriterion criterion = DamageCriterion::kIso1990;
};

// What the dialog shows.
struct DamageRiskForm : HearingFields {
    int criterion_position = 0;  // of the list; -1: none
};

DamageRiskForm FormFromState(const DamageRisk& risk);

// "Ok": takes the form into `risk`; a refused field leaves all of it unchanged.
std::optional<HearingRefusal> Confirm(const DamageRiskForm& form, DamageRisk& risk);

// One value of the people without noise and one of those with it.
struct PopulationPair {
    double unexposed = 0;
    double exposed = 0;
};

// The fractile when the losses meet the criterion, otherwise 0. Losses without a number in them,
// such as those after a negative number of years, give none (NaN).
double TestCriterion(double fractile, DamageCriterion criterion,
                     const AudiometricLosses& losses_db);

// The test of both populations at the fractile.
PopulationPair RiskAtFractile(const DamageRisk& risk, double fractile);

// Shares of a population, 0 to 0.95.
struct RiskShares {
    double unexposed = 0;
    double exposed = 0;
    double risk = 0;  // exposed - unexposed
};

// The largest fractile from 5 to 95 %, in steps of 1 %, at which each population still meets the
// criterion: the share of it that meets it. 0 when it never does.
RiskShares ComputeRisk(const DamageRisk& risk);

inline constexpr std::string_view kRiskTitle =
    "Rischio di danno (in %) dovuto all'esposizione al rumore";
// A share as the report shows it, in per cent.
std::string ShareText(double share);

ResultTable MakeTable(const DamageRisk& risk);
Chart MakeRiskChart(const DamageRisk& risk);

// The table and the chart over the fractile.
ResultView MakeResultView(const DamageRisk& risk);

}  // namespace tonvale
