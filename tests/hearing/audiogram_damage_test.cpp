#include "hearing/audiogram_damage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "common/file_kinds.h"
#include "common/numbers.h"
#include "common/text.h"
#include "hearing/audiogram_chart.h"
#include "hearing/chart.h"
#include "tests/common/recording_canvas.h"
#include "tests/exposure/example_file.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Texts = std::vector<std::string>;

constexpr std::array kTables{DamageTable::kNew, DamageTable::kOld, DamageTable::kBiological};
constexpr std::array kFormulas{DamageFormula::kIndustry, DamageFormula::kAgriculture};

// --- The tables once more, as columns of thousandths of a per cent from 5 to 5 dB ----------------

struct Column {
    int first_db;  // of the thousandths, with none below
    std::vector<int> thousandths;
};

std::vector<Column> ColumnsOf(DamageTable table) {
    switch (table) {
        case DamageTable::kNew: {
            const Column low{25, {0, 1250, 6250, 11250, 16250, 18750, 21250, 22500, 23750, 25000}};
            return {low,
                    low,
                    {25, {0, 1750, 8750, 15750, 22750, 26250, 29750, 31500, 33250, 35000}},
                    {25, {0, 500, 1500, 3000, 5500, 7500, 8500, 9000, 9500, 10000}},
                    {25, {0, 250, 750, 1500, 2750, 3750, 4250, 4500, 4750, 5000}}};
        }
        case DamageTable::kOld:
            return {{20, {0, 2770, 5550, 8330, 11110, 13880, 16660, 19440, 22220, 25000}},
                    {20, {0, 3330, 6660, 10000, 13330, 16660, 20000, 23330, 26660, 30000}},
                    {20, {0, 4440, 8880, 13330, 17770, 22220, 26660, 31110, 35550, 40000}},
                    {20, {0}},
                    {20, {0, 550, 1110, 1660, 2220, 2770, 3330, 3880, 4440, 5000}}};
        default:
            return {
                {25,
                 {0, 1250, 2500, 5000, 7500, 11250, 15000, 17500, 18750, 20000, 21250, 22500, 23750,
                  25000}},
                {25,
                 {0, 1500, 3000, 6000, 9000, 13500, 18000, 21000, 22500, 24000, 25500, 27000, 28500,
                  30000}},
                {25,
                 {0, 1750, 3500, 7000, 10500, 15750, 21000, 24500, 26250, 28000, 29750, 31500,
                  33250, 35000}},
                {25,
                 {0, 400, 800, 1600, 2400, 3600, 4800, 5600, 6000, 6400, 6800, 7200, 7600, 8000}},
                {25, {0, 100, 200, 400, 600, 900, 1200, 1400, 1500, 1600, 1700, 1800, 1900, 2000}}};
    }
}

// In five thousandths of a thousandth of a per cent: whole numbers at whole decibels.
int Contribution(const Column& column, int loss_db) {
    const int last = static_cast<int>(column.thousandths.size()) - 1;
    const int offset = std::clamp(loss_db - column.first_db, 0, 5 * last);
    const int row = std::min(offset / 5, std::max(last - 1, 0));
    const int from = column.thousandths[static_cast<std::size_t>(row)];
    if (last == 0) return 5 * from;
    const int to = column.thousandths[static_cast<std::size_t>(row) + 1];
    return 5 * from + (to - from) * (offset - 5 * row);
}

double ExpectedEar(DamageTable table, const std::array<int, 5>& losses_db) {
    const std::vector<Column> columns = ColumnsOf(table);
    int sum = 0;
    for (std::size_t i = 0; i < 5; ++i) sum += Contribution(columns[i], losses_db[i]);
    const double percent = sum / 5000.0 * (table == DamageTable::kBiological ? 0.5 : 0.6);
    const bool rises = table == DamageTable::kOld && losses_db[4] > losses_db[2] + 40;
    return rises ? percent + 4 : percent;
}

EarAudiogram Ear(const std::array<int, 5>& losses_db) {
    EarAudiogram ear{};
    std::copy(losses_db.begin(), losses_db.end(), ear.begin());
    ear[5] = 120;  // never counts
    return ear;
}

TEST(BinauralDamage, AgreesWithAnotherTableAtEveryWholeDecibel) {
    for (const DamageTable table : kTables) {
        for (int loss_db = -10; loss_db <= 120; ++loss_db) {
            for (std::size_t i = 0; i < 5; ++i) {
                std::array<int, 5> losses_db{};
                losses_db[i] = loss_db;
                const HearingDamage one = EvaluateHearingDamage(
                    {.left_db = Ear(losses_db), .is_symmetric = true}, table, kFormulas[0]);
                EXPECT_NEAR(one.percent, ExpectedEar(table, losses_db), 1e-12)
                    << static_cast<int>(table) << " " << loss_db << " dB at " << i;
            }
            const int most = std::min(loss_db, 60);
            const std::array<int, 5> mixed{loss_db, 110 - loss_db, most, loss_db / 2, loss_db};
            const HearingDamage all = EvaluateHearingDamage(
                {.left_db = Ear(mixed), .is_symmetric = true}, table, kFormulas[1]);
            EXPECT_NEAR(all.percent, ExpectedEar(table, mixed), 1e-12) << loss_db;
            EXPECT_EQ(all.left_percent, all.percent);
            EXPECT_FALSE(all.right_percent);
        }
    }
}

// The combination by its definition, on any two ears: flat ones and steep ones.
double ExpectedDamage(DamageTable table, DamageFormula formula, const std::array<int, 5>& left_db,
                      const std::array<int, 5>& right_db) {
    const bool is_old = table == DamageTable::kOld;
    const int left_flag = is_old && left_db[4] - left_db[2] > 40 ? 4 : 0;
    const int right_flag = is_old && right_db[4] - right_db[2] > 40 ? 4 : 0;
    double worse = ExpectedEar(table, left_db) - right_flag;
    double better = ExpectedEar(table, right_db) - left_flag;
    if (better > worse) std::swap(better, worse);
    if (table == DamageTable::kBiological) {
        return better > 0 ? 0.8 * better + 0.2 * worse : 0.24 * worse;
    }
    const double base = formula == DamageFormula::kIndustry ? 0.75 * better + 0.25 * worse
                                                            : (better + better + worse) / 3;
    return base + (left_flag * right_flag > 0 ? 4 : 0);
}

TEST(BinauralDamage, CombinesTheEars) {
    constexpr std::array<std::array<int, 5>, 8> kEars{{{0, 0, 0, 0, 0},
                                                       {20, 20, 20, 20, 20},
                                                       {26, 0, 0, 0, 26},
                                                       {30, 35, 50, 65, 70},
                                                       {25, 30, 40, 60, 65},
                                                       {0, 0, 19, 0, 60},
                                                       {25, 40, 24, 90, 65},
                                                       {120, 120, 120, 120, 120}}};
    for (const DamageTable table : kTables) {
        for (const DamageFormula formula : kFormulas) {
            for (const auto& left : kEars) {
                for (const auto& right : kEars) {
                    const HearingDamage damage = EvaluateHearingDamage(
                        {.left_db = Ear(left), .right_db = Ear(right)}, table, formula);
                    EXPECT_NEAR(damage.percent, ExpectedDamage(table, formula, left, right), 1e-12);
                }
            }
        }
    }
}

// --- Worked by hand ------------------------------------------------------------------------------

AudiogramDamageForm FormOf(const Texts& left, const Texts& right, DamageTable table,
                           DamageFormula formula = DamageFormula::kIndustry) {
    AudiogramDamageForm form;
    for (std::size_t i = 0; i < form.rows.size(); ++i) {
        form.rows[i] = {i < left.size() ? left[i] : "", i < right.size() ? right[i] : ""};
    }
    form.table = table;
    form.formula = formula;
    Recompute(form);
    return form;
}

TEST(AudiogramDamage, GivesWhatIsWorkedByHand) {
    constexpr auto kNew = DamageTable::kNew;
    constexpr auto kOld = DamageTable::kOld;
    constexpr auto kBiological = DamageTable::kBiological;
    constexpr auto kIndustry = DamageFormula::kIndustry;
    constexpr auto kAgriculture = DamageFormula::kAgriculture;
    const Texts presser{"30", "35", "50", "65", "70", "65"};
    const Texts other{"25", "30", "40", "60", "65", "60"};
    const Texts steep{"20", "20", "20", "99", "65"};   // 5.00 * 0.6 + 4 = 7
    const Texts steeper{"20", "20", "25", "0", "70"};  // 9.44 * 0.6 + 4 = 9.664
    const Texts quiet{"20", "20", "20", "20", "20", "20"};
    const Texts deaf{"999", "999", "999", "999", "999", "999"};
    const Texts super{"-99", "-99", "-99", "-99", "-99", "-99"};
    const struct {
        Texts left, right;
        DamageTable table;
        DamageFormula formula;
        double percent;
        const char* shown;
    } cases[] = {
        {presser, other, kNew, kIndustry, 21.075, "  21"},  // ears 28.95 and 18.45
        {other, presser, kNew, kAgriculture, 21.95, "  22"},
        {presser, other, kOld, kIndustry, 21.5715, "  22"},  // 28.326 and 19.32
        {presser, other, kOld, kAgriculture, 22.322, "  22"},
        {presser, other, kBiological, kIndustry, 9, "   9"},  // 13.8 and 7.8
        {presser, other, kBiological, kAgriculture, 9, "   9"},
        // A perfect ear, and one of 0.01 %: 26 dB at 4000 Hz.
        {presser, quiet, kBiological, kIndustry, 0.24 * 13.8, "   3"},
        {{"0", "0", "0", "0", "26"}, presser, kBiological, kIndustry, (0.04 + 13.8) * 0.2, "   3"},
        // One steep ear keeps its 4, the other one loses 4 and goes below zero.
        {steep, quiet, kOld, kIndustry, -1.25, "  -1"},
        {quiet, steep, kOld, kAgriculture, -1.0 / 3, "  -0"},
        // Two steep ears lose and gain the same: (3 * 3 + 5.664) / 4 + 4.
        {steep, steeper, kOld, kIndustry, 7.666, "   8"},
        {steep, steeper, kNew, kIndustry, 4.4625, "   4"},  // 8.85 and 3
        // Exactly 40 dB is not steep.
        {{"0", "0", "25", "0", "65"}, quiet, kOld, kIndustry, 9.44 * 0.6 / 4, "   1"},
        {quiet, quiet, kNew, kIndustry, 0, "   0"},
        {quiet, quiet, kOld, kAgriculture, 0, "   0"},
        {quiet, quiet, kBiological, kIndustry, 0, "   0"},
        {deaf, deaf, kNew, kIndustry, 60, "  60"},
        {deaf, deaf, kOld, kAgriculture, 60, "  60"},
        {deaf, super, kBiological, kIndustry, 12, "  12"},
        {super, super, kNew, kIndustry, 0, "   0"},
        // What is no whole number.
        {{"30.9", "35,5", " 50 dB", "+65", "70e9"}, other, kNew, kIndustry, 21.075, "  21"},
        {{"abc", "", "--50", "x65", "."}, {"99999999999"}, kNew, kIndustry, 15 / 4.0, "   4"},
    };
    for (const auto& row : cases) {
        const AudiogramDamageForm form = FormOf(row.left, row.right, row.table, row.formula);
        const Audiogram audiogram = AudiogramOf(form);
        EXPECT_NEAR(EvaluateHearingDamage(audiogram, row.table, row.formula).percent, row.percent,
                    1e-12)
            << row.shown;
        EXPECT_EQ(form.damage_percent, row.shown) << row.percent;
    }
}

TEST(AudiogramDamage, ASymmetricLossIsThatOfTheLeftEar) {
    AudiogramDamageForm form = FormOf({"0", "0", "19", "0", "60"}, {"90", "90", "90", "90", "90"},
                                      DamageTable::kOld, DamageFormula::kAgriculture);
    EXPECT_TRUE(UsesFormula(form));
    form.is_symmetric = true;
    Recompute(form);
    EXPECT_EQ(form.damage_percent, "   7");  // 4.44 * 0.6 + 4
    EXPECT_EQ(RightLoss(form, form.rows[4]), "60");
    EXPECT_FALSE(UsesFormula(form));
    form.is_symmetric = false;
    EXPECT_EQ(RightLoss(form, form.rows[4]), "90");
    form.table = DamageTable::kBiological;
    EXPECT_FALSE(UsesFormula(form));
    // What is typed into a row, and what becomes of its right ear.
    const auto entered = [](const AudiogramRow& row, const char* left, bool is_symmetric) {
        const AudiogramRow now = EnteredRow(row, left, "25.9", is_symmetric);
        return now.left_db + "|" + now.right_db;
    };
    EXPECT_EQ(entered({"30", "40"}, "-10", false), "-10|25");
    EXPECT_EQ(entered({"30", "40"}, "5", true), " 5|40");
    EXPECT_EQ(entered({"30", " 30"}, "x", true), " 0| 0");
    EXPECT_EQ(ShownLoss("x"), kNoLoss);
}

// --- State and files -----------------------------------------------------------------------------

AudiogramDamageForm LoadedForm(const std::string& text) {
    AudiogramDamageForm form = FormOf({"1"}, {"2", "3"}, DamageTable::kNew);
    form.damage_percent = "prima";
    EXPECT_TRUE(LoadForm(ProfileFile::Parse(text), form));
    return form;
}

std::string StoredText(const AudiogramDamageForm& form, const std::string& over = {}) {
    ProfileFile file = ProfileFile::Parse(over);
    StoreForm(form, file);
    return file.Serialize();
}

TEST(AudiogramDamage, KeepsNumbersBetweenTwoOpenings) {
    AudiogramDamageState state;
    const AudiogramDamageForm first = FormFromState(state);
    EXPECT_EQ(first.rows[5].left_db + first.rows[0].right_db + first.damage_percent, " 0 0Ilg");
    AudiogramDamageForm form =
        FormOf({"25.9", "", "-5"}, {"101"}, DamageTable::kOld, DamageFormula::kAgriculture);
    form.is_symmetric = true;
    form.notes = std::string(600, 'n');
    KeepForm(form, state);
    const AudiogramDamageForm again = FormFromState(state);
    EXPECT_EQ(again.rows[0].left_db + again.rows[1].left_db + again.rows[2].left_db, "25 0-5");
    EXPECT_EQ(again.rows[0].right_db, "101");
    EXPECT_TRUE(again.is_symmetric && again.table == DamageTable::kOld &&
                again.formula == DamageFormula::kAgriculture);
    EXPECT_EQ(again.notes.size(), 511U);
}

TEST(AudiogramDamage, StoresWhatItLoads) {
    const std::string golden = ExampleBytes("audiometria.ilg");
    AudiogramDamageForm form = LoadedForm(golden);
    EXPECT_EQ(StoredText(form), golden);
    Recompute(form);
    EXPECT_EQ(StoredText(form), golden);

    const std::string symmetric =
        "[TONVALE]\r\nTipo=ILG\r\nILG=  12\r\nSIMM=1\r\nTABELLA=2\r\nINDUS=2\r\n[SX]\r\n500=25\r\n"
        "1000=\r\n2000= 5\r\n3000=25.9\r\n4000=x\r\n6000=-5\r\n[NOTE]\r\nNum=0\r\n";
    form = LoadedForm(symmetric);
    EXPECT_EQ(form.damage_percent, "  12");  // as stored
    EXPECT_EQ(StoredText(form), symmetric);
    // An old right ear goes, what is unknown stays.
    const std::string stored = StoredText(form, golden + "[ALTRO]\r\na=b\r\n");
    EXPECT_EQ(stored.find("[DX]"), std::string::npos);
    EXPECT_TRUE(stored.ends_with("[ALTRO]\r\na=b\r\n"));
}

TEST(AudiogramDamage, ReadsIncompleteFiles) {
    // Without SIMM the loss is symmetric, and the section of the right ear does not count.
    AudiogramDamageForm form =
        LoadedForm("[tonvale]\ntipo= ilg\n[SX]\n500=30\n4000=12345678901234567\n[DX]\n500=99\n");
    EXPECT_TRUE(form.is_symmetric);
    EXPECT_EQ(form.damage_percent, "prima");
    EXPECT_TRUE(form.table == DamageTable::kNew && form.formula == DamageFormula::kIndustry);
    EXPECT_EQ(form.rows[1].left_db + form.rows[1].right_db, "");
    form.is_symmetric = false;
    EXPECT_EQ(RightLoss(form, form.rows[0]), "30");
    EXPECT_EQ(form.rows[4].left_db, "123456789012345");

    form = LoadedForm("[TONVALE]\nTipo=ILG\nSIMM=0\nTABELLA=4\nINDUS=0\nILG=12345678901234567\n");
    EXPECT_FALSE(form.is_symmetric);
    EXPECT_TRUE(form.table == DamageTable::kBiological &&
                form.formula == DamageFormula::kAgriculture);
    EXPECT_EQ(form.damage_percent, "123456789012345");
    EXPECT_EQ(form.rows[1].right_db, "");
    for (const char* refused : {"", "[TONVALE]\nILG=1\n", "[TONVALE]\nTipo=LEPD\nSIMM=1\n"}) {
        EXPECT_FALSE(LoadForm(ProfileFile::Parse(refused), form));
    }
    EXPECT_FALSE(form.is_symmetric);
}

// --- Summary, paper, assessment ------------------------------------------------------------------

TEST(AudiogramDamage, SummarisesAndPrintsItself) {
    AudiogramDamageForm form = LoadedForm(ExampleBytes("audiometria.ilg"));
    EXPECT_EQ(Summary(form, ";"),
              "Calcolo del danno uditivo;;;;;;;\r\n"
              "Frequenza (Hz):;;500;1000;2000;3000;4000;6000\r\n"
              "Orecchio Sx (dB):;;30;35;50;65;70;65\r\n"
              "Orecchio Dx (dB):;;25;30;40;60;65;60\r\n"
              "Tabella Danno:;;Biologico\r\nFormula:;;Industria\r\nDanno (%):;;   9\r\nNote:\r\n"
              "Addetto alle presse, 28 anni di esposizione.\r\n"
              "Audiometria tonale per via aerea, media di tre prove.\r\n");
    EXPECT_EQ(PrintoutAsText(MakePrintout(form)),
              "Calcolo del danno uditivo\n"
              "Frequenza (Hz):       500  1000  2000  3000  4000  6000\n"
              "Orecchio Sx (dB):      30    35    50    65    70    65\n"
              "Orecchio Dx (dB):      25    30    40    60    65    60\n"
              "Tabella Danno:     Biologico\n"
              "Formula:           Industria\n"
              "Danno (%):            9\n\nNote:\n"
              "Addetto alle presse, 28 anni di esposizione.\n"
              "Audiometria tonale per via aerea, media di tre prove.\n");
    EXPECT_EQ(MakePrintout(form).document_name, "Calcolo del danno uditivo");
    EXPECT_EQ(MakePrintout(form).drawing->first_line, 2 + 7 + 1);

    form.is_symmetric = true;
    form.table = DamageTable::kOld;
    form.formula = DamageFormula::kAgriculture;
    form.rows[0].left_db = "25.5";
    form.rows[5].left_db = "1234567890";
    form.notes.clear();
    Recompute(form);
    EXPECT_EQ(PrintoutAsText(MakePrintout(form)),
              "Calcolo del danno uditivo\n"
              "Frequenza (Hz):       500  1000  2000  3000  4000  6000\n"
              "Orecchio Sx (dB):    25.5    35    50    65    70 1234567890\n"
              "Orecchio Dx (dB):    25.5    35    50    65    70 1234567890\n"
              "Ipoacusia simmetrica\n"
              "Tabella Danno:     Vecchia\n"
              "Formula:           Agricoltura\n"
              "Danno (%):           27\n");
    const std::string summary = Summary(form, "|");
    EXPECT_NE(summary.find("Dx (dB):||25,5|35|"), std::string::npos);
    EXPECT_NE(summary.find("\r\nIpoacusia simmetrica||\r\nTabella"), std::string::npos);
    EXPECT_TRUE(summary.ends_with("Danno (%):||  27\r\nNote:\r\n\r\n"));
}

TEST(AudiogramDamage, TellsBothEarsInItsAssessment) {
    const ProfileFile example = ProfileFile::Parse(ExampleBytes("audiometria.ilg"));
    Assessment assessment = AssessAudiogramDamage(example);
    ASSERT_THAT(assessment.results, SizeIs(1));
    EXPECT_EQ(assessment.results[0].key, "ILG");
    EXPECT_EQ(assessment.results[0].shown, "   9");
    EXPECT_NEAR(assessment.results[0].value, 9, 1e-12);
    ASSERT_THAT(assessment.details, SizeIs(4));
    EXPECT_NEAR(std::get<double>(assessment.details[0].value), 13.8, 1e-12);
    EXPECT_NEAR(std::get<double>(assessment.details[1].value), 7.8, 1e-12);
    EXPECT_EQ(std::get<std::string>(assessment.details[2].value), "Biologico");
    EXPECT_EQ(std::get<std::string>(assessment.details[3].value), "Industria");

    // The left ear keeps its 4, the right one loses 4.
    assessment = AssessAudiogramDamage(
        ProfileFile::Parse("[TONVALE]\nTipo=ILG\nSIMM=0\nTABELLA=2\n[SX]\n4000=65\n[DX]\n"));
    EXPECT_NEAR(std::get<double>(assessment.details[0].value), 7, 1e-12);
    EXPECT_NEAR(std::get<double>(assessment.details[1].value), -4, 1e-12);
    assessment = AssessAudiogramDamage(ProfileFile::Parse("[TONVALE]\nTipo=ILG\n"));
    EXPECT_EQ(assessment.details[1].key, "right");
    EXPECT_TRUE(std::holds_alternative<std::nullptr_t>(assessment.details[1].value));
}

// --- The drawing ---------------------------------------------------------------------------------

using Line = RecordingCanvas::DrawnLine;

Audiogram ExampleAudiogram() {
    return {.left_db = {20, 25, 30, 45, 60, 65}, .right_db = {15, 25, 25, 30, 70, 60}};
}

RecordingCanvas Drawn(const Audiogram& audiogram, const Rect& area, bool use_color = true) {
    RecordingCanvas canvas;
    DrawAudiogram(canvas, area, audiogram, use_color);
    return canvas;
}

Texts TextsOf(const RecordingCanvas& canvas) {
    Texts texts;
    for (const auto& text : canvas.texts) texts.push_back(text.text);
    return texts;
}

// The corners of the last lines drawn, which are the curves.
std::vector<std::vector<Point>> LastCurves(const RecordingCanvas& canvas, std::size_t count) {
    std::vector<std::vector<Point>> curves;
    auto line = canvas.lines.end() - static_cast<std::ptrdiff_t>(5 * count);
    for (std::size_t i = 0; i < count; ++i) {
        curves.push_back({line->from});
        for (int k = 0; k < 5; ++k) curves.back().push_back((line++)->to);
    }
    return curves;
}

Point MiddleOf(const RecordingCanvas::DrawnShape& shape) {
    const auto [left, right] =
        std::minmax_element(shape.corners.begin(), shape.corners.end(),
                            [](const Point& a, const Point& b) { return a.x < b.x; });
    const auto [top, bottom] =
        std::minmax_element(shape.corners.begin(), shape.corners.end(),
                            [](const Point& a, const Point& b) { return a.y < b.y; });
    return {(left->x + right->x) / 2, (top->y + bottom->y) / 2};
}

TEST(AudiogramChart, DrawsBothEarsAtTheirPlaces) {
    struct Case {
        Rect area;
        std::array<int, 6> x;
        std::array<int, 6> left_y, right_y;
        Texts labels;
    };
    const Texts all{"110", "100", "90", "80", "70", "60", "50", "40", "30", "20", "10", "0", "-10"};
    const Texts some{"", "100", "", "80", "", "60", "", "40", "", "20", "", "0", ""};
    for (const Case& expected : {Case{{0, 0, 600, 400},
                                      {124, 222, 320, 378, 418, 476},
                                      {120, 132, 143, 178, 212, 224},
                                      {109, 132, 132, 143, 235, 212},
                                      all},
                                 Case{{20, 30, 980, 576},
                                      {220, 376, 532, 623, 688, 779},
                                      {204, 219, 234, 279, 324, 339},
                                      {189, 219, 219, 234, 354, 324},
                                      all},
                                 Case{{0, 0, 420, 200},
                                      {86, 155, 224, 264, 292, 332},
                                      {65, 71, 76, 93, 109, 115},
                                      {60, 71, 71, 76, 120, 109},
                                      some}}) {
        const RecordingCanvas canvas = Drawn(ExampleAudiogram(), expected.area);
        const auto curves = LastCurves(canvas, 2);
        ASSERT_THAT(canvas.shapes, SizeIs(2 + 12));
        for (std::size_t i = 0; i < 6; ++i) {
            const Point right{expected.x[i], expected.right_y[i]};
            const Point left{expected.x[i], expected.left_y[i]};
            EXPECT_EQ(curves[0][i], right) << i;
            EXPECT_EQ(curves[1][i], left) << i;
            EXPECT_EQ(MiddleOf(canvas.shapes[2 + i]), right);  // circles
            EXPECT_THAT(canvas.shapes[2 + i].corners, SizeIs(2));
            EXPECT_EQ(MiddleOf(canvas.shapes[8 + i]), left);  // crosses
            EXPECT_THAT(canvas.shapes[8 + i].corners, SizeIs(12));
        }
        EXPECT_EQ(canvas.lines.back().pen, (Pen{{0, 0, 255}, 2}));
        EXPECT_EQ((canvas.lines.end() - 6)->pen, (Pen{{255, 0, 0}, 2}));
        Texts texts{"120", "dB", "500", "1000", "2000", "3000", "4000", "6000"};
        texts.insert(texts.end(), expected.labels.begin(), expected.labels.end());
        for (const char* text : {"f (Hz)", "", "Dx", "Sx"}) texts.emplace_back(text);
        EXPECT_EQ(TextsOf(canvas), texts);
        EXPECT_NEAR(canvas.texts[0].rect.top + canvas.texts[0].rect.bottom,
                    2 * ComputeChartLayout(expected.area).plot.bottom, 1);
        // The legend's markers stand above its labels.
        const auto& label = canvas.texts.back();
        EXPECT_LE(MiddleOf(canvas.shapes[0]).y + 6,
                  label.rect.bottom - label.font.character_height);
    }
}

TEST(AudiogramChart, TellsTheEarsBySymbolsAloneAndASymmetricLossOnce) {
    const RecordingCanvas black = Drawn(ExampleAudiogram(), {0, 0, 600, 400}, false);
    EXPECT_EQ(black.lines.back().pen.color, kBlack);
    EXPECT_EQ((black.lines.end() - 6)->pen.color, kBlack);
    EXPECT_EQ(black.shapes[2].fill, (Color{255, 255, 255}));
    EXPECT_EQ(black.shapes[8].fill, kBlack);

    Audiogram symmetric = ExampleAudiogram();
    symmetric.is_symmetric = true;
    const RecordingCanvas one = Drawn(symmetric, {0, 0, 600, 400});
    EXPECT_EQ(LastCurves(one, 1)[0][5], (Point{476, 224}));
    EXPECT_EQ(one.lines.size(), 6U + 13 + 2 + 1 + 5);
    EXPECT_THAT(one.shapes, SizeIs(2 * 7));  // a cross in each circle
    EXPECT_EQ(one.texts.back().text, "Dx = Sx");
}

TEST(AudiogramChart, CutsLossesBeyondTheScale) {
    Audiogram audiogram;
    audiogram.left_db.fill(999);
    audiogram.right_db.fill(-99);
    const Rect area{0, 0, 600, 400};
    EXPECT_EQ(Drawn(audiogram, area).lines.size(), 6U + 13 + 2 + 2);
    EXPECT_THAT(Drawn(audiogram, area).shapes, SizeIs(2));  // of the legend
    audiogram.left_db = {120, -10, 121, 120, 120, 120};
    EXPECT_THAT(Drawn(audiogram, area).shapes, SizeIs(2 + 5));
    EXPECT_THAT(Drawn(audiogram, {0, 0, 0, 400}).lines, IsEmpty());
    for (int size = 1; size < 40; ++size) Drawn(audiogram, {0, 0, size, size});
}

}  // namespace
}  // namespace tonvale
