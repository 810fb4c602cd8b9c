#include "hearing/loss_comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/text.h"

namespace tonvale {
namespace {

using ::testing::StartsWith;

TEST(LossComparison, ARefusedLevelChangesNothing) {
    LossComparisonState state;
    const auto refusal = Confirm({18, 0, "89"}, state);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->field, HearingField::kLevel);
    EXPECT_EQ(state.base.level_dba, 88);
    EXPECT_EQ(state.base.frequency_hz, 4000);
    EXPECT_EQ(state.fractile_position, 1);
    ASSERT_FALSE(Confirm({6, 5, "80.5"}, state));
    EXPECT_EQ(state.base.fractile, 35 * 0.01);
    EXPECT_EQ(FormFromState(state).level_dba, " 81");
    EXPECT_EQ(FormFromState(state).fractile_position, 6);
    // Positions that the lists do not have: the nearest ones.
    ASSERT_FALSE(Confirm({-1, 99, "80"}, state));
    EXPECT_EQ(state.base.fractile, 0.05);
    EXPECT_EQ(state.base.frequency_hz, 6000);
}

// The standard's own examples after 10, 20, 30 and 40 years at 90 dBA: 15, 18, 19 and 20 dB.
TEST(LossComparison, TabulatesYearsByLevels) {
    const std::string text = MakeResultView(LossComparisonState()).table_text(";");
    const auto lines = SplitLines(text);
    ASSERT_EQ(lines.size(), 3U + 20);
    EXPECT_EQ(lines[2 + 5], "10;11,5;15,3;19,6;24,5;30,0;35,9;42,5");
    EXPECT_THAT(lines[2 + 10], StartsWith("20;13,3;17,8;"));
    EXPECT_THAT(lines[2 + 20], StartsWith("40;15,2;20,2;"));
}

}  // namespace

}  // namespace tonvale
