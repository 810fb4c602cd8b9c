#include "hearing/damage_evolution.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "hearing/loss_prediction.h"

namespace tonvale {
namespace {

using ::testing::HasSubstr;

DamageEvolutionForm FormOf(std::string level, std::string age, int fractile_position) {
    return {{.years = "", .level_dba = std::move(level), .age = std::move(age)}, fractile_position};
}

TEST(DamageEvolution, ARefusedFieldChangesTheListAlone) {
    DamageEvolutionState state;
    EXPECT_TRUE(Confirm(FormOf("100.1", "17", 8), state));
    EXPECT_EQ(FormFromState(state).fractile_position, 8);
    EXPECT_EQ(state.confirmed.fractile, 0.15);
    EXPECT_FALSE(Confirm(FormOf("87.5", "68", 16), state));
    EXPECT_EQ(state.confirmed.fractile, 90 * 0.01);
    EXPECT_EQ(FormFromState(state).level_dba + FormFromState(state).age, " 88 68");
}

TEST(DamageEvolution, TabulatesTheDamagesOfAnIndependentComputation) {
    const DamageEvolution women{
        {.level_dba = 95, .age = 30, .sex = kFemale}, 0.10, DamageTable::kBiological};
    EXPECT_THAT(MakeResultView(women).table_text(";"),
                HasSubstr("\r\n38;14,8; 1,2; 0,0;10,8\r\n40;16,3; 1,6; 0,0;12,1\r\n"));
    const DamageEvolution old{{.level_dba = 100, .age = 18, .sex = kMale}, 0.25, DamageTable::kOld};
    EXPECT_THAT(MakeResultView(old).table_text(";"),
                HasSubstr("\r\n 2; 8,1; 0,0; 0,0; 0,2\r\n 4; 9,4; 0,1; 0,0; 0,7\r\n"));
}

TEST(DamageEvolution, EndsAtTheAgeOf70) {
    DamageEvolution evolution;
    const auto row_count = [&](double age) {
        evolution.start.age = age;
        return ComputeRows(evolution).size();
    };
    EXPECT_EQ(row_count(18), 20U);
    EXPECT_EQ(row_count(30), 20U);
    EXPECT_EQ(row_count(30.5), 19U);
    EXPECT_EQ(row_count(68), 1U);
    // A level that harms no frequency leaves the damage of age.
    evolution.start = {.level_dba = 75, .age = 66, .sex = kMale};
    LossPrediction age{.quantity = QuantityKind::kHtla};
    age.person.age = 70;
    EXPECT_EQ(ComputeRows(evolution)[1].damages_percent[0], ComputeRows(age)[0].damage_percent);
}

}  // namespace

}  // namespace tonvale
