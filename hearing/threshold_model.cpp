#include "hearing/threshold_model.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <span>

namespace tonvale {

namespace {

// ISO 1999:1990, Tables 1 and 2.
struct NoiseRow {
    int frequency_hz;
    double u, v;
    double cutoff_dba;  // L0
    double upper_x, upper_y;
    double lower_x, lower_y;
};

constexpr std::array<NoiseRow, 6> kNoiseRows{{
    {500, -0.033, 0.110, 93, 0.044, 0.016, 0.033, 0.002},
    {1000, -0.020, 0.070, 89, 0.022, 0.016, 0.020, 0.000},
    {2000, -0.045, 0.066, 80, 0.031, -0.002, 0.016, 0.000},
    {3000, 0.012, 0.037, 77, 0.007, 0.016, 0.029, -0.010},
    {4000, 0.025, 0.025, 75, 0.005, 0.009, 0.016, -0.002},
    {6000, 0.019, 0.024, 77, 0.013, 0.008, 0.028, -0.007},
}};

// ISO 1999:1990, Annex A (database A).
struct AgeRow {
    int frequency_hz;
    double a;
    double upper_b, lower_b;
};

constexpr std::array<AgeRow, 10> kMaleAgeRows{{
    {125, 0.0030, 7.23, 5.78},
    {250, 0.0030, 6.67, 5.34},
    {500, 0.0035, 6.12, 4.89},
    {1000, 0.0040, 6.12, 4.89},
    {1500, 0.0055, 6.67, 5.34},
    {2000, 0.0070, 7.23, 5.78},
    {3000, 0.0115, 7.78, 6.32},
    {4000, 0.0160, 8.34, 6.67},
    {6000, 0.0180, 9.45, 7.56},
    {8000, 0.0220, 10.56, 8.45},
}};

constexpr std::array<AgeRow, 10> kFemaleAgeRows{{
    {125, 0.0030, 6.67, 5.34},
    {250, 0.0030, 6.12, 4.89},
    {500, 0.0035, 6.12, 4.89},
    {1000, 0.0040, 6.12, 4.89},
    {1500, 0.0050, 6.67, 5.34},
    {2000, 0.0060, 6.67, 5.34},
    {3000, 0.0075, 7.23, 5.78},
    {4000, 0.0090, 7.78, 6.23},
    {6000, 0.0120, 8.90, 7.12},
    {8000, 0.0150, 10.56, 8.45},
}};

constexpr int kFirstFractilePercent = 5;
constexpr int kLastFractilePercent = 95;

// Multipliers k for 5 % to 50 % in steps of 1 %: quantiles of the normal distribution. Those for
// 16, 25, 34, 36 and 38 % are one thousandth above the rounded quantile, on purpose.
constexpr std::array<double, 46> kUpperMultipliers{
    1.645, 1.555, 1.476, 1.405, 1.341, 1.282, 1.227, 1.175, 1.126, 1.080, 1.036, 0.995,
    0.954, 0.915, 0.878, 0.842, 0.806, 0.772, 0.739, 0.706, 0.675, 0.643, 0.613, 0.583,
    0.553, 0.524, 0.496, 0.468, 0.440, 0.413, 0.385, 0.359, 0.332, 0.306, 0.279, 0.253,
    0.228, 0.202, 0.176, 0.151, 0.126, 0.100, 0.075, 0.050, 0.025, 0.000};

double FractileMultiplier(double fractile) {
    // This order of multiplications decides which side of a whole per cent a fractile falls on.
    const double percent = fractile * 1000.0 * 0.1;
    // The comparisons keep a NaN out of the conversion.
    const int whole_percent = !(percent > kFirstFractilePercent) ? kFirstFractilePercent
                              : percent >= kLastFractilePercent  ? kLastFractilePercent
                                                                 : static_cast<int>(percent);
    const int distance_from_median = std::abs(whole_percent - 50);
    return kUpperMultipliers[static_cast<std::size_t>(45 - distance_from_median)];
}

// Thresholds above the median belong to the fractiles below 50 %.
double AtFractile(double median, double upper_spread, double lower_spread, double fractile) {
    const double k = FractileMultiplier(fractile);
    return fractile < 0.5 ? median + k * upper_spread : median - k * lower_spread;
}

template <typename Row>
const Row* FindRow(std::span<const Row> rows, int frequency_hz) {
    const auto found = std::find_if(
        rows.begin(), rows.end(), [&](const Row& row) { return row.frequency_hz == frequency_hz; });
    return found == rows.end() ? nullptr : &*found;
}

std::span<const AgeRow> AgeRowsOf(int sex) {
    if (sex == kMale) return kMaleAgeRows;
    if (sex == kFemale) return kFemaleAgeRows;
    return {};
}

}  // namespace

double ComputeHTLA(const PredictionCase& prediction) {
    const AgeRow* row = FindRow(AgeRowsOf(prediction.sex), prediction.frequency_hz);
    if (row == nullptr) return 0.0;
    const double years_over_18 = prediction.age > 18 ? prediction.age - 18 : 0;
    const double median = row->a * (years_over_18 * years_over_18);
    const double upper_spread = row->upper_b + 0.445 * median;
    const double lower_spread = row->lower_b + 0.356 * median;
    return AtFractile(median, upper_spread, lower_spread, prediction.fractile);
}

double ComputeNIPTS(const PredictionCase& prediction) {
    const NoiseRow* row = FindRow(std::span<const NoiseRow>(kNoiseRows), prediction.frequency_hz);
    if (row == nullptr) return 0.0;
    const double excess =
        prediction.level_dba > row->cutoff_dba ? prediction.level_dba - row->cutoff_dba : 0;
    const double squared_excess = excess * excess;
    const double lg_years = std::log10(prediction.years);
    const double median = prediction.years >= 10
                              ? (row->u + row->v * lg_years) * squared_excess
                              : std::log10(prediction.years + 1) / std::log10(11.0) *
                                    (row->u + row->v * std::log10(10.0)) * squared_excess;
    const double upper_spread = (row->upper_x + row->upper_y * lg_years) * squared_excess;
    const double lower_spread = (row->lower_x + row->lower_y * lg_years) * squared_excess;
    return AtFractile(median, upper_spread, lower_spread, prediction.fractile);
}

double ComputeANIPTS(const PredictionCase& prediction) {
    const double nipts = ComputeNIPTS(prediction);
    const double htla = ComputeHTLA(prediction);
    return nipts * (1 + htla * (-1.0 / 120));
}

double ComputeHTLAN(const PredictionCase& prediction) {
    const double htla = ComputeHTLA(prediction);
    return htla + ComputeANIPTS(prediction);
}

double ComputeQuantity(PredictionCase& current, QuantityKind kind, double fractile,
                       int frequency_hz) {
    current.fractile = fractile;
    current.frequency_hz = frequency_hz;
    switch (kind) {
        case QuantityKind::kNipts:
            return ComputeNIPTS(current);
        case QuantityKind::kHtla:
            return ComputeHTLA(current);
        case QuantityKind::kHtlan:
            return ComputeHTLAN(current);
        case QuantityKind::kAnipts:
            return ComputeANIPTS(current);
    }
    return 0.0;
}

AudiometricLosses ComputeLosses(PredictionCase person, QuantityKind kind, double fractile) {
    AudiometricLosses losses_db{};
    std::transform(
        kAudiometricFrequenciesHz.begin(), kAudiometricFrequenciesHz.end(), losses_db.begin(),
        [&](int frequency_hz) { return ComputeQuantity(person, kind, fractile, frequency_hz); });
    return losses_db;
}

}  // namespace tonvale
