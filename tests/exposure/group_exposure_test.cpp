#include "exposure/group_exposure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "exposure/student_t.h"

namespace tonvale {
namespace {

constexpr std::uint32_t kMaxWorkers = std::numeric_limits<std::uint32_t>::max();

// P(T <= t) for `v` degrees of freedom, t > 0, by the finite series in the angle atan(t / sqrt(v))
// (Abramowitz and Stegun, 26.7.3 and 26.7.4); v = 0 stands for the normal distribution.
double Probability(double t, int v) {
    if (v == 0) return 0.5 * std::erfc(-t / std::numbers::sqrt2);
    const double angle = std::atan(t / std::sqrt(v));
    const double cosine = std::cos(angle);
    double term = v % 2 == 0 ? 1 : cosine;
    double sum = v == 1 ? 0 : term;
    for (int k = v % 2 == 0 ? 2 : 3; k < v; k += 2) {
        term *= cosine * cosine * (k - 1) / k;
        sum += term;
    }
    const double both_sides =
        v % 2 == 0 ? std::sin(angle) * sum : 2 / std::numbers::pi * (angle + std::sin(angle) * sum);
    return (1 + both_sides) / 2;
}

double InvertedProbability(double p, int v) {
    double low = 0;
    double high = 100;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2;
        (Probability(middle, v) < p ? low : high) = middle;
    }
    return low;
}

TEST(StudentQuantile, IsTheInvertedDistributionToThreeDecimals) {
    std::vector<std::pair<std::uint32_t, int>> rows{{40, 40}, {60, 60}, {120, 120}, {500, 0}};
    for (int v = 1; v <= 30; ++v) rows.emplace_back(v, v);
    for (int column = 0; column < 4; ++column) {
        for (const auto& [degrees, v] : rows) {
            const double p = kStudentProbabilities[static_cast<std::size_t>(column)];
            const double exact = std::round(InvertedProbability(p, v) * 1000) / 1000;
            EXPECT_NEAR(StudentQuantile(degrees, column), exact, 1e-9) << degrees << " " << p;
        }
    }
}

TEST(StudentQuantile, IsLinearBetweenTheRowsAndNeverGrows) {
    EXPECT_NEAR(StudentQuantile(35, 2), (2.042 + 2.021) / 2, 1e-12);
    EXPECT_NEAR(StudentQuantile(45, 1), 1.684 + (1.671 - 1.684) / 4, 1e-12);
    EXPECT_NEAR(StudentQuantile(90, 0), (1.296 + 1.289) / 2, 1e-12);
    EXPECT_NEAR(StudentQuantile(310, 3), (2.358 + 2.326) / 2, 1e-12);
    EXPECT_EQ(StudentQuantile(kMaxWorkers, 3), 2.326);
    for (int column = 0; column < 4; ++column) {
        for (std::uint32_t v = 2; v < 520; ++v) {
            EXPECT_LE(StudentQuantile(v, column), StudentQuantile(v - 1, column)) << v;
        }
    }
    EXPECT_EQ(StudentQuantile(9, -1), 0);
    EXPECT_EQ(StudentQuantile(9, 4), 0);
}

// The search as its definition reads: one number of samples after the other.
std::uint64_t FirstThatQualifies(double workers, double deviation, int confidence,
                                 double interval) {
    std::uint64_t m = 3;
    for (; static_cast<double>(m) <= workers; ++m) {
        const auto samples = static_cast<double>(m);
        const double width = StudentQuantile(static_cast<std::uint32_t>(m - 1), confidence) *
                             deviation / std::sqrt(samples) *
                             std::sqrt((workers - samples) / (workers - 1));
        if (std::floor(width + 0.5) <= interval) break;
    }
    return m;
}

TEST(RequiredSamples, IsTheFirstNumberThatQualifies) {
    EXPECT_EQ(RequiredSamples(10, 2, 1, 2), 4U);
    EXPECT_EQ(RequiredSamples(4, 1e300, 3, 1), 4U);
    EXPECT_EQ(RequiredSamples(2, 5, 1, 1), 3U);
    EXPECT_EQ(RequiredSamples(1000, 5, 4, 1), 3U);  // no such column: t = 0
    for (const std::uint32_t workers : {4U, 5U, 11U, 60U, 700U}) {
        for (const double deviation : {0.0, 0.7, 2.0, 4.9, 11.0, 60.0}) {
            for (int confidence = 0; confidence < 4; ++confidence) {
                for (int interval = 1; interval <= 10; ++interval) {
                    ASSERT_EQ(RequiredSamples(workers, deviation, confidence, interval),
                              FirstThatQualifies(workers, deviation, confidence, interval));
                }
            }
        }
    }
}

TEST(RequiredSamples, AnswersAtOnceForTheLargestGroup) {
    // t s / sqrt(m) below 1.5 without the correction: m about (2.326 x 10,000 / 1.5)^2 = 2.4e8.
    const std::uint64_t required = RequiredSamples(kMaxWorkers, 10000, 3, 1);
    EXPECT_NEAR(static_cast<double>(required), 2.4045e8 / (1 + 2.4045e8 / kMaxWorkers), 1e5);
    // Beyond all range no number qualifies.
    for (const double deviation : {std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_EQ(RequiredSamples(kMaxWorkers, deviation, 1, 1), std::uint64_t{kMaxWorkers} + 1);
    }
}

GroupExposureForm FormOf(std::vector<std::string> levels_dba) {
    GroupExposureForm form;
    form.levels_dba = std::move(levels_dba);
    return form;
}

std::string Describe(const GroupExposureForm& form) {
    return form.sample_count + "|" + form.mean_level_dba + "|" + form.deviation_db + "|" +
           (form.is_validated ? "+" : "-");
}

TEST(GroupExposure, TellsWhetherTheSamplesAreEnough) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"85", "87", "89"}, "3|87.0| 2.0|-"},
        {{"85", "87", "89", "87"}, "4|87.0| 1.6|+"},
        {{"85.25", " 85.25", "85.25x"}, "3|85.3| 0.0|+"},
        {{"85", "86"}, "2|85.5| 0.7|-"},
        {{"85"}, "1|85.0| nan|-"},
        {{}, "0| nan| nan|-"},
        {std::vector<std::string>(10000, "84.9"), "10000|84.9| 0.0|+"},
    };
    for (const auto& [levels_dba, shown] : cases) {
        GroupExposureForm form = FormOf(levels_dba);
        GroupExposureState state;
        EXPECT_FALSE(Recompute(form, state));
        EXPECT_EQ(Describe(form), shown);
    }
}

TEST(GroupExposure, ARefusalKeepsWhatWasReadBefore) {
    GroupExposureForm form = FormOf({"85", "87", "89"});
    GroupExposureState state;
    Recompute(form, state);
    const std::string before = Describe(form);
    form.levels_dba = {"70", "abc", "71"};
    for (const char* total : {"", "3", "abc", "-5", "3.9"}) {
        form.total_workers = total;
        EXPECT_TRUE(Recompute(form, state)) << total;
        EXPECT_EQ(state.levels_dba.front(), 85) << "kept before the samples are read";
    }
    EXPECT_EQ(state.total_workers, 3U);
    for (const auto& [total, read] : {std::pair{" 12.9", 12U}, {"4294967296", kMaxWorkers}}) {
        form.total_workers = total;
        const auto message = Recompute(form, state);
        ASSERT_TRUE(message);
        EXPECT_EQ(message->caption + ": " + message->text, "Errore: Errore nei valori!");
        EXPECT_EQ(state.total_workers, read);
        EXPECT_EQ(state.levels_dba, (std::vector<double>{70, 0, 0}));
    }
    EXPECT_EQ(Describe(form), before);
}

TEST(GroupExposure, AnEmptyTotalAndMissingKeysChangeNothing) {
    GroupExposureForm form = FormOf({"90"});
    form.total_workers = "";
    form.notes = std::string(600, 'n');
    GroupExposureState state;
    KeepForm(form, state);
    EXPECT_EQ(state.total_workers, 10U);
    EXPECT_EQ(state.notes.size(), 512U);
    form.total_workers = "17";
    form.interval = 4;
    form.deviation_db = "prima";
    ASSERT_TRUE(LoadForm(ProfileFile::Parse("[TONVALE]\nTipo=LEG\nFIDUCIA=9\n"), form));
    EXPECT_EQ(form.total_workers + form.deviation_db, "17prima");
    EXPECT_EQ(form.interval + form.confidence, 4 + 9);
    for (const auto& [stored, shown] : {std::pair{"-5", "0"}, {"99999999999", "4294967295"}}) {
        LoadForm(ProfileFile::Parse("[TONVALE]\nTipo=LEG\nTOTLAV=" + std::string(stored)), form);
        EXPECT_EQ(form.total_workers, shown);
    }
}

}  // namespace

}  // namespace tonvale
