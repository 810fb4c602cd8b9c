// The damage of a person's hearing: the percentages of both ears combined into one.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "hearing/damage_table.h"
#include "hearing/threshold_model.h"

namespace tonvale {

// Hearing losses of one ear in dB at kAudiometricFrequenciesHz.
using EarAudiogram = std::array<double, kAudiometricFrequenciesHz.size()>;

struct Audiogram {
    EarAudiogram left_db{};
    EarAudiogram right_db{};
    bool is_symmetric = false;  // the left ear stands for both
};

// How the two ears' percentages are combined; the codes are those of the option buttons.
enum class DamageFormula : int { kIndustry = 376, kAgriculture = 377 };

// "Industria" or "Agricoltura".
std::string_view DamageFormulaName(DamageFormula formula);

struct HearingDamage {
    double left_percent = 0;              // of the ears, as they enter the formula
    std::optional<double> right_percent;  // none of a symmetric loss
    double percent = 0;                   // of the person
};

// Combined damage by a compensation table; the losses at 6000 Hz do not count. Of a symmetric loss
// it is that of the left ear. The biological table has a formula of its own. By the old table each
// ear loses 4 when the *other* one falls steeply, so that the percentage of an ear, and even the
// result, may be negative.
HearingDamage EvaluateHearingDamage(const Audiogram& audiogram, DamageTable table,
                                    DamageFormula formula);

}  // namespace tonvale
