// Uncertainty of measured noise levels, propagated from samples to the level, to the day and to the
// week. Levels in dBA, uncertainties in dB; the root of a sum of squares combines independent ones.
//
// Every result is a finite number: what the rows do not define (no energy at all, times below zero,
// numbers beyond all range) is 0.
#pragma once

#include <optional>
#include <span>

namespace tonvale {

struct SampledLevel {
    double level_dba = 0;
    double time = 0;  // sampling time, in any one unit
};

struct UncertainPeriod {
    double level_dba = 0;
    double duration = 0;  // in the chosen unit, as is its error
    double level_error_db = 0;
    double duration_error = 0;
};

struct UncertainDay {
    double level_dba = 0;  // Lep,d
    double error_db = 0;
};

struct UncertainLevel {
    double level_dba = 0;
    double environmental_error_db = 0;  // from the measured values themselves
    double total_error_db = 0;          // with the instrument's added
};

struct SampledLevelResult {
    UncertainLevel level;
    double sampled_time = 0;  // in the unit of the samples; 0 without the time correction
    // The samples last longer than the time they stand for: the correction was left out.
    bool is_correction_refused = false;
};

struct UncertainDayResult {
    double equivalent_level_dba = 0;
    UncertainLevel day;  // Lep,d
    double total_time_s = 0;
};

// The equivalent level that `samples` estimate. With mean m and standard deviation s of n sampled
// levels, taken as normally distributed, Leq = m + 0.115 s^2, and the variance of that estimate is
// s^2 / n + 0.026 s^4 / (n - 1); 0.115 is ln(10) / 20, 0.026 is 2 x 0.115^2. One sample has no
// environmental error; without samples every result is 0, the total error included.
// `represented_time` (unit of the sampling times), when given, asks for the correction of a finite
// period: of a period sampled as a whole nothing is left to estimate. The square root of
// (T - sum t) / (T - sum t / n) multiplies the environmental error.
// ISO 9612:2009 (annex C) differs: it takes the energy mean, with s^2 / n for its variance.
SampledLevelResult EstimateLevel(std::span<const SampledLevel> samples,
                                 std::optional<double> represented_time,
                                 double instrument_error_db);

// The day made of `periods`, whose times are in units of `seconds_per_unit` seconds: Leq and Lep,d
// as EquivalentLevel and DailyExposureLevel give them, the environmental error by first-order
// propagation of the errors of levels and durations. Source: ISO 9612:2009, annex C, task-based
// measurements, with one uncertainty for each level, whatever its parts; 18.86 is (10 / ln 10)^2.
UncertainDayResult CombinePeriods(std::span<const UncertainPeriod> periods, double seconds_per_unit,
                                  double instrument_error_db);

// The week made of `days`: Lep,w as WeeklyExposureLevel gives it, the error by first-order
// propagation. The instrument's error is added once more, although that of the days may hold it: a
// chain of one instrument errs in the same direction every day.
UncertainLevel CombineDays(std::span<const UncertainDay> days, double instrument_error_db);

// The error of a duration given in per cent of it, but not below `minimum` (unit of the duration).
double PercentDurationError(double duration, double percent, double minimum);

}  // namespace tonvale
