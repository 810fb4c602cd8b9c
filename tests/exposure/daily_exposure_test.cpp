#include "exposure/daily_exposure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tonvale {
namespace {

using ::testing::ElementsAre;

DailyExposureForm FormOf(std::vector<ExposureItem> items, int time_unit) {
    DailyExposureForm form;
    form.items = std::move(items);
    form.time_unit = time_unit;
    return form;
}

std::vector<std::string> Results(DailyExposureForm form) {
    DailyExposureState state;
    EXPECT_FALSE(Recompute(form, state));
    return {form.equivalent_level_dba, form.total_time, form.daily_level_dba};
}

TEST(DailyExposure, ShowsItsResultsInEveryUnit) {
    EXPECT_THAT(Results(FormOf({{"90", "240"}, {"80", "240"}}, 1)),
                ElementsAre("87.4", "   480", "87.4"));
    EXPECT_THAT(Results(FormOf({{"85", "28800"}}, 0)), ElementsAre("85.0", " 28800", "85.0"));
    EXPECT_THAT(Results(FormOf({{"85", "4"}}, 2)), ElementsAre("85.0", "4.00", "82.0"));
    EXPECT_THAT(Results(FormOf({{"+85", "-8"}}, 2)), ElementsAre("85.0", "-8.00", " nan"));
}

TEST(DailyExposure, AnItemIsTwoNumbersThatAreNotZero) {
    for (const char* not_a_number : {"", "0", "0.0", "abc", "inf", "nan", "0x1A", ".", "-"}) {
        EXPECT_EQ(CheckExposureItem({not_a_number, "8"})->caption, "Livello di esposizione");
        const auto refusal = CheckExposureItem({"85", not_a_number});
        ASSERT_TRUE(refusal) << not_a_number;
        EXPECT_EQ(refusal->caption, "Tempo esposizione ");
        EXPECT_EQ(refusal->text, "Errore. Inserire valori numerici!");
    }
    EXPECT_FALSE(CheckExposureItem({"85", "0.01"}));
}

TEST(DailyExposure, AZeroStopsTheComputationAndLeavesTheResults) {
    DailyExposureForm form = FormOf({{"90", "1"}, {"80", "0"}, {"70", "2"}}, 2);
    form.equivalent_level_dba = "11.1";
    form.total_time = "2.22";
    form.daily_level_dba = "33.3";
    DailyExposureState state;
    EXPECT_TRUE(Recompute(form, state));
    EXPECT_EQ(form.equivalent_level_dba + form.total_time + form.daily_level_dba, "11.12.2233.3");
    EXPECT_THAT(state.levels_dba, ElementsAre(90, 0, 0));
    EXPECT_THAT(state.durations, ElementsAre(1, 0, 0));
}

TEST(DailyExposure, KeptItemsHaveOneDecimalAndCutNotes) {
    DailyExposureForm form = FormOf({{"90", "0.25"}, {"85.04", "0.04"}}, 2);
    form.notes = std::string(600, 'n');
    DailyExposureState state;
    KeepForm(form, state);
    EXPECT_EQ(state.notes.size(), 511U);
    EXPECT_EQ(MakePrintout(form).notes.size(), 511U);
    DailyExposureForm reopened = FormFromState(state);
    // The price of one decimal: a time of 0.04 h is refused at the next opening.
    EXPECT_TRUE(Recompute(reopened, state));
}

TEST(DailyExposure, WhatAFileLacksStays) {
    DailyExposureForm form = FormOf({{"1", "1"}}, 1);
    form.daily_level_dba = "prima";
    EXPECT_FALSE(LoadForm(ProfileFile::Parse("[TONVALE]\nTipo=LEPW\n"), form));
    EXPECT_EQ(form.items.size(), 1U);
    ASSERT_TRUE(LoadForm(ProfileFile::Parse("[TONVALE]\nTipo=LEPD\nLAEQ=90.0\n"), form));
    EXPECT_EQ(form.equivalent_level_dba + form.daily_level_dba, "90.0prima");
}

}  // namespace

}  // namespace tonvale
