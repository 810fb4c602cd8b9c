#include "exposure/level_statistics.h"

#include <limits>
#include <numeric>

namespace tonvale {

LevelStatistics StatisticsOf(std::span<const double> levels_dba) {
    constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();
    if (levels_dba.empty()) return {kUndefined, kUndefined};
    const auto count = static_cast<double>(levels_dba.size());
    const double mean = std::accumulate(levels_dba.begin(), levels_dba.end(), 0.0) / count;
    if (levels_dba.size() == 1) return {mean, kUndefined};
    double squares = 0;
    for (const double level : levels_dba) squares += (level - mean) * (level - mean);
    return {mean, squares / (count - 1)};
}

}  // namespace tonvale
