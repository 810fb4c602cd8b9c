// The octave bands in which noises and hearing protectors are described.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tonvale {

inline constexpr std::size_t kOctaveBandCount = 7;

struct OctaveBand {
    std::string_view key;    // centre frequency in Hz: key of data files
    std::string_view label;  // as dialogs and charts name it
    double a_weighting_db;
    double c_weighting_db;
};

// Frequency weightings A and C at the centre frequencies: IEC 61672-1, table of weightings.
inline constexpr std::array<OctaveBand, kOctaveBandCount> kOctaveBands{{
    {"125", "125 Hz", -16.1, -0.2},
    {"250", "250 Hz", -8.6, 0.0},
    {"500", "500 Hz", -3.2, 0.0},
    {"1000", "1 kHz", 0.0, 0.0},
    {"2000", "2 kHz", 1.2, -0.2},
    {"4000", "4 kHz", 1.0, -0.8},
    {"8000", "8 kHz", -1.1, -3.0},
}};

// One number a band, in dB: levels of a noise or attenuations of a protector.
using OctaveSpectrum = std::array<double, kOctaveBandCount>;

enum class Weighting { kA, kC };

// The weighted level in dB of a noise, given by its unweighted band levels; 0 when no band counts.
// A band counts when its level and its weighted level have the same sign: one of 0 dB is not
// given, one whose weighted level is not above 0 dB is inaudible.
double WeightedLevel(const OctaveSpectrum& levels_db, Weighting weighting);

// The level of bands together: 10 lg of the sum of 10^(0.1 L).
double EnergySum(const OctaveSpectrum& levels_db);

}  // namespace tonvale
