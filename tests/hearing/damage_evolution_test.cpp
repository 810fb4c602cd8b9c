#include "hearing/damage_evolution.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "common/text.h"
#include "hearing/loss_prediction.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

DamageEvolutionForm FormOf(std::string level, std::string age, int fractile_position) {
    return {{.years = "", .level_dba = std::move(level), .age = std::move(age)}, fractile_position};
}

TEST(DamageEvolution, RefusesFieldsInTheirOrder) {
    struct Refused {
        const char* level;
        const char* age;
        const char* caption;
    };
    const Refused refused[] = {
        {"0", "0", "Livello di esposizione."},
        {"100.1", "17", "Livello di esposizione."},
        {"100", "17.9", "Età di inizio esposizione."},
        {"100", "68.1", "Età di inizio esposizione."},
        {"100", "", "Età di inizio esposizione."},
    };
    DamageEvolutionState state;
    for (const auto& [level, age, caption] : refused) {
        const auto refusal = Confirm(FormOf(level, age, 8), state);
        ASSERT_TRUE(refusal) << level;
        EXPECT_EQ(refusal->message.caption, caption);
        EXPECT_EQ(refusal->message.text, "Errore! Dati non validi");
    }
    // The list stays as it was chosen; what is computed does not change.
    EXPECT_EQ(FormFromState(state).fractile_position, 8);
    EXPECT_EQ(MakeResultView(state.confirmed).StatusText(ViewKind::kTable),
              "Evoluzione del danno, dall'età di 18 anni, 90 dBA, sesso M, tabella Nuova, "
              "frattile 15 %");
    DamageEvolutionForm form = FormOf("87.5", "68", 16);
    form.sex = kFemale;
    form.table = DamageTable::kBiological;
    ASSERT_FALSE(Confirm(form, state));
    EXPECT_EQ(state.confirmed.fractile, 90 * 0.01);
    EXPECT_EQ(MakeResultView(state.confirmed).StatusText(ViewKind::kTable),
              "Evoluzione del danno, dall'età di 68 anni, 87.5 dBA, sesso F, tabella Biologico, "
              "frattile 90 %");
    EXPECT_EQ(FormFromState(state).level_dba + FormFromState(state).age, " 88 68");
}

TEST(DamageEvolution, TabulatesTheDamagesOfAnIndependentComputation) {
    const ResultView view = MakeResultView(DamageEvolution());
    const std::string text = view.table_text(";");
    EXPECT_THAT(text, StartsWith("Evoluzione del danno causato dall'età e dal rumore\r\n"
                                 "Età di inizio esposizione: 18;Sesso: M;Leq: 90,0 dBA;"
                                 "Tabella: Nuova\r\n"
                                 "Anni;5 %;50 %;95 %;15 %\r\n"
                                 " 2; 0,0; 0,0; 0,0; 0,0\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\n30; 7,5; 0,0; 0,0; 2,6\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\n40;17,0; 0,9; 0,0; 8,5\r\n"));
    EXPECT_THAT(SplitLines(text), SizeIs(3 + 20));
    const DamageEvolution women{
        {.level_dba = 95, .age = 30, .sex = kFemale}, 0.10, DamageTable::kBiological};
    EXPECT_THAT(MakeResultView(women).table_text(";"),
                HasSubstr("\r\n38;14,8; 1,2; 0,0;10,8\r\n40;16,3; 1,6; 0,0;12,1\r\n"));
    const DamageEvolution old{{.level_dba = 100, .age = 18, .sex = kMale}, 0.25, DamageTable::kOld};
    EXPECT_THAT(MakeResultView(old).table_text(";"),
                HasSubstr("\r\n 2; 8,1; 0,0; 0,0; 0,2\r\n 4; 9,4; 0,1; 0,0; 0,7\r\n"));
}

TEST(DamageEvolution, BeginsAsThePredictionTableHasIt) {
    const DamageEvolution evolution{
        {.level_dba = 100, .age = 60, .sex = kMale}, 0.25, DamageTable::kOld};
    const DamageEvolutionRow first = ComputeRows(evolution).front();
    LossPrediction prediction{.table = DamageTable::kOld};
    prediction.person = {2, 100, 62, kMale};
    const std::vector<LossPredictionRow> rows = ComputeRows(prediction);
    EXPECT_THAT(first.damages_percent,
                ElementsAre(*rows[0].damage_percent, *rows[9].damage_percent,
                            *rows[18].damage_percent, *rows[4].damage_percent));
    EXPECT_GT(first.damages_percent[3], 0);
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

TEST(DamageEvolution, ChartsTheDamageOverTheYears) {
    DamageEvolution evolution;
    evolution.start.age = 60;
    const Chart chart = MakeEvolutionChart(evolution);
    EXPECT_EQ(chart.horizontal_labels.front() + chart.horizontal_labels.back(), "240");
    EXPECT_EQ(chart.vertical_labels.front() + chart.vertical_labels.back(), "550");
    EXPECT_EQ(chart.horizontal_unit + chart.vertical_unit, "YDanno (%)");
    EXPECT_THAT(chart.legend, ElementsAre("5 %", "50 %", "95 %", " 15 %"));
    ASSERT_THAT(chart.curves, SizeIs(4));
    const std::vector<DamageEvolutionRow> rows = ComputeRows(evolution);
    ASSERT_THAT(chart.curves[0], SizeIs(5));  // up to 70
    EXPECT_EQ(chart.curves[0][4].x, 5);
    EXPECT_EQ(chart.curves[0][4].y, rows[4].damages_percent[0] / 5);
    const RecordingCanvas canvas = DrawnBy(MakeResultView(evolution), ViewKind::kChart,
                                           {0, 0, 1000, 700}, {.selected_curve = 3});
    EXPECT_THAT(canvas.lines, SizeIs(20 + 10 + 2 + 1 + 4));
    EXPECT_EQ(canvas.lines.back().pen.color, kBlack);  // the fourth of seven
}

}  // namespace
}  // namespace tonvale
