// Prediction of NIPTS, HTLA or HTLAN for one person (dialog NIPTS): form, checks and result view.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/result_view.h"
#include "hearing/chart.h"
#include "hearing/damage_table.h"
#include "hearing/hearing_fields.h"
#include "hearing/result_table.h"
#include "hearing/threshold_model.h"

namespace tonvale {

// What the dialog shows.
struct LossPredictionForm : HearingFields {
    QuantityKind quantity = QuantityKind::kHtlan;  // NIPTS, HTLA or HTLAN
};

// What is predicted, for whom, and by which table the damage is scored: all that tables and charts
// are made of.
struct LossPrediction {
    // Years, level, age and sex; fractile and frequency are set for each value.
    PredictionCase person{.years = 35, .level_dba = 90, .age = 60, .sex = kMale};
    QuantityKind quantity = QuantityKind::kHtlan;
    DamageTable table = DamageTable::kNew;
};

// What is kept between two openings of the dialog.
struct LossPredictionState {
    LossPrediction confirmed;  // by the last "Ok"
    // The buttons clicked last. The dialog stores them at the click, whatever becomes of it.
    int sex_choice = kMale;
    DamageTable table_choice = DamageTable::kNew;
};

// What of the dialog enters a quantity and is enabled along with it.
struct LossPredictionFields {
    bool noise = false;   // years and level
    bool person = false;  // age and sex
    bool table = false;
};
LossPredictionFields FieldsOf(QuantityKind quantity);

// "Noise Induced Permanent Threshold Shift" and so on; empty for any other code.
std::string_view QuantityName(QuantityKind quantity);
// " NIPTS - Noise Induced Permanent Threshold Shift" and so on, without the leading blank.
std::string QuantityTitle(QuantityKind quantity);

// The form as an opening for `quantity` shows it.
LossPredictionForm FormFromState(const LossPredictionState& state, QuantityKind quantity);

// "Ok": takes what the quantity needs into the state; a refused field leaves all of it unchanged.
std::optional<HearingRefusal> Confirm(const LossPredictionForm& form, LossPredictionState& state);

// One row of the table: a fractile over the six frequencies.
struct LossPredictionRow {
    double fractile = 0;
    AudiometricLosses losses_db{};
    std::optional<double> damage_percent;  // unless the quantity is NIPTS or ANIPTS
    bool is_compensable = false;
};

// Nineteen rows. Their fractile grows by adding 0.05, and so the eleventh, shown as 55 %, lies
// just below and is computed with the multiplier of 54 %: archived tables have it so.
std::vector<LossPredictionRow> ComputeRows(const LossPrediction& prediction);

ResultTable MakeTable(const LossPrediction& prediction);
Chart MakeFractileChart(const LossPrediction& prediction);
Chart MakeAudiogram(const LossPrediction& prediction);

void DrawNiptsTable(const LossPrediction& prediction, Canvas& canvas, const Rect& area,
                    const DrawingStyle& style);
// Title, parameters, header and rows: each parameter is a cell ("Leq: 90,0 dBA"), each number as
// the table shows it, with a decimal comma.
std::string ExportNiptsTable(const LossPrediction& prediction, std::string_view separator);

// The table, the chart over the fractile and the audiogram.
ResultView MakeResultView(const LossPrediction& prediction);

}  // namespace tonvale
