#include "hearing/loss_prediction.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"
#include "hearing/result_pages.h"

namespace tonvale {

namespace {

constexpr double kFirstTableFractile = 0.05;

constexpr int kTableColumns = 9;
// The fractile chart takes six of a full set, whose colours all differ.
constexpr int kPenCount = 7;

// Rows of the table that the audiogram draws: 5, 10, 25, 50, 75, 90 and 95 %.
constexpr std::array<std::size_t, 7> kAudiogramRows{0, 1, 4, 9, 14, 17, 18};

struct QuantityInfo {
    QuantityKind kind;
    std::string_view abbreviation;
    std::string_view name;
    LossPredictionFields fields;
};

constexpr std::array<QuantityInfo, 4> kQuantities{{
    {QuantityKind::kNipts,
     "NIPTS",
     "Noise Induced Permanent Threshold Shift",
     {true, false, false}},
    {QuantityKind::kHtla,
     "HTLA",
     "Hearing Threshold Level associated with Age",
     {false, true, true}},
    {QuantityKind::kHtlan,
     "HTLAN",
     "Hearing Threshold Level associated with Age and Noise",
     {true, true, true}},
    {QuantityKind::kAnipts,
     "ANIPTS",
     "Actual Noise Induced Permanent Threshold Shift",
     {true, true, true}},
}};

constexpr QuantityInfo kNoQuantity{};

const QuantityInfo& InfoOf(QuantityKind kind) {
    const auto* found = std::find_if(kQuantities.begin(), kQuantities.end(),
                                     [&](const QuantityInfo& info) { return info.kind == kind; });
    return found == kQuantities.end() ? kNoQuantity : *found;
}

bool HasDamage(QuantityKind quantity) {
    return quantity != QuantityKind::kNipts && quantity != QuantityKind::kAnipts;
}

std::vector<std::string> FrequencyLabels() {
    std::vector<std::string> labels;
    labels.reserve(kAudiometricFrequenciesHz.size());
    for (const int frequency_hz : kAudiometricFrequenciesHz) {
        labels.push_back(FormatInteger(frequency_hz) + " Hz");
    }
    return labels;
}

// The quantity in dB.
double LossAt(const LossPrediction& prediction, double fractile, int frequency_hz) {
    PredictionCase point = prediction.person;
    return ComputeQuantity(point, prediction.quantity, fractile, frequency_hz);
}

std::vector<std::string> ParametersOf(const LossPrediction& prediction) {
    const PredictionCase& person = prediction.person;
    std::vector<std::string> parameters;
    if (prediction.quantity != QuantityKind::kHtla) {
        parameters.push_back(" Anni di esposizione: " + FormatFixed(person.years, 3, 0));
        parameters.push_back(LevelParameter(person));
    }
    if (prediction.quantity != QuantityKind::kNipts) {
        parameters.push_back(AgeParameter(person.age));
        parameters.push_back(SexParameter(person));
        parameters.push_back(TableParameter(prediction.table));
    }
    return parameters;
}

std::vector<TableCell> TableRow(const LossPredictionRow& row) {
    std::vector<TableCell> cells{{FormatFixed(row.fractile * 100, 2, 0)}};
    for (const double loss : row.losses_db) cells.push_back({FormatFixed(loss, 4, 1)});
    if (row.damage_percent) {
        cells.push_back({FormatFixed(*row.damage_percent, 4, 1), row.is_compensable ? " *" : ""});
    }
    return cells;
}

// "HTLAN, 35 anni, 90 dBA, età 60, sesso M, tabella Nuova", of what enters the quantity.
std::string CaseName(const LossPrediction& prediction) {
    const PredictionCase& person = prediction.person;
    const LossPredictionFields fields = FieldsOf(prediction.quantity);
    std::string name(InfoOf(prediction.quantity).abbreviation);
    if (fields.noise) name += NameOfYearsAndLevel(person);
    if (fields.person) name += NameOfAgeAndSex(person);
    if (fields.table) name += NameOfTable(prediction.table);
    return name;
}

// Title, loss axis and pens of both charts.
Chart MakeLossChart(const LossPrediction& prediction) {
    const std::string parameters = ParameterLine(ParametersOf(prediction));
    Chart chart;
    chart.titles = {
        QuantityTitle(prediction.quantity) + "   " + std::string(TrimBlanks(parameters)),
        std::string(InfoOf(prediction.quantity).abbreviation) + " -" + parameters};
    chart.pen_count = kPenCount;
    SetLossAxis(chart);
    return chart;
}

bool HasAnyValue(const LossPrediction& prediction) {
    const std::vector<LossPredictionRow> rows = ComputeRows(prediction);
    return std::any_of(rows.begin(), rows.end(), [](const LossPredictionRow& row) {
        return std::any_of(row.losses_db.begin(), row.losses_db.end(),
                           [](double loss) { return std::isfinite(loss); });
    });
}

// Why a view of this kind is empty; empty when it is not.
std::string_view ReasonForNothing(const LossPrediction& prediction, ViewKind kind) {
    if (!HasAnyValue(prediction)) {
        return ReasonForNoNumber(prediction.person, FieldsOf(prediction.quantity).noise);
    }
    if (kind == ViewKind::kTable) return {};
    return ShowsAnyPoint(kind == ViewKind::kChart ? MakeFractileChart(prediction)
                                                  : MakeAudiogram(prediction))
               ? std::string_view()
               : "Nessuna curva: tutte le perdite sono fuori dalla scala, da 0 a 100 dB";
}

Curve FractileCurve(const LossPrediction& prediction, int frequency_hz) {
    Curve curve;
    for (const double fractile : FractileAxisValues()) {
        const double loss = LossAt(prediction, fractile, frequency_hz);
        curve.push_back({static_cast<double>(curve.size() + 1), LossAxisPosition(loss)});
    }
    return curve;
}

Curve AudiogramCurve(const LossPrediction& prediction, double fractile) {
    Curve curve;
    for (const int frequency_hz : kAudiometricFrequenciesHz) {
        const double loss = LossAt(prediction, fractile, frequency_hz);
        curve.push_back({static_cast<double>(frequency_hz), LossAxisPosition(loss)});
    }
    return curve;
}

std::vector<double> AudiogramFractiles() {
    const std::vector<double> all = FractilesFrom(kFirstTableFractile);
    std::vector<double> fractiles;
    fractiles.reserve(kAudiogramRows.size());
    for (const std::size_t row : kAudiogramRows) fractiles.push_back(all[row]);
    return fractiles;
}

std::vector<std::string> AudiogramLabels() {
    std::vector<std::string> labels;
    for (const double fractile : AudiogramFractiles()) {
        labels.push_back(FormatFixed(fractile * 100, 2, 0) + " %");
    }
    return labels;
}

}  // namespace

LossPredictionFields FieldsOf(QuantityKind quantity) {
    return InfoOf(quantity).fields;
}

std::string_view QuantityName(QuantityKind quantity) {
    return InfoOf(quantity).name;
}

std::string QuantityTitle(QuantityKind quantity) {
    const QuantityInfo& info = InfoOf(quantity);
    return std::string(info.abbreviation) + " - " + std::string(info.name);
}

LossPredictionForm FormFromState(const LossPredictionState& state, QuantityKind quantity) {
    LossPredictionForm form{FieldsOfPerson(state.confirmed.person), quantity};
    form.sex = state.sex_choice;
    form.table = state.table_choice;
    return form;
}

std::optional<HearingRefusal> Confirm(const LossPredictionForm& form, LossPredictionState& state) {
    const LossPredictionFields fields = FieldsOf(form.quantity);
    PredictionCase person = state.confirmed.person;
    if (fields.noise) {
        if (auto refusal = TakeYearsAndLevel(form, person)) return refusal;
    }
    if (fields.person) {
        const double years = fields.noise ? person.years : 0;
        if (auto refusal = TakeAgeAndSex(form, years, person)) return refusal;
    }
    state.confirmed = {person, form.quantity, form.table};
    state.sex_choice = form.sex;
    state.table_choice = form.table;
    return std::nullopt;
}

std::vector<LossPredictionRow> ComputeRows(const LossPrediction& prediction) {
    std::vector<LossPredictionRow> rows;
    for (const double fractile : FractilesFrom(kFirstTableFractile)) {
        LossPredictionRow row;
        row.fractile = fractile;
        row.losses_db = ComputeLosses(prediction.person, prediction.quantity, fractile);
        if (HasDamage(prediction.quantity)) {
            row.damage_percent = EarDamagePercent(ScoredLosses(row.losses_db), prediction.table);
            row.is_compensable = IsCompensable(*row.damage_percent, prediction.table);
        }
        rows.push_back(row);
    }
    return rows;
}

ResultTable MakeTable(const LossPrediction& prediction) {
    ResultTable table;
    table.title = QuantityTitle(prediction.quantity);
    table.parameters = ParametersOf(prediction);
    table.column_count = kTableColumns;
    table.header = {"q (%)"};
    for (std::string& label : FrequencyLabels()) table.header.push_back(std::move(label));
    if (HasDamage(prediction.quantity)) table.header.emplace_back("Danno (%)");
    table.column_colors.assign(kTableColumns, kBlack);
    table.column_colors.front() = kTableRed;
    table.column_colors[1 + kAudiometricFrequenciesHz.size()] = kTableGreen;
    for (const LossPredictionRow& row : ComputeRows(prediction))
        table.rows.push_back(TableRow(row));
    return table;
}

Chart MakeFractileChart(const LossPrediction& prediction) {
    Chart chart = MakeLossChart(prediction);
    SetFractileAxis(chart);
    chart.legend = FrequencyLabels();
    for (const int frequency_hz : kAudiometricFrequenciesHz) {
        chart.curves.push_back(FractileCurve(prediction, frequency_hz));
    }
    return chart;
}

Chart MakeAudiogram(const LossPrediction& prediction) {
    Chart chart = MakeLossChart(prediction);
    chart.horizontal_axis = HorizontalAxis::kFrequency;
    chart.horizontal_unit = "f (Hz)";
    chart.legend = AudiogramLabels();
    for (const double fractile : AudiogramFractiles()) {
        chart.curves.push_back(AudiogramCurve(prediction, fractile));
    }
    return chart;
}

void DrawNiptsTable(const LossPrediction& prediction, Canvas& canvas, const Rect& area,
                    const DrawingStyle& style) {
    DrawResultTable(canvas, area, MakeTable(prediction), style);
}

std::string ExportNiptsTable(const LossPrediction& prediction, std::string_view separator) {
    return ResultTableCells(MakeTable(prediction), separator);
}

ResultView MakeResultView(const LossPrediction& prediction) {
    ResultView view{.subject = ResultSubject::kHearingLoss, .case_name = CaseName(prediction)};
    view.pages = {
        TablePage(MakeTable(prediction)),
        ChartPage(ViewKind::kChart, "&Grafico", MakeFractileChart(prediction)),
        ChartPage(ViewKind::kAudiogram, "&Audiogramma", MakeAudiogram(prediction)),
    };
    for (ResultPage& page : view.pages) {
        page.empty_reason = ReasonForNothing(prediction, page.kind);
    }
    view.table_text = [prediction](std::string_view list_separator) {
        return ExportNiptsTable(prediction, list_separator);
    };
    return view;
}

}  // namespace tonvale
