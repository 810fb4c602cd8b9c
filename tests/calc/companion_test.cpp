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
using ::testing::SizeIs;
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
    "[TONVALE]\r\nTipo=LEPW\r\nLEPW=90.0\r\n[GIORNI]\r\nLunedi=90.0\r\nDomenica=90,5\r\n";

constexpr const char* kGroup =
    "[TONVALE]\r\nTipo=LEG\r\nSAMPLES=2\r\nLEQGROUP=87.0\r\nDEVST=2.8\r\nTOTLAV=10\r\n"
    "ITEMS=2\r\n[LEQ]\r\n1=85\r\n2=89\r\n";
constexpr const char* kStudy =
    "[TONVALE]\r\nTipo=ERR\r\n[SETTINGS]\r\nCAMPLEQ=1\r\nINCSTRU=0.70\r\n[LEQ]\r\n"
    "TIMECORR=1\r\nTIMETOT=1\r\nNUMITEM=1\r\nLEQ_0=85\r\nTIME_0=2\r\n";

struct Outcome {
    int status;
    std::string output;
    std::string errors;
};

Outcome Execute(const std::vector<std::string>& arguments) {
    FaultyFileSystem files;
    files.contents = {{"buono.lep", kGood},   {"ritoccato.lep", kEdited},
                      {"zero.lep", kRefused}, {"settimana.lew", kWeek},
                      {"gruppo.leg", kGroup}, {"misura.err", kStudy},
                      {"altro.txt", "ciao"},  {"udito.ilg", "[TONVALE]\r\nTipo=ILG\r\n"}};
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
              "Lunedi                   90.0\nMartedi\nMercoledi\nGiovedi\nVenerdi\nSabato\n"
              "Domenica                 90,5\n"
              "Lep,w (dBA):             86.0\n");
    EXPECT_THAT(Execute({"calcola", "--formato=csv", "--separatore=|", "settimana.lew"}).output,
                EndsWith("|||\r\nGiorno della settimana:||Lep,d (dBA):\r\nLunedi||90,0\r\n"
                         "Martedi||\r\nMercoledi||\r\nGiovedi||\r\nVenerdi||\r\nSabato||\r\n"
                         "Domenica||90,5\r\nLep,w (dBA):||86,0\r\nNote:\r\n\r\n"));
    EXPECT_THAT(Execute({"calcola", "--formato", "json", "settimana.lew"}).output,
                HasSubstr(R"("kind":"LEPW","shown":{"LEPW":"86.0"},"values":{"LEPW":86.020599)"));
    EXPECT_THAT(Execute({"verifica", "settimana.lew"}).output,
                StartsWith("settimana.lew: LEPW salvato \"90.0\", ricalcolato \"86.0\"\n"));
}

TEST(Companion, TellsDetailsBesideTheResults) {
    EXPECT_THAT(Execute({"calcola", "--formato", "json", "gruppo.leg"}).output,
                AllOf(HasSubstr(R"("shown":{"SAMPLES":"2","LEQGROUP":"87.0","DEVST":" 2.8"})"),
                      EndsWith(R"("consistent":true,"message":null,"details":{"required":null,)"
                               R"("verdict":"Per far partire il calcolo è necessario inserire )"
                               R"(almeno 3 campioni"}})"
                               "\n")));
    const Outcome study = Execute({"calcola", "--formato", "json", "misura.err"});
    EXPECT_EQ(study.status, 0);
    EXPECT_THAT(study.output,
                AllOf(HasSubstr(R"("shown":{"LEQ":" 85.0","LEQ_U":"0.00","LEQ_UTOT":"0.70",)"
                                R"("LEQ_TIME":"     2"},"values":)"),
                      HasSubstr(R"("stored":{},"consistent":true,"message":null,)"
                                R"("details":{"page":116,"text":"Il livello)"),
                      HasSubstr(R"("warnings":["Il tempo totale è inferiore)")));
    EXPECT_EQ(Execute({"verifica", "misura.err"}).output,
              "misura.err: il file non conserva risultati: non c'è nulla da confrontare\n"
              "File verificati: 1, non coerenti: 0\n");
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
        Execute({"verifica", "manca.lep", "altro.txt", "udito.ilg", "ritoccato.lep"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.output, HasSubstr("ritoccato.lep: LEPD"));
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

TEST_F(HearingCommands, NiptsPrintsTheTableOfTheDialog) {
    EXPECT_EQ(Run({"nipts"}), 0);
    EXPECT_THAT(console_.output,
                AllOf(HasSubstr("Noise\nAnni di esposizione:  35   Leq: 90.0 dBA   "
                                "Età:  60  Sesso: M   Tabella: Nuova\n"),
                      HasSubstr("\n    10       17.5       19.1       35.7       53.9"
                                "       65.7       69.2       13.7 *\n")));
    EXPECT_THAT(SplitLines(console_.output), SizeIs(3 + 19));
    EXPECT_THAT(files_.contents, IsEmpty());
    EXPECT_EQ(Run({"nipts", "--quantita=htla", "--eta=25", "--sesso", "f", "--tabella", "biologico",
                   "--formato", "csv", "--separatore", "|"}),
              0);
    EXPECT_THAT(console_.output,
                AllOf(HasSubstr("\r\nEtà: 25|Sesso: F|Tabella: Biologico\r\nq (%)|"),
                      HasSubstr("\r\n50| 0,2| 0,2| 0,3| 0,4| 0,4| 0,6| 0,0\r\n")));
}

TEST_F(HearingCommands, NiptsWritesJson) {
    EXPECT_EQ(Run({"nipts", "--formato", "json"}), 0);
    EXPECT_THAT(
        console_.output,
        AllOf(StartsWith(R"({"title":"HTLAN - Hearing)"),
              HasSubstr(R"(Tabella: Nuova","rows":[{"q":"5","fractile":0.05,"values":[20.76)"),
              HasSubstr(R"("q":"55","fractile":0.5499999999999999,)"), HasSubstr("\"flag\":true}"),
              HasSubstr("\"flag\":false}")));
    EXPECT_EQ(Run({"nipts", "--formato=json", "--quantita=NIPTS", "--anni=-5"}), 0);
    EXPECT_THAT(console_.output,
                HasSubstr(R"("values":[null,null,null,null,null,null],"damage":null,)"
                          R"("flag":false})"));
}

TEST_F(HearingCommands, PrevisioniWritesYearsByLevels) {
    EXPECT_EQ(Run({"previsioni", "--frequenza", "3000", "--frattile", "50", "--livello", "88"}), 0);
    EXPECT_THAT(console_.output, StartsWith("NIPTS - Noise Induced Permanent Threshold Shift\n"
                                            "Frequenza: 3000 Hz   Frattile: 50 %\n"
                                            "  Anni     88 dBA     90 dBA"));
    EXPECT_EQ(Run({"previsioni", "--frequenza=3000", "--frattile=50", "--formato=json"}), 0);
    EXPECT_THAT(console_.output, StartsWith(R"({"levels":[88,90,92,94,96,98,100],"years":[2,4,)"));
    // 10 years at 90 dBA stand in the fifth row, second column.
    EXPECT_THAT(console_.output, HasSubstr("],[5.929,8.281,"));
}

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

TEST_F(HearingCommands, DrawsTheViewAsSvg) {
    EXPECT_EQ(Run({"nipts", "--svg", "g.svg"}), 0);
    EXPECT_THAT(files_.contents["g.svg"],
                AllOf(StartsWith("<svg"), HasSubstr(">q (%)</text>"), HasSubstr("#ff00ff")));
    EXPECT_EQ(Run({"nipts", "--svg", "a.svg", "--vista", "audiogramma"}), 0);
    EXPECT_THAT(files_.contents["a.svg"], HasSubstr(">f (Hz)</text>"));
    EXPECT_EQ(Run({"previsioni", "--svg", "l.svg", "--vista", "livello"}), 0);
    EXPECT_THAT(files_.contents["l.svg"], HasSubstr(">35 anni</text>"));
    files_.steps_to_failure = 1;
    EXPECT_EQ(Run({"previsioni", "--svg", "pieno.svg"}), 2);
    EXPECT_EQ(console_.errors, "pieno.svg: impossibile scrivere il file: il disco è pieno\n");
    EXPECT_THAT(files_.contents, SizeIs(3));
}

}  // namespace
}  // namespace tonvale
