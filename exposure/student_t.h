// Quantiles of Student's t distribution, as the printed tables give them.
#pragma once

#include <array>
#include <cstdint>

namespace tonvale {

// The one-sided probabilities of the table's columns.
inline constexpr std::array<double, 4> kStudentProbabilities{0.90, 0.95, 0.975, 0.99};

// The quantile t(p, v) for v = `degrees_of_freedom` (1 or more) and p =
// kStudentProbabilities[column]: tabulated to three decimals for v = 1 to 30, 40, 60 and 120,
// linear between these and from there to the normal quantile, which holds from v = 500 on. 0 for a
// column that the table does not have. Source: R. A. Fisher and F. Yates, Statistical Tables for
// Biological, Agricultural and Medical Research, 6th ed. (1963), table III, whose probabilities
// are two-sided: 2 (1 - p).
double StudentQuantile(std::uint32_t degrees_of_freedom, int column);

}  // namespace tonvale
