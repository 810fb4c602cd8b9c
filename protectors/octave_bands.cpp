#include "protectors/octave_bands.h"

#include <cmath>

namespace tonvale {

namespace {

double Energy(double level_db) {
    return std::pow(10.0, 0.1 * level_db);
}

}  // namespace

double WeightedLevel(const OctaveSpectrum& levels_db, Weighting weighting) {
    double sum = 0;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        const OctaveBand& band = kOctaveBands[i];
        const double weighted_db =
            levels_db[i] + (weighting == Weighting::kA ? band.a_weighting_db : band.c_weighting_db);
        if (weighted_db * levels_db[i] > 0) sum += Energy(weighted_db);
    }
    return sum > 0 ? 10 * std::log10(sum) : 0;
}

double EnergySum(const OctaveSpectrum& levels_db) {
    double sum = 0;
    for (const double level_db : levels_db) sum += Energy(level_db);
    return 10 * std::log10(sum);
}

}  // namespace tonvale
