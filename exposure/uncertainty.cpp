#include "exposure/uncertainty.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "exposure/exposure_level.h"
#include "exposure/level_statistics.h"

namespace tonvale {

namespace {

constexpr double kMeanExcess = 0.115;        // ln(10) / 20, per dB
constexpr double kExcessVariance = 0.026;    // 2 x 0.115^2, per dB^2
constexpr double kDurationVariance = 18.86;  // (10 / ln 10)^2, dB^2

double FiniteOrZero(double value) {
    return std::isfinite(value) ? value : 0;
}

UncertainLevel WithInstrument(double level_dba, double environmental_error_db,
                              double instrument_error_db) {
    const double environmental = FiniteOrZero(environmental_error_db);
    const double total =
        std::sqrt(instrument_error_db * instrument_error_db + environmental * environmental);
    return {FiniteOrZero(level_dba), environmental, FiniteOrZero(total)};
}

// The root of a sum of squares, in dB, over the energies they were weighted with.
double RelativeError(double squares, double energy) {
    return energy > 0 ? std::sqrt(squares) / energy : 0;
}

// What the correction for a finite period multiplies the environmental error with. Times below
// zero can leave the root without meaning: then there is no correction.
double SamplingFactor(double sampled_time, double represented_time, double sample_count) {
    if (sampled_time == represented_time) return 0;
    const double factor = std::sqrt((represented_time - sampled_time) /
                                    (represented_time - sampled_time / sample_count));
    return std::isfinite(factor) ? factor : 1;
}

}  // namespace

SampledLevelResult EstimateLevel(std::span<const SampledLevel> samples,
                                 std::optional<double> represented_time,
                                 double instrument_error_db) {
    if (samples.empty()) return {};
    SampledLevelResult result;
    std::vector<double> levels_dba;
    for (const SampledLevel& sample : samples) {
        levels_dba.push_back(sample.level_dba);
        if (represented_time) result.sampled_time += sample.time;
    }
    result.sampled_time = FiniteOrZero(result.sampled_time);

    const auto count = static_cast<double>(samples.size());
    const LevelStatistics statistics = StatisticsOf(levels_dba);
    const double variance = samples.size() > 1 ? statistics.variance_db2 : 0;
    double error = 0;
    if (samples.size() > 1) {
        error = std::sqrt(variance / count + kExcessVariance * variance * variance / (count - 1));
    }
    if (represented_time) {
        result.is_correction_refused = result.sampled_time > *represented_time;
        if (!result.is_correction_refused) {
            error *= SamplingFactor(result.sampled_time, *represented_time, count);
        }
    }
    result.level =
        WithInstrument(statistics.mean_dba + kMeanExcess * variance, error, instrument_error_db);
    return result;
}

UncertainDayResult CombinePeriods(std::span<const UncertainPeriod> periods, double seconds_per_unit,
                                  double instrument_error_db) {
    std::vector<double> levels_dba;
    std::vector<double> durations_s;
    double level_squares = 0;
    double duration_squares = 0;
    double energy = 0;
    for (const UncertainPeriod& period : periods) {
        const double duration_s = period.duration * seconds_per_unit;
        const double duration_error_s = period.duration_error * seconds_per_unit;
        const double squared_energy = std::pow(10.0, 0.2 * period.level_dba);
        level_squares += period.level_error_db * period.level_error_db * squared_energy *
                         duration_s * duration_s;
        duration_squares += squared_energy * duration_error_s * duration_error_s;
        energy += duration_s * std::pow(10.0, 0.1 * period.level_dba);
        levels_dba.push_back(period.level_dba);
        durations_s.push_back(duration_s);
    }
    const double equivalent = EquivalentLevel(levels_dba, durations_s);
    const double total_time_s = TotalTime(durations_s);
    const double error =
        RelativeError(level_squares + kDurationVariance * duration_squares, energy);
    return {
        FiniteOrZero(equivalent),
        WithInstrument(DailyExposureLevel(equivalent, total_time_s), error, instrument_error_db),
        FiniteOrZero(total_time_s)};
}

UncertainLevel CombineDays(std::span<const UncertainDay> days, double instrument_error_db) {
    std::vector<double> levels_dba;
    double squares = 0;
    double energy = 0;
    for (const UncertainDay& day : days) {
        squares += day.error_db * day.error_db * std::pow(10.0, 0.2 * day.level_dba);
        energy += std::pow(10.0, 0.1 * day.level_dba);
        levels_dba.push_back(day.level_dba);
    }
    return WithInstrument(WeeklyExposureLevel(levels_dba), RelativeError(squares, energy),
                          instrument_error_db);
}

double PercentDurationError(double duration, double percent, double minimum) {
    return FiniteOrZero(std::max(duration * percent * 0.01, minimum));
}

}  // namespace tonvale
