// The pages of a hearing-damage view, made of a table and of charts.
#pragma once

#include <string>

#include "common/result_view.h"
#include "hearing/chart.h"
#include "hearing/result_table.h"

namespace tonvale {

// "&Tabella".
ResultPage TablePage(ResultTable table);
// One of its curves can be picked by its text in the legend.
ResultPage ChartPage(ViewKind kind, std::string menu_text, Chart chart);

}  // namespace tonvale
