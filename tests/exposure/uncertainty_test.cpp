#include "exposure/uncertainty.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

#include "exposure/exposure_level.h"

namespace tonvale {
namespace {

constexpr double kInstrument = 0.7;

TEST(EstimateLevel, AddsToTheMeanWhatTheSpreadGives) {
    const auto one = EstimateLevel(std::vector<SampledLevel>{{85, 9}}, std::nullopt, kInstrument);
    EXPECT_EQ(one.level.level_dba, 85);
    EXPECT_EQ(one.level.environmental_error_db, 0);
    EXPECT_DOUBLE_EQ(one.level.total_error_db, kInstrument);
    EXPECT_EQ(one.sampled_time, 0);  // not asked for

    const auto two =
        EstimateLevel(std::vector<SampledLevel>{{80, 0}, {90, 0}}, std::nullopt, kInstrument);
    EXPECT_DOUBLE_EQ(two.level.level_dba, 85 + 0.115 * 50);
    EXPECT_DOUBLE_EQ(two.level.environmental_error_db, std::sqrt(90.0));
    EXPECT_DOUBLE_EQ(two.level.total_error_db, std::sqrt(90.49));

    // s^2 = 4 of three samples: 4 / 3 + 0.026 x 16 / 2.
    const std::vector<SampledLevel> three{{85, 1}, {87, 2}, {89, 3}};
    const auto result = EstimateLevel(three, std::nullopt, 0);
    EXPECT_DOUBLE_EQ(result.level.environmental_error_db, std::sqrt(4 / 3.0 + 0.208));

    const auto none = EstimateLevel({}, 8.0, kInstrument);
    EXPECT_EQ(none.level.total_error_db + none.level.level_dba + none.sampled_time, 0);
}

TEST(EstimateLevel, CorrectsForTheTimeThatTheSamplesStandFor) {
    const double uncorrected = std::sqrt(4 / 3.0 + 0.208);
    const struct {
        double time;  // of each of three samples
        double represented;
        double factor;
        bool is_refused;
    } cases[] = {
        {1, 8, std::sqrt(5 / 7.0), false},
        {2, 6, 0, false},  // sampled as a whole
        {2, 5.999, 1, true},
        {0, 8, 1, false},
        {-1, 8, std::sqrt(11 / 9.0), false},
        {-1, -1, 1, false},  // no denominator left
        {-2, -3, 1, false},  // no root left
    };
    for (const auto& row : cases) {
        const std::vector<SampledLevel> samples{{85, row.time}, {87, row.time}, {89, row.time}};
        const auto result = EstimateLevel(samples, row.represented, kInstrument);
        EXPECT_NEAR(result.level.environmental_error_db, row.factor * uncorrected, 1e-12)
            << row.time << " of " << row.represented;
        EXPECT_EQ(result.is_correction_refused, row.is_refused);
        EXPECT_EQ(result.sampled_time, 3 * row.time);
    }
    // The root is 0 over 0 here.
    const auto whole = EstimateLevel(std::vector<SampledLevel>{{85, 8}}, 8.0, kInstrument);
    EXPECT_EQ(whole.level.environmental_error_db, 0);
    EXPECT_DOUBLE_EQ(whole.level.total_error_db, kInstrument);
}

// The first-order error of `level` of independent inputs, by differences instead of derivatives.
double NumericalError(const std::function<double(const std::vector<double>&)>& level,
                      std::vector<double> inputs, const std::vector<double>& errors) {
    double squares = 0;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const double step = 1e-5 * std::fabs(inputs[i]);
        const double input = inputs[i];
        inputs[i] = input + step;
        const double above = level(inputs);
        inputs[i] = input - step;
        const double below = level(inputs);
        inputs[i] = input;
        squares += std::pow((above - below) / (2 * step) * errors[i], 2);
    }
    return std::sqrt(squares);
}

TEST(CombinePeriods, PropagatesErrorsAsNumericalDifferentiationDoes) {
    const std::vector<UncertainPeriod> periods{
        {91.3, 1.5, 0.9, 0.25}, {84.7, 3, 1.4, 0.5}, {78.2, 2, 2, 0}, {99.6, 0.15, 0.3, 0.05}};
    const auto level = [](const std::vector<double>& inputs) {
        double energy = 0;
        for (std::size_t i = 0; i < 4; ++i) energy += inputs[4 + i] * std::exp2(inputs[i] / 3.0103);
        return 3.0103 * std::log2(energy / 8);
    };
    const double numerical = NumericalError(level, {91.3, 84.7, 78.2, 99.6, 1.5, 3, 2, 0.15},
                                            {0.9, 1.4, 2, 0.3, 0.25, 0.5, 0, 0.05});
    for (const double unit : {1.0, 60.0, 3600.0}) {
        const auto result = CombinePeriods(periods, unit, kInstrument);
        EXPECT_NEAR(result.day.environmental_error_db / numerical, 1, 1e-3);
        EXPECT_DOUBLE_EQ(result.total_time_s, 6.65 * unit);
    }
    const auto day = CombinePeriods(periods, 3600, kInstrument);
    EXPECT_DOUBLE_EQ(day.day.level_dba, DailyExposureLevel(day.equivalent_level_dba, 6.65 * 3600));
    EXPECT_NEAR(day.day.level_dba, level({91.3, 84.7, 78.2, 99.6, 1.5, 3, 2, 0.15}), 1e-3);
    EXPECT_NEAR(day.day.total_error_db, std::hypot(day.day.environmental_error_db, 0.7), 1e-12);
}

TEST(CombineDays, PropagatesErrorsAsNumericalDifferentiationDoes) {
    const std::vector<UncertainDay> days{{86, 1}, {84.5, 0.8}, {91, 2}, {79, 1.5}, {85, 0}};
    const auto result = CombineDays(days, kInstrument);
    const double numerical = NumericalError(
        [](const std::vector<double>& levels) { return WeeklyExposureLevel(levels); },
        {86, 84.5, 91, 79, 85}, {1, 0.8, 2, 1.5, 0});
    EXPECT_NEAR(result.environmental_error_db / numerical, 1, 1e-3);
    EXPECT_DOUBLE_EQ(CombineDays(std::vector<UncertainDay>(7, {85, 0}), kInstrument).total_error_db,
                     kInstrument);
}

// ISO 9612:2009, annex D: a welder's day, of which the standard gives 84.3 dB with an expanded
// uncertainty (1.65 u) of 2.7 dB. The standard's three uncertainties of a level make one here:
// sampling s / sqrt(n), instrument 1.5 dB, position 1.0 dB; durations count as exact. The levels
// of the tasks are the standard's energy means; EstimateLevel gives others.
TEST(CombinePeriods, AgreesWithTheWeldersDayOfTheStandard) {
    const auto level_error = [](double sampling) { return std::hypot(sampling, 1.5, 1.0); };
    const std::vector<UncertainPeriod> tasks{
        {70, 1.5, 0, 0}, {80.8, 5, level_error(0.8), 0}, {90.1, 1.5, level_error(1.2), 0}};
    const auto result = CombinePeriods(tasks, 3600, 0);
    EXPECT_NEAR(result.day.level_dba, 84.3, 0.05);
    EXPECT_NEAR(1.65 * result.day.total_error_db, 2.7, 0.05);
}

TEST(Uncertainty, RowsThatDefineNothingGiveZerosAndTheInstrumentsError) {
    const std::vector<std::vector<UncertainPeriod>> days{
        {},
        {{0, 0, 1, 1}},
        {{85, 0, 1, 0}},
        {{-1e9, 8, 1, 1}},
        {{85, 10, 1, 1}, {85, -10, 1, 1}},
        {{85, -10, 1, 1}},
        {{5e3, 3600, 1, 1}, {4e3, 3600, 1, 1}},
    };
    for (const auto& periods : days) {
        const auto result = CombinePeriods(periods, 3600, kInstrument);
        EXPECT_EQ(result.day.level_dba, 0);
        EXPECT_EQ(result.day.environmental_error_db, 0);
        EXPECT_DOUBLE_EQ(result.day.total_error_db, kInstrument);
        EXPECT_TRUE(std::isfinite(result.equivalent_level_dba + result.total_time_s));
    }
    for (const double level : {-1e9, 5e3}) {
        const auto week = CombineDays(std::vector<UncertainDay>{{level, 2}}, kInstrument);
        EXPECT_EQ(week.level_dba + week.environmental_error_db, 0);
        EXPECT_DOUBLE_EQ(week.total_error_db, kInstrument);
    }
    EXPECT_EQ(CombineDays({}, kInstrument).level_dba, 0);
    const auto beyond =
        EstimateLevel(std::vector<SampledLevel>{{1e300, 1e308}, {-1e300, 1e308}}, 1.0, 1e200);
    EXPECT_TRUE(std::isfinite(beyond.level.level_dba + beyond.level.total_error_db +
                              beyond.level.environmental_error_db + beyond.sampled_time));
    // A level or a duration of 0 counts as it stands.
    EXPECT_NEAR(CombinePeriods(std::vector<UncertainPeriod>{{0, 8, 0, 0}}, 3600, 0).day.level_dba,
                0, 1e-12);
}

}  // namespace
}  // namespace tonvale
