#include "help/help_topics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "calc/assessment_table.h"
#include "common/numbers.h"
#include "common/profile_file.h"
#include "common/text.h"
#include "exposure/daily_exposure.h"
#include "exposure/group_exposure.h"
#include "exposure/student_t.h"
#include "exposure/uncertainty_file.h"
#include "exposure/uncertainty_report.h"
#include "exposure/weekly_exposure.h"
#include "hearing/audiogram_damage.h"
#include "hearing/damage_evolution.h"
#include "hearing/damage_risk.h"
#include "hearing/damage_table.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"
#include "help/help_rtf.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/noise_spectrum.h"
#include "protectors/protector_selection.h"
#include "report/rtf/rtf_reader.h"
#include "resources/help_contexts.h"
#include "tests/common/golden.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

std::string ReadSource(const std::string& path) {
    std::string bytes = ExampleBytes("../" + path);
    EXPECT_NE(bytes, "") << path;
    return bytes;
}

const HelpBook& Guide() {
    static const HelpBook book = HelpBook::Parse(ReadSource("resources/help/tonvale.hlp"));
    return book;
}

// "b:text" for bold, "i:" for italic, "7:" for a link, parts by "/".
std::string Describe(const HelpText& text) {
    std::string description;
    for (const HelpSpan& span : text) {
        if (!description.empty()) description += '/';
        if (span.bold) description += "b:";
        if (span.italic) description += "i:";
        if (span.link) description += std::to_string(*span.link) + ":";
        description += span.text;
    }
    return description;
}

std::vector<std::string> Describe(const std::vector<HelpBlock>& blocks) {
    constexpr const char* kKinds[] = {"#", "##", "", "-", "|h", "|", ">"};
    std::vector<std::string> descriptions;
    for (const HelpBlock& block : blocks) {
        std::string description = kKinds[static_cast<int>(block.kind)];
        for (const HelpText& cell : block.cells) description += "[" + Describe(cell) + "]";
        descriptions.push_back(description);
    }
    return descriptions;
}

std::string DescribeText(const std::string& text) {
    return Describe(HelpBook::Parse("@topic 1 T\n" + text).topics().at(0).blocks).at(0);
}

TEST(HelpTopics, ReadsTopicsAndBlocks) {
    const HelpBook book = HelpBook::Parse(
        "\xEF\xBB\xBFpreface\n@context 9\n@topic 10  Primo \r\nuna riga\r\n  continua\r\n\r\n"
        "altra\n# Titolo\n## Minore\n- voce\n  lunga\n- seconda\n    a = b\n      rientrata\n"
        "| x | y |\n|---|:-:|\n| 1 | [[10|v]] |\n|| solo\n@context 11\nancora\n"
        "@subtopic 20 Secondo\n@context 21\n@topic senza numero\n@context 22 resto\n@altro\n");
    ASSERT_EQ(book.topics().size(), 2U);
    const HelpTopic& first = book.topics()[0];
    EXPECT_EQ(first.context, 10U);
    EXPECT_EQ(first.title, "Primo");
    EXPECT_EQ(first.level, 0);
    EXPECT_THAT(Describe(first.blocks),
                ElementsAre("[una riga continua]", "[altra]", "#[Titolo]", "##[Minore]",
                            "-[voce lunga]", "-[seconda]", ">[a = b]", ">[  rientrata]", "|h[x][y]",
                            "|[1][10:v]", "|[][solo]", "[ancora]"));
    EXPECT_EQ(book.topics()[1].level, 1);
    EXPECT_THAT(Describe(book.topics()[1].blocks),
                ElementsAre("[@topic senza numero @context 22 resto @altro]"));

    EXPECT_EQ(book.Find(11)->topic, 0U);
    EXPECT_EQ(book.Find(11)->block, 11U);
    EXPECT_EQ(book.Find(20)->block, std::nullopt);
    EXPECT_EQ(book.Find(21)->block, 0U);
    for (const unsigned long nowhere : {9UL, 22UL, 12UL}) EXPECT_FALSE(book.Find(nowhere));
    EXPECT_TRUE(HelpBook::Parse("").topics().empty());
    EXPECT_EQ(HelpBook::Parse("@topic 1 A\n@topic 1 B\n").Find(1)->topic, 0U);
}

TEST(HelpTopics, ReadsMarksInsideAText) {
    EXPECT_EQ(DescribeText("un *molto* lungo _testo_."), "[un /b:molto/ lungo /i:testo/.]");
    EXPECT_EQ(DescribeText("*«Sì» e _no_* fine"), "[b:«Sì» e /b:i:no/ fine]");
    EXPECT_EQ(DescribeText("[[115|Lep,w]]: vedi *[[7|a]] b*"), "[115:Lep,w/: vedi /b:7:a/b: b]");
    // Marks that open or close nothing stay.
    for (const char* plain : {"*.lep e *.lew", "2 * 3 * 4", "LEQ_ITEM_%d", "*mai chiuso", "chiuso*",
                              "[[x|y]]", "[[7|]]", "[[7|a", "[7]", "a_b_c", "\\n"}) {
        EXPECT_EQ(DescribeText(plain), "[" + std::string(plain) + "]");
    }
    EXPECT_EQ(DescribeText("13.7 \\* e \\*a\\* e \\[[7|a]]"), "[13.7 * e *a* e [[7|a]]]");
}

TEST(HelpTopics, SearchesWordBeginningsWithoutCaseAndAccents) {
    const HelpBook book = HelpBook::Parse(
        "@topic 1 Dieta aeta zeta 0eta 9eta\nl'Età e\n\nil RUMORE\n@topic 2 Età e "
        "rumore\ntesto\n\netà\n@topic 3 "
        "Lep,d\n"
        "| Perche\xCC\x81 | così |\n@topic 4 Vuoto\n");
    const auto search = [&](std::string_view query) {
        std::vector<std::string> found;
        for (const HelpPlace& place : book.Search(query)) {
            found.push_back(std::to_string(book.topics()[place.topic].context) + "." +
                            (place.block ? std::to_string(*place.block) : "t"));
        }
        return found;
    };
    // Titles first; "Dieta" does not begin with it.
    EXPECT_THAT(search("eta"), ElementsAre("2.t", "1.0"));
    EXPECT_THAT(search("  ETÀ   rum "), ElementsAre("2.t", "1.0"));
    EXPECT_THAT(search("rumore l’età"), ElementsAre("1.0"));
    EXPECT_THAT(search("lep,D"), ElementsAre("3.t"));
    EXPECT_THAT(search(",d"), ElementsAre("3.t"));
    EXPECT_THAT(search("perché COSI"), ElementsAre("3.0"));
    for (const char* nothing : {"", "  \t", "ta", "età assente", "\xFF"}) {
        EXPECT_THAT(search(nothing), IsEmpty()) << nothing;
    }
}

// What a rich-edit control makes of rich text.
std::u16string ShownText(const HelpRtf& rtf) {
    const std::string text = PlainTextOf(ReadRichText(rtf.rtf));
    return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
}

TEST(HelpRtf, EscapesEveryCharacterAndKeepsPositions) {
    const HelpTopic topic =
        HelpBook::Parse(
            "@topic 1 Titolo è {\\}\n- \\\\ { } perché €\n| a | Σ 𝄞 |\n| *b* [[5|è 𝄞]] |\n"
            "    x\x01y\n[[6|fine]] [[7|due]]\n")
            .topics()
            .at(0);
    const HelpRtf rtf = MakeHelpRtf(topic);
    const std::u16string shown = ShownText(rtf);
    EXPECT_EQ(shown, u"Titolo è {\\}\n•\t\\ { } perché €\na\tΣ 𝄞\nb è 𝄞\nx y\nfine due\n");
    EXPECT_THAT(rtf.rtf, HasSubstr("\\u232?"));
    EXPECT_THAT(rtf.rtf, HasSubstr("\\u-10188?\\u-8930?"));

    ASSERT_EQ(rtf.block_starts.size(), topic.blocks.size());
    EXPECT_EQ(shown.substr(rtf.block_starts[0], 2), u"•\t");
    EXPECT_EQ(shown.substr(rtf.block_starts[4], 4), u"fine");
    ASSERT_EQ(rtf.links.size(), 3U);
    EXPECT_EQ(shown.substr(rtf.links[0].start, rtf.links[0].end - rtf.links[0].start), u"è 𝄞");
    EXPECT_EQ(LinkAt(rtf, rtf.links[0].start - 1), std::nullopt);
    EXPECT_EQ(LinkAt(rtf, rtf.links[0].start), 5U);
    EXPECT_EQ(LinkAt(rtf, rtf.links[0].end - 1), 5U);
    EXPECT_EQ(LinkAt(rtf, rtf.links[0].end), std::nullopt);
    // Five ends of paragraph stand before the last block, title included.
    EXPECT_EQ(MakeHelpRtf(topic, 2).block_starts[4], rtf.block_starts[4] + 5);
    EXPECT_EQ(MakeHelpRtf(topic, 2).links[2].start, rtf.links[2].start + 5);
}

TEST(HelpRtf, WritesEveryKindOfBlock) {
    const HelpTopic topic =
        HelpBook::Parse(
            "@topic 1 Titolo\nun *grassetto* e _corsivo_\n\n# Titolo\n## Minore\n- voce\n"
            "| breve | una colonna molto più larga | x |\n|---|---|---|\n| *1* | 2 | [[5|tre]] |\n"
            "| una cella lunga | b | c |\n    a = b\n")
            .topics()
            .at(0);
    ExpectGolden("help_rtf", MakeHelpRtf(topic).rtf);
}

// --- The guide itself ----------------------------------------------------------------------------

// The numbers that the program has names for.
std::set<unsigned long> NamedContexts() {
    const std::string header = ReadSource("resources/help_contexts.h");
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
        EXPECT_TRUE(in_guide.insert(topic.context).second) << topic.context;
        for (const HelpAnchor& anchor : topic.anchors) {
            EXPECT_TRUE(in_guide.insert(anchor.context).second) << anchor.context;
            EXPECT_LT(anchor.block, topic.blocks.size()) << anchor.context;
        }
    }
    EXPECT_EQ(in_guide, NamedContexts());
    EXPECT_EQ(Guide().Find(kHelpIndex)->topic, 0U);
}

TEST(Guide, LinksLeadSomewhereAndNoMarkIsLeftOver) {
    for (const HelpTopic& topic : Guide().topics()) {
        EXPECT_FALSE(topic.blocks.empty()) << topic.title;
        for (const HelpLinkRange& link : MakeHelpRtf(topic).links) {
            EXPECT_TRUE(Guide().Find(link.context)) << topic.title << ": " << link.context;
        }
        std::size_t columns = 0;
        for (const HelpBlock& block : topic.blocks) {
            const std::string text = PlainText(block);
            for (const char* mark : {"[[", "]]", "@", "|", "\\", "\xEF\xBF\xBD"}) {
                EXPECT_THAT(text, Not(HasSubstr(mark))) << topic.title;
            }
            if (block.kind == HelpBlockKind::kTableHeader) columns = block.cells.size();
            if (block.kind == HelpBlockKind::kTableRow) {
                EXPECT_EQ(block.cells.size(), columns) << text;
            }
        }
    }
}

// What the help window shows at its first size: formulas unbroken, tables with room for the last
// column.
TEST(Guide, FormulasAndTablesFitTheWindow) {
    constexpr std::size_t kFormulaCharacters = 50;
    constexpr int kLastColumnTwips = 5500;
    constexpr std::string_view kTabStop = "\\tx";
    for (const HelpTopic& topic : Guide().topics()) {
        for (const HelpBlock& block : topic.blocks) {
            if (block.kind != HelpBlockKind::kPreformatted) continue;
            EXPECT_LE(CharacterCount(PlainText(block)), kFormulaCharacters) << PlainText(block);
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
    const std::map<unsigned long, std::string> beginnings = {
        {kHelpWeeklyDays, "L'elenco dei giorni"},
        {kHelpWeeklyModify, "«Modifica»"},
        {kHelpWeeklyLevel, "«Lep,w (dBA):»"},
        {kHelpWeeklyNotes, "«Note:»"},
        {kHelpWeeklyStatusBar, "La barra di stato"},
        {kHelpWeekdayName, "«Giorno della settimana :»"},
        {kHelpWeekdayLevel, "«Lep,d (dBA):»"},
        {kHelpWeekdayReadLevel, "«Apri»"},
        {kHelpWeekdayModify, "«Modifica»"},
        {kHelpWeekdayDelete, "«Elimina»"},
        {kHelpWeekdayCancel, "«Annulla»"},
    };
    for (const auto& [context, beginning] : beginnings) {
        const HelpPlace place = *Guide().Find(context);
        const HelpBlock& block = Guide().topics()[place.topic].blocks.at(place.block.value());
        EXPECT_EQ(block.cells[0].at(0).text, beginning) << context;
    }
}

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
    return rows;
}

// Expects the rows of such a table: "*" stands for any text, and more cells may follow.
void ExpectTable(unsigned long context, std::string_view header, Rows expected) {
    const Rows rows = TableRows(context, header);
    for (std::size_t i = 0; i < std::min(rows.size(), expected.size()); ++i) {
        for (std::size_t k = 0; k < rows[i].size(); ++k) {
            if (k >= expected[i].size()) expected[i].push_back(rows[i][k]);
            if (expected[i][k] == "*") expected[i][k] = rows[i][k];
        }
    }
    EXPECT_EQ(rows, expected) << context << " " << header;
}

// The example of a topic is a data file of the examples: what the program computes of it stands in
// the guide's table of results.
void ExpectResults(unsigned long context, const std::string& example) {
    const ProfileFile file = ProfileFile::Parse(ExampleBytes(example));
    Rows expected;
    for (const AssessedResult& result : AssessedKindOf(file)->assess(file).results) {
        expected.push_back({"*", std::string(TrimBlanks(result.shown))});
    }
    ExpectTable(context, "Risultato", expected);
}

template <typename Form>
Form LoadedExample(const std::string& example, Form form = {}) {
    EXPECT_TRUE(LoadForm(ProfileFile::Parse(ExampleBytes(example)), form));
    return form;
}

TEST(Guide, TheExposureExamplesAreWhatTheProgramComputes) {
    ExpectResults(kHelpDailyExposure, "giornata.lep");
    ExpectResults(kHelpWeeklyExposure, "settimana.lew");
    ExpectResults(kHelpGroupExposure, "carpenteria.leg");
    Rows works, days, workers;
    for (const ExposureItem& item : LoadedExample<DailyExposureForm>("giornata.lep").items) {
        works.push_back({"*", item.level_dba, item.duration});
    }
    ExpectTable(kHelpDailyExposure, "Lavorazione", works);
    const auto week = LoadedExample<WeeklyExposureForm>("settimana.lew");
    for (std::size_t i = 0; i < kWeekDays; ++i)
        days.push_back({std::string(kDayNames[i]), week.levels_dba[i]});
    ExpectTable(kHelpWeeklyExposure, "Giorno", days);
    for (const std::string& level :
         LoadedExample<GroupExposureForm>("carpenteria.leg").levels_dba) {
        workers.push_back({"*", level});
    }
    ExpectTable(kHelpGroupExposure, "Lavoratore", workers);
    EXPECT_EQ(RequiredSamples(24, 1.34, 1, 1), 4U);
    Rows quantiles = TableRows(kHelpGroupExposure, "Gradi di libertà");
    for (auto& row : quantiles) {
        const auto degrees = static_cast<std::uint32_t>(ParseInteger(row.at(0)));
        row.resize(1);
        for (int column = 0; column < 4; ++column) {
            row.push_back(FormatFixed(StudentQuantile(degrees, column), 0, 3));
        }
    }
    ExpectTable(kHelpGroupExposure, "Gradi di libertà", quantiles);
}

// A row of a table with one cell a band.
std::vector<std::string> BandRow(const std::string& name, const OctaveSpectrum& levels_db) {
    std::vector<std::string> cells{name};
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        cells.push_back(FormatFixed(levels_db[i], 0, 1));
    }
    return cells;
}

OctaveSpectrum SpectrumOf(const std::vector<std::string>& cells) {
    OctaveSpectrum spectrum;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) spectrum[i] = ParseNumber(cells.at(i + 1));
    return spectrum;
}

TEST(Guide, TheNoiseSpectrumIsWhatTheProgramComputes) {
    ExpectResults(kHelpNoiseSpectrum, "sega_circolare.spr");
    const OctaveSpectrum noise_db =
        BandLevels(LoadedExample("sega_circolare.spr", SpectrumForm(NoiseSpectrumKind())));
    OctaveSpectrum a_db, c_db, a_weighted, c_weighted;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        a_db[i] = kOctaveBands[i].a_weighting_db;
        c_db[i] = kOctaveBands[i].c_weighting_db;
        a_weighted[i] = noise_db[i] + a_db[i];
        c_weighted[i] = noise_db[i] + c_db[i];
    }
    ExpectTable(kHelpNoiseSpectrum, "Hz", {BandRow("A", a_db), BandRow("C", c_db)});
    ExpectTable(kHelpNoiseSpectrum, "Livello",
                {BandRow("*", noise_db), BandRow("*", a_weighted), BandRow("*", c_weighted)});
}

// The reference noises of the guide's table, put into its formulas, give the program's ratings.
TEST(Guide, TheAttenuationSpectrumIsWhatTheProgramComputes) {
    ExpectResults(kHelpAttenuationSpectrum, "cuffia_leggera.spi");
    const OctaveSpectrum example =
        BandLevels(LoadedExample("cuffia_leggera.spi", SpectrumForm(AttenuationSpectrumKind())));
    ExpectTable(kHelpAttenuationSpectrum, "Cuffia", {BandRow("*", example)});
    const auto noises = TableRows(kHelpAttenuationSpectrum, "k");
    ASSERT_EQ(noises.size(), 9U);
    for (const OctaveSpectrum& protection_db :
         {example, {30, 5, 30, 5, 30, 5, 30}, {28.5, 25.0, 21.3, 18.8, 24.6, 30.2, 41.0}}) {
        ProtectorRatings expected;
        for (std::size_t k = 0; k < noises.size(); ++k) {
            OctaveSpectrum at_ear = SpectrumOf(noises[k]);
            for (std::size_t i = 0; i < kOctaveBandCount; ++i) at_ear[i] -= protection_db[i];
            const double reduction = 100 - EnergySum(at_ear);
            const double d = ParseNumber(noises[k].at(8));
            if (k < 4) expected.h += (0.25 - 0.48 * d) * reduction;
            if (k >= 4 && k < 8) expected.m += (0.25 - 0.16 * d) * reduction;
            if (k >= 4 && k < 8) expected.l += (0.25 + 0.23 * d) * reduction;
            if (k == 8) expected.snr = reduction;
        }
        const ProtectorRatings computed = ComputeRatings(protection_db).exact;
        EXPECT_NEAR(computed.h, expected.h, 1e-9);
        EXPECT_NEAR(computed.m, expected.m, 1e-9);
        EXPECT_NEAR(computed.l, expected.l, 1e-9);
        EXPECT_NEAR(computed.snr, expected.snr, 1e-9);
    }
}

TEST(Guide, TheUncertaintyExampleIsWhatTheProgramComputes) {
    const Assessment assessment =
        AssessUncertainty(ProfileFile::Parse(ExampleBytes("stampaggio.err")));
    std::map<std::string, std::string> shown;
    for (const AssessedResult& result : assessment.results) {
        shown[std::string(result.key)] = TrimBlanks(result.shown);
    }
    Rows results, samples, periods, days;
    for (const std::string key : {"LEQ", "LEPD", "LEPW"}) {
        results.push_back({"*", shown[key], shown[key + "_U"], shown[key + "_UTOT"]});
    }
    ExpectTable(kHelpUncertainty, "Risultato", results);
    UncertaintyStudy study;
    ASSERT_TRUE(LoadStudy(ProfileFile::Parse(ExampleBytes("stampaggio.err")), study));
    const auto fixed = [](double value, int decimals) { return FormatFixed(value, 0, decimals); };
    for (const SampledLevel& sample : study.samples) {
        samples.push_back({"*", fixed(sample.level_dba, 1), fixed(sample.time, 0)});
    }
    for (const UncertainPeriod& period : study.periods) {
        periods.push_back({"*", fixed(period.level_dba, 1), fixed(period.duration, 0),
                           fixed(period.level_error_db, 2), fixed(period.duration_error, 0)});
    }
    for (std::size_t i = 0; i < kWeekDays; ++i) {
        days.push_back({std::string(kDayNames[i]), fixed(study.days.at(i).level_dba, 1),
                        fixed(study.days[i].error_db, 2)});
    }
    // The first period is the level of the samples, the first day that of the periods.
    EXPECT_EQ(periods.at(0)[1] + periods[0][3], results[0][1] + results[0][2]);
    EXPECT_EQ(days[0][1] + days[0][2], results[1][1] + results[1][2]);
    ExpectTable(kHelpUncertainty, "Campione", samples);
    ExpectTable(kHelpUncertainty, "Periodo", periods);
    ExpectTable(kHelpUncertainty, "Giorno", days);
}

std::string Shown(double value) {
    return std::string(TrimBlanks(FormatFixed(value, 4, 1)));
}

// The row of 10 % in the program's table, as the guide writes it.
std::vector<std::string> TenPercentRow(const LossPrediction& prediction) {
    const LossPredictionRow row = ComputeRows(prediction).at(1);
    std::vector<std::string> cells{"10"};
    for (const double loss : row.losses_db) cells.push_back(Shown(loss));
    if (row.damage_percent) {
        cells.push_back(Shown(*row.damage_percent) + (row.is_compensable ? " *" : ""));
    }
    return cells;
}

TEST(Guide, TheHearingExamplesAreWhatTheProgramComputes) {
    LossPrediction noise;
    noise.quantity = QuantityKind::kNipts;
    noise.person.years = 30;
    noise.person.level_dba = 95;
    LossPrediction age;
    age.quantity = QuantityKind::kHtla;
    ExpectTable(kHelpNipts, "q (%)", {TenPercentRow(noise)});
    ExpectTable(kHelpHtla, "q (%)", {TenPercentRow(age)});
    ExpectTable(kHelpHtlan, "q (%)", {TenPercentRow(LossPrediction())});
    Rows losses;
    for (const double years : {2, 10, 20, 40}) {
        losses.push_back({FormatFixed(years, 0, 0)});
        for (const double level_dba : {88, 90, 94, 100}) {
            losses.back().push_back(Shown(ComparedLoss({}, years, level_dba)));
        }
    }
    ExpectTable(kHelpPredictions, "Anni", losses);
}

TEST(Guide, TheDamageExamplesAreWhatTheProgramComputes) {
    Rows risks, criteria, damages;
    for (const DamageCriterionInfo& info : DamageCriteria()) {
        const RiskShares shares = ComputeRisk({.criterion = info.code});
        const auto text = [](double share) { return std::string(TrimBlanks(ShareText(share))); };
        const std::string number = FormatInteger(static_cast<long long>(criteria.size()) + 1);
        criteria.push_back({number, std::string(info.list_text)});
        risks.push_back({number, text(shares.unexposed), text(shares.exposed), text(shares.risk)});
    }
    ExpectTable(kHelpRisk, "N.", criteria);
    ExpectTable(kHelpRisk, "Criterio", risks);
    for (const DamageEvolutionRow& row : ComputeRows(DamageEvolution())) {
        if (std::fmod(row.years, 10) != 0) continue;
        damages.push_back({FormatFixed(row.years, 0, 0)});
        for (const double damage : row.damages_percent) damages.back().push_back(Shown(damage));
    }
    ExpectTable(kHelpEvolution, "Anni", damages);
}

TEST(Guide, TheDamageTablesAreThoseOfTheProgram) {
    constexpr int kFrequenciesHz[] = {500, 1000, 2000, 3000, 4000};
    constexpr double kAboveEveryRowDb = 1000;
    LossPrediction prediction;  // the example's: men of 60 years, 35 of them at 90 dBA
    const auto losses_db = ComputeRows(prediction).at(1).losses_db;
    Rows contributions{{"*"}};
    for (std::size_t i = 0; i < 5; ++i) contributions[0].push_back(Shown(losses_db.at(i)));
    for (const DamageTable table :
         {DamageTable::kNew, DamageTable::kOld, DamageTable::kBiological}) {
        prediction.table = table;
        const std::string name(DamageTableName(table));
        Rows rows = TableRows(kHelpDamageTables, name);
        ASSERT_FALSE(rows.empty());
        contributions.push_back({name});
        for (std::size_t i = 0; i < 5; ++i) {
            const auto value = [&](double loss_db) {
                return DamageTableValue(loss_db, kFrequenciesHz[i], table);
            };
            // From no damage to the most there is, five decibels from row to row.
            double threshold_db = ParseNumber(rows.front().at(0));
            EXPECT_EQ(value(threshold_db), 0);
            for (const auto& row : rows) {
                EXPECT_EQ(ParseNumber(row.at(0)), threshold_db);
                EXPECT_DOUBLE_EQ(ParseNumber(row.at(i + 1)), value(threshold_db));
                threshold_db += 5;
            }
            EXPECT_EQ(ParseNumber(rows.back().at(i + 1)), value(kAboveEveryRowDb));
            const double contribution = value(losses_db.at(i));
            contributions.back().push_back(contribution == 0 ? "0"
                                                             : FormatFixed(contribution, 4, 2));
        }
        contributions.back().push_back(TenPercentRow(prediction).back());
    }
    ExpectTable(kHelpDamageTables, "Contributi", contributions);
}

// The fields that the examples name, and how.
constexpr std::pair<std::string_view, CheckField> kNamedFields[] = {
    {"LAeq", CheckField::kLaeq}, {"LCeq", CheckField::kLceq}, {"H", CheckField::kH},
    {"M", CheckField::kM},       {"L", CheckField::kL},       {"SNR", CheckField::kSnr}};

// The rows that a method's example ends with, computed from those before it.
Rows ExampleResult(const CheckMethodInfo& method, MethodPageForm& form) {
    SelectionState state;
    EXPECT_FALSE(RunMethod(method, form, state).refusal) << method.name;
    std::string label(RatingLabel(
        RateProtection(state.effective_level_dba, kActionLevels[*ActionLevelPlace(state)])));
    label.pop_back();  // the point
    return {{"L'Aeq", Shown(state.effective_level_dba)}, {"Protezione", label}};
}

TEST(Guide, TheProtectorExamplesAreWhatTheProgramComputes) {
    // The data files of the examples hold the same noise and the same protector.
    MethodPageForm form;
    ASSERT_TRUE(ImportNoise(ProfileFile::Parse(ExampleBytes("sega_circolare.spr")), form));
    ASSERT_TRUE(ImportProtector(ProfileFile::Parse(ExampleBytes("cuffia_leggera.spi")), form));
    constexpr std::pair<CheckMethod, unsigned long> kTopics[] = {
        {CheckMethod::kOctaveBand, kHelpSelectionOctaveBandMethod},
        {CheckMethod::kHml, kHelpSelectionHmlMethod},
        {CheckMethod::kHmlCheck, kHelpSelectionHmlCheckMethod},
        {CheckMethod::kSnr, kHelpSelectionSnrMethod},
        {CheckMethod::kCorrectedSnr, kHelpSelectionCorrectedSnrMethod}};
    const auto methods = TableRows(kHelpProtectorSelection, "Metodo");
    ASSERT_EQ(methods.size(), 10U);  // what they need, then what they give
    for (std::size_t i = 0; i < std::size(kTopics); ++i) {
        const auto& [method, topic] = kTopics[i];
        auto rows = TableRows(topic, "Dato");
        ASSERT_GE(rows.size(), 2U);
        const auto result = ExampleResult(InfoOf(method), form);
        EXPECT_THAT(methods[5 + i], ElementsAre(methods[i][0], result[0][1], result[1][1]));
        EXPECT_EQ(std::vector(rows.end() - 2, rows.end()), result);
        for (const auto& [name, field] : kNamedFields) {
            for (const auto& row : rows) {
                if (row[0] != name) continue;
                EXPECT_EQ(row[1], TrimBlanks(form.texts[field])) << name;
            }
        }
    }
    const auto bands = TableRows(kHelpSelectionOctaveBandMethod, "Banda (Hz)");
    ASSERT_EQ(bands.size(), kOctaveBandCount);
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        const double noise = ParseNumber(form.texts[BandField(CheckField::kNoiseBands, i)]);
        const double protector = ParseNumber(form.texts[BandField(CheckField::kProtectorBands, i)]);
        const double weighting = kOctaveBands[i].a_weighting_db;
        EXPECT_THAT(bands[i], ElementsAre(kOctaveBands[i].key, Shown(noise), Shown(weighting),
                                          Shown(protector), Shown(noise + weighting - protector)));
    }
    for (const auto& row : TableRows(kHelpSelectionResults, "L'Aeq fino a (dBA)")) {
        const double level = row[0] == "oltre 85" ? 85.1 : ParseNumber(row[0]);
        EXPECT_EQ(row[1] + ".", RatingLabel(RateProtection(level, 85)));
    }
}

std::string InHundredths(double percent) {
    return FormatFixed(percent, 4, 2);
}

// The audiogram of a table with one row a frequency.
Audiogram PrintedAudiogram(std::string_view header) {
    const auto rows = TableRows(kHelpAudiogramDamage, header);
    Audiogram audiogram;
    for (std::size_t i = 0; i < audiogram.left_db.size(); ++i) {
        EXPECT_EQ(ParseInteger(rows.at(i).at(0)), kAudiometricFrequenciesHz[i]);
        audiogram.left_db[i] = ParseInteger(rows.at(i).at(1));
        audiogram.right_db[i] = ParseInteger(rows.at(i).at(2));
    }
    return audiogram;
}

// A printed row: both ears, then the damage by the formulas of industry and agriculture.
void ExpectDamage(const std::vector<std::string>& cells, const Audiogram& audiogram,
                  DamageTable table) {
    const HearingDamage industry =
        EvaluateHearingDamage(audiogram, table, DamageFormula::kIndustry);
    const double agriculture =
        EvaluateHearingDamage(audiogram, table, DamageFormula::kAgriculture).percent;
    EXPECT_EQ(cells.at(1), InHundredths(industry.left_percent));
    EXPECT_EQ(cells.at(2), InHundredths(industry.right_percent.value()));
    EXPECT_EQ(cells.at(3), FormatFixed(industry.percent, 0, 0));
    EXPECT_EQ(cells.at(4), FormatFixed(agriculture, 0, 0));
}

TEST(Guide, TheAudiogramsAreEvaluatedAsTheProgramDoes) {
    const Audiogram presser = PrintedAudiogram("Perdite");
    const auto rows = TableRows(kHelpAudiogramDamage, "Tabella");
    ASSERT_EQ(rows.size(), 3U);
    constexpr DamageTable kTables[] = {DamageTable::kNew, DamageTable::kOld,
                                       DamageTable::kBiological};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].at(0), DamageTableName(kTables[i]));
        ExpectDamage(rows[i], presser, kTables[i]);
    }
    ExpectDamage(TableRows(kHelpAudiogramDamage, "Vecchia").at(0), PrintedAudiogram("Ripida"),
                 DamageTable::kOld);

    // The data file of the examples holds the same audiogram.
    const auto example = LoadedExample<AudiogramDamageForm>("audiometria.ilg");
    EXPECT_EQ(AudiogramOf(example).left_db, presser.left_db);
    EXPECT_EQ(AudiogramOf(example).right_db, presser.right_db);
}

}  // namespace
}  // namespace tonvale
