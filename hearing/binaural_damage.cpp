#include "hearing/binaural_damage.h"

#include <algorithm>

namespace tonvale {

namespace {

double CombineEars(double left_percent, double right_percent, DamageTable table,
                   DamageFormula formula) {
    const double better = std::min(left_percent, right_percent);
    const double worse = std::max(left_percent, right_percent);
    if (table == DamageTable::kBiological) {
        return better == 0 ? 0.24 * worse : (4 * better + worse) * 0.2;
    }
    if (formula == DamageFormula::kAgriculture) return (2 * better + worse) * (1.0 / 3);
    return (3 * better + worse) * 0.25;
}

}  // namespace

std::string_view DamageFormulaName(DamageFormula formula) {
    return formula == DamageFormula::kIndustry ? "Industria" : "Agricoltura";
}

HearingDamage EvaluateHearingDamage(const Audiogram& audiogram, DamageTable table,
                                    DamageFormula formula) {
    const EarLosses left_db = ScoredLosses(audiogram.left_db);
    double left_percent = EarDamagePercent(left_db, table);
    if (audiogram.is_symmetric) {
        return {.left_percent = left_percent, .right_percent = {}, .percent = left_percent};
    }
    const EarLosses right_db = ScoredLosses(audiogram.right_db);
    double right_percent = EarDamagePercent(right_db, table);
    const bool left_falls = FallsSteeply(left_db, table);
    const bool right_falls = FallsSteeply(right_db, table);
    // Crossed on purpose: one ear's fall lowers the other ear's percentage.
    if (right_falls) left_percent -= kSteepFallPercent;
    if (left_falls) right_percent -= kSteepFallPercent;
    double percent = CombineEars(left_percent, right_percent, table, formula);
    if (left_falls && right_falls) percent += kSteepFallPercent;
    return {.left_percent = left_percent, .right_percent = right_percent, .percent = percent};
}

}  // namespace tonvale
