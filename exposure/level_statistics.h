// Arithmetic statistics of sampled levels, in decibels as they stand (no energies).
#pragma once

#include <span>

namespace tonvale {

struct LevelStatistics {
    double mean_dba;      // not a number without samples
    double variance_db2;  // divided by n - 1; not a number for fewer than two samples
};

LevelStatistics StatisticsOf(std::span<const double> levels_dba);

}  // namespace tonvale
