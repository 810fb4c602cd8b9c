#include "calc/companion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/text.h"
#include "tests/calc/recording_console.h"
#include "tests/common/faulty_file_system.h"

namespace tonvale {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kGood =
    "[TONVALE]\r\nTipo=LEPD\r\nLAEQ=87.4\r\nTOTTIME=480\r\nLEPD=87.4\r\nTFORM=1\r\nITEMS=2\r\n"
    "[LEQ]\r\n1=90\r\n2=80\r\n[TIME]\r\n1=240\r\n2=240\r\n[NOTE]\r\nNum=1\r\n1=a mano\r\n";
constexpr const char* kEdited =
    "[TONVALE]\r\nTipo=LEPD\r\nLAEQ=87.3\r\nTOTTIME=   480\r\nLEPD=84.4\r\nTFORM=1\r\nITEMS=2\r\n"
    "[LEQ]\r\n1=90\r\n2=80\r\n[TIME]\r\n1=240\r\n2=240\r\n";
constexpr const char* kRefused =
    "[TONVALE]\r\nTipo=LEPD\r\nLEPD=84.4\r\nTFORM=1\r\nITEMS=1\r\n[LEQ]\r\n1=0\r\n";

struct Outcome {
    int status;
    std::string output;
    std::string errors;
};

Outcome Execute(const std::vector<std::string>& arguments) {
    FaultyFileSystem files;
    files.contents = {{"buono.lep", kGood},
                      {"ritoccato.lep", kEdited},
                      {"zero.lep", kRefused},
                      {"altro.txt", "ciao"},
                      {"udito.ilg", "[TONVALE]\r\nTipo=ILG\r\n"}};
    RecordingConsole console;
    const int status = RunCompanion(arguments, files, console);
    return {status, console.output, console.errors};
}

TEST(Companion, CalcolaHeadsEachOfSeveralReports) {
    EXPECT_THAT(Execute({"calcola", "buono.lep"}).output, StartsWith("Livello di esposizione"));
    const Outcome two = Execute({"calcola", "--formato", "testo", "buono.lep", "ritoccato.lep"});
    EXPECT_THAT(two.output, StartsWith("== buono.lep ==\n"));
    EXPECT_THAT(two.output, HasSubstr("\n\n== ritoccato.lep ==\n"));
    EXPECT_THAT(Execute({"calcola", "--formato=csv", "--separatore=|", "buono.lep"}).output,
                EndsWith("Lep,d (dBA):||87,4\r\nNote:\r\na mano\r\n"));
}

TEST(Companion, CalcolaWritesOneJsonObjectALine) {
    const Outcome good = Execute({"calcola", "--formato", "json", "ritoccato.lep"});
    EXPECT_EQ(good.status, 0);
    EXPECT_THAT(good.output,
                StartsWith(R"({"file":"ritoccato.lep","kind":"LEPD","shown":{"LAEQ":"87.4",)"
                           R"("TOTTIME":"   480","LEPD":"87.4"},"values":{"LAEQ":87.403626)"));
    EXPECT_THAT(good.output, HasSubstr(R"(,"TOTTIME":480,"LEPD":87.40362)"));
    EXPECT_THAT(good.output,
                EndsWith(R"("stored":{"LAEQ":"87.3","TOTTIME":"   480","LEPD":"84.4"},)"
                         R"("consistent":false,"message":null})"
                         "\n"));
    const Outcome refused = Execute({"calcola", "--formato", "json", "zero.lep"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, R"({"file":"zero.lep","kind":"LEPD","shown":null,"values":null,)"
                              R"("stored":{"LEPD":"84.4"},"consistent":false,)"
                              R"("message":{"caption":"Errore","text":"Errore nei valori!"}})"
                              "\n");
}

TEST(Companion, VerificaFindsWhatTheInputsDoNotGive) {
    const Outcome good = Execute({"verifica", "buono.lep"});
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.output, "File verificati: 1, non coerenti: 0\n");
    const Outcome mixed = Execute({"verifica", "buono.lep", "ritoccato.lep", "zero.lep"});
    EXPECT_EQ(mixed.status, 1);
    EXPECT_EQ(mixed.output,
              "ritoccato.lep: LAEQ salvato \"87.3\", ricalcolato \"87.4\"; "
              "LEPD salvato \"84.4\", ricalcolato \"87.4\"\n"
              "zero.lep: Errore nei valori!\n"
              "File verificati: 3, non coerenti: 2\n");
}

TEST(Companion, GoesOnPastFilesThatItCannotTake) {
    const Outcome outcome =
        Execute({"verifica", "manca.lep", "altro.txt", "udito.ilg", "ritoccato.lep"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.output, HasSubstr("ritoccato.lep: LAEQ"));
    EXPECT_THAT(outcome.output, EndsWith("File verificati: 1, non coerenti: 1\n"));
    EXPECT_EQ(outcome.errors,
              "manca.lep: il file non esiste\n"
              "altro.txt: tipo di file sconosciuto\n"
              "udito.ilg: il calcolo di questo tipo non è disponibile\n");
    EXPECT_EQ(Execute({"calcola", "manca.lep", "buono.lep"}).status, 2);
}

TEST(Companion, RefusesAWrongCommandLineAndSaysWhy) {
    EXPECT_EQ(Execute({}).status, 2);
    EXPECT_THAT(Execute({"calcolo"}).errors, HasSubstr("comando sconosciuto: calcolo"));
    EXPECT_THAT(Execute({"calcola"}).errors, HasSubstr("nessun file indicato"));
    EXPECT_THAT(Execute({"calcola", "--formato", "xml", "buono.lep"}).errors,
                HasSubstr("formato sconosciuto: xml"));
    EXPECT_THAT(Execute({"calcola", "buono.lep", "--formato"}).errors,
                HasSubstr("manca il valore"));
    EXPECT_THAT(Execute({"verifica", "--formato", "csv"}).errors, HasSubstr("opzione sconosciuta"));
    EXPECT_THAT(Execute({"calcola", "--", "--formato"}).errors, HasSubstr("--formato: il file"));
    const Outcome help = Execute({"calcola", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr("tonvale-calc verifica FILE..."));
}

// --- The commands of hearing loss --------------------------------------------------------------

class HearingCommands : public ::testing::Test {
  protected:
    int Run(const std::vector<std::string>& arguments) {
        console_ = {};
        return RunCompanion(arguments, files_, console_);
    }

    FaultyFileSystem files_;
    RecordingConsole console_;
};

TEST_F(HearingCommands, RefusesWhatTheDialogsRefuse) {
    EXPECT_EQ(Run({"nipts", "--anni", "41"}), 1);
    EXPECT_EQ(console_.errors, "Anni di esposizione: Errore! Dati non validi\n");
    EXPECT_THAT(console_.output, IsEmpty());
    EXPECT_EQ(Run({"nipts", "--eta", "50", "--svg", "a.svg"}), 1);
    EXPECT_EQ(Run({"previsioni", "--livello", "89"}), 1);
    EXPECT_EQ(console_.errors, "Livello di esposizione: Errore! Dati non validi\n");
    EXPECT_THAT(files_.contents, IsEmpty());
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
        EXPECT_THAT(console_.errors,
                    AllOf(StartsWith("tonvale-calc: "), HasSubstr("(vedere --help)")));
        EXPECT_THAT(console_.output, IsEmpty());
    }
}

TEST_F(HearingCommands, TellThatAPictureCannotBeWritten) {
    files_.steps_to_failure = 1;
    EXPECT_EQ(Run({"previsioni", "--svg", "pieno.svg"}), 2);
    EXPECT_EQ(console_.errors, "pieno.svg: impossibile scrivere il file: il disco è pieno\n");
    EXPECT_THAT(files_.contents, IsEmpty());
}

}  // namespace
}  // namespace tonvale
