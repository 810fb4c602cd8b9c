// The companion over spectra and protectors: "calcola", "verifica", "grafico", "classifica".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "common/text.h"
#include "tests/calc/recording_console.h"
#include "tests/common/folder_test.h"

namespace tonvale {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kNoise =
    "[TONVALE]\nTipo=SPR\nLAEQ= 99.9\nLCEQ= 99.5\n[SPECTRUM]\n125=84.0\n250=86.5\n500=90.0\n"
    "1000=93.5\n2000=95.0\n4000=92.5\n8000=87.0\n";

class ProtectorCommands : public FolderTest {
  protected:
    int Run(const std::vector<std::string>& arguments) {
        console_ = {};
        return RunCompanion(arguments, SystemFiles(), console_);
    }
    // A protector of the same attenuation in all bands, or without a spectrum (0).
    std::string WriteProtector(const std::string& name, const std::string& ratings,
                               const std::string& attenuation) {
        std::string bands;
        for (const char* key : {"125", "250", "500", "1000", "2000", "4000", "8000"}) {
            bands += std::string(key) + "=" + attenuation + "\n";
        }
        return WriteFile(name, "[TONVALE]\nTipo=SPI\n" + ratings + "[SPECTRUM]\n" + bands);
    }
    // The output without the folder of the test, one blank for several.
    std::string Output() const {
        std::string text;
        for (const char character : console_.output) {
            if (character != ' ' || !text.ends_with(' ')) text += character;
        }
        // In JSON a backslash is written as two.
        std::string escaped;
        for (const char character : Path("")) escaped.append(character == '\\' ? 2 : 1, character);
        for (const std::string& folder : {Path(""), escaped}) {
            for (std::size_t at; (at = text.find(folder)) != std::string::npos;) {
                text.erase(at, folder.size());
            }
        }
        return text;
    }

    RecordingConsole console_;
};

TEST_F(ProtectorCommands, TheExamplesAreRankedAndDrawn) {
    const char* examples = std::getenv("TONVALE_EXAMPLES");
    ASSERT_NE(examples, nullptr);
    const std::string folder = std::string(examples) + "/";
    EXPECT_EQ(Run({"classifica", "--rumore", folder + "sega_circolare.spr", folder}), 0);
    EXPECT_THAT(SplitLines(console_.output), SizeIs(4 + 4));
    EXPECT_EQ(Run({"grafico", folder + "scelta_cuffia.dpi"}), 2);
    EXPECT_THAT(console_.errors, EndsWith("scelta_cuffia.dpi: questo file non ha un grafico\n"));
    EXPECT_THAT(console_.output, IsEmpty());
}

TEST_F(ProtectorCommands, GraficoTakesOneFileAndAPlaceToWrite) {
    const std::string noise = WriteFile("n.spr", kNoise);
    EXPECT_EQ(Run({"grafico", "--svg", Path("manca/n.svg"), noise}), 2);
    EXPECT_EQ(Run({"grafico"}) + Run({"grafico", noise, noise}) + Run({"grafico", Path("no")}), 6);
}

TEST_F(ProtectorCommands, ClassificaRanksACabinet) {
    const std::string noise = WriteFile("n.spr", kNoise);
    WriteProtector("venti.spi", "H=20.0\nM=20.0\nL=20.0\nSNR=22.0\n", "20");
    WriteProtector("dichiara.spi", "H=30.0\nM=23.0\nL=23.0\nSNR=25.0\n", "23");
    WriteProtector("solo snr.spi", "SNR=30\n", "0");
    WriteFile("altro.txt", "niente");
    EXPECT_EQ(Run({"classifica", "--rumore", noise, Path("")}), 0);
    // The levels of the noise are those of its spectrum, 99.8 and 99.4, not the stored ones.
    EXPECT_EQ(
        Output(),
        "Rumore: LAeq 99.8 dBA, LCeq 99.4 dBC, spettro in banda d'ottava, classe HM\n"
        "Livello d'azione: 85 dBA; decide il metodo: ottava\n\n"
        "File H M L SNR ottava giudizio snr-corretto giudizio snr giudizio hml-controllo giudizio "
        "hml giudizio Avvertenze\n"
        "dichiara.spi 30.0 23.0 23.0 25.0 77.0 BUONA 82.0 ACCETTABILE 74.0 ACCETTABILE 77.0 BUONA "
        "72.8 ACCETTABILE valori dichiarati che distano più di 1 dB dallo spettro: H 30.0 invece "
        "di "
        "23.0; i metodi discordano: snr-corretto 82.0 dBA (ACCETTABILE), snr 74.0 dBA "
        "(ACCETTABILE)\n"
        "venti.spi 20.0 20.0 20.0 22.0 80.0 BUONA 85.0 ACCETTABILE 77.0 BUONA 80.0 BUONA 79.8 "
        "BUONA\n"
        "solo snr.spi - - - 30.0 - 77.0 BUONA 69.0 TROPPO ALTA - - i metodi discordano: "
        "snr-corretto 77.0 dBA (BUONA), snr 69.0 dBA (TROPPO ALTA)\n");
    // Columns are aligned by characters: the folder's name has one of two bytes.
    const auto lines = SplitLines(console_.output);
    for (const std::size_t row : {4U, 5U, 6U}) {
        EXPECT_EQ(lines[row].substr(lines[3].find(" snr ")).find_first_of("678"), 3U);
    }
    EXPECT_EQ(Run({"classifica", "--laeq", "95.5", "--azione", "80", "--formato", "csv",
                   Path("venti.spi"), Path("solo snr.spi")}),
              0);
    EXPECT_EQ(Output(),
              "File;H;M;L;SNR;snr-corretto;giudizio;hml-controllo;giudizio;Avvertenze\r\n"
              "solo snr.spi;-;-;-;30,0;73,0;BUONA;-;;\r\n"
              "venti.spi;20,0;20,0;20,0;22,0;81,0;INSUFFICIENTE;76,0;ACCETTABILE;\r\n");
    EXPECT_EQ(Run({"classifica", "--laeq=108.6", "--lceq=110.6", "--metodo=snr", "--formato=json",
                   Path("dichiara.spi")}),
              0);
    EXPECT_EQ(
        Output(),
        R"([{"file":"dichiara.spi","ratings":{"H":30,"M":23,"L":23,"SNR":25},"methods":{)"
        R"("snr-corretto":{"level":91,"rating":"INSUFFICIENTE."},)"
        R"("snr":{"level":86,"rating":"INSUFFICIENTE."},"hml-controllo":null,)"
        R"("hml":{"level":85.6,"rating":"INSUFFICIENTE."},"ottava":null},"warnings":[)"
        R"("valori dichiarati che distano più di 1 dB dallo spettro: H 30.0 invece di 23.0",)"
        R"("hml-controllo: Ottenere maggiori informazioni sul rumore ed usare uno degli altri )"
        R"(metodi proposti"]}])"
        "\n");
}

TEST_F(ProtectorCommands, ClassificaQuotesCellsAndGoesOnPastBadFiles) {
    const std::string quoted = WriteProtector("a;b.spi", "SNR=20\n", "0");
    const std::string noise = WriteFile("n.spr", kNoise);
    EXPECT_EQ(
        Run({"classifica", "--laeq", "90", "--formato", "csv", quoted, noise, Path("no.spi")}), 2);
    EXPECT_THAT(console_.output, HasSubstr("a;b.spi\";-;-;-;20,0;77,0;BUONA;-;;\r\n"));
    EXPECT_THAT(console_.errors, AllOf(HasSubstr("n.spr: non è uno spettro di attenuazione\n"),
                                       HasSubstr("no.spi: il file non esiste\n")));
    std::filesystem::create_directories(folder_ / "vuota");
    EXPECT_EQ(Run({"classifica", "--laeq", "90", "--formato", "json", Path("vuota")}), 2);
    EXPECT_EQ(console_.output, "[]\n");
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{quoted},
                                               {"--laeq", "90"},
                                               {"--laeq", "90", "--rumore", noise, quoted},
                                               {"--rumore", noise, "--lceq", "90", quoted},
                                               {"--rumore", quoted, quoted},
                                               {"--rumore", Path("no.spr"), quoted},
                                               {"--laeq", "0", quoted},
                                               {"--laeq", "90,5", quoted},
                                               {"--laeq", "90", "--lceq", "-1", quoted},
                                               {"--laeq", "90", "--azione", "87", quoted},
                                               {"--laeq", "90", "--metodo", "hml", quoted},
                                               {"--laeq", "90", "--metodo", "altro", quoted}}) {
        std::vector<std::string> line{"classifica"};
        line.insert(line.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(Run(line), 2) << arguments.front() << arguments.size();
        EXPECT_THAT(console_.output, IsEmpty());
        EXPECT_NE(console_.errors, "");
    }
}

TEST_F(ProtectorCommands, ClassificaTakesAThousandProtectors) {
    std::filesystem::create_directories(folder_ / "armadio" / "inserti");
    for (int i = 0; i < 1000; ++i) {
        const std::string name =
            std::string(i % 2 == 0 ? "armadio/" : "armadio/inserti/") + std::to_string(i) + ".spi";
        WriteProtector(name, "SNR=" + std::to_string(10 + i % 30) + "\n", "1e400");
    }
    EXPECT_EQ(Run({"classifica", "--laeq", "100", "--metodo", "snr-corretto", "--formato", "csv",
                   Path("armadio")}),
              0);
    const auto lines = SplitLines(console_.output);
    ASSERT_THAT(lines, SizeIs(1 + 1000));
    EXPECT_THAT(std::string(lines[1]), HasSubstr(";29,0;78,0;BUONA;"));
    EXPECT_THAT(std::string(lines.back()), HasSubstr(";10,0;97,0;INSUFFICIENTE;"));
}

}  // namespace
}  // namespace tonvale
