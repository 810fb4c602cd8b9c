// Compensation tables: the hearing losses of one ear turned into a percentage of damage.
#pragma once

#include <array>
#include <string_view>

#include "hearing/threshold_model.h"

namespace tonvale {

// The codes are those of the option buttons that select a table.
enum class DamageTable : int {
    kNew = 1131,         // "Nuova", of 1994
    kOld = 1132,         // "Vecchia", of 1991
    kBiological = 1133,  // "Biologico", of 2000
};

// Hearing losses of one ear in dB at 500, 1000, 2000, 3000 and 4000 Hz.
using EarLosses = std::array<double, 5>;

// Those of an audiogram: all but the loss at 6000 Hz, which never counts.
EarLosses ScoredLosses(const AudiometricLosses& losses_db);

// "Nuova", "Vecchia" or "Biologico"; empty for any other code.
std::string_view DamageTableName(DamageTable table);

// Whether a damage is compensated: from 11 % on, biological damage from 6 % on.
bool IsCompensable(double damage_percent, DamageTable table);

// What the loss at one frequency contributes: linear between the table's rows, 0 up to the first
// threshold, the last row's value above the last. 0 for other frequencies and codes. A loss that
// is no number counts as one above the last threshold.
double DamageTableValue(double loss_db, int frequency_hz, DamageTable table);

// What the old table adds to the percentage of an ear whose loss falls steeply, and whether it
// does: by more than 40 dB from 2000 to 4000 Hz. Never with any other table.
inline constexpr double kSteepFallPercent = 4;
bool FallsSteeply(const EarLosses& losses_db, DamageTable table);

// Percentage of damage of one ear; 0 for any other code.
double EarDamagePercent(const EarLosses& losses_db, DamageTable table);

}  // namespace tonvale
