#include "exposure/weekly_exposure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "exposure/exposure_level.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;

using Week = std::array<std::string, kWeekDays>;

WeeklyExposureForm FormOf(Week levels_dba) {
    WeeklyExposureForm form;
    form.levels_dba = std::move(levels_dba);
    return form;
}

std::string Result(Week levels_dba) {
    WeeklyExposureForm form = FormOf(std::move(levels_dba));
    WeeklyExposureState state;
    Recompute(form, state);
    return form.weekly_level_dba;
}

TEST(WeeklyExposure, DividesTheEnergyOfSevenDaysByFive) {
    EXPECT_EQ(Result({"90", "90", "90", "90", "90", "0", "0"}), "90.0");
    EXPECT_EQ(Result({"90", "0", "0", "0", "0", "0", "0"}), "83.0");
    // 10 lg(7/5): a day of 0 dBA counts with the energy 1, and there are seven of them.
    EXPECT_EQ(Result({"0.0", "0.0", "0.0", "0.0", "0.0", "0.0", "0.0"}), " 1.5");
    EXPECT_EQ(Result({"-10", "-10", "-10", "-10", "-10", "-10", "-10"}), "-8.5");
    // No energy at all.
    EXPECT_EQ(Result({"-9999", "-9999", "-9999", "-9999", "-9999", "-9999", "-1e400"}), " 0.0");
    EXPECT_EQ(Result({"1e4", "", "", "", "", "", ""}), " inf");
    // Relative to the loudest day: 100 + 10 lg((1 + 2 x 0.1 + 4 x 0.01) / 5).
    const std::vector<double> week{80, 90, 80, 100, 80, 90, 80};
    EXPECT_NEAR(WeeklyExposureLevel(week), 100 + 10 * std::log10(0.248), 1e-10);
}

TEST(WeeklyExposure, KeepsTheDaysOfTheLastComputation) {
    WeeklyExposureState state;
    WeeklyExposureForm form = FormOf({"90,5", " 85.26x", "", "abc", "-3", "1e300", "0x5A"});
    Recompute(form, state);
    EXPECT_THAT(state.levels_dba, ElementsAre(90, 85.26, 0, 0, -3, 1e300, 0));
    EXPECT_EQ(form.levels_dba[1], " 85.26x");
    EXPECT_FALSE(LoadForm(ProfileFile::Parse("[TONVALE]\nTipo=LEPD\n"), form));
    form.levels_dba.fill("50");  // as a file that is not computed with
    form.notes = std::string(600, 'n');
    KeepForm(form, state);
    EXPECT_EQ(state.notes.size(), 512U);
    EXPECT_EQ(MakePrintout(form).notes.size(), 512U);
    EXPECT_THAT(FormFromState(state).levels_dba,
                ElementsAre("90.0", "85.3", " 0.0", " 0.0", "-3.0", "100000000000000", " 0.0"));
}

}  // namespace

}  // namespace tonvale
