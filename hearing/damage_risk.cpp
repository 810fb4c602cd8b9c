#include "hearing/damage_risk.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "common/numbers.h"
#include "common/text.h"
#include "hearing/damage_table.h"
#include "hearing/result_pages.h"

namespace tonvale {

namespace {

// The scan starts a little above 5 %, and so never falls short of a whole per cent.
constexpr double kFirstFractile = 0.05001;
constexpr double kFractileStep = 0.01;
constexpr double kFractileEnd = 0.959;

// --- Criteria, with what they measure, in the order in which the terms are added
// ------------------

double MeanOf1And2And4kHz(const AudiometricLosses& losses_db) {
    const auto& [at_500, at_1000, at_2000, at_3000, at_4000, at_6000] = losses_db;
    return (at_1000 + at_4000 + at_2000) * (1.0 / 3);
}

double MeanOfHalfAnd1And2kHz(const AudiometricLosses& losses_db) {
    const auto& [at_500, at_1000, at_2000, at_3000, at_4000, at_6000] = losses_db;
    return (at_1000 + at_2000 + at_500) * (1.0 / 3);
}

double MeanUpTo4kHz(const AudiometricLosses& losses_db) {
    const auto& [at_500, at_1000, at_2000, at_3000, at_4000, at_6000] = losses_db;
    return (at_3000 + at_1000 + at_4000 + at_2000 + at_500) * 0.2;
}

template <DamageTable kTable>
double DamageBy(const AudiometricLosses& losses_db) {
    return EarDamagePercent(ScoredLosses(losses_db), kTable);
}

// Those of the INAIL tables are met by 11 % itself, whatever their texts say.
constexpr std::array<DamageCriterionInfo, 8> kCriteria{{
    {DamageCriterion::kIso1990, "ISO 1999/90", "ISO 1999/90: ((1kHz + 2kHz + 4kHz) / 3) > 27",
     "ISO 1999/90", MeanOf1And2And4kHz, 27, false, RiskChartForm::kLoss},
    {DamageCriterion::kIso1975, "ISO 1999/75", "ISO 1999/75: ((0.5kHz + 1kHz + 2kHz) / 3) > 25",
     "ISO 1999/75", MeanOfHalfAnd1And2kHz, 25, false, RiskChartForm::kLoss},
    {DamageCriterion::kInailNewTable, "INAIL Nuova Tabella", "INAIL Nuova Tabella: Danno > 11%",
     "INAIL Nuova Tabella", DamageBy<DamageTable::kNew>, 11, true, RiskChartForm::kInailDamage},
    {DamageCriterion::kInailOldTable, "INAIL Vecchia Tabella", "INAIL Vecchia Tabella: Danno > 11%",
     "INAIL Vecchia Tabella", DamageBy<DamageTable::kOld>, 11, true, RiskChartForm::kInailDamage},
    {DamageCriterion::kBiologicalCompensable, "Danno biologico indennizzabile",
     "Danno biologico >= 6%", "Danno biologico indennizzabile", DamageBy<DamageTable::kBiological>,
     6, true, RiskChartForm::kBiologicalDamage},
    {DamageCriterion::kBiologicalMinimum, "Danno biologico minimo", "Danno biologico >= 1%",
     "Danno biologico minimo", DamageBy<DamageTable::kBiological>, 1, true,
     RiskChartForm::kBiologicalDamage},
    {DamageCriterion::kBiologicalAboveZero, "Danno biologico zero", "Danno biologico > 0%",
     "Danno biologico maggiore di zero", DamageBy<DamageTable::kBiological>, 0, false,
     RiskChartForm::kBiologicalDamage},
    {DamageCriterion::kBiologicalMeanLoss, "Danno biologico medio", "Danno biologico medio > 25 dB",
     "Danno biologico medio > 25 dB", MeanUpTo4kHz, 25, false, RiskChartForm::kLoss},
}};

// --- The vertical axis of each form of the chart
// --------------------------------------------------

constexpr int kVerticalDivisions = 10;
constexpr int kPenCount = 4;

struct RiskAxis {
    std::string_view title;
    double bottom;
    double per_division;
    std::array<const char*, kVerticalDivisions> labels;  // of the divisions from the bottom up
    const char* unit;
    const char* nothing;  // when no curve comes into the plot
};

constexpr RiskAxis kLossAxis{"Perdite (dB) - ",
                             -20,
                             10,
                             {"- 10", "0", "10", "20", "30", "40", "50", "60", "70", "80"},
                             "dB",
                             "Nessuna curva: tutte le perdite sono fuori dalla scala, da -20 a "
                             "80 dB"};

constexpr RiskAxis DamageAxis(std::string_view title) {
    return {title,       0,
            2.5,         {"2.5", "5", "7.5", "10", "12.5", "15", "17.5", "20", "22.5", "25"},
            "Danno (%)", "Nessuna curva: tutti i danni sono fuori dalla scala, da 0 a 25 %"};
}

// In the order of RiskChartForm.
constexpr std::array<RiskAxis, 3> kAxes{
    {kLossAxis, DamageAxis("Danno INAIL (%) - "), DamageAxis("Danno biologico (%) - ")}};

const RiskAxis& AxisOf(const DamageRisk& risk) {
    return kAxes[static_cast<std::size_t>(InfoOf(risk.criterion).chart_form)];
}

// --- The scan
// -------------------------------------------------------------------------------------

AudiometricLosses UnexposedLosses(const DamageRisk& risk, double fractile) {
    return ComputeLosses(risk.person, QuantityKind::kHtla, fractile);
}

AudiometricLosses ExposedLosses(const DamageRisk& risk, double fractile) {
    return ComputeLosses(risk.person, QuantityKind::kHtlan, fractile);
}

// The larger share; one that is no number stays so.
double LargerShare(double share, double other) {
    return std::isnan(other) ? other : std::max(share, other);
}

// --- Texts
// ----------------------------------------------------------------------------------------

std::vector<std::string> ParametersOf(const DamageRisk& risk) {
    const PredictionCase& person = risk.person;
    return {" Esposizione: " + FormatFixed(person.level_dba, 4, 1) + " dBA per " +
                FormatFixed(person.years, 3, 0) + " anni",
            AgeParameter(person.age), SexParameter(person), CriterionParameter(risk.criterion)};
}

// "35 anni, 90 dBA, età 60, sesso M, ISO 1999/90".
std::string CaseParts(const DamageRisk& risk) {
    const std::string name = NameOfYearsAndLevel(risk.person) + NameOfAgeAndSex(risk.person);
    return name.substr(2).append(", ").append(InfoOf(risk.criterion).report_name);
}

// Why a view of this kind is empty; empty when it is not.
std::string_view ReasonForNothing(const DamageRisk& risk, ViewKind kind) {
    if (std::isnan(ComputeRisk(risk).risk)) return ReasonForNoNumber(risk.person, true);
    const bool shows_any = kind == ViewKind::kTable || ShowsAnyPoint(MakeRiskChart(risk));
    return shows_any ? std::string_view() : AxisOf(risk).nothing;
}

}  // namespace

std::span<const DamageCriterionInfo> DamageCriteria() {
    return kCriteria;
}

const DamageCriterionInfo& InfoOf(DamageCriterion criterion) {
    return kCriteria[static_cast<std::size_t>(criterion) -
                     static_cast<std::size_t>(DamageCriterion::kIso1990)];
}

const std::vector<std::string>& DamageCriterionItems() {
    static const std::vector<std::string> items = [] {
        std::vector<std::string> texts;
        texts.reserve(kCriteria.size());
        for (const DamageCriterionInfo& info : kCriteria) texts.emplace_back(info.list_text);
        return texts;
    }();
    return items;
}

std::string CriterionParameter(DamageCriterion criterion) {
    return std::string("   Criterio: ").append(InfoOf(criterion).report_name);
}

DamageRiskForm FormFromState(const DamageRisk& risk) {
    return {FieldsOfPerson(risk.person),
            static_cast<int>(risk.criterion) - static_cast<int>(DamageCriterion::kIso1990)};
}

std::optional<HearingRefusal> Confirm(const DamageRiskForm& form, DamageRisk& risk) {
    const auto position = static_cast<std::size_t>(form.criterion_position);
    if (position >= kCriteria.size()) return RefusalOf(HearingField::kCriterion);
    PredictionCase person = risk.person;
    if (auto refusal = TakeYearsAndLevel(form, person)) return refusal;
    if (auto refusal = TakeAgeAndSex(form, person.years, person)) return refusal;
    risk = {person, kCriteria[position].code};
    return std::nullopt;
}

double TestCriterion(double fractile, DamageCriterion criterion,
                     const AudiometricLosses& losses_db) {
    // A damage table would take what is no number for a large loss.
    const bool has_numbers = std::all_of(losses_db.begin(), losses_db.end(),
                                         [](double loss) { return std::isfinite(loss); });
    if (!has_numbers) return std::numeric_limits<double>::quiet_NaN();
    const DamageCriterionInfo& info = InfoOf(criterion);
    const double measured = info.measure(losses_db);
    const bool is_met = info.limit_meets ? measured >= info.limit : measured > info.limit;
    return is_met ? fractile : 0;
}

PopulationPair RiskAtFractile(const DamageRisk& risk, double fractile) {
    return {TestCriterion(fractile, risk.criterion, UnexposedLosses(risk, fractile)),
            TestCriterion(fractile, risk.criterion, ExposedLosses(risk, fractile))};
}

RiskShares ComputeRisk(const DamageRisk& risk) {
    RiskShares shares;
    // The fractile is a sum of steps: it is the share that is shown.
    double fractile = kFirstFractile;
    while (fractile < kFractileEnd) {
        const PopulationPair met = RiskAtFractile(risk, fractile);
        shares.unexposed = LargerShare(shares.unexposed, met.unexposed);
        shares.exposed = LargerShare(shares.exposed, met.exposed);
        fractile += kFractileStep;
    }
    shares.risk = shares.exposed - shares.unexposed;
    return shares;
}

std::string ShareText(double share) {
    return FormatFixed(share * 100, 5, 1);
}

ResultTable MakeTable(const DamageRisk& risk) {
    const RiskShares shares = ComputeRisk(risk);
    ResultTable table;
    table.title = kRiskTitle;
    table.parameters = ParametersOf(risk);
    table.column_colors = {kTableRed};
    table.rows = {
        {{"% della popolazione non esposta che supera la soglia di rischio:"},
         {ShareText(shares.unexposed)}},
        {{"% della popolazione esposta che supera la soglia di rischio:"},
         {ShareText(shares.exposed)}},
        {{"% di popolazione a rischio causato all'esposizione a rumore:"},
         {ShareText(shares.risk)}},
    };
    return table;
}

Chart MakeRiskChart(const DamageRisk& risk) {
    const RiskAxis& axis = AxisOf(risk);
    const DamageCriterionInfo& criterion = InfoOf(risk.criterion);
    const std::string parameters(TrimBlanks(ParameterLine(ParametersOf(risk))));
    Chart chart;
    chart.titles = {std::string(axis.title) + parameters,
                    std::string(axis.title) + CaseParts(risk)};
    SetFractileAxis(chart);
    chart.vertical_divisions = kVerticalDivisions;
    chart.vertical_labels.assign(axis.labels.begin(), axis.labels.end());
    chart.vertical_unit = axis.unit;
    chart.legend = {"non esposti", "esposti", "rischio"};
    chart.pen_count = kPenCount;
    chart.curves.resize(chart.legend.size());
    double division = 0;
    for (const double fractile : FractileAxisValues()) {
        ++division;
        const double unexposed = criterion.measure(UnexposedLosses(risk, fractile));
        const double exposed = criterion.measure(ExposedLosses(risk, fractile));
        const std::array<double, 3> values{unexposed, exposed, exposed - unexposed};
        for (std::size_t i = 0; i < values.size(); ++i) {
            chart.curves[i].push_back({division, (values[i] - axis.bottom) / axis.per_division});
        }
    }
    return chart;
}

ResultView MakeResultView(const DamageRisk& risk) {
    ResultView view{.subject = ResultSubject::kRisk, .case_name = "Rischio, " + CaseParts(risk)};
    view.pages = {TablePage(MakeTable(risk)),
                  ChartPage(ViewKind::kChart, "&Grafico", MakeRiskChart(risk))};
    for (ResultPage& page : view.pages) page.empty_reason = ReasonForNothing(risk, page.kind);
    view.table_text = [risk](std::string_view list_separator) {
        return ResultTableCells(MakeTable(risk), list_separator);
    };
    return view;
}

}  // namespace tonvale
