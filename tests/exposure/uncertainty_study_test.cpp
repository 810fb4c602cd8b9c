#include "exposure/uncertainty_study.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "exposure/uncertainty_file.h"
#include "exposure/uncertainty_report.h"
#include "tests/exposure/example_file.h"

namespace tonvale {
namespace {

using enum UncertaintyPage;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::string_view kTooLongSampling =
    "Il tempo totale è inferiore al tempo di campionamento: la correzione del tempo non verrà "
    "applicata!";

std::string Joined(const LevelTexts& texts) {
    return texts.level_dba + "|" + texts.environmental_error_db + "|" + texts.total_error_db;
}

UncertaintyStudy ExampleStudy() {
    UncertaintyStudy study;
    EXPECT_TRUE(LoadStudy(ProfileFile::Parse(ExampleBytes("stampaggio.err")), study));
    return study;
}

TEST(UncertaintyStudy, RemembersTheNewestFirstAndBeyondAFile) {
    UncertaintyStudy study = ExampleStudy();
    study.level.level = {89.487, 0.5622, 0.9};
    study.day.day = {87.1, 0.55, 0.89};
    EXPECT_EQ(RememberLevel(study).text, "I valori sono stati memorizzati");
    EXPECT_EQ(RememberDay(study).caption, "Operazione completata");
    EXPECT_EQ(TextsOf(study.remembered_levels.front()).level_dba, " 89.5");
    EXPECT_EQ(TextsOf(study.remembered_levels.front()).error_db, "0.56");
    study.level.level = {70, 1, 1};
    RememberLevel(study);
    EXPECT_EQ(TextsOf(study.remembered_levels.front()).level_dba, " 70.0");
    ASSERT_TRUE(LoadStudy(ProfileFile::Parse("[TONVALE]\nTipo=ERR\n"), study));
    EXPECT_EQ(study.remembered_levels.size() + study.remembered_days.size(), 3U);
    EXPECT_EQ(study.level.level.level_dba + study.day.total_time_s + study.week.level_dba, 0);
    EXPECT_FALSE(study.is_sampled || study.goes_on_from_start);
}

TEST(UncertaintyStudy, PagesLeadWhereTheirChoicesSay) {
    UncertaintyStudy study;
    const auto next = [&](UncertaintyPage page, bool goes_on) {
        ActivatePage(page, study);
        study.goes_on_from_start = study.goes_on_from_level = study.goes_on_from_day = goes_on;
        return NextPage(study);
    };
    EXPECT_EQ(next(kStart, true), kLevel);
    study.is_sampled = false;
    EXPECT_EQ(next(kStart, true), kDay);
    EXPECT_EQ(PreviousPage(kDay, study), kStart);
    EXPECT_EQ(next(kStart, false), kResults);
    EXPECT_EQ(PreviousPage(kDay, study), kLevel);
    EXPECT_EQ(next(kLevel, true), kDay);
    EXPECT_EQ(next(kLevel, false), kResults);
    EXPECT_EQ(next(kDay, true), kWeek);
    EXPECT_EQ(next(kDay, false), kResults);
    EXPECT_EQ(next(kWeek, true), kResults);
    ActivatePage(kResults, study);
    EXPECT_EQ(PreviousPage(kResults, study), kWeek);
    EXPECT_EQ(PreviousPage(kWeek, study), kDay);
    EXPECT_EQ(PreviousPage(kLevel, study), kStart);

    StartPage page{
        .is_sampled = false, .measured_level_dba = "", .instrument_error_db = "", .goes_on = true};
    ChooseSampled(false, page);
    EXPECT_TRUE(page.goes_on);
    ChooseSampled(true, page);
    EXPECT_FALSE(page.goes_on);
    KeepPage(page, study);
    EXPECT_TRUE(study.is_sampled);
}

TEST(UncertaintyStudy, PagesTakeTextsAsTheyCome) {
    UncertaintyStudy study;
    LevelPage page = ShowLevelPage(study);
    EXPECT_EQ(page.instrument_error_db + " " + page.represented_time, "0.70 8.00");
    EXPECT_EQ(Joined(page.results), "  0.0|0.00|0.00");
    page.rows = {{"85.25", "5"}, {"abc", "-3"}, {"1e999", "7.25"}};
    page.instrument_error_db = "x";
    page.time_unit = 2;
    EXPECT_FALSE(Recompute(page, study));
    EXPECT_EQ(page.sampled_time, "0.00");      // without the correction times count as 0
    EXPECT_EQ(page.rows[2].time, "7.25");      // and stay as typed
    EXPECT_EQ(study.samples[2].level_dba, 0);  // beyond all range
    EXPECT_EQ(study.instrument_error_db, 0);
    page.corrects_time = true;
    const auto message = Recompute(page, study);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->text, kTooLongSampling);
    EXPECT_EQ(message->caption, "Errore nell'inserimento dei dati");
    EXPECT_EQ(message->icon, MessageIcon::kExclamation);
    EXPECT_EQ(page.sampled_time, "9.25");
    page.represented_time = "9.25";
    EXPECT_FALSE(Recompute(page, study));
    EXPECT_EQ(page.results.environmental_error_db, "0.00");
    // Reopened, no digit is lost.
    EXPECT_EQ(ShowLevelPage(study).rows[0].level_dba, "85.25");
    EXPECT_EQ(ShowLevelPage(study).rows[1].level_dba, "0.0");

    DayPage day = ShowDayPage(study);
    EXPECT_EQ(day.time_unit, 2);
    day.rows = {{"85", "8", "0", "x"}};
    day.goes_on = true;
    Recompute(day, study);
    for (const DayPage& shown : {day, ShowDayPage(study)}) {
        EXPECT_EQ(Joined(shown.results) + shown.total_time, " 85.0|0.00|0.008.00");
        EXPECT_EQ(shown.instrument_error_db, "0.00");
    }
    EXPECT_TRUE(study.goes_on_from_day);
    day.time_unit = 1;
    Recompute(day, study);
    EXPECT_EQ(day.total_time, "     8");
    EXPECT_EQ(ShowWeekPage(study).rows.size(), 7U);
    EXPECT_EQ(ShowWeekPage(study).rows[6].level_dba, "0.0");
}

TEST(UncertaintyStudy, DurationErrorsFollowTheirMode) {
    using enum DurationErrorMode;
    EXPECT_EQ(DurationErrorText(kZero, "7", "480", "5", "1", 1), "0");
    EXPECT_EQ(DurationErrorText(kAbsolute, "7x", "480", "5", "1", 1), "7x");
    EXPECT_EQ(DurationErrorText(kPercent, "7", "480", "5", "1", 1), "24.0000");
    EXPECT_EQ(DurationErrorText(kPercent, "7", "7.25", "5", "0.1", 2), "   0.36");
    EXPECT_EQ(DurationErrorText(kPercent, "7", "480", "5", "30", 0), "30.0000");
    EXPECT_EQ(DurationErrorText(kPercent, "7", "abc", "", "", 0), " 0.0000");
    EXPECT_EQ(DurationErrorText(kPercent, "", "9e307", "9e9", "", 2), "   0.00");
}

TEST(UncertaintyReport, IsCutAndHasItsNotes) {
    UncertaintyStudy study = ExampleStudy();
    ActivatePage(kStart, study);
    EXPECT_THAT(ReportText(UncertaintyStudy()), IsEmpty());
    ActivatePage(kDay, study);
    ComputePage(study);
    study.time_unit = 7;
    EXPECT_THAT(ReportText(study), HasSubstr("pari a  28800.\r\n"));
    study.day.total_time_s = 1e300;
    EXPECT_LE(ReportText(study).size(), 1030U);
    study.notes = std::string(600, 'n');
    EXPECT_EQ(MakePrintout(study).notes.size(), 512U);
}

}  // namespace
}  // namespace tonvale
