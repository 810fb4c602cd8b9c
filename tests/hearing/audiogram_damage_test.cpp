#include "hearing/audiogram_damage.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "common/svg_canvas.h"
#include "hearing/audiogram_chart.h"
#include "tests/common/golden.h"

namespace tonvale {
namespace {

using Texts = std::vector<std::string>;

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

Audiogram AnAudiogram() {
    return {.left_db = {20, 25, 30, 45, 60, 65}, .right_db = {15, 25, 25, 30, 70, 60}};
}

std::string Picture(const Audiogram& audiogram, bool use_color) {
    SvgCanvas canvas({420, 200});
    DrawAudiogram(canvas, {20, 10, 420, 200}, audiogram, use_color);
    return canvas.Document();
}

TEST(AudiogramChart, TellsTheEarsApartAndCutsLossesBeyondTheScale) {
    Audiogram symmetric = AnAudiogram();
    symmetric.is_symmetric = true;
    Audiogram beyond;
    beyond.left_db = {120, -10, 121, 120, 120, 120};
    beyond.right_db.fill(-99);
    ExpectGolden("audiogrammi", Picture(AnAudiogram(), false) + Picture(AnAudiogram(), true) +
                                    Picture(symmetric, true) + Picture(beyond, true));
    for (int size = 0; size < 40; ++size) {
        SvgCanvas canvas({size, size});
        DrawAudiogram(canvas, {0, 0, size, size}, beyond, true);
    }
}

}  // namespace

}  // namespace tonvale
