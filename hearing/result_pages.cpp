#include "hearing/result_pages.h"

#include <utility>

#include "common/text.h"

namespace tonvale {

ResultPage TablePage(ResultTable table) {
    return {.kind = ViewKind::kTable,
            .menu_text = "&Tabella",
            .draw = [table = std::move(table)](Canvas& canvas, const Rect& area,
                                               const DrawingStyle& style) {
                DrawResultTable(canvas, area, table, style);
            }};
}

ResultPage ChartPage(ViewKind kind, std::string menu_text, Chart chart) {
    ResultPage page{.kind = kind, .menu_text = std::move(menu_text)};
    for (const std::string& label : chart.legend) page.curve_names.emplace_back(TrimBlanks(label));
    page.draw = [chart = std::move(chart)](Canvas& canvas, const Rect& area,
                                           const DrawingStyle& style) {
        DrawChart(canvas, area, chart, style);
    };
    return page;
}

}  // namespace tonvale
