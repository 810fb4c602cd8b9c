// Energy arithmetic of noise exposure, shared by the exposure calculators. Double precision.
#pragma once

#include <span>
#include <vector>

namespace tonvale {

// Equivalent continuous A-weighted level in dBA of levels `levels_dba` held for `durations` (any
// one unit; as many as levels): 10 lg(sum t_i 10^(0.1 L_i) / sum t_i). 0 when there are none or the
// energy sum is exactly 0. Source: ISO 9612:2009, 9.3 (task-based strategy).
double EquivalentLevel(std::span<const double> levels_dba, std::span<const double> durations);

// What each of these levels adds to their energy sum, in per cent: 100 t_i 10^(0.1 L_i) over the
// sum. Empty when the sum is exactly 0 or not finite, or a duration is below 0.
std::vector<double> ExposureShares(std::span<const double> levels_dba,
                                   std::span<const double> durations);

// Sum of the durations, in their unit.
double TotalTime(std::span<const double> durations);

// Daily personal exposure level in dBA: `equivalent_level_dba` over `total_time_s` seconds,
// normalised to 8 hours. 0 when the time is exactly 0. Source: ISO 9612:2009, formula (3).
double DailyExposureLevel(double equivalent_level_dba, double total_time_s);

// Weekly personal exposure level in dBA of the daily levels of a week: their energies summed, a day
// of 0 dBA with its energy 1, and divided by the 5 days of the nominal working week, whatever the
// number of levels. 0 when the energy sum is exactly 0. Source: ISO 1999:1990, 3.6, note 2.
double WeeklyExposureLevel(std::span<const double> daily_levels_dba);

}  // namespace tonvale
