#include "exposure/exposure_level.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tonvale {
namespace {

constexpr double kHour = 3600;

double DailyLevelOf(double level_dba, double hours) {
    return DailyExposureLevel(level_dba, hours * kHour);
}

// Directive 2003/10/EC rests on the equal-energy rule: 3 dB more halve the time allowed. The exact
// step is 10 lg 2 = 3.0103 dB, so the round figures of its guides agree within 0.04 dB a halving.
TEST(DailyExposureLevel, FollowsTheEqualEnergyRule) {
    EXPECT_DOUBLE_EQ(DailyLevelOf(85, 8), 85);
    EXPECT_NEAR(DailyLevelOf(88, 4), 85, 0.011);
    EXPECT_NEAR(DailyLevelOf(91, 2), 85, 0.021);
    EXPECT_NEAR(DailyLevelOf(94, 1), 85, 0.032);
    EXPECT_NEAR(DailyLevelOf(85, 10), 85 + 0.96910013008056414, 1e-12);  // 10 lg 1.25
    EXPECT_EQ(DailyLevelOf(85, 0), 0);
}

// Another derivation: the daily level from the exposure E = p0^2 sum(t 10^(L/10)) in Pa^2 s, and
// 85 dBA over 8 h is 3.64 x 10^3 Pa^2 s (ISO 1999:1990, 3.4).
TEST(DailyExposureLevel, AgreesWithTheSoundExposure) {
    const std::vector<double> levels{91.3, 84.7, 78.2, 99.6};
    const std::vector<double> durations_s{5400, 10800, 7200, 540};
    const double reference_pressure_squared = 4e-10;
    double exposure = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        exposure +=
            reference_pressure_squared * std::exp(levels[i] * std::log(10.0) / 10) * durations_s[i];
    }
    const double equivalent = EquivalentLevel(levels, durations_s);
    EXPECT_NEAR(DailyExposureLevel(equivalent, TotalTime(durations_s)),
                10 * std::log10(exposure / (reference_pressure_squared * 28800)), 1e-9);
    EXPECT_NEAR(reference_pressure_squared * std::pow(10, 8.5) * 28800, 3.64e3, 5);
}

TEST(EquivalentLevel, WeighsEnergiesByTimeInAnyUnit) {
    const std::vector<double> levels{90, 80};
    const double expected = 10 * std::log10((1e9 + 1e8) / 2);
    EXPECT_NEAR(EquivalentLevel(levels, std::vector<double>{240, 240}), expected, 1e-12);
    EXPECT_NEAR(EquivalentLevel(levels, std::vector<double>{14400, 14400}), expected, 1e-12);
    EXPECT_EQ(EquivalentLevel({}, {}), 0);
    EXPECT_EQ(TotalTime({}), 0);
    // Energies that cancel to nothing, or vanish: no level.
    EXPECT_EQ(EquivalentLevel(std::vector<double>{80, 80}, std::vector<double>{1, -1}), 0);
    EXPECT_EQ(EquivalentLevel(std::vector<double>{-9000}, std::vector<double>{1}), 0);
    // A negative level is a level.
    EXPECT_NEAR(EquivalentLevel(std::vector<double>{-3}, std::vector<double>{2}), -3, 1e-12);
}

TEST(ExposureShares, TellWhatToQuietenFirst) {
    using Shares = std::vector<double>;
    const auto shares_of = [](const Shares& levels, const Shares& durations) {
        return ExposureShares(levels, durations);
    };
    // A quarter of the time at 6.02 dB more is as much again.
    const Shares even = shares_of({80, 80 + 20 * std::log10(2)}, {4, 1});
    EXPECT_NEAR(even[0], 50, 1e-12);
    EXPECT_NEAR(even[1], 50, 1e-12);
    // Levels far beyond any range of powers, and one that adds nothing beside them.
    EXPECT_EQ(shares_of({9000, 9000, -9000}, {1, 3, 1}), (Shares{25, 75, 0}));
    EXPECT_EQ(shares_of({}, {}), Shares{});
    EXPECT_EQ(shares_of({80, 80}, {2, -1}), Shares{});
    EXPECT_EQ(shares_of({80, 80}, {0, 0}), Shares{});
    EXPECT_EQ(shares_of({80, INFINITY}, {1, 1}), Shares{});
}

}  // namespace
}  // namespace tonvale
