#include "app/result_actions_win.h"

#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "app/bitmap_file_win.h"
#include "common/file_kinds.h"
#include "common/file_system.h"
#include "common/print_frame.h"
#include "common/summary_text.h"
#include "common/text.h"
#include "dialogs/clipboard_win.h"
#include "dialogs/dialog_win.h"
#include "dialogs/file_dialogs_win.h"
#include "dialogs/print_notes_dialog.h"

namespace tonvale {
namespace {

constexpr std::string_view kTableFilter = "CSV (*.csv)|*.csv|";
constexpr std::string_view kChartFilter = "Immagine bitmap (*.bmp)|*.bmp|";

bool ShowsTable(const ResultViewWindow& view) {
    return view.kind() == ViewKind::kTable;
}

std::string TableText(const ResultViewWindow& view) {
    const std::string text = view.result()->table_text(ListSeparator());
    return std::string(CutToCharacters(text, SummaryText::kBlockBytes - 1));
}

bool CopyPicture(const AppContext& app, UniqueBitmap picture) {
    if (!picture) return false;
    OpenedClipboard clipboard(app.main_window);
    return clipboard && clipboard.PutPicture(std::move(picture));
}

// What the file is to hold; empty when it cannot be made.
std::string FileContent(const ResultViewWindow& view) {
    if (ShowsTable(view)) return Utf8ToWindows1252Lossy(TableText(view));
    const UniqueBitmap picture = view.TakePicture();
    return picture ? BitmapFile(picture.get(), DisplayDepth()) : std::string();
}

std::optional<std::string> ChooseExportFile(AppContext& app, bool is_table) {
    const std::string_view own = is_table ? ".csv" : ".bmp";
    return ChooseFileToSaveAs(app, app.main_window, is_table ? kTableFilter : kChartFilter,
                              {own, InfoOf(FileKind::kReport).extension});
}

std::string JobName(ViewKind kind) {
    switch (kind) {
        case ViewKind::kChart:
            return "Grafico";
        case ViewKind::kAudiogram:
            return "Audiogramma";
        case ViewKind::kTable:
            break;
    }
    return "Tabella";
}

}  // namespace

void CopyResult(const AppContext& app, const ResultViewWindow& view) {
    if (ShowsTable(view)) {
        CopyCsvText(app, app.main_window, TableText(view));
    } else if (!CopyPicture(app, view.TakePicture())) {
        ShowCopyFailure(app.main_window);
    }
}

void ExportResult(AppContext& app, const ResultViewWindow& view, ReportDocument& document) {
    const std::optional<std::string> path = ChooseExportFile(app, ShowsTable(view));
    if (!path) return;
    if (EqualsIgnoringCase(FileExtension(*path), InfoOf(FileKind::kReport).extension)) {
        document.SaveTo(*path);
        return;
    }
    const WaitCursor wait;
    const std::string content = FileContent(view);
    const std::string_view failure = content.empty()
                                         ? "non c'è memoria per l'immagine"
                                         : Reason(WriteFileSafely(*app.files, *path, content));
    if (!failure.empty()) ShowMessageBox(app.main_window, SaveFailure(*path, failure));
}

void PrintResult(AppContext& app, std::string& notes, const ResultViewWindow& view) {
    if (!AskPrintNotes(app, app.main_window, notes)) return;
    const WaitCursor wait;
    const std::unique_ptr<Printer> printer = app.open_printer ? app.open_printer() : nullptr;
    if (!printer) return;
    const auto draw = [&view](Canvas& canvas, const Rect& page, bool use_color) {
        view.page()->draw(canvas, page,
                          {.use_color = use_color, .selected_curve = view.selected_curve()});
    };
    PrintWithFrame(*printer, JobName(view.kind()), notes, draw);
}

}  // namespace tonvale
