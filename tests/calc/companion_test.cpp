#include "calc/companion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/calc/recording_console.h"
#include "tests/common/faulty_file_system.h"

namespace tonvale {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kGood =
    "[TONVALE]\r\nTipo=LEPD\r\nLAEQ=87.4\r\nTOTTIME=480\r\nLEPD=87.4\r\nTFORM=1\r\nITEMS=2\r\n"
    "[LEQ]\r\n1=90\r\n2=80\r\n[TIME]\r\n1=240\r\n2=240\r\n[NOTE]\r\nNum=1\r\n1=a mano\r\n";
constexpr const char* kEdited =
    "[TONVALE]\r\nTipo=LEPD\r\nLAEQ=87.4\r\nTOTTIME=   480\r\nLEPD=84.4\r\nTFORM=1\r\nITEMS=2\r\n"
    "[LEQ]\r\n1=90\r\n2=80\r\n[TIME]\r\n1=240\r\n2=240\r\n";
constexpr const char* kRefused =
    "[TONVALE]\r\nTipo=LEPD\r\nLEPD=84.4\r\nTFORM=1\r\nITEMS=1\r\n[LEQ]\r\n1=0\r\n";

constexpr const char* kWeek =
    "[TONVALE]\r\nTipo=LEPW\r\nLEPW=90.0\r\n[GIORNI]\r\nLunedi=90\r\nDomenica=90,5\r\n";

struct Outcome {
    int status;
    std::string output;
    std::string errors;
};

Outcome Execute(const std::vector<std::string>& arguments) {
    FaultyFileSystem files;
    files.contents = {{"buono.lep", kGood},   {"ritoccato.lep", kEdited},
                      {"zero.lep", kRefused}, {"settimana.lew", kWeek},
                      {"altro.txt", "ciao"},  {"spettro.spr", "[TONVALE]\r\nTipo=SPR\r\n"}};
    RecordingConsole console;
    const int status = RunCompanion(arguments, files, console);
    return {status, console.output, console.errors};
}

TEST(Companion, CalcolaPrintsTheReport) {
    const Outcome one = Execute({"calcola", "buono.lep"});
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.output,
              "Livello di esposizione personale settimanale (Lep,w)\n"
              "Livelli sonori equivalenti (dBA):  Tempi di esposizione (m):\n"
              "90                                 240\n"
              "80                                 240\n"
              "Livello equivalente (dBA):         87.4\n"
              "Tempo d'esposizione totale (m):       480\n"
              "Lep,d (dBA):                       87.4\n\na mano\n");
    const Outcome two = Execute({"calcola", "--formato", "testo", "buono.lep", "ritoccato.lep"});
    EXPECT_THAT(two.output, StartsWith("== buono.lep ==\n"));
    EXPECT_THAT(two.output, HasSubstr("\n\n== ritoccato.lep ==\n"));
}

TEST(Companion, CalcolaWritesTheSummaryWithTheSeparator) {
    const std::string line = "Lep,d (dBA):\t\t87,4\r\n";
    EXPECT_THAT(Execute({"calcola", "--formato=csv", "--separatore=\t", "buono.lep"}).output,
                HasSubstr(line));
    EXPECT_THAT(Execute({"calcola", "--formato", "csv", "buono.lep"}).output,
                HasSubstr("90;;240\r\n"));
}

TEST(Companion, CalcolaWritesOneJsonObjectALine) {
    const Outcome good = Execute({"calcola", "--formato", "json", "ritoccato.lep"});
    EXPECT_EQ(good.status, 0);
    EXPECT_THAT(good.output,
                StartsWith(R"({"file":"ritoccato.lep","kind":"LEPD","shown":{"LAEQ":"87.4",)"
                           R"("TOTTIME":"   480","LEPD":"87.4"},"values":{"LAEQ":87.403626)"));
    EXPECT_THAT(good.output, HasSubstr(R"(,"TOTTIME":480,"LEPD":87.40362)"));
    EXPECT_THAT(good.output,
                EndsWith(R"("stored":{"LAEQ":"87.4","TOTTIME":"   480","LEPD":"84.4"},)"
                         R"("consistent":false,"message":null})"
                         "\n"));
    const Outcome refused = Execute({"calcola", "--formato", "json", "zero.lep"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, R"({"file":"zero.lep","kind":"LEPD","shown":null,"values":null,)"
                              R"("stored":{"LEPD":"84.4"},"consistent":false,)"
                              R"("message":{"caption":"Errore","text":"Errore nei valori!"}})"
                              "\n");
}

TEST(Companion, KnowsTheWeek) {
    // 10 lg((2 * 10^9 + 5) / 5): five days are missing, and a comma ends a number.
    EXPECT_EQ(Execute({"calcola", "settimana.lew"}).output,
              "Livello di esposizione personale settimanale (Lep,w)\n"
              "Giorni della settimana:  Lep,d corrispondenti (dBA):\n"
              "Lunedi                   90\nMartedi\nMercoledi\nGiovedi\nVenerdi\nSabato\n"
              "Domenica                 90,5\n"
              "Lep,w (dBA):             86.0\n");
    EXPECT_THAT(Execute({"calcola", "--formato", "csv", "settimana.lew"}).output,
                HasSubstr("Martedi;;\r\n"));
    EXPECT_THAT(Execute({"calcola", "--formato", "json", "settimana.lew"}).output,
                HasSubstr(R"("kind":"LEPW","shown":{"LEPW":"86.0"},"values":{"LEPW":86.020599)"));
    const Outcome outcome = Execute({"verifica", "settimana.lew"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, StartsWith("settimana.lew: LEPW salvato \"90.0\", ricalcolato "
                                           "\"86.0\"\n"));
}

TEST(Companion, VerificaFindsWhatTheInputsDoNotGive) {
    const Outcome good = Execute({"verifica", "buono.lep"});
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.output, "File verificati: 1, non coerenti: 0\n");
    const Outcome mixed = Execute({"verifica", "buono.lep", "ritoccato.lep", "zero.lep"});
    EXPECT_EQ(mixed.status, 1);
    EXPECT_EQ(mixed.output,
              "ritoccato.lep: LEPD salvato \"84.4\", ricalcolato \"87.4\"\n"
              "zero.lep: Errore nei valori!\n"
              "File verificati: 3, non coerenti: 2\n");
}

TEST(Companion, GoesOnPastFilesThatItCannotTake) {
    const Outcome outcome =
        Execute({"verifica", "manca.lep", "altro.txt", "spettro.spr", "ritoccato.lep"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.output, HasSubstr("ritoccato.lep: LEPD"));
    EXPECT_THAT(outcome.output, EndsWith("File verificati: 1, non coerenti: 1\n"));
    EXPECT_EQ(outcome.errors,
              "manca.lep: il file non esiste\n"
              "altro.txt: tipo di file sconosciuto\n"
              "spettro.spr: il calcolo di questo tipo non è disponibile\n");
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

}  // namespace
}  // namespace tonvale
