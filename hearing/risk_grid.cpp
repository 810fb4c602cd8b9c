#include "hearing/risk_grid.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "common/numbers.h"
#include "hearing/result_pages.h"

namespace tonvale {

std::optional<HearingRefusal> ConfirmGrid(DamageRiskForm form, DamageRisk& base) {
    form.years = FormatShortest(kGridYears.front());
    form.level_dba = FormatShortest(kGridLevelsDba.front());
    return Confirm(form, base);
}

RiskGrid ComputeGrid(const DamageRisk& base) {
    RiskGrid grid{.base = base, .risks = {}};
    for (std::size_t row = 0; row < kGridYears.size(); ++row) {
        DamageRisk cell = base;
        cell.person.years = kGridYears[row];
        if (cell.person.age - cell.person.years < kMinAgeAtExposure) break;
        for (std::size_t column = 0; column < kGridLevelsDba.size(); ++column) {
            cell.person.level_dba = kGridLevelsDba[column];
            grid.risks[row][column] = ComputeRisk(cell).risk;
        }
    }
    return grid;
}

ResultTable MakeTable(const RiskGrid& grid) {
    ResultTable table;
    table.title = kRiskTitle;
    table.parameters = {
        " Età alla fine dell'esposizione: " + FormatFixed(grid.base.person.age, 3, 0),
        SexParameter(grid.base.person), CriterionParameter(grid.base.criterion)};
    table.column_count = 1 + static_cast<int>(kGridLevelsDba.size());
    table.header = {"Anni"};
    for (const double level : kGridLevelsDba) {
        table.header.push_back(FormatFixed(level, 0, 0) + " dBA");
    }
    table.column_colors = {kTableRed};
    for (std::size_t i = 0; i < kGridYears.size(); ++i) {
        std::vector<TableCell> row{{FormatFixed(kGridYears[i], 2, 0)}};
        for (const std::optional<double>& risk : grid.risks[i]) {
            row.push_back({risk ? ShareText(*risk) : "-"});
        }
        table.rows.push_back(row);
    }
    return table;
}

ResultView MakeResultView(const RiskGrid& grid) {
    ResultView view{.subject = ResultSubject::kRisk, .pages = {TablePage(MakeTable(grid))}};
    view.table_text = [grid](std::string_view list_separator) {
        return ResultTableCells(MakeTable(grid), list_separator);
    };
    return view;
}

}  // namespace tonvale
