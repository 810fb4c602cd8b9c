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
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

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

// What the samples give becomes the first period, what the periods give the first day.
TEST(UncertaintyStudy, ChainsThreeResultsWithoutRetyping) {
    UncertaintyStudy study = ExampleStudy();
    LevelPage level_page = ShowLevelPage(study);
    EXPECT_FALSE(Recompute(level_page, study));
    EXPECT_EQ(Joined(level_page.results) + level_page.sampled_time, " 89.5|0.56|0.90    50");
    EXPECT_EQ(RememberLevel(study).text, "I valori sono stati memorizzati");
    const RememberedTexts level = TextsOf(study.remembered_levels.front());
    DayPage day_page = ShowDayPage(study);
    EXPECT_EQ(day_page.rows[0].level_dba + day_page.rows[0].level_error_db, "89.50.56");
    day_page.rows[0].level_dba = level.level_dba;
    day_page.rows[0].level_error_db = level.error_db;
    Recompute(day_page, study);
    EXPECT_EQ(Joined(day_page.results) + day_page.total_time, " 87.1|0.55|0.89   480");
    EXPECT_EQ(RememberDay(study).caption, "Operazione completata");
    WeekPage week_page = ShowWeekPage(study);
    EXPECT_EQ(week_page.rows[0].level_dba + week_page.rows[0].error_db, "87.10.55");
    week_page.rows[0] = {TextsOf(study.remembered_days.front()).level_dba,
                         TextsOf(study.remembered_days.front()).error_db};
    Recompute(week_page, study);
    EXPECT_EQ(Joined(week_page.results), " 86.7|0.27|0.75");

    study.level.level = {70, 1, 1};
    RememberLevel(study);
    EXPECT_EQ(TextsOf(study.remembered_levels.front()).level_dba, " 70.0");  // newest first
    ASSERT_TRUE(LoadStudy(ProfileFile::Parse("[TONVALE]\nTipo=ERR\n"), study));
    EXPECT_EQ(study.remembered_levels.size() + study.remembered_days.size(), 3U);
    EXPECT_EQ(study.level.level.level_dba + study.day.total_time_s + study.week.level_dba, 0);
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
    EXPECT_EQ(Joined(day.results) + day.total_time, " 85.0|0.00|0.008.00");
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

TEST(UncertaintyReport, TellsTheCalculationOfThePage) {
    UncertaintyStudy study;
    EXPECT_THAT(ReportText(study), IsEmpty());
    study.is_sampled = false;
    study.measured_level_dba = 85.25;
    EXPECT_EQ(ReportText(study),
              "Il livello equivalente non è stato campionato.\r\n"
              "Il livello equivalente (LEQ) è  85.3 dBA.\r\n"
              "L'errore ambientale del LEQ è nullo.\r\n"
              "L'errore dello strumento è 0.70 dBA.\r\n"
              "L'errore totale del LEQ è 0.70 dBA.\r\n");
    study = ExampleStudy();
    ActivatePage(kLevel, study);
    EXPECT_FALSE(ComputePage(study));
    EXPECT_EQ(ReportText(study),
              "Il livello equivalente è stato campionato.\r\n"
              "Il livello equivalente (LEQ) calcolato statisticamente è  89.5 dBA.\r\n"
              "E' stata utilizzata la correzione dovuta al tempo di campionamento.\r\n"
              "Il tempo di campionamento è pari a     50 minuti su un totale di    240 minuti.\r\n"
              "L'errore ambientale del LEQ è 0.56 dBA.\r\n"
              "L'errore dello strumento è 0.70 dBA.\r\n"
              "L'errore totale del LEQ è 0.90 dBA.\r\n");
    study.corrects_time = false;
    EXPECT_THAT(ReportText(study), Not(HasSubstr("tempo")));
    ActivatePage(kDay, study);
    ComputePage(study);
    study.time_unit = 2;
    EXPECT_EQ(ReportText(study),
              "Il livello di esposizione personale quotidiano (LEP,D) è  87.1 dBA.\r\n"
              "Il tempo di esposizione totale è pari a 8.00 ore.\r\n"
              "L'errore ambientale del LEP,D è 0.55 dBA.\r\n"
              "L'errore dello strumento è 0.70 dBA.\r\n"
              "L'errore totale del LEP,D è 0.89 dBA.\r\n");
    study.time_unit = 7;
    EXPECT_THAT(ReportText(study), HasSubstr("pari a  28800.\r\n"));
    study.day.total_time_s = 1e300;
    EXPECT_LE(ReportText(study).size(), 1030U);
    ActivatePage(kWeek, study);
    ComputePage(study);
    study.notes = std::string(600, 'n');
    const Printout printout = MakePrintout(study);
    EXPECT_EQ(printout.document_name, "Errore di misura");
    ASSERT_EQ(printout.lines.size(), 1U);
    EXPECT_EQ(printout.lines[0].left, "Errore sul livello di esposizione personale settimanale");
    EXPECT_EQ(printout.notes.size(), 512U);
    EXPECT_EQ(printout.closing_text,
              "Il livello di esposizione personale settimanale (LEP,W) è  86.7 dBA.\r\n"
              "L'errore ambientale del LEP,W è 0.27 dBA.\r\n"
              "L'errore dello strumento è 0.70 dBA.\r\n"
              "L'errore totale del LEP,W è 0.75 dBA.\r\n");
}

TEST(UncertaintyFile, TheExampleComesBackByteForByte) {
    UncertaintyStudy study = ExampleStudy();
    ProfileFile stored;
    StoreStudy(study, stored);
    EXPECT_EQ(stored.Serialize(), ExampleBytes("stampaggio.err"));
    study.samples.resize(1);
    study.periods.clear();
    StoreStudy(study, stored);
    EXPECT_TRUE(stored.Find("LEQ", "TIME_0"));
    EXPECT_FALSE(stored.Find("LEQ", "TIME_1"));
    EXPECT_FALSE(stored.Find("LEPD", "ITIME_0"));
}

TEST(UncertaintyFile, LoadsWhatAFileHoldsWhateverItClaims) {
    UncertaintyStudy study;
    study.notes = "prima";
    EXPECT_FALSE(LoadStudy(ProfileFile::Parse("[TONVALE]\nTipo=LEG\n"), study));
    EXPECT_EQ(study.notes, "prima");
    ASSERT_TRUE(LoadStudy(
        ProfileFile::Parse("[tonvale]\nTipo= err\n[settings]\nGO_ON_1=x\nTIMEFORM=-2\n[Leq]\n"
                           "NUMITEM=2000000000\nleq_0=1234567890123456789\nLEQ_7=1e999\nTIME_3=-4\n"
                           "LEQ_007=1\nLEQ_-1=1\nTIMETOT=1e9\n[LEPD]\nNUMITEM=1\nLEQ_0=80\n"
                           "LEQ_1=90\n[LEPW]\nNUMITEM=-1\nLEP_0=80\n"),
        study));
    ASSERT_EQ(study.samples.size(), 3U);
    EXPECT_EQ(study.samples[0].level_dba, 123456789012345.0);
    EXPECT_EQ(study.samples[1].time, -4);
    EXPECT_EQ(study.samples[2].level_dba, 0);
    EXPECT_EQ(study.represented_time, 1e9);
    EXPECT_EQ(study.periods.size(), 1U);
    EXPECT_THAT(study.days, IsEmpty());
    // What is missing is 0, not what it was.
    EXPECT_FALSE(study.is_sampled || study.goes_on_from_start);
    EXPECT_EQ(study.instrument_error_db, 0);
    EXPECT_THAT(study.notes, IsEmpty());
}

std::vector<std::string> KeysOf(const Assessment& assessment) {
    std::vector<std::string> keys;
    for (const AssessedResult& result : assessment.results) keys.emplace_back(result.key);
    return keys;
}

Assessment Assess(const std::string& settings, const std::string& rest = "") {
    return AssessUncertainty(ProfileFile::Parse("[TONVALE]\nTipo=ERR\n[SETTINGS]\nINCSTRU=0.70\n" +
                                                settings + "\n[LEQ]\n" + rest));
}

TEST(UncertaintyAssessment, WalksThePagesThatTheFlagsLeadThrough) {
    const Assessment start = Assess("CAMPLEQ=0\nGO_ON_2=1\nGO_ON_3=1", "LEQ_NOCAMP=84.25");
    EXPECT_THAT(start.results, IsEmpty());
    EXPECT_EQ(std::get<double>(start.details[0].value), 115);
    EXPECT_THAT(std::get<std::string>(start.details[1].value), HasSubstr("(LEQ) è  84.3 dBA."));
    EXPECT_THAT(start.summarize(";"), HasSubstr("(dBA):;;84,25\r\nErrore strumento (dBA):;;0,70"));
    EXPECT_THAT(KeysOf(Assess("CAMPLEQ=1\nGO_ON_1=1\nGO_ON_3=1")),
                ElementsAre("LEQ", "LEQ_U", "LEQ_UTOT", "LEQ_TIME"));
    const Assessment week = Assess("GO_ON_1=1\nGO_ON_3=1");
    EXPECT_THAT(KeysOf(week), ElementsAre("LEPD_LEQ", "LEPD", "LEPD_U", "LEPD_UTOT", "LEPD_TIME",
                                          "LEPW", "LEPW_U", "LEPW_UTOT"));
    EXPECT_EQ(week.results[3].shown + week.results[7].shown, "0.700.70");  // without rows
    EXPECT_EQ(week.results[5].shown, "  0.0");
    EXPECT_EQ(week.printout.closing_text, std::get<std::string>(week.details[1].value));

    const Assessment refused =
        Assess("CAMPLEQ=1", "TIMECORR=1\nTIMETOT=1\nNUMITEM=1\nLEQ_0=85\nTIME_0=2\n");
    EXPECT_FALSE(refused.message);
    EXPECT_THAT(refused.warnings, ElementsAre(kTooLongSampling));
    EXPECT_EQ(refused.results[0].shown, " 85.0");
}

}  // namespace
}  // namespace tonvale
