// "tonvale-calc registro" and what it is made of.
#include "archive/register.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

#include "archive/content_hash.h"
#include "archive/parallel.h"
#include "calc/progress_line.h"
#include "common/numbers.h"
#include "common/text.h"
#include "tests/calc/recording_console.h"
#include "tests/common/folder_tree.h"
#include "tests/common/golden.h"

namespace tonvale {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

// One exposure of 8 hours.
std::string Day(const std::string& level, const std::string& stored, const std::string& note = "") {
    return "[TONVALE]\nTipo=LEPD\nLAEQ=" + stored + "\nTOTTIME=8.00\nLEPD=" + stored +
           "\nTFORM=2\nITEMS=1\n[LEQ]\n1=" + level + "\n[TIME]\n1=8\n[NOTE]\nNum=2\n1=" + note +
           "\n2=seconda riga\n";
}

std::size_t CountOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

class RegisterTest : public ::testing::Test {
  protected:
    int Run(const std::vector<std::string>& arguments) {
        console_.output.clear();
        console_.errors.clear();
        return RunCompanion(arguments, files_, console_);
    }

    FolderTree files_;
    RecordingConsole console_;
};

TEST_F(RegisterTest, ABoundaryAsShownBelongsToTheUpperBand) {
    struct Case {
        const char* level;
        const char* band;
    };
    for (const Case& row :
         {Case{"79.9", R"("<80")"}, Case{"79.94", R"("<80")"}, Case{"79.96", R"("80-85")"},
          Case{"80.0", R"("80-85")"}, Case{"84.9", R"("80-85")"}, Case{"85.0", R"("85-87")"},
          Case{"86.94", R"("85-87")"}, Case{"87.0", R"(">87")"}, Case{"130", R"(">87")"},
          Case{"-5", R"("<80")"}}) {
        files_.Add("c", "a.lep", Day(row.level, "1"));
        Run({"registro", "--formato", "json", "c"});
        EXPECT_THAT(console_.output, HasSubstr(std::string("\"band\":") + row.band)) << row.level;
        files_.folders.clear();
    }
    files_.Add("c", "a.lep", "[TONVALE]\nTipo=LEPD\n");  // nobody is exposed to anything
    files_.Add("c", "n.spr", "[TONVALE]\nTipo=SPR\n[SPECTRUM]\n1000=90\n");
    Run({"registro", "--formato", "json", "c"});
    EXPECT_EQ(CountOf(console_.output, "\"band\":null"), 2U);
}

TEST_F(RegisterTest, TellsEveryFileInOneRow) {
    files_.Add("/archivio/cliente", "10.lep", Day("88", "88.0", "-Pressa; \"2\""));
    files_.Add("/archivio/cliente", "2.lep", Day("0", "0.0"));
    files_.Add("/archivio/cliente", "strano \xFF\n.lep", Day("80", "70.0"));
    files_.Add("/archivio/cliente", "sparito.spr", "");
    files_.contents.erase(FolderTree::In("/archivio/cliente", "sparito.spr"));
    EXPECT_EQ(Run({"registro", "--formato=json", "--titolo", "Cliente", "/archivio/cliente"}), 2);
    EXPECT_EQ(
        console_.output,
        R"({"title":"Cliente","rows":[)"
        R"({"folder":"cliente","file":"2.lep","kind":"LEPD","note":"","date":"1970-01-02",)"
        R"("results":{},"band":null,"consistent":false,"message":"Errore nei valori!"},)"
        R"({"folder":"cliente","file":"10.lep","kind":"LEPD","note":"-Pressa; \"2\"",)"
        R"("date":"1970-01-02","results":{"LAEQ":"88.0","TOTTIME":"8.00","LEPD":"88.0"},)"
        R"("band":">87","consistent":true,"message":null},)"
        R"({"folder":"cliente","file":"sparito.spr","kind":"SPR","note":"","date":"",)"
        R"("results":{},"band":null,"consistent":null,"message":"il file non esiste"},)"
        "{\"folder\":\"cliente\",\"file\":\"strano \uFFFDFF .lep\",\"kind\":\"LEPD\","
        R"("note":"","date":"1970-01-02","results":{"LAEQ":"80.0","TOTTIME":"8.00","LEPD":"80.0"},)"
        R"("band":"80-85","consistent":false,"message":"LAEQ salvato \"70.0\", ricalcolato )"
        R"(\"80.0\"; LEPD salvato \"70.0\", ricalcolato \"80.0\""}]})"
        "\n");
    EXPECT_THAT(console_.errors, EndsWith("sparito.spr: il file non esiste\n"));
    EXPECT_EQ(Run({"registro", "--formato", "csv", "/archivio/cliente"}), 2);
    EXPECT_EQ(console_.output,
              "Cartella;File;Tipo;Note;Data;LAEQ;TOTTIME;LEPD;Fascia;Coerente;Messaggio\r\n"
              "cliente;2.lep;LEPD;;1970-01-02;;;;;no;Errore nei valori!\r\n"
              "cliente;10.lep;LEPD;\"'-Pressa; \"\"2\"\"\";1970-01-02;88,0;8,00;88,0;>87;sì;\r\n"
              "cliente;sparito.spr;SPR;;;;;;;;il file non esiste\r\n"
              "cliente;strano \uFFFDFF .lep;LEPD;;1970-01-02;80,0;8,00;80,0;80-85;no;"
              "\"LAEQ salvato \"\"70.0\"\", ricalcolato \"\"80.0\"\"; LEPD salvato \"\"70.0\"\", "
              "ricalcolato \"\"80.0\"\"\"\r\n");
}

TEST_F(RegisterTest, TellsOfEachKindWhatItIsFor) {
    RunCompanion({"registro", SourceFolder() + "examples"}, SystemFiles(), console_);
    for (const char* part :
         {"Danno&nbsp;<b>", "L'Aeq&nbsp;<b>75.0</b>&nbsp;dBA · ACCETTABILE</td>",
          "</b>&nbsp;dBA, errore totale ", "<td>92.5 dBA, 120 minuti</td>",
          "LAeq&nbsp;<b>99.8</b>&nbsp;dBA · LCeq&nbsp;<b>99.4</b>&nbsp;dBC</td>",
          "M&nbsp;<b>21.0</b> · L&nbsp;<b>15.0</b> · SNR&nbsp;<b>24.0</b>&nbsp;dB</td>",
          "<td class=\"fixed\">   500  1000", "class=\"fixed\">    84.0 dB  86.5 dB"}) {
        EXPECT_GT(CountOf(console_.output, part), 0U) << part;
    }
    EXPECT_EQ(CountOf(console_.output, ">8000 Hz</text>"), 5U);  // a picture for each spectrum
    EXPECT_EQ(CountOf(console_.output, ">6000</text>"), 1U);     // and audiogram
}

TEST_F(RegisterTest, OtherCommandsTakeFoldersToo) {
    const std::string examples = SourceFolder() + "examples";
    const std::size_t count = FilesIn("examples").size();
    EXPECT_EQ(RunCompanion({"verifica", examples}, SystemFiles(), console_), 0);
    EXPECT_THAT(console_.output,
                EndsWith("File verificati: " + std::to_string(count) + ", non coerenti: 0\n"));
    console_.output.clear();
    EXPECT_EQ(RunCompanion({"calcola", "--formato=json", examples}, SystemFiles(), console_), 0);
    EXPECT_THAT(SplitLines(console_.output), SizeIs(count));
    console_.is_interrupted = true;
    EXPECT_EQ(RunCompanion({"verifica", examples}, SystemFiles(), console_), kExitInterrupted);
    EXPECT_THAT(console_.errors, EndsWith("interrotto\n"));
}

TEST_F(RegisterTest, ThePageHoldsTextsAsTextsOnly) {
    const std::string attack = "\"'></title></style></td><script>alert(1)</script><img src=x&amp;>";
    files_.Add("/segreto/<i>cliente", attack + ".lep", Day("88", "1", attack));
    EXPECT_EQ(Run({"registro", "--titolo", attack, "/segreto/<i>cliente"}), 1);
    const std::string& page = console_.output;
    EXPECT_THAT(page,
                AllOf(StartsWith("<!DOCTYPE html>"), EndsWith("</html>\n"),
                      HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;&lt;img src=x&amp;amp;"),
                      Not(HasSubstr("segreto")), Not(HasSubstr("<i>")), Not(HasSubstr("<img")),
                      Not(HasSubstr(" style="))));
    EXPECT_EQ(CountOf(page, "<script"), 1U);
    EXPECT_EQ(CountOf(page, "</title>"), 1U);
    EXPECT_EQ(CountOf(page, "</style>"), 1U);
    // The policy knows the script and the style as they stand in the page.
    for (const char* element : {"script", "style"}) {
        const std::string start = std::string("<") + element + ">";
        const std::size_t from = page.find(start) + start.size();
        const std::size_t to = page.find(std::string("</") + element, from);
        EXPECT_THAT(page, HasSubstr(std::string(element) + "-src '" +
                                    ContentHash(page.substr(from, to - from)) + "'"));
    }
}

TEST_F(RegisterTest, DrawsManyLevelsWithoutTheirNames) {
    for (int i = 0; i < 1500; ++i) {
        files_.Add("c", FormatInteger(i) + ".lep", Day(FormatFixed(70 + i % 300 * 0.1, 0, 1), "1"));
    }
    EXPECT_EQ(Run({"registro", "c"}), 1);
    EXPECT_THAT(console_.output, AllOf(HasSubstr("viewBox=\"0 0 1000 50\""),
                                       HasSubstr("class=\"b3\" d=\"M0 50V10.1H1V10.1H2"),
                                       HasSubstr("id=\"f1500\"")));
    EXPECT_THAT(Run({"registro", "--formato=csv", "c"}), 1);
    EXPECT_THAT(SplitLines(console_.output), SizeIs(1501));
}

TEST_F(RegisterTest, WritesWholeFilesAndNoneInTheWay) {
    files_.Add("c", "a.lep", Day("88", "88.0"));
    EXPECT_EQ(Run({"registro", "--formato", "csv", "--uscita", "c/r.csv", "c"}), 0);
    EXPECT_THAT(files_.contents["c/r.csv"], StartsWith("\xEF\xBB\xBF"
                                                       "Cartella;"));
    EXPECT_THAT(console_.output + console_.errors + console_.opened, IsEmpty());

    EXPECT_EQ(Run({"c"}), 0);  // a folder dropped on the icon
    EXPECT_EQ(console_.opened, "c/registro.html");
    EXPECT_EQ(Run({"registro", "--apri", "c"}), 0);  // the old register goes
    files_.contents["c/registro.html"] = "<p>altro";
    EXPECT_EQ(Run({"registro", "--apri", "c"}), 2);
    EXPECT_EQ(files_.contents["c/registro.html"], "<p>altro");

    console_.opened.clear();
    const auto before = files_.contents;
    console_.is_interrupted = true;
    EXPECT_EQ(Run({"registro", "--uscita", "c/r.csv", "--apri", "c"}), kExitInterrupted);
    console_.is_interrupted = false;
    files_.folders["vuota"] = {"v", {}};
    EXPECT_EQ(Run({"registro", "--uscita", "c/r.csv", "vuota"}), 2);
    EXPECT_EQ(console_.errors, "vuota: nessun file di dati in questa cartella\n");
    files_.steps_to_failure = 2;  // behind the reading of the file
    EXPECT_EQ(Run({"registro", "--uscita", "c/r.csv", "--apri", "c"}), 2);
    EXPECT_EQ(console_.errors, "c/r.csv: impossibile scrivere il file: il disco è pieno\n");
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"registro"},
                                               {"registro", "--uscita", "c/a.LEP", "c"},
                                               {"registro", "--formato", "json", "--apri", "c"},
                                               {"registro", "--formato", "testo", "c"}}) {
        EXPECT_EQ(Run(arguments), 2) << arguments.back();
        EXPECT_THAT(console_.errors, HasSubstr("(vedere --help)"));
    }
    EXPECT_THAT(console_.output + console_.opened, IsEmpty());
    EXPECT_EQ(files_.contents, before);
}

TEST(ForEachInParallel, DoesEverythingOnceUntilToldToStop) {
    std::vector<std::atomic<int>> times(5000);
    EXPECT_TRUE(ForEachInParallel(
        times.size(), [&](std::size_t i) { ++times[i]; }, [](std::size_t) { return true; }));
    for (const std::atomic<int>& count : times) ASSERT_EQ(count, 1);
    EXPECT_FALSE(ForEachInParallel(
        std::size_t{1} << 40, [](std::size_t) {}, [](std::size_t done) { return done < 100; }));
}

TEST(ContentHash, AgreesWithPublishedDigests) {
    // FIPS 180-2, B.1 and B.2, in base64; and what takes a block for its length alone.
    EXPECT_EQ(ContentHash("abc"), "sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
    EXPECT_EQ(ContentHash("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "sha256-JI1qYdIGOLjlwCaTDD5gOaM85Flk/yFn9uzt1BnbBsE=");
    EXPECT_EQ(ContentHash(""), "sha256-47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU=");
}

TEST(ProgressLine, IsSeenOnlyOfLongWorkAndGoesWithItsEnd) {
    using std::chrono::milliseconds;
    RecordingConsole console;
    milliseconds now{0};
    for (const bool shows : {false, true}) {
        console.shows_progress = shows;
        ProgressLine line(console, [&] { return now; });
        now = milliseconds(499);
        line.Show("File:", 5);
        EXPECT_EQ(console.errors, "");
        now = milliseconds(500);
        line.Show("File:", 10, 20);
        now = milliseconds(599);
        line.Show("File:", 15, 20);
        now = milliseconds(600);
        line.Show("File:", 9);
    }
    EXPECT_EQ(console.errors, "\rFile: 10 di 20\rFile: 9       \r       \r");
}

}  // namespace
}  // namespace tonvale
