#include "exposure/student_t.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace tonvale {

namespace {

using Row = std::array<double, kStudentProbabilities.size()>;

constexpr std::uint32_t kLastSingleRow = 30;  // up to here there is a row for each degree

// Row v - 1 for v degrees of freedom, 1 to 30.
constexpr std::array<Row, kLastSingleRow> kSingleRows{{
    {3.078, 6.314, 12.706, 31.821}, {1.886, 2.920, 4.303, 6.965}, {1.638, 2.353, 3.182, 4.541},
    {1.533, 2.132, 2.776, 3.747},   {1.476, 2.015, 2.571, 3.365}, {1.440, 1.943, 2.447, 3.143},
    {1.415, 1.895, 2.365, 2.998},   {1.397, 1.860, 2.306, 2.896}, {1.383, 1.833, 2.262, 2.821},
    {1.372, 1.812, 2.228, 2.764},   {1.363, 1.796, 2.201, 2.718}, {1.356, 1.782, 2.179, 2.681},
    {1.350, 1.771, 2.160, 2.650},   {1.345, 1.761, 2.145, 2.624}, {1.341, 1.753, 2.131, 2.602},
    {1.337, 1.746, 2.120, 2.583},   {1.333, 1.740, 2.110, 2.567}, {1.330, 1.734, 2.101, 2.552},
    {1.328, 1.729, 2.093, 2.539},   {1.325, 1.725, 2.086, 2.528}, {1.323, 1.721, 2.080, 2.518},
    {1.321, 1.717, 2.074, 2.508},   {1.319, 1.714, 2.069, 2.500}, {1.318, 1.711, 2.064, 2.492},
    {1.316, 1.708, 2.060, 2.485},   {1.315, 1.706, 2.056, 2.479}, {1.314, 1.703, 2.052, 2.473},
    {1.313, 1.701, 2.048, 2.467},   {1.311, 1.699, 2.045, 2.462}, {1.310, 1.697, 2.042, 2.457},
}};

struct Knot {
    std::uint32_t degrees_of_freedom;
    Row quantiles;
};

// Between these the quantile is linear. The last row is the table's "infinity".
constexpr std::array<Knot, 5> kKnots{{
    {kLastSingleRow, kSingleRows.back()},
    {40, {1.303, 1.684, 2.021, 2.423}},
    {60, {1.296, 1.671, 2.000, 2.390}},
    {120, {1.289, 1.658, 1.980, 2.358}},
    {500, {1.282, 1.645, 1.960, 2.326}},
}};

double Interpolate(const Knot& low, const Knot& high, double degrees_of_freedom,
                   std::size_t column) {
    const double span = high.degrees_of_freedom - low.degrees_of_freedom;
    const double rise = high.quantiles[column] - low.quantiles[column];
    return low.quantiles[column] + rise * (degrees_of_freedom - low.degrees_of_freedom) / span;
}

}  // namespace

double StudentQuantile(std::uint32_t degrees_of_freedom, int column) {
    assert(degrees_of_freedom > 0);
    if (column < 0 || column >= static_cast<int>(kStudentProbabilities.size())) return 0;
    const auto index = static_cast<std::size_t>(column);
    if (degrees_of_freedom <= kLastSingleRow) return kSingleRows[degrees_of_freedom - 1][index];
    const auto* high = std::find_if(kKnots.begin() + 1, kKnots.end(), [&](const Knot& knot) {
        return degrees_of_freedom <= knot.degrees_of_freedom;
    });
    if (high == kKnots.end()) return kKnots.back().quantiles[index];
    return Interpolate(*(high - 1), *high, degrees_of_freedom, index);
}

}  // namespace tonvale
