#include "exposure/exposure_level.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace tonvale {

namespace {

constexpr double kPerReferenceDay = 3.472222222222222e-05;  // 1 / 28,800 s
constexpr double kPerReferenceWeek = 0.2;                   // 1 / 5 days

}  // namespace

double EquivalentLevel(std::span<const double> levels_dba, std::span<const double> durations) {
    assert(levels_dba.size() == durations.size());
    double energy = 0;
    double total_time = 0;
    for (std::size_t i = 0; i < levels_dba.size(); ++i) {
        energy += durations[i] * std::pow(10.0, 0.1 * levels_dba[i]);
        total_time += durations[i];
    }
    return energy == 0 ? 0 : 10 * std::log10(energy / total_time);
}

std::vector<double> ExposureShares(std::span<const double> levels_dba,
                                   std::span<const double> durations) {
    assert(levels_dba.size() == durations.size());
    if (levels_dba.empty()) return {};
    // Against the highest level, so that no power overflows.
    const double highest_dba = *std::max_element(levels_dba.begin(), levels_dba.end());
    std::vector<double> shares;
    double sum = 0;
    for (std::size_t i = 0; i < levels_dba.size(); ++i) {
        shares.push_back(durations[i] * std::pow(10.0, 0.1 * (levels_dba[i] - highest_dba)));
        sum += shares.back();
    }
    const bool has_negative =
        std::any_of(shares.begin(), shares.end(), [](double share) { return share < 0; });
    if (sum == 0 || !std::isfinite(sum) || has_negative) return {};
    for (double& share : shares) share *= 100 / sum;
    return shares;
}

double TotalTime(std::span<const double> durations) {
    return std::accumulate(durations.begin(), durations.end(), 0.0);
}

double DailyExposureLevel(double equivalent_level_dba, double total_time_s) {
    if (total_time_s == 0) return 0;
    return equivalent_level_dba + 10 * std::log10(total_time_s * kPerReferenceDay);
}

double WeeklyExposureLevel(std::span<const double> daily_levels_dba) {
    double energy = 0;
    for (const double level : daily_levels_dba) energy += std::pow(10.0, 0.1 * level);
    energy *= kPerReferenceWeek;
    return energy == 0 ? 0 : 10 * std::log10(energy);
}

}  // namespace tonvale
