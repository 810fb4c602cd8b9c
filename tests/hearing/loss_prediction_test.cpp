#include "hearing/loss_prediction.h"

#include <gtest/gtest.h>

namespace tonvale {
namespace {

LossPredictionForm FormOf(QuantityKind quantity, std::string years, std::string level,
                          std::string age) {
    LossPredictionForm form;
    form.quantity = quantity;
    form.years = std::move(years);
    form.level_dba = std::move(level);
    form.age = std::move(age);
    return form;
}

LossPrediction PredictionOf(const LossPredictionForm& form) {
    LossPredictionState state;
    EXPECT_FALSE(Confirm(form, state));
    return state.confirmed;
}

TEST(LossPrediction, KeepsWhatTheQuantityDoesNotUse) {
    LossPredictionState state;
    EXPECT_TRUE(Confirm(FormOf(QuantityKind::kHtlan, "15", "80", "32.9"), state));
    LossPredictionForm form = FormOf(QuantityKind::kHtla, "1", "1", "25");
    form.sex = kFemale;
    ASSERT_FALSE(Confirm(form, state));
    EXPECT_EQ(state.confirmed.person.years, 35);
    EXPECT_EQ(state.confirmed.person.level_dba, 90);
    EXPECT_EQ(state.confirmed.person.age, 25);
    form = FormOf(QuantityKind::kNipts, "2", "87.5", "70");
    form.table = DamageTable::kBiological;
    ASSERT_FALSE(Confirm(form, state));
    EXPECT_EQ(FormFromState(state, QuantityKind::kHtla).level_dba, " 88");
    EXPECT_EQ(FormFromState(state, QuantityKind::kHtla).table, DamageTable::kBiological);
    EXPECT_EQ(state.confirmed.person.age, 25);
    EXPECT_EQ(state.confirmed.person.sex, kFemale);  // of the case
    EXPECT_EQ(state.sex_choice, kMale);              // of the buttons
}

TEST(LossPrediction, TheRowOf55PerCentUsesTheMultiplierOf54) {
    LossPrediction prediction = PredictionOf(FormOf(QuantityKind::kHtla, "", "", "18"));
    const std::vector<LossPredictionRow> rows = ComputeRows(prediction);
    ASSERT_EQ(rows.size(), 19U);
    EXPECT_EQ(rows[10].fractile, 0.5499999999999999);
    EXPECT_NEAR(rows[10].losses_db[0], -0.100 * 4.89, 1e-12);
    EXPECT_EQ(rows[9].losses_db[0], 0);
    EXPECT_LT(rows[9].fractile, 0.5);
    EXPECT_NEAR(rows[11].losses_db[0], -0.253 * 4.89, 1e-12);
    EXPECT_NEAR(rows[18].losses_db[0], -1.645 * 4.89, 1e-12);
    // The chart does not fall short: 0.126 at 55 %.
    const Chart chart = MakeFractileChart(prediction);
    EXPECT_NEAR(chart.curves[0][10].y, LossAxisPosition(-0.126 * 4.89), 1e-12);
}

}  // namespace

}  // namespace tonvale
