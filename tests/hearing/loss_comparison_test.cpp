#include "hearing/loss_comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/text.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::SizeIs;
using ::testing::StartsWith;

TEST(LossComparison, RefusesALevelAndChangesNothing) {
    LossComparisonState state;
    for (const char* level : {"89", "88.1", "0", "", "x", "0.000001"}) {
        const auto refusal = Confirm({18, 0, level}, state);
        ASSERT_TRUE(refusal) << level;
        EXPECT_EQ(refusal->field, HearingField::kLevel);
    }
    EXPECT_EQ(state.base.level_dba, 88);
    EXPECT_EQ(state.base.frequency_hz, 4000);
    EXPECT_EQ(state.fractile_position, 1);
    for (const char* level : {"88", "-5", "88.00001"}) {
        EXPECT_FALSE(Confirm({1, 4, level}, state)) << level;
    }
    ASSERT_FALSE(Confirm({6, 5, "80.5"}, state));
    EXPECT_EQ(state.base.fractile, 35 * 0.01);
    EXPECT_EQ(state.base.frequency_hz, 6000);
    EXPECT_EQ(FormFromState(state).level_dba, " 81");
    EXPECT_EQ(FormFromState(state).fractile_position, 6);
    ASSERT_FALSE(Confirm({-1, 99, "80"}, state));
    EXPECT_EQ(state.base.fractile, 0.05);
    EXPECT_EQ(state.base.frequency_hz, 6000);
}

TEST(LossComparison, TabulatesYearsByLevels) {
    const LossComparisonState state;
    const ResultView view = MakeResultView(state);
    EXPECT_EQ(view.StatusText(ViewKind::kTable),
              "Previsioni NIPTS, 4000 Hz, frattile 10 %, da 88 dBA");
    const std::string text = view.table_text(";");
    EXPECT_THAT(text, StartsWith("NIPTS - Noise Induced Permanent Threshold Shift\r\n"
                                 "Frequenza: 4000 Hz;Frattile: 10 %\r\n"
                                 "Anni;88 dBA;90 dBA;92 dBA;94 dBA;96 dBA;98 dBA;100 dBA\r\n"
                                 " 2; 5,5; 7,4; 9,5;11,8;14,5;17,3;20,5\r\n"));
    const auto lines = SplitLines(text);
    ASSERT_THAT(lines, SizeIs(3 + 20));
    // The standard's own examples after 10, 20, 30 and 40 years at 90 dBA: 15, 18, 19 and 20 dB.
    EXPECT_EQ(lines[2 + 5], "10;11,5;15,3;19,6;24,5;30,0;35,9;42,5");
    EXPECT_THAT(lines[2 + 10], StartsWith("20;13,3;17,8;"));
    EXPECT_THAT(lines[2 + 20], StartsWith("40;15,2;20,2;"));

    EXPECT_THAT(DrawnBy(view, ViewKind::kTable, {0, 0, 800, 600}).texts, SizeIs(2 + 8 + 20 * 8));
}

}  // namespace
}  // namespace tonvale
