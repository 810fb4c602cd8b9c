#include "hearing/damage_evolution.h"

#include <algorithm>
#include <cstddef>

#include "common/numbers.h"
#include "common/text.h"
#include "hearing/result_pages.h"

namespace tonvale {

namespace {

constexpr double kLastAge = 70;
constexpr int kVerticalDivisions = 10;
constexpr int kPercentPerDivision = 5;
// Four of a full set, whose colours all differ.
constexpr int kPenCount = 7;

std::vector<std::string> ParametersOf(const DamageEvolution& evolution) {
    const PredictionCase& start = evolution.start;
    return {" Età di inizio esposizione: " + FormatFixed(start.age, 3, 0), SexParameter(start),
            LevelParameter(start), TableParameter(evolution.table)};
}

std::string CaseName(const DamageEvolution& evolution) {
    const PredictionCase& start = evolution.start;
    return "Evoluzione del danno, dall'età di " + FormatShortest(start.age) + " anni, " +
           FormatShortest(start.level_dba) + " dBA" + NameOfSex(start) +
           NameOfTable(evolution.table) + ", frattile " +
           FormatFixed(evolution.fractile * 100, 0, 0) + " %";
}

// "5 %", "50 %", "95 %" and the chosen fractile, as wide as asked.
std::vector<std::string> FractileLabels(const DamageEvolution& evolution, int width) {
    return {"5 %", "50 %", "95 %", FormatFixed(evolution.fractile * 100, width, 0) + " %"};
}

}  // namespace

const std::vector<std::string>& EvolutionFractileItems() {
    static const std::vector<std::string> fractiles = FractileItems(10, 90);
    return fractiles;
}

DamageEvolutionForm FormFromState(const DamageEvolutionState& state) {
    DamageEvolutionForm form{FieldsOfPerson(state.confirmed.start), state.fractile_position};
    form.table = state.confirmed.table;
    return form;
}

std::optional<HearingRefusal> Confirm(const DamageEvolutionForm& form,
                                      DamageEvolutionState& state) {
    state.fractile_position = form.fractile_position;
    PredictionCase start = state.confirmed.start;
    if (auto refusal = TakeLevel(form.level_dba, start)) return refusal;
    if (auto refusal = TakeStartAgeAndSex(form, start)) return refusal;
    const int percent = ParseInteger(ItemAt(EvolutionFractileItems(), form.fractile_position));
    state.confirmed = {start, percent * 0.01, form.table};
    return std::nullopt;
}

std::array<double, kEvolutionFractiles> EvolutionFractiles(const DamageEvolution& evolution) {
    return {0.05, 0.5, 0.95, evolution.fractile};
}

std::vector<DamageEvolutionRow> ComputeRows(const DamageEvolution& evolution) {
    std::vector<DamageEvolutionRow> rows;
    const auto fractiles = EvolutionFractiles(evolution);
    for (const double years : YearAxisValues()) {
        PredictionCase person = evolution.start;
        person.years = years;
        person.age += years;
        if (person.age > kLastAge) break;
        DamageEvolutionRow& row = rows.emplace_back(DamageEvolutionRow{.years = years});
        std::transform(fractiles.begin(), fractiles.end(), row.damages_percent.begin(),
                       [&](double fractile) {
                           const AudiometricLosses losses =
                               ComputeLosses(person, QuantityKind::kHtlan, fractile);
                           return EarDamagePercent(ScoredLosses(losses), evolution.table);
                       });
    }
    return rows;
}

std::string DamageText(double damage_percent) {
    return FormatFixed(damage_percent, 4, 1);
}

ResultTable MakeTable(const DamageEvolution& evolution) {
    ResultTable table;
    table.title = kEvolutionTitle;
    table.parameters = ParametersOf(evolution);
    table.header = {"Anni"};
    for (const std::string& label : FractileLabels(evolution, 2)) table.header.push_back(label);
    table.column_count = static_cast<int>(table.header.size());
    table.column_colors = {kTableRed};
    for (const DamageEvolutionRow& row : ComputeRows(evolution)) {
        std::vector<TableCell> cells{{FormatFixed(row.years, 2, 0)}};
        for (const double damage : row.damages_percent) {
            cells.push_back({DamageText(damage)});
        }
        table.rows.push_back(cells);
    }
    return table;
}

Chart MakeEvolutionChart(const DamageEvolution& evolution) {
    const std::string parameters(TrimBlanks(ParameterLine(ParametersOf(evolution))));
    Chart chart;
    chart.titles = {std::string(kEvolutionTitle) + "   " + parameters, CaseName(evolution)};
    SetYearAxis(chart, "Y");
    chart.vertical_divisions = kVerticalDivisions;
    for (int i = 1; i <= kVerticalDivisions; ++i) {
        chart.vertical_labels.push_back(FormatInteger(1LL * i * kPercentPerDivision));
    }
    chart.vertical_unit = "Danno (%)";
    chart.legend = FractileLabels(evolution, 3);
    chart.pen_count = kPenCount;
    chart.curves.resize(kEvolutionFractiles);
    for (const DamageEvolutionRow& row : ComputeRows(evolution)) {
        for (std::size_t i = 0; i < kEvolutionFractiles; ++i) {
            chart.curves[i].push_back({static_cast<double>(chart.curves[i].size() + 1),
                                       row.damages_percent[i] / kPercentPerDivision});
        }
    }
    return chart;
}

ResultView MakeResultView(const DamageEvolution& evolution) {
    ResultView view{.subject = ResultSubject::kDamageEvolution, .case_name = CaseName(evolution)};
    view.pages = {TablePage(MakeTable(evolution)),
                  ChartPage(ViewKind::kChart, "&Grafico", MakeEvolutionChart(evolution))};
    view.table_text = [evolution](std::string_view list_separator) {
        return ResultTableCells(MakeTable(evolution), list_separator);
    };
    return view;
}

}  // namespace tonvale
