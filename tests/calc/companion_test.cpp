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
    "[TONVALE]\r\nTipo=LEPD\r\nLAEQ=87.3\r\nTOTTIME=   480\r\nLEPD=84.4\r\nTFORM=1\r\nITEMS=2\r\n"
    "[LEQ]\r\n1=90\r\n2=80\r\n[TIME]\r\n1=240\r\n2=240\r\n";
constexpr const char* kRefused =
    "[TONVALE]\r\nTipo=LEPD\r\nLEPD=84.4\r\nTFORM=1\r\nITEMS=1\r\n[LEQ]\r\n1=0\r\n";

constexpr const char* kAudiogram =
    "[TONVALE]\r\nTipo=ILG\r\nILG=  12\r\nSIMM=0\r\nTABELLA=2\r\nINDUS=2\r\n"
    "[SX]\r\n2000=25\r\n4000=70\r\n[DX]\r\n4000=20\r\n";

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
                      {"udito.ilg", kAudiogram}};
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

TEST(Companion, EvaluatesAndDrawsAnAudiogram) {
    const Outcome json = Execute({"calcola", "--formato", "json", "udito.ilg"});
    EXPECT_EQ(json.status, 0);
    // 9.44 * 0.6 + 4 and 0 - 4, by the formula of agriculture.
    EXPECT_THAT(json.output,
                AllOf(HasSubstr(R"("kind":"ILG","shown":{"ILG":"   1"},"values":{"ILG":0.55)"),
                      HasSubstr(R"("stored":{"ILG":"  12"},"consistent":false,"message":null,)"
                                R"("details":{"left":9.66)"),
                      EndsWith(R"("right":-4,"table":"Vecchia","formula":"Agricoltura"}})"
                               "\n")));
    EXPECT_THAT(Execute({"verifica", "udito.ilg"}).output,
                StartsWith("udito.ilg: ILG salvato \"  12\", ricalcolato \"   1\"\n"));
    const Outcome drawing = Execute({"grafico", "udito.ilg"});
    EXPECT_EQ(drawing.status, 0);
    EXPECT_THAT(drawing.output, AllOf(HasSubstr(">Dx</text>"), HasSubstr("<ellipse")));
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
    const Outcome outcome = Execute({"verifica", "manca.lep", "altro.txt", "ritoccato.lep"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.output, HasSubstr("ritoccato.lep: LAEQ"));
    EXPECT_THAT(outcome.output, EndsWith("File verificati: 1, non coerenti: 1\n"));
    EXPECT_EQ(outcome.errors,
              "manca.lep: il file non esiste\n"
              "altro.txt: tipo di file sconosciuto\n");
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

TEST_F(HearingCommands, RischioWritesSharesAndTheirGrid) {
    EXPECT_EQ(Run({"rischio"}), 0);
    EXPECT_EQ(console_.output,
              "Rischio di danno (in %) dovuto all'esposizione al rumore\n"
              "Esposizione: 90.0 dBA per  35 anni   Età:  60  Sesso: M   Criterio: ISO 1999/90\n"
              "% della popolazione non esposta che supera la soglia di rischio: 21.0\n"
              "% della popolazione esposta che supera la soglia di rischio:     35.0\n"
              "% di popolazione a rischio causato all'esposizione a rumore:     14.0\n");
    EXPECT_EQ(Run({"rischio", "--criterio=3", "--formato=json"}), 0);
    EXPECT_THAT(console_.output,
                AllOf(StartsWith(R"({"title":"Rischio di danno (in %))"),
                      HasSubstr(R"(Tabella","shown":{"unexposed":"  0.0","exposed":" 13.0",)"
                                R"("risk":" 13.0"},"values":{"unexposed":0,"exposed":0.1300)")));
    EXPECT_EQ(Run({"rischio", "--griglia", "--eta", "40", "--svg", "g.svg"}), 0);
    EXPECT_THAT(SplitLines(console_.output), SizeIs(3 + 8));
    EXPECT_THAT(console_.output, HasSubstr("\n    25          -          -"));
    EXPECT_THAT(files_.contents["g.svg"], HasSubstr(">100 dBA</text>"));
    EXPECT_EQ(Run({"rischio", "--griglia", "--eta=40", "--formato=json", "--criterio=2"}), 0);
    EXPECT_THAT(console_.output,
                AllOf(HasSubstr(R"("years":[5,10,15,20,25,30,35,40],"levels":[80,85,90,95,100],)"),
                      HasSubstr("],[null,null,null,null,null]]}")));
}

TEST_F(HearingCommands, EvoluzioneFollowsTheDamage) {
    EXPECT_EQ(Run({"evoluzione", "--eta=68", "--formato=json", "--frattile", "20"}), 0);
    EXPECT_THAT(
        console_.output,
        AllOf(StartsWith(R"({"title":"Evoluzione del danno causato dall'età e dal rumore",)"
                         R"("parameters":"Età di inizio esposizione:  68  Sesso: M   )"
                         R"(Leq: 90.0 dBA   Tabella: Nuova",)"
                         R"("fractiles":[0.05,0.5,0.95,0.2],"rows":[{"years":2,"values":[)"),
              EndsWith("\"]}]}\n")));
    EXPECT_EQ(Run({"evoluzione", "--tabella=vecchia", "--svg", "e.svg"}), 0);
    EXPECT_THAT(SplitLines(console_.output), SizeIs(3 + 20));
    EXPECT_THAT(files_.contents["e.svg"], HasSubstr(">Y</text>"));
}

TEST_F(HearingCommands, RefusesWhatTheDialogsRefuse) {
    EXPECT_EQ(Run({"nipts", "--anni", "41"}), 1);
    EXPECT_EQ(console_.errors, "Anni di esposizione: Errore! Dati non validi\n");
    EXPECT_THAT(console_.output, IsEmpty());
    EXPECT_EQ(Run({"nipts", "--eta", "50", "--svg", "a.svg"}), 1);
    EXPECT_EQ(Run({"previsioni", "--livello", "89"}), 1);
    EXPECT_EQ(console_.errors, "Livello di esposizione: Errore! Dati non validi\n");
    EXPECT_EQ(Run({"rischio", "--griglia", "--eta", "22"}), 1);
    EXPECT_EQ(Run({"evoluzione", "--eta", "69"}), 1);
    EXPECT_EQ(console_.errors, "Età di inizio esposizione: Errore! Dati non validi\n");
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
                                               {"previsioni", "--eta", "60"},
                                               {"rischio", "--criterio", "0"},
                                               {"rischio", "--griglia=si"},
                                               {"evoluzione", "--frattile", "5"},
                                               {"evoluzione", "--vista", "audiogramma"}}) {
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
