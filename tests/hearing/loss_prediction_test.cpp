#include "hearing/loss_prediction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

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

// The caption of the refusal, after checking that it changed nothing; empty when accepted.
std::string Refusal(const LossPredictionForm& form) {
    LossPredictionState state;
    state.confirmed.person = {12, 87, 45, kFemale, 1000, 0.5};
    const auto refusal = Confirm(form, state);
    if (!refusal) return {};
    EXPECT_EQ(refusal->message.text, "Errore! Dati non validi");
    EXPECT_EQ(state.confirmed.person.years, 12);
    EXPECT_EQ(state.confirmed.person.level_dba, 87);
    EXPECT_EQ(state.confirmed.person.age, 45);
    return refusal->message.caption;
}

TEST(LossPrediction, RefusesFieldsInTheirOrderAndChangesNothing) {
    const auto htlan = [](const char* years, const char* level, const char* age) {
        return Refusal(FormOf(QuantityKind::kHtlan, years, level, age));
    };
    for (const char* years : {"0", "41", "40.01", "", "abc", ",5"}) {
        EXPECT_EQ(htlan(years, "0", "0"), "Anni di esposizione.") << years;
    }
    for (const char* level : {"0", "101", "100.1", "dB"}) {
        EXPECT_EQ(htlan("10", level, "0"), "Livello di esposizione.") << level;
    }
    EXPECT_EQ(htlan("15", "90", "30"), "Età individuo.");
    EXPECT_EQ(htlan("15", "90", "32.9"), "Età individuo.");
    EXPECT_EQ(htlan("15", "90", "0"), "Età individuo.");
    EXPECT_EQ(htlan("-20", "90", "0"), "Età individuo.");
    EXPECT_EQ(htlan("15", "90", "33"), "");
    EXPECT_EQ(htlan("40", "100", "58"), "");
    EXPECT_EQ(htlan("-5", "-3", "13"), "");
    // Seven characters count: 0.000001 is read as 0.00000, 100.0001 as 100.000.
    EXPECT_EQ(htlan("0.000001", "90", "60"), "Anni di esposizione.");
    EXPECT_EQ(htlan("10", "100.0001", "60"), "");
    // What does not enter the quantity is not read.
    EXPECT_EQ(Refusal(FormOf(QuantityKind::kNipts, "10", "90", "0")), "");
    EXPECT_EQ(Refusal(FormOf(QuantityKind::kHtla, "0", "0", "18")), "");
    EXPECT_EQ(Refusal(FormOf(QuantityKind::kHtla, "40", "90", "17")), "Età individuo.");
}

TEST(LossPrediction, KeepsWhatTheQuantityDoesNotUse) {
    LossPredictionState state;
    LossPredictionForm form = FormOf(QuantityKind::kHtla, "1", "1", "25");
    form.sex = kFemale;
    ASSERT_FALSE(Confirm(form, state));
    EXPECT_EQ(state.confirmed.person.years, 35);
    EXPECT_EQ(state.confirmed.person.level_dba, 90);
    EXPECT_EQ(state.confirmed.person.age, 25);
    ASSERT_FALSE(Confirm(FormOf(QuantityKind::kNipts, "2", "87.5", "70"), state));
    EXPECT_EQ(FormFromState(state, QuantityKind::kHtla).level_dba, " 88");
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

TEST(LossPrediction, MarksADamageThatIsCompensated) {
    LossPrediction prediction = PredictionOf(FormOf(QuantityKind::kHtlan, "35", "90", "60"));
    prediction.table = DamageTable::kOld;
    const LossPredictionRow row = ComputeRows(prediction)[0];
    EarLosses losses{};
    std::copy_n(row.losses_db.begin(), losses.size(), losses.begin());
    EXPECT_EQ(row.damage_percent, EarDamagePercent(losses, DamageTable::kOld));
    EXPECT_EQ(MakeTable(prediction).rows[0].back().mark, " *");
    EXPECT_EQ(MakeTable(prediction).rows[18].back().mark, "");
    prediction.quantity = QuantityKind::kNipts;
    EXPECT_FALSE(ComputeRows(prediction)[0].damage_percent);
}

TEST(LossPrediction, NamesTheCaseAndSaysWhyNothingIsShown) {
    const auto status = [](QuantityKind quantity, const char* years, const char* age,
                           ViewKind kind = ViewKind::kChart) {
        return MakeResultView(PredictionOf(FormOf(quantity, years, "90.26", age))).StatusText(kind);
    };
    EXPECT_EQ(status(QuantityKind::kHtlan, "1", "60"),
              "HTLAN, 1 anno, 90.26 dBA, età 60, sesso M, tabella Nuova");
    EXPECT_EQ(status(QuantityKind::kHtla, "", "18.5"), "HTLA, età 18.5, sesso M, tabella Nuova");
    EXPECT_EQ(
        status(QuantityKind::kNipts, "-5", ""),
        "Nessun risultato: gli anni di esposizione sono negativi (NIPTS, -5 anni, 90.26 dBA)");
    EXPECT_THAT(status(QuantityKind::kHtla, "", "1e999", ViewKind::kTable),
                StartsWith("Nessun risultato: i dati sono fuori scala (HTLA, "));
    // An age that no one reaches: numbers in the table, but none within the chart.
    EXPECT_THAT(status(QuantityKind::kHtla, "", "500", ViewKind::kTable), StartsWith("HTLA, "));
    EXPECT_THAT(status(QuantityKind::kHtla, "", "500", ViewKind::kAudiogram),
                StartsWith("Nessuna curva: tutte le perdite sono fuori dalla scala"));
}

TEST(LossPrediction, DrawsTheTableInNineColumns) {
    LossPrediction prediction = PredictionOf(FormOf(QuantityKind::kHtlan, "35", "90", "60"));
    const ResultView view = MakeResultView(prediction);
    const RecordingCanvas canvas = DrawnBy(view, ViewKind::kTable, {50, 20, 950, 620});
    // Two marks beside the lines, the header and the rows.
    ASSERT_EQ(canvas.texts.size(), 2U + 8 + 19 * 8 + 2);
    EXPECT_EQ(canvas.texts[1].text,
              " Anni di esposizione:  35   Leq: 90.0 dBA   Età:  60  Sesso: M   Tabella: Nuova");
    EXPECT_EQ(canvas.texts[10].color, kTableRed);
    EXPECT_EQ(canvas.texts[12].text, "22.4");
    EXPECT_EQ(canvas.texts[12].rect, (Rect{250, 80, 325, 100}));
    EXPECT_EQ(canvas.texts[17].text + canvas.texts[18].text, "18.5 *");
    EXPECT_EQ(canvas.texts[18].color, kTableGreen);

    prediction.quantity = QuantityKind::kNipts;
    const RecordingCanvas black = DrawnBy(MakeResultView(prediction), ViewKind::kTable,
                                          {0, 0, 900, 600}, {.use_color = false});
    EXPECT_EQ(black.texts.size(), 2U + 7 + 19 * 7);
    for (const auto& text : black.texts) EXPECT_EQ(text.color, kBlack);

    // As large as there is room for, up to twice the font; where there is little, smaller, but not
    // too small to be read.
    const ResultView nipts = MakeResultView(prediction);
    const RecordingCanvas low = DrawnBy(nipts, ViewKind::kTable, {0, 0, 900, 22 * 10});
    EXPECT_THAT(low.texts, SizeIs(2 + 7 + 19 * 7));
    EXPECT_EQ(low.texts.back().rect.bottom, 22 * 9);
    EXPECT_EQ(DrawnBy(nipts, ViewKind::kTable, {0, 0, 3000, 2000}).texts.back().rect.bottom,
              22 * 24);
    EXPECT_THAT(DrawnBy(nipts, ViewKind::kTable, {0, 0, 900, 6 * 4 + 5}).texts, SizeIs(2 + 7 + 7));
    EXPECT_THAT(DrawnBy(view, ViewKind::kTable, {0, 0, 900, 0}).texts, IsEmpty());
    EXPECT_THAT(DrawnBy(view, ViewKind::kTable, {0, 0, 0, 900}).texts, IsEmpty());
}

}  // namespace
}  // namespace tonvale
