#include "exposure/daily_exposure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

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
    EXPECT_THAT(Results(FormOf({{"85", "8"}}, 2)), ElementsAre("85.0", "8.00", "85.0"));
    EXPECT_THAT(Results(FormOf({{"85", "28800"}}, 0)), ElementsAre("85.0", " 28800", "85.0"));
    EXPECT_THAT(Results(FormOf({{"85", "4"}}, 2)), ElementsAre("85.0", "4.00", "82.0"));
    EXPECT_THAT(Results(FormOf({}, 0)), ElementsAre(" 0.0", "     0", " 0.0"));
    // The typed times are read in the new unit, not converted.
    EXPECT_THAT(Results(FormOf({{"85", "3600"}}, 2))[1], "3600.00");
    // A unit that no list has: seconds.
    EXPECT_THAT(Results(FormOf({{"85", "28800"}}, 7)), ElementsAre("85.0", " 28800", "85.0"));
}

TEST(DailyExposure, ReadsNumbersByThePlainDecimalRule) {
    EXPECT_THAT(Results(FormOf({{"90,5", "  8"}}, 2)), ElementsAre("90.0", "8.00", "90.0"));
    EXPECT_THAT(Results(FormOf({{"-3", "8 ore"}}, 2)), ElementsAre("-3.0", "8.00", "-3.0"));
    EXPECT_THAT(Results(FormOf({{"+85", "-8"}}, 2)), ElementsAre("85.0", "-8.00", " nan"));
    EXPECT_THAT(Results(FormOf({{"1e400", "8"}}, 2))[0], " inf");
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
    const auto message = Recompute(form, state);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->caption, "Errore");
    EXPECT_EQ(message->text, "Errore nei valori!");
    EXPECT_EQ(form.equivalent_level_dba + form.total_time + form.daily_level_dba, "11.12.2233.3");
    EXPECT_THAT(state.levels_dba, ElementsAre(90, 0, 0));
    EXPECT_THAT(state.durations, ElementsAre(1, 0, 0));
}

TEST(DailyExposure, KeptItemsComeBackWithOneDecimal) {
    DailyExposureForm form = FormOf({{"90", "0.25"}, {"85.04", "0.04"}}, 2);
    form.notes = std::string(600, 'n');
    DailyExposureState state;
    KeepForm(form, state);
    EXPECT_EQ(state.notes.size(), 511U);
    EXPECT_EQ(MakePrintout(form).notes.size(), 511U);
    DailyExposureForm reopened = FormFromState(state);
    EXPECT_EQ(reopened.time_unit, 2);
    EXPECT_EQ(reopened.items[0].level_dba, "90.0");
    EXPECT_EQ(reopened.items[0].duration, " 0.3");
    EXPECT_EQ(reopened.items[1].duration, " 0.0");
    // The price of one decimal: a time of 0.04 h is refused at the next opening.
    EXPECT_TRUE(Recompute(reopened, state));
}

TEST(DailyExposure, AFileKeepsEveryTextAsItStands) {
    DailyExposureForm form = FormOf({{" 90", "240"}, {"80", "240.50"}}, 1);
    form.equivalent_level_dba = "87.4";
    form.total_time = "   480";
    form.daily_level_dba = "87.4";
    form.notes = "pressa n. 4\r\n\r\ncosì è";
    ProfileFile file;
    StoreForm(form, file);
    EXPECT_THAT(file.Serialize(),
                StartsWith("[TONVALE]\r\nTipo=LEPD\r\nLAEQ=87.4\r\nTOTTIME=   480\r\nLEPD=87.4\r\n"
                           "TFORM=1\r\nITEMS=2\r\n[LEQ]\r\n1= 90\r\n2=80\r\n[TIME]\r\n1=240\r\n"
                           "2=240.50\r\n[NOTE]\r\n1=pressa n. 4\r\n2=\r\n"));
    DailyExposureForm loaded;
    ASSERT_TRUE(LoadForm(ProfileFile::Parse(file.Serialize()), loaded));
    ProfileFile again;
    StoreForm(loaded, again);
    EXPECT_EQ(again.Serialize(), file.Serialize());
}

TEST(DailyExposure, ASaveOverALongerListLeavesNoSurplus) {
    ProfileFile file = ProfileFile::Parse(
        "; a mano\r\n[TONVALE]\r\nTipo=lepd\r\nITEMS=3\r\n[LEQ]\r\n1=1\r\n2=2\r\n3=3\r\n[TIME]\r\n"
        "1=1\r\n2=2\r\n3=3\r\n[ALTRO]\r\nchiave=\"sua\"\r\n[NOTE]\r\n1=a\r\n2=b\r\nNum=2\r\n");
    StoreForm(FormOf({{"85", "8"}}, 2), file);
    EXPECT_EQ(
        file.Serialize(),
        "; a mano\r\n[TONVALE]\r\nTipo=LEPD\r\nITEMS=1\r\nLAEQ=Laeq\r\nTOTTIME=Te\r\nLEPD=Lepd\r\n"
        "TFORM=2\r\n[LEQ]\r\n1=85\r\n[TIME]\r\n1=8\r\n[ALTRO]\r\nchiave=\"sua\"\r\n"
        "[NOTE]\r\nNum=0\r\n");
}

TEST(DailyExposure, LoadsWhatAFileHoldsWhateverItClaims) {
    DailyExposureForm form = FormOf({{"1", "1"}}, 1);
    form.daily_level_dba = "prima";
    EXPECT_FALSE(LoadForm(ProfileFile::Parse("[TONVALE]\nTipo=LEPW\n"), form));
    EXPECT_EQ(form.items.size(), 1U);

    ASSERT_TRUE(LoadForm(ProfileFile::Parse("[tonvale]\nTIPO = Lepd\nITEMS=2000000000\nLAEQ=90.0\n"
                                            "[leq]\n3=1234567890123456789\n1=90\n2=80\n9x=7\n"
                                            "[time]\n1=8\n3=4\n4=5\n"),
                         form));
    ASSERT_EQ(form.items.size(), 3U);
    EXPECT_EQ(form.items[0].level_dba, "90");
    EXPECT_EQ(form.items[1].duration, "");
    EXPECT_EQ(form.items[2].level_dba, "123456789012345");
    EXPECT_EQ(form.items[2].duration, "4");
    EXPECT_EQ(form.equivalent_level_dba, "90.0");
    EXPECT_EQ(form.daily_level_dba, "prima");  // no key: as it was
    EXPECT_EQ(form.time_unit, 0);              // no key: 0

    ASSERT_TRUE(LoadForm(ProfileFile::Parse("[TONVALE]\nTipo=LEPD\nITEMS=-4\n[LEQ]\n1=9\n"), form));
    EXPECT_TRUE(form.items.empty());
}

TEST(DailyExposure, TheSummaryPartsItsCellsByTheListSeparator) {
    DailyExposureForm form = FormOf({{"90.5", "240"}, {"80", "1.2.3"}}, 1);
    DailyExposureState state;
    Recompute(form, state);
    form.notes = "prima\r\nseconda";
    EXPECT_EQ(Summary(form, ";"),
              "Calcolo del livello di esposizione personale giornaliero al rumore (Lep,d);;;\r\n"
              "Livelli equivalenti (dBA):;;Tempi di esposizione (minuti):\r\n"
              "90,5;;240\r\n"
              "80;;1,2.3\r\n"
              "Livello equivalente (dBA):;;90,5\r\n"
              "Tempo di esposizione (minuti):;;   241\r\n"
              "Lep,d (dBA):;;87,5\r\n"
              "Note:\r\n"
              "prima\r\nseconda\r\n");
}

}  // namespace
}  // namespace tonvale
