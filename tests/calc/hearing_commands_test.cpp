#include "calc/hearing_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/text.h"
#include "tests/calc/recording_console.h"
#include "tests/common/faulty_file_system.h"

namespace tonvale {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class HearingCommands : public ::testing::Test {
  protected:
    int Run(const std::vector<std::string>& arguments) {
        console_ = {};
        return RunCompanion(arguments, files_, console_);
    }
    const std::string& output() const { return console_.output; }
    const std::string& errors() const { return console_.errors; }
    FaultyFileSystem& files() { return files_; }

  private:
    FaultyFileSystem files_;
    RecordingConsole console_;
};

TEST_F(HearingCommands, NiptsPrintsTheTableOfTheDialog) {
    EXPECT_EQ(Run({"nipts"}), 0);
    EXPECT_THAT(output(), AllOf(StartsWith("HTLAN - Hearing Threshold Level associated with Age "
                                           "and Noise\nAnni di esposizione:  35   Leq: 90.0 dBA   "
                                           "Età:  60  Sesso: M   Tabella: Nuova\n"),
                                HasSubstr("\n    10       17.5       19.1       35.7       53.9"
                                          "       65.7       69.2       13.7 *\n")));
    EXPECT_THAT(SplitLines(output()), SizeIs(3 + 19));
    EXPECT_THAT(files().contents, IsEmpty());
    EXPECT_EQ(Run({"nipts", "--quantita=htla", "--eta=25", "--sesso", "f", "--tabella", "biologico",
                   "--formato", "csv", "--separatore", "|"}),
              0);
    EXPECT_THAT(output(), AllOf(StartsWith("HTLA - Hearing Threshold Level associated with Age\r\n"
                                           "Età: 25|Sesso: F|Tabella: Biologico\r\nq (%)|"),
                                HasSubstr("\r\n50| 0,2| 0,2| 0,3| 0,4| 0,4| 0,6| 0,0\r\n")));
}

TEST_F(HearingCommands, NiptsWritesJson) {
    EXPECT_EQ(Run({"nipts", "--formato", "json"}), 0);
    EXPECT_THAT(
        output(),
        AllOf(StartsWith(R"({"title":"HTLAN - Hearing Threshold Level associated with Age and )"
                         R"(Noise","parameters":"Anni di esposizione:  35   Leq: 90.0 dBA   )"
                         R"(Età:  60  Sesso: M   Tabella: Nuova",)"
                         R"("rows":[{"q":"5","fractile":0.05,"values":[20.76)"),
              HasSubstr(R"("q":"55","fractile":0.5499999999999999,)")));
    EXPECT_THAT(output(), HasSubstr("\"flag\":true}"));
    EXPECT_THAT(output(), HasSubstr("\"flag\":false}"));
    EXPECT_EQ(Run({"nipts", "--formato=json", "--quantita=NIPTS", "--anni=-5"}), 0);
    EXPECT_THAT(output(), HasSubstr(R"("values":[null,null,null,null,null,null],"damage":null,)"
                                    R"("flag":false})"));
}

TEST_F(HearingCommands, PrevisioniWritesYearsByLevels) {
    EXPECT_EQ(Run({"previsioni", "--frequenza", "3000", "--frattile", "50", "--livello", "88"}), 0);
    EXPECT_THAT(output(), StartsWith("NIPTS - Noise Induced Permanent Threshold Shift\n"
                                     "Frequenza: 3000 Hz   Frattile: 50 %\n"
                                     "  Anni     88 dBA     90 dBA"));
    EXPECT_EQ(Run({"previsioni", "--frequenza=3000", "--frattile=50", "--formato=json"}), 0);
    EXPECT_THAT(output(), StartsWith(R"({"levels":[88,90,92,94,96,98,100],"years":[2,4,)"));
    // 10 years at 90 dBA stand in the fifth row, second column.
    EXPECT_THAT(output(), HasSubstr("],[5.929,8.281,"));
}

TEST_F(HearingCommands, RefusesWhatTheDialogsRefuse) {
    EXPECT_EQ(Run({"nipts", "--anni", "41"}), 1);
    EXPECT_EQ(errors(), "Anni di esposizione.: Errore! Dati non validi\n");
    EXPECT_THAT(output(), IsEmpty());
    EXPECT_EQ(Run({"nipts", "--eta", "50", "--svg", "a.svg"}), 1);
    EXPECT_EQ(Run({"previsioni", "--livello", "89"}), 1);
    EXPECT_EQ(errors(), "Livello di esposizione.: Errore! Dati non validi\n");
    EXPECT_THAT(files().contents, IsEmpty());
}

TEST_F(HearingCommands, RefusesAWrongCommandLine) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"nipts", "--quantita", "ANIPTS"},
                                               {"nipts", "--sesso", "X"},
                                               {"nipts", "--vista", "tempo"},
                                               {"nipts", "35"},
                                               {"previsioni", "--frattile", "7"},
                                               {"previsioni", "--frequenza", "1500"},
                                               {"previsioni", "--vista", "audiogramma"},
                                               {"previsioni", "--eta", "60"}}) {
        EXPECT_EQ(Run(arguments), 2) << arguments[1];
        EXPECT_THAT(errors(), AllOf(StartsWith("tonvale-calc: "), HasSubstr("(vedere --help)")));
        EXPECT_THAT(output(), IsEmpty());
    }
}

TEST_F(HearingCommands, DrawsTheViewAsSvg) {
    EXPECT_EQ(Run({"nipts", "--svg", "g.svg"}), 0);
    EXPECT_THAT(files().contents["g.svg"],
                AllOf(StartsWith("<svg"), HasSubstr(">q (%)</text>"), HasSubstr("#ff00ff")));
    EXPECT_EQ(Run({"nipts", "--svg", "a.svg", "--vista", "audiogramma"}), 0);
    EXPECT_THAT(files().contents["a.svg"], HasSubstr(">f (Hz)</text>"));
    EXPECT_EQ(Run({"previsioni", "--svg", "t.svg"}), 0);
    EXPECT_THAT(files().contents["t.svg"], HasSubstr(">anni</text>"));
    EXPECT_EQ(Run({"previsioni", "--svg", "l.svg", "--vista", "livello"}), 0);
    EXPECT_THAT(files().contents["l.svg"], HasSubstr(">35 anni</text>"));
    EXPECT_THAT(files().contents, SizeIs(4));
    files().steps_to_failure = 1;
    EXPECT_EQ(Run({"previsioni", "--svg", "pieno.svg"}), 2);
    EXPECT_EQ(errors(), "pieno.svg: impossibile scrivere il file\n");
    EXPECT_THAT(files().contents, SizeIs(4));
}

}  // namespace
}  // namespace tonvale
