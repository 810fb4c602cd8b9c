#include "hearing/damage_risk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "common/text.h"
#include "hearing/risk_grid.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

DamageCriterion CriterionAt(std::size_t position) {
    return DamageCriteria()[position].code;
}

DamageRiskForm FormOf(std::string years, std::string level, std::string age, int position = 0) {
    return {{.years = std::move(years), .level_dba = std::move(level), .age = std::move(age)},
            position};
}

TEST(DamageRisk, CriteriaAreMetFromTheirBoundariesOn) {
    // Losses at which the measure is the limit itself, or just below it and just above it.
    struct Boundary {
        std::size_t criterion;
        AudiometricLosses not_met;
        AudiometricLosses met;
    };
    const Boundary boundaries[] = {
        {0, {99, 27, 27, 99, 27, 99}, {0, 27, 27, 0, 27.001, 0}},
        {1, {25, 25, 25, 99, 99, 99}, {25, 25, 25.001, 0, 0, 0}},
        // 0.6 (15.75 + 1.845238 1.4) = 11: no double gives it exactly.
        {2, {20, 20, 41.8452, 20, 20, 99}, {20, 20, 41.8453, 20, 20, 0}},
        // 7 and 4 for the steep fall: exactly 11. 3000 Hz does not count.
        {3, {23.0575210589650, 20, 25.6, 99, 70, 99}, {23.0575210589651, 20, 25.6, 20, 70, 0}},
        {4, {45, 37.49, 20, 20, 20, 99}, {45, 37.5, 20, 20, 20, 0}},  // 0.5 (7.5 + 4.5)
        {5, {27, 29.99, 20, 20, 20, 99}, {27, 30, 20, 20, 20, 0}},    // 0.5 (0.5 + 1.5)
        {6, {25, 25, 25, 25, 25, 99}, {25, 25, 25, 25, 25.001, 0}},
        {7, {25, 25, 25, 25, 25, 99}, {25, 25, 25, 25.001, 25, 0}},
    };
    for (const auto& [criterion, not_met, met] : boundaries) {
        EXPECT_EQ(TestCriterion(0.3, CriterionAt(criterion), not_met), 0) << criterion;
        EXPECT_EQ(TestCriterion(0.3, CriterionAt(criterion), met), 0.3) << criterion;
    }
    const AudiometricLosses eleven = boundaries[3].met;
    EXPECT_EQ(DamageCriteria()[3].measure(eleven), 11);
}

TEST(DamageRisk, GivesTheSharesOfAnIndependentComputation) {
    struct Case {
        PredictionCase person;
        std::array<const char*, 8> shares;  // unexposed, exposed and risk, of each criterion
    };
    const Case cases[] = {
        {{35, 90, 60, kMale},
         {" 21.0 35.0 14.0", "  5.0  8.0  3.0", "  0.0 13.0 13.0", "  5.0 10.0  5.0",
          "  0.0  7.0  7.0", " 15.0 34.0 19.0", " 57.0 79.0 22.0", " 22.0 36.0 14.0"}},
        {{40, 100, 58, kFemale},
         {"  6.0 68.0 62.0", "  0.0 37.0 37.0", "  0.0 45.0 45.0", "  0.0 40.0 40.0",
          "  0.0 35.0 35.0", "  0.0 69.0 69.0", " 22.0 94.0 72.0", "  8.0 70.0 62.0"}},
        {{5, 100, 30, kFemale},
         {"  0.0 13.0 13.0", "  0.0  0.0  0.0", "  0.0  0.0  0.0", "  0.0  0.0  0.0",
          "  0.0  0.0  0.0", "  0.0 13.0 13.0", "  0.0 48.0 48.0", "  0.0 15.0 15.0"}},
    };
    for (const auto& [person, shares] : cases) {
        for (std::size_t i = 0; i < shares.size(); ++i) {
            const RiskShares computed = ComputeRisk({person, CriterionAt(i)});
            EXPECT_EQ(ShareText(computed.unexposed) + ShareText(computed.exposed) +
                          ShareText(computed.risk),
                      shares.at(i))
                << person.years << " " << i;
        }
    }
}

TEST(DamageRisk, IsBoundByTheScanAndByTheNoise) {
    // Met everywhere, by an age that no one reaches.
    const DamageRisk everywhere{{1, 90, 500, kMale}, DamageCriterion::kBiologicalMinimum};
    EXPECT_EQ(ShareText(ComputeRisk(everywhere).unexposed), " 95.0");
    EXPECT_EQ(ComputeRisk(everywhere).risk, 0);
    // 75 dBA harm no frequency; at 18 nothing has been lost.
    for (const DamageCriterionInfo& info : DamageCriteria()) {
        const DamageRisk quiet{{40, 75, 70, kMale}, info.code};
        EXPECT_EQ(ComputeRisk(quiet).risk, 0);
        EXPECT_GT(ComputeRisk(quiet).exposed, 0);
        EXPECT_EQ(ComputeRisk({{40, 75, 18, kFemale}, info.code}).exposed, 0);
    }
    const DamageRisk negative{{-5, 90, 60, kMale}, DamageCriterion::kInailNewTable};
    EXPECT_THAT(MakeResultView(negative).StatusText(ViewKind::kTable),
                StartsWith("Nessun risultato: gli anni di esposizione sono negativi (Rischio, -5"));
    EXPECT_EQ(MakeTable(negative).rows[1][1].text, "  nan");
}

TEST(DamageRisk, RefusesFieldsInTheirOrderAndChangesNothing) {
    struct Refused {
        DamageRiskForm form;
        const char* caption;
    };
    const Refused refused[] = {
        {FormOf("0", "0", "0", -1), "Criterio di danno."},
        {FormOf("0", "0", "0", 8), "Criterio di danno."},
        {FormOf("40.5", "0", "0"), "Anni di esposizione."},
        {FormOf("40", "100.5", "0"), "Livello di esposizione."},
        {FormOf("40", "100", "57.9"), "Età individuo."},
        {FormOf("-20", "100", "0"), "Età individuo."},
    };
    DamageRisk risk;
    for (const auto& [form, caption] : refused) {
        const auto refusal = Confirm(form, risk);
        ASSERT_TRUE(refusal) << caption;
        EXPECT_EQ(refusal->message.caption, caption);
        EXPECT_EQ(refusal->message.text, "Errore! Dati non validi");
    }
    EXPECT_EQ(MakeResultView(risk).StatusText(ViewKind::kTable),
              "Rischio, 35 anni, 90 dBA, età 60, sesso M, ISO 1999/90");
    DamageRiskForm form = FormOf("40", "99.5", "58", 6);
    form.sex = kFemale;
    ASSERT_FALSE(Confirm(form, risk));
    EXPECT_EQ(MakeResultView(risk).StatusText(ViewKind::kTable),
              "Rischio, 40 anni, 99.5 dBA, età 58, sesso F, Danno biologico maggiore di zero");
    form = FormFromState(risk);
    EXPECT_EQ(form.years + form.level_dba + form.age, " 40100 58");
    EXPECT_EQ(form.criterion_position, 6);
}

TEST(DamageRisk, ReportsTheSharesInLines) {
    const ResultView view = MakeResultView(DamageRisk());
    EXPECT_EQ(view.table_text(";"),
              "Rischio di danno (in %) dovuto all'esposizione al rumore\r\n"
              "Esposizione: 90,0 dBA per 35 anni;Età: 60;Sesso: M;Criterio: ISO 1999/90\r\n"
              "% della popolazione non esposta che supera la soglia di rischio:; 21,0\r\n"
              "% della popolazione esposta che supera la soglia di rischio:; 35,0\r\n"
              "% di popolazione a rischio causato all'esposizione a rumore:; 14,0\r\n");
    const RecordingCanvas canvas = DrawnBy(view, ViewKind::kTable, {0, 0, 1000, 400});
    ASSERT_THAT(canvas.texts, SizeIs(2 + 3 * 2));
    EXPECT_EQ(canvas.texts[0].text, " Rischio di danno (in %) dovuto all'esposizione al rumore");
    EXPECT_EQ(canvas.texts[1].text,
              " Esposizione: 90.0 dBA per  35 anni   Età:  60  Sesso: M   Criterio: ISO 1999/90");
    for (std::size_t i = 2; i < canvas.texts.size(); i += 2) {
        EXPECT_EQ(canvas.texts[i].color, kTableRed);
        EXPECT_EQ(canvas.texts[i + 1].color, kBlack);
        EXPECT_EQ(canvas.texts[i + 1].rect.right, canvas.texts[3].rect.right);
        EXPECT_EQ(canvas.texts[i + 1].rect.top, canvas.texts[i].rect.top);
    }
    EXPECT_EQ(canvas.texts.back().text, " 14.0");
    // Nothing is cut off on the right of a narrow area.
    const RecordingCanvas narrow = DrawnBy(view, ViewKind::kTable, {0, 0, 420, 400});
    EXPECT_LE(narrow.texts[3].rect.right, 420);
    EXPECT_LE(narrow.texts[1].rect.left + 80 * narrow.texts[1].font.character_height / 2, 420);
}

TEST(DamageRisk, ChartsWhatTheCriterionMeasures) {
    DamageRisk risk;
    Chart chart = MakeRiskChart(risk);
    EXPECT_EQ(chart.titles.front(),
              "Perdite (dB) - Esposizione: 90.0 dBA per  35 anni   Età:  60  Sesso: M   "
              "Criterio: ISO 1999/90");
    EXPECT_EQ(chart.titles.back(), "Perdite (dB) - 35 anni, 90 dBA, età 60, sesso M, ISO 1999/90");
    EXPECT_THAT(chart.vertical_labels,
                ElementsAre("- 10", "0", "10", "20", "30", "40", "50", "60", "70", "80"));
    // The criterion is met where the curve is above 27 dB, 4.7 divisions up: up to 21 and 35 %.
    for (std::size_t i = 0; i < 19; ++i) {
        const int percent = 5 * static_cast<int>(i + 1);
        EXPECT_EQ(chart.curves[0][i].y > 4.7, percent <= 21) << percent;
        EXPECT_EQ(chart.curves[1][i].y > 4.7, percent <= 35) << percent;
        // 0 dB is two divisions up.
        EXPECT_NEAR(chart.curves[2][i].y - 2, chart.curves[1][i].y - chart.curves[0][i].y, 1e-12);
    }
    risk.criterion = DamageCriterion::kInailOldTable;
    chart = MakeRiskChart(risk);
    EXPECT_THAT(chart.titles.front(), StartsWith("Danno INAIL (%) - Esposizione"));
    EXPECT_EQ(chart.vertical_labels.front() + chart.vertical_labels.back(), "2.525");
    EXPECT_EQ(chart.curves[1][1].y >= 11 / 2.5, true);  // 10 %
    EXPECT_EQ(chart.curves[1][2].y >= 11 / 2.5, false);
    risk.criterion = DamageCriterion::kBiologicalAboveZero;
    EXPECT_THAT(MakeRiskChart(risk).titles.front(), StartsWith("Danno biologico (%) - "));

    const ResultView view = MakeResultView(risk);
    EXPECT_EQ(view.Page(ViewKind::kAudiogram), nullptr);
    EXPECT_THAT(view.Page(ViewKind::kChart)->curve_names,
                ElementsAre("non esposti", "esposti", "rischio"));
    // Grid, axes, one entry of the legend and one curve in black; the next index has no curve.
    const DrawingStyle one{.use_color = false, .selected_curve = 2};
    const RecordingCanvas canvas = DrawnBy(view, ViewKind::kChart, {0, 0, 1000, 700}, one);
    EXPECT_THAT(canvas.lines, SizeIs(19 + 10 + 2 + 1 + 18));
    EXPECT_EQ(canvas.lines.back().pen.color, kBlack);
    EXPECT_THAT(DrawnBy(view, ViewKind::kChart, {0, 0, 1000, 700}, {.selected_curve = 3}).lines,
                SizeIs(19 + 10 + 2));
}

TEST(RiskGrid, TabulatesTheRiskForManyExposures) {
    DamageRisk base;
    ASSERT_FALSE(ConfirmGrid(FormOf("", "", "52.9"), base));
    EXPECT_EQ(ComputeGrid(base).base.person.age, 52.9);
    ASSERT_FALSE(ConfirmGrid(FormOf("", "", "60"), base));
    EXPECT_THAT(MakeResultView(ComputeGrid(base)).table_text(";"),
                AllOf(StartsWith("Rischio di danno (in %) dovuto all'esposizione al rumore\r\n"
                                 "Età alla fine dell'esposizione: 60;Sesso: M;"
                                 "Criterio: ISO 1999/90\r\n"
                                 "Anni;80 dBA;85 dBA;90 dBA;95 dBA;100 dBA\r\n"
                                 " 5;  1,0;  3,0;  7,0; 15,0; 25,0\r\n"),
                      HasSubstr("\r\n35;  1,0;  5,0; 14,0; 29,0; 53,0\r\n")));
    // At 40 the exposure has lasted 22 years at most; at 22 none of five years is possible.
    ASSERT_FALSE(ConfirmGrid(FormOf("", "", "40"), base));
    const ResultTable table = MakeTable(ComputeGrid(base));
    EXPECT_NE(table.rows[3].back().text, "-");
    for (std::size_t row = 4; row < kGridYears.size(); ++row) {
        for (std::size_t i = 1; i <= kGridLevelsDba.size(); ++i) {
            EXPECT_EQ(table.rows[row][i].text, "-");
        }
    }
    const auto refusal = ConfirmGrid(FormOf("", "", "22"), base);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->message.caption, "Età individuo.");
    EXPECT_EQ(base.person.age, 40);
}

}  // namespace
}  // namespace tonvale
