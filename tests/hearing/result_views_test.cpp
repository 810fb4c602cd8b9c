// What the main window says of the results of every hearing dialog, and how their tables are drawn.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "hearing/damage_evolution.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"
#include "hearing/risk_grid.h"
#include "tests/common/golden.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

LossPrediction PredictionOf(QuantityKind quantity, PredictionCase person) {
    LossPrediction prediction{.quantity = quantity};
    prediction.person = person;
    return prediction;
}

// Its pages as the menus name them, each with its status line and its curves.
std::string Described(const ResultView& view) {
    std::string text;
    for (const ResultPage& page : view.pages) {
        text += page.menu_text + ": " + view.StatusText(page.kind) + "\n";
        for (const std::string& name : page.curve_names) text += "    " + name + "\n";
    }
    return text;
}

TEST(ResultViews, NameTheCaseTheCurvesAndWhyNothingIsShown) {
    const double infinity = std::numeric_limits<double>::infinity();
    DamageRisk negative_years;
    negative_years.person.years = -5;
    DamageRisk women{{40, 99.5, 58, kFemale}, DamageCriterion::kBiologicalAboveZero};
    DamageEvolution evolution{
        {.level_dba = 87.5, .age = 68, .sex = kFemale}, 0.9, DamageTable::kBiological};
    const ResultView views[] = {
        MakeResultView(PredictionOf(QuantityKind::kHtlan, {1, 90.26, 60, kMale})),
        MakeResultView(PredictionOf(QuantityKind::kHtla, {35, 90, 18.5, kFemale})),
        MakeResultView(PredictionOf(QuantityKind::kHtla, {35, 90, infinity, kMale})),
        // An age that no one reaches: numbers in the table, but none within the charts.
        MakeResultView(PredictionOf(QuantityKind::kHtla, {35, 90, 500, kMale})),
        MakeResultView(PredictionOf(QuantityKind::kNipts, {-5, 90, 60, kMale})),
        MakeResultView(LossComparisonState()),
        MakeResultView(DamageRisk()),
        MakeResultView(negative_years),
        MakeResultView(women),
        MakeResultView(ComputeGrid(women)),
        MakeResultView(DamageEvolution()),
        MakeResultView(evolution),
    };
    std::string text;
    for (const ResultView& view : views) text += Described(view);
    ExpectGolden("viste", text);
}

TEST(ResultViews, DrawOneCurveOrAllInBlack) {
    constexpr DrawingStyle kThirdAlone{.use_color = false, .selected_curve = 2};
    constexpr Rect kArea{0, 0, 1000, 700};
    for (const ResultView& view :
         {MakeResultView(LossPrediction()), MakeResultView(LossComparisonState()),
          MakeResultView(DamageRisk()), MakeResultView(DamageEvolution())}) {
        const auto all = DrawnBy(view, ViewKind::kChart, kArea, {.use_color = false});
        const auto third = DrawnBy(view, ViewKind::kChart, kArea, kThirdAlone);
        const auto none = DrawnBy(view, ViewKind::kChart, kArea, {.selected_curve = 99});
        EXPECT_GT(all.lines.size(), third.lines.size());
        EXPECT_GT(third.lines.size(), none.lines.size());
        EXPECT_EQ(third.lines.back().pen.color, kBlack);
        EXPECT_EQ(all.lines.back().pen.color, kBlack);
        for (const auto& text : DrawnBy(view, ViewKind::kTable, kArea, kThirdAlone).texts) {
            EXPECT_EQ(text.color, kBlack);
        }
    }
}

// As large as there is room for, up to twice the font; where there is little, smaller, but not too
// small to be read.
TEST(ResultViews, TablesGrowWithTheirRoom) {
    const ResultView table =
        MakeResultView(PredictionOf(QuantityKind::kNipts, {35, 90, 60, kMale}));
    const auto drawn = [&](const Rect& area) {
        return DrawnBy(table, ViewKind::kTable, area).texts;
    };
    EXPECT_EQ(drawn({50, 20, 950, 620}).at(9).rect, (Rect{50, 20 + 3 * 24, 125, 20 + 4 * 24}));
    const auto low = drawn({0, 0, 900, 22 * 10});
    EXPECT_THAT(low, SizeIs(2 + 7 + 19 * 7));
    EXPECT_EQ(low.back().rect.bottom, 22 * 9);
    EXPECT_EQ(drawn({0, 0, 3000, 2000}).back().rect.bottom, 22 * 24);
    EXPECT_THAT(drawn({0, 0, 900, 6 * 4 + 5}), SizeIs(2 + 7 + 7));
    EXPECT_THAT(drawn({0, 0, 900, 0}), IsEmpty());
    EXPECT_THAT(drawn({0, 0, 0, 900}), IsEmpty());
    // Nothing is cut off on the right of a narrow area.
    const auto risk =
        DrawnBy(MakeResultView(DamageRisk()), ViewKind::kTable, {0, 0, 420, 400}).texts;
    EXPECT_LE(risk.at(3).rect.right, 420);
    EXPECT_LE(risk[1].rect.left + 80 * risk[1].font.character_height / 2, 420);
}

}  // namespace

}  // namespace tonvale
