// Copying, exporting and printing the results that the main window shows.
#pragma once

#include <string>

#include "app/result_view_window.h"
#include "dialogs/app_context_win.h"
#include "report/report_document_win.h"

namespace tonvale {

// Puts the table as text, or the chart as a picture, on the clipboard; tells the user on failure.
void CopyResult(const AppContext& app, const ResultViewWindow& view);

// Asks for a name and writes the table as a .csv file, or the chart as a .bmp file; `document`
// under the name of a document. A name with another extension is refused.
void ExportResult(AppContext& app, const ResultViewWindow& view, ReportDocument& document);

// Asks for a comment, which is kept in `notes`, and prints what is shown.
void PrintResult(AppContext& app, std::string& notes, const ResultViewWindow& view);

}  // namespace tonvale
