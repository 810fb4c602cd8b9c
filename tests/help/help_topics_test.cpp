#include "help/help_topics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "common/numbers.h"
#include "common/text.h"
#include "exposure/student_t.h"
#include "hearing/audiogram_damage.h"
#include "hearing/damage_risk.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"
#include "help/help_rtf.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/protector_check.h"
#include "report/rtf/rtf_reader.h"
#include "resources/help_contexts.h"
#include "tests/calc/recording_console.h"
#include "tests/common/faulty_file_system.h"
#include "tests/common/golden.h"

namespace tonvale {
namespace {

using ::testing::_;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

const HelpBook& Guide() {
    static const HelpBook book = HelpBook::Parse(ExampleBytes("../resources/help/tonvale.hlp"));
    return book;
}

TEST(HelpTopics, BecomeRichText) {
    const HelpBook book = HelpBook::Parse(
        "\xEF\xBB\xBFpreface\n@context 9\n@topic 10  Primo \r\nuna riga\r\n  continua\r\n\r\n"
        "altra\n# Titolo\n## Minore\n- voce\n  lunga\n- seconda\n    a = b\n      rientrata\n"
        "| x | y |\n|---|:-:|\n| 1 | [[10|v]] |\n|| solo\n@context 11\nancora\n"
        "@context 13\nun altro\n"
        "@subtopic 20 Secondo\n@context 21\n@topic senza numero\n@context 22 resto\n@altro\n"
        "@topic 30 Titolo è {\\} 𝄞\nun *molto* lungo _testo_.\n\n*«Sì» e _no_* fine\n\n"
        "[[115|Lep,w]]: vedi *[[7|a]] b*\n\n13.7 \\* e \\*a\\* e \\[[7|a]]\n\n"
        "# Segni che restano\n*.lep e *.lew\n\n2 * 3 * 4\n\nLEQ_ITEM_%d\n\n*mai chiuso\n\n"
        "chiuso*\n\n[[x|y]]\n\n[[7|]]\n\n[[7|a\n\n[7]\n\na_b_c\n\n\\n\n"
        "@topic 10 Un altro 10\n| breve | una colonna molto più larga | x |\n|---|---|---|\n"
        "| *1* | 2 | [[5|tr 𝄞]] |\n| una cella lunga | x\x01y | [[6|fine]] [[7|due]] |\n");
    std::string told;
    for (const HelpTopic& topic : book.topics()) {
        const HelpRtf rtf = MakeHelpRtf(topic);
        const std::string units = Utf8ToUtf16Le(PlainTextOf(ReadRichText(rtf.rtf)));
        const auto shown = [&](std::size_t start, std::size_t end) {
            return "<" + Utf16LeToUtf8(units.substr(2 * start, 2 * (end - start))) + "> ";
        };
        told += std::to_string(topic.level) + ": " + rtf.rtf + "\n";
        for (const std::size_t start : rtf.block_starts) told += shown(start, start + 3);
        for (const auto& [start, end, context] : rtf.links) {
            told += std::to_string(context) + shown(start, end);
            for (const std::size_t outside : {start - 1, end}) EXPECT_FALSE(LinkAt(rtf, outside));
            for (const std::size_t in : {start, end - 1}) EXPECT_EQ(LinkAt(rtf, in), context);
        }
        told += "\n";
    }
    ExpectGolden("help_rtf", told);

    EXPECT_EQ(book.Find(10)->topic, 0U);
    EXPECT_EQ(book.Find(11)->topic, 0U);
    EXPECT_EQ(book.Find(11)->block, 11U);
    EXPECT_EQ(book.Find(13)->block, 12U);
    EXPECT_EQ(book.Find(20)->block, std::nullopt);
    EXPECT_EQ(book.Find(21)->block, 0U);
    for (const unsigned long nowhere : {9UL, 22UL, 12UL}) EXPECT_FALSE(book.Find(nowhere));
    EXPECT_TRUE(HelpBook::Parse("").topics().empty());
}

TEST(HelpTopics, SearchesWordBeginningsWithoutCaseAndAccents) {
    const HelpBook book = HelpBook::Parse(
        "@topic 1 Dieta aeta zeta 0eta 9eta\nl'Età e\n\nil RUMORE\n@topic 2 Età e "
        "rumore\ntesto\n\netà\n@topic 3 Lep,d\n| Perche\xCC\x81 | così |\n@topic 4 Vuoto\n");
    std::string answers;
    for (const std::string query : {"eta", "  ETÀ   rum ", "rumore l’età", "lep,D", ",d",
                                    "perché COSI", "", "  \t", "ta", "età assente", "\xFF"}) {
        answers += "<" + query + ">";
        for (const HelpPlace& place : book.Search(query)) {
            answers += " " + std::to_string(book.topics()[place.topic].context) + "." +
                       (place.block ? std::to_string(*place.block) : "t");
        }
    }
    // Titles come first; "Dieta" does not begin with "eta".
    EXPECT_EQ(answers,
              "<eta> 2.t 1.0<  ETÀ   rum > 2.t 1.0<rumore l’età> 1.0<lep,D> 3.t<,d> 3.t"
              "<perché COSI> 3.0<><  \t><ta><età assente><\xFF>");
}

// --- The guide itself ----------------------------------------------------------------------------

// The numbers that the program has names for.
std::set<unsigned long> NamedContexts() {
    const std::string header = ExampleBytes("../resources/help_contexts.h");
    std::set<unsigned long> numbers;
    for (const std::string_view line : SplitLines(header)) {
        if (!line.starts_with("inline constexpr unsigned long ")) continue;
        const int number = ParseInteger(line.substr(line.find(" = ") + 3));
        EXPECT_TRUE(numbers.insert(static_cast<unsigned long>(number)).second) << line;
    }
    return numbers;
}

TEST(Guide, EveryContextIsNamedOnceAndLeadsSomewhere) {
    ASSERT_FALSE(Guide().topics().empty());
    std::set<unsigned long> in_guide;
    for (const HelpTopic& topic : Guide().topics()) {
        EXPECT_FALSE(topic.blocks.empty()) << topic.title;
        EXPECT_TRUE(in_guide.insert(topic.context).second) << topic.context;
        for (const HelpAnchor& anchor : topic.anchors) {
            EXPECT_TRUE(in_guide.insert(anchor.context).second) << anchor.context;
            EXPECT_LT(anchor.block, topic.blocks.size()) << anchor.context;
        }
        for (const HelpLinkRange& link : MakeHelpRtf(topic).links) {
            EXPECT_TRUE(Guide().Find(link.context)) << topic.title << ": " << link.context;
        }
    }
    EXPECT_EQ(in_guide, NamedContexts());
    EXPECT_EQ(Guide().Find(kHelpIndex)->topic, 0U);
}

// What the help window shows at its first size: no mark left over, formulas unbroken, whole rows,
// tables with room for the last column.
TEST(Guide, FitsTheWindow) {
    constexpr std::size_t kFormulaCharacters = 50;
    constexpr int kLastColumnTwips = 5500;
    constexpr std::string_view kTabStop = "\\tx";
    for (const HelpTopic& topic : Guide().topics()) {
        std::size_t columns = 0;
        for (const HelpBlock& block : topic.blocks) {
            const std::string text = PlainText(block);
            for (const char* mark : {"[[", "]]", "@", "|", "\\", "\xEF\xBF\xBD"}) {
                EXPECT_THAT(text, Not(HasSubstr(mark))) << topic.title;
            }
            if (block.kind == HelpBlockKind::kPreformatted) {
                EXPECT_LE(CharacterCount(text), kFormulaCharacters) << text;
            }
            if (block.kind == HelpBlockKind::kTableHeader) columns = block.cells.size();
            if (block.kind == HelpBlockKind::kTableRow) {
                EXPECT_EQ(block.cells.size(), columns) << text;
            }
        }
        const std::string rtf = MakeHelpRtf(topic).rtf;
        for (std::size_t at = rtf.find(kTabStop); at != std::string::npos;
             at = rtf.find(kTabStop, at + 1)) {
            EXPECT_LE(ParseInteger(rtf.substr(at + kTabStop.size(), 8)), kLastColumnTwips)
                << topic.title;
        }
    }
}

TEST(Guide, AControlsNumberShowsThatControl) {
    std::string beginnings;
    for (const unsigned long context :
         {kHelpWeeklyDays, kHelpWeeklyModify, kHelpWeeklyLevel, kHelpWeeklyNotes,
          kHelpWeeklyStatusBar, kHelpWeekdayName, kHelpWeekdayLevel, kHelpWeekdayReadLevel,
          kHelpWeekdayModify, kHelpWeekdayDelete, kHelpWeekdayCancel}) {
        const HelpPlace place = *Guide().Find(context);
        const HelpBlock& block = Guide().topics()[place.topic].blocks.at(place.block.value());
        beginnings += block.cells[0].at(0).text + "|";
    }
    EXPECT_EQ(beginnings,
              "L'elenco dei giorni|«Modifica»|«Lep,w (dBA):»|«Note:»|La barra di stato|"
              "«Giorno della settimana :»|«Lep,d (dBA):»|«Apri»|«Modifica»|«Elimina»|«Annulla»|");
}

// --- What the guide prints is what the program computes ------------------------------------------

using Rows = std::vector<std::vector<std::string>>;

// The rows below a table's header in the topic, found by the header's first cell.
Rows TableRows(unsigned long context, std::string_view header) {
    Rows rows;
    bool inside = false;
    for (const HelpBlock& block : Guide().topics()[Guide().Find(context)->topic].blocks) {
        std::vector<std::string> cells;
        for (const HelpText& cell : block.cells) cells.push_back(PlainText({block.kind, {cell}}));
        if (block.kind != HelpBlockKind::kTableRow) {
            inside = block.kind == HelpBlockKind::kTableHeader && cells.at(0) == header;
        } else if (inside) {
            rows.push_back(cells);
        }
    }
    EXPECT_FALSE(rows.empty()) << context << " " << header;
    return rows;
}

std::vector<std::string> Column(const Rows& rows, std::size_t column) {
    std::vector<std::string> cells;
    for (const auto& row : rows) cells.push_back(row.at(column));
    return cells;
}

std::string Fixed(double value, int decimals) {
    return FormatFixed(value, 0, decimals);
}

// The numbers of a text, asterisks and words in capitals, with blanks around: 8,00 is 8.
std::string Figures(std::string text) {
    constexpr char kTaken[] = "0123456789.-*ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    std::replace(text.begin(), text.end(), ',', '.');
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == ';' || c == '='; }, ' ');
    std::istringstream words(text);
    std::string figures = " ";
    for (std::string word; words >> word;) {
        if (word.find_first_not_of(kTaken) != std::string::npos) continue;
        const std::size_t point = word.find('.');
        const bool is_whole = word.find_first_not_of(".0", point) == std::string::npos;
        figures += word.substr(0, is_whole ? point : std::string::npos) + " ";
    }
    return figures;
}

// The figures of an example, or of what the companion answers to a command.
std::string FiguresOf(const std::string& command) {
    FaultyFileSystem files;
    for (const std::string& name : FilesIn("examples")) files.contents[name] = ExampleBytes(name);
    if (files.contents.contains(command)) return Figures(files.contents[command]);
    RecordingConsole console;
    std::istringstream words(command);
    EXPECT_EQ(RunCompanion({std::istream_iterator<std::string>(words), {}}, files, console), 0);
    return Figures(console.output);
}

std::string Joined(const std::vector<std::string>& cells, std::size_t first = 0) {
    std::string text;
    for (std::size_t i = first; i < cells.size(); ++i) text += cells[i] + " ";
    return text;
}

// A table whose figures stand in an example or in an answer of the companion, in the same order:
// all those behind the first column, or those of each row.
struct PrintedTable {
    unsigned long topic;
    std::string_view header;
    const char* source;
    bool has_chosen_rows = false;
};
constexpr PrintedTable kPrintedTables[] = {
    {kHelpDailyExposure, "Lavorazione", "calcola giornata.lep"},
    {kHelpDailyExposure, "Risultato", "calcola giornata.lep"},
    {kHelpWeeklyExposure, "Giorno", "calcola settimana.lew"},
    {kHelpWeeklyExposure, "Risultato", "calcola settimana.lew"},
    {kHelpGroupExposure, "Lavoratore", "calcola carpenteria.leg"},
    {kHelpGroupExposure, "Risultato", "calcola carpenteria.leg"},
    {kHelpUncertainty, "Campione", "stampaggio.err"},
    {kHelpUncertainty, "Periodo", "stampaggio.err"},
    {kHelpUncertainty, "Giorno", "stampaggio.err"},
    {kHelpUncertainty, "Risultato", "calcola --formato csv stampaggio.err", true},
    {kHelpNoiseSpectrum, "Risultato", "calcola sega_circolare.spr", true},
    {kHelpAttenuationSpectrum, "Cuffia", "calcola scelta_cuffia.dpi"},
    {kHelpAttenuationSpectrum, "Risultato", "calcola cuffia_leggera.spi", true},
    {kHelpNipts, "q (%)", "nipts --quantita NIPTS --anni 30 --livello 95", true},
    {kHelpHtla, "q (%)", "nipts --quantita HTLA", true},
    {kHelpHtlan, "q (%)", "nipts", true},
    {kHelpEvolution, "Anni", "evoluzione", true},
};

TEST(Guide, PrintsWhatTheProgramComputes) {
    for (const PrintedTable& table : kPrintedTables) {
        SCOPED_TRACE(std::to_string(table.topic) + " " + std::string(table.header));
        const std::string figures = FiguresOf(table.source);
        std::vector<std::string> pieces;
        std::string whole;
        for (const auto& row : TableRows(table.topic, table.header)) {
            pieces.push_back(Joined(row));
            whole += Joined(row, 1);
        }
        if (!table.has_chosen_rows) pieces = {whole};
        for (const auto& piece : pieces) EXPECT_THAT(figures, HasSubstr(Figures(piece)));
    }
}

TEST(Guide, ItsRisksQuantilesAndLossesAreThoseOfTheProgram) {
    const Rows criteria = TableRows(kHelpRisk, "N.");
    const Rows risks = TableRows(kHelpRisk, "Criterio");
    ASSERT_EQ(risks.size(), DamageCriteria().size());
    for (std::size_t i = 0; i < risks.size(); ++i) {
        EXPECT_THAT(criteria.at(i), ElementsAre(risks[i][0], DamageCriteria()[i].list_text, _));
        EXPECT_THAT(FiguresOf("rischio --criterio " + risks[i][0]),
                    EndsWith(Figures(Joined(risks[i], 1))));
    }
    for (const auto& row : TableRows(kHelpGroupExposure, "Gradi di libertà")) {
        const auto degrees = static_cast<std::uint32_t>(ParseInteger(row[0]));
        for (int column = 0; column < 4; ++column) {
            EXPECT_EQ(row.at(static_cast<std::size_t>(column) + 1),
                      Fixed(StudentQuantile(degrees, column), 3));
        }
    }
    constexpr double kLevelsDba[] = {88, 90, 94, 100};
    for (const auto& row : TableRows(kHelpPredictions, "Anni")) {
        for (std::size_t i = 0; i < std::size(kLevelsDba); ++i) {
            EXPECT_EQ(row.at(i + 1),
                      Fixed(ComparedLoss({}, ParseNumber(row[0]), kLevelsDba[i]), 1));
        }
    }
}

TEST(Guide, ItsBandsAreThoseOfTheProgram) {
    const Rows weightings = TableRows(kHelpNoiseSpectrum, "Hz");
    const Rows levels = TableRows(kHelpNoiseSpectrum, "Livello");
    const std::vector<std::string> protector = TableRows(kHelpAttenuationSpectrum, "Cuffia").at(0);
    const Rows bands = TableRows(kHelpSelectionOctaveBandMethod, "Banda (Hz)");
    EXPECT_THAT(FiguresOf("calcola scelta_cuffia.dpi"), HasSubstr(Figures(Joined(levels[0]))));
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        const auto& [key, label, a_db, c_db] = kOctaveBands[i];
        const std::string level = levels[0].at(i + 1);
        const double level_db = ParseNumber(level);
        const double at_ear_db = level_db + a_db - ParseNumber(protector.at(i + 1));
        EXPECT_THAT(Column(weightings, i + 1), ElementsAre(Fixed(a_db, 1), Fixed(c_db, 1)));
        EXPECT_THAT(Column(levels, i + 1),
                    ElementsAre(level, Fixed(level_db + a_db, 1), Fixed(level_db + c_db, 1)));
        EXPECT_THAT(bands.at(i),
                    ElementsAre(key, level, Fixed(a_db, 1), protector[i + 1], Fixed(at_ear_db, 1)));
    }
}

// The reference noises of the guide's table, put into its formulas, give the program's ratings.
TEST(Guide, ItsReferenceNoisesAreThoseOfTheProgram) {
    constexpr OctaveSpectrum kProtectionDb{28.5, 25.0, 21.3, 18.8, 24.6, 30.2, 41.0};
    const Rows noises = TableRows(kHelpAttenuationSpectrum, "k");
    ASSERT_EQ(noises.size(), 9U);
    ProtectorRatings expected;
    for (std::size_t k = 0; k < noises.size(); ++k) {
        OctaveSpectrum at_ear_db;
        for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
            at_ear_db[i] = ParseNumber(noises[k].at(i + 1)) - kProtectionDb[i];
        }
        const double reduction = 100 - EnergySum(at_ear_db);
        const double d = ParseNumber(noises[k].at(8));
        if (k < 4) expected.h += (0.25 - 0.48 * d) * reduction;
        if (k >= 4 && k < 8) expected.m += (0.25 - 0.16 * d) * reduction;
        if (k >= 4 && k < 8) expected.l += (0.25 + 0.23 * d) * reduction;
        if (k == 8) expected.snr = reduction;
    }
    const ProtectorRatings computed = ComputeRatings(kProtectionDb).exact;
    EXPECT_NEAR(computed.h, expected.h, 1e-9);
    EXPECT_NEAR(computed.m, expected.m, 1e-9);
    EXPECT_NEAR(computed.l, expected.l, 1e-9);
    EXPECT_NEAR(computed.snr, expected.snr, 1e-9);
}

constexpr DamageTable kDamageTables[] = {DamageTable::kNew, DamageTable::kOld,
                                         DamageTable::kBiological};

TEST(Guide, ItsDamageTablesAreThoseOfTheProgram) {
    constexpr double kAboveEveryRowDb = 1000;
    const Rows contributions = TableRows(kHelpDamageTables, "Contributi");
    EXPECT_THAT(FiguresOf("nipts"), HasSubstr(Figures(Joined(contributions[0]))));
    for (std::size_t t = 0; t < std::size(kDamageTables); ++t) {
        LossPrediction prediction;  // the example's: men of 60 years, 35 of them at 90 dBA
        prediction.table = kDamageTables[t];
        const LossPredictionRow ten_percent = ComputeRows(prediction).at(1);
        const std::string name(DamageTableName(kDamageTables[t]));
        const Rows rows = TableRows(kHelpDamageTables, name);
        const auto& printed = contributions.at(t + 1);
        // From no damage to the most there is, five decibels from row to row.
        EXPECT_EQ(ParseInteger(rows.back()[0]),
                  ParseInteger(rows[0][0]) + 5 * (std::ssize(rows) - 1));
        for (std::size_t i = 0; i < 5; ++i) {
            const auto value = [&](double loss_db) {
                return DamageTableValue(loss_db, kAudiometricFrequenciesHz[i], kDamageTables[t]);
            };
            for (const auto& row : rows) {
                EXPECT_DOUBLE_EQ(ParseNumber(row.at(i + 1)), value(ParseNumber(row[0])));
            }
            EXPECT_EQ(ParseNumber(rows.front().at(i + 1)), 0);
            EXPECT_EQ(ParseNumber(rows.back().at(i + 1)), value(kAboveEveryRowDb));
            EXPECT_NEAR(ParseNumber(printed.at(i + 1)), value(ten_percent.losses_db.at(i)), 0.005);
        }
        EXPECT_EQ(printed[0], name);
        EXPECT_EQ(printed.back(), Fixed(ten_percent.damage_percent.value(), 1) +
                                      (ten_percent.is_compensable ? " *" : ""));
    }
}

// The tables of each method tell the same as those of all methods, of the noise and the protector.
TEST(Guide, ItsProtectorIsCheckedAsTheProgramDoes) {
    constexpr unsigned long kTopics[] = {kHelpSelectionOctaveBandMethod, kHelpSelectionHmlMethod,
                                         kHelpSelectionHmlCheckMethod, kHelpSelectionSnrMethod,
                                         kHelpSelectionCorrectedSnrMethod};
    const Rows methods = TableRows(kHelpProtectorSelection, "Metodo");
    ASSERT_EQ(methods.size(), 10U);  // what they need, then what they give
    std::string in_order_of_answer;
    for (const std::size_t i : {5U, 9U, 8U, 7U, 6U}) in_order_of_answer += Joined(methods[i], 1);
    EXPECT_THAT(FiguresOf("classifica --rumore sega_circolare.spr cuffia_leggera.spi"),
                HasSubstr(Figures(in_order_of_answer)));
    std::map<std::string, std::string> shown{{"Classe", "HM"}};
    for (const auto& row : TableRows(kHelpAttenuationSpectrum, "Risultato")) shown[row[0]] = row[1];
    shown["LAeq"] = TableRows(kHelpNoiseSpectrum, "Risultato").at(0).at(1);
    shown["LCeq"] = TableRows(kHelpNoiseSpectrum, "Risultato").at(1).at(1);
    for (std::size_t i = 0; i < std::size(kTopics); ++i) {
        EXPECT_EQ(methods[i][0], methods[5 + i][0]);
        shown["L'Aeq"] = methods[5 + i].at(1);
        shown["Protezione"] = methods[5 + i].at(2);
        for (const auto& row : TableRows(kTopics[i], "Dato")) EXPECT_EQ(row.at(1), shown[row[0]]);
    }
    for (const auto& row : TableRows(kHelpSelectionResults, "L'Aeq fino a (dBA)")) {
        const double level = row[0] == "oltre 85" ? 85.1 : ParseNumber(row[0]);
        EXPECT_EQ(row.at(1) + ".", RatingLabel(RateProtection(level, 85)));
    }
}

TEST(Guide, ItsAudiogramsAreEvaluatedAsTheProgramDoes) {
    for (const auto& [losses, damages] : {std::pair("Perdite", "Tabella"), {"Ripida", "Vecchia"}}) {
        const Rows losses_db = TableRows(kHelpAudiogramDamage, losses);
        Audiogram audiogram;
        for (std::size_t i = 0; i < audiogram.left_db.size(); ++i) {
            EXPECT_EQ(ParseInteger(losses_db.at(i).at(0)), kAudiometricFrequenciesHz[i]);
            audiogram.left_db[i] = ParseInteger(losses_db[i].at(1));
            audiogram.right_db[i] = ParseInteger(losses_db[i].at(2));
        }
        for (const auto& row : TableRows(kHelpAudiogramDamage, damages)) {
            const std::string name = row[0] == "danno" ? damages : row[0];
            const DamageTable table = *std::ranges::find(kDamageTables, name, DamageTableName);
            const auto damage = [&](DamageFormula formula) {
                return EvaluateHearingDamage(audiogram, table, formula);
            };
            const HearingDamage industry = damage(DamageFormula::kIndustry);
            EXPECT_THAT(row, ElementsAre(_, Fixed(industry.left_percent, 2),
                                         Fixed(industry.right_percent.value(), 2),
                                         Fixed(industry.percent, 0),
                                         Fixed(damage(DamageFormula::kAgriculture).percent, 0)));
        }
    }
    // The data file of the examples holds the same audiogram.
    const Rows presser = TableRows(kHelpAudiogramDamage, "Perdite");
    EXPECT_THAT(FiguresOf("calcola audiometria.ilg"),
                HasSubstr(Figures(Joined(Column(presser, 1)) + Joined(Column(presser, 2)))));
}

}  // namespace
}  // namespace tonvale
