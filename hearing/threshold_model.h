// Hearing thresholds of noise-exposed and unexposed people: ISO 1999:1990, database A.
#pragma once

#include <array>

namespace tonvale {

// Values of PredictionCase::sex; any other selects no table.
inline constexpr int kMale = 1;
inline constexpr int kFemale = 2;

// What a threshold is computed for.
struct PredictionCase {
    double years = 0;      // of exposure to noise
    double level_dba = 0;  // daily exposure level
    double age = 0;        // years
    int sex = kMale;
    int frequency_hz = 0;  // audiometric frequency
    double fractile = 0;   // share of the population whose threshold exceeds the computed value,
                           // 0.05 to 0.95; beyond, it counts as the nearer of the two
};

// The codes are those of the option buttons that select a quantity.
enum class QuantityKind : int { kNipts = 1125, kHtla = 1126, kHtlan = 1127, kAnipts = 1128 };

inline constexpr std::array<int, 6> kAudiometricFrequenciesHz{500, 1000, 2000, 3000, 4000, 6000};

// One value in dB at each of them.
using AudiometricLosses = std::array<double, kAudiometricFrequenciesHz.size()>;

// Hearing threshold level associated with age, dB (6.1 and Annex A), for sex, age, frequency and
// fractile of the case. 0 for a frequency or a sex without a table row.
double ComputeHTLA(const PredictionCase& prediction);

// Noise-induced permanent threshold shift, dB (6.3), for years, level, frequency and fractile of
// the case. 0 for a frequency without a table row. The spreads take the logarithm of the years as
// it is below ten years too; a negative number of years gives no number (NaN).
double ComputeNIPTS(const PredictionCase& prediction);

// Actual noise-induced shift, dB: what noise adds on top of age, N - H N / 120 (6.1).
double ComputeANIPTS(const PredictionCase& prediction);

// Hearing threshold level associated with age and noise, dB: H + N - H N / 120 (6.1).
double ComputeHTLAN(const PredictionCase& prediction);

// Stores fractile and frequency into `current`, then gives the quantity for it; 0 for any other
// kind.
double ComputeQuantity(PredictionCase& current, QuantityKind kind, double fractile,
                       int frequency_hz);

// The quantity for `person` at the fractile, whatever fractile and frequency `person` has.
AudiometricLosses ComputeLosses(PredictionCase person, QuantityKind kind, double fractile);

}  // namespace tonvale
