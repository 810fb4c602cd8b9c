#include "dialogs/calculator_dialog_win.h"

#include <utility>

#include "dialogs/clipboard_win.h"
#include "dialogs/file_dialogs_win.h"
#include "common/print_frame.h"
#include "dialogs/status_bar_win.h"
#include "resources/resource.h"

namespace tonvale {

CalculatorDialog::CalculatorDialog(AppContext& app, const DialogDescription& description,
                                   FileKind kind, std::string path)
    : Dialog(app, description), kind_(kind), initial_path_(std::move(path)) {}

bool CalculatorDialog::OnInit() {
    CreateStatusBar(app().instance, window());
    ShowKeptState();
    if (!initial_path_.empty()) LoadPath(initial_path_);
    ShowCurrent();
    RecomputeResults();
    return true;
}

bool CalculatorDialog::OnCommand(int id, int notification) {
    switch (id) {
        case CMD_FILE_OPEN:
            OpenFile();
            return true;
        case CMD_FILE_SAVE:
            SaveFile();
            return true;
        case CMD_FILE_SAVE_AS:
            SaveFileAs();
            return true;
        case CMD_COPY:
            CopyCsvText(app(), window(), CurrentSummary(ListSeparator()));
            return true;
        case CMD_FILE_PRINT:
            Print();
            return true;
        case CMD_FILE_CLOSE:
        case IDCANCEL:
            KeepState();
            End(IDCANCEL);
            return true;
        default:
            return Dialog::OnCommand(id, notification);
    }
}

bool CalculatorDialog::OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result) {
    if (message == WM_SIZE) ShowCurrent();  // as far as there is room
    return Dialog::OnMessage(message, wparam, lparam, result);
}

void CalculatorDialog::OnDrop(const std::string& path) {
    const FileKindInfo* info = FileKindOfPath(path);
    if (info && info->kind == kind_ && LoadPath(path)) RecomputeResults();
}

void CalculatorDialog::OpenFile() {
    const std::optional<std::string> path =
        ChooseFileToOpen(app(), window(), InfoOf(kind_).filter_text, kOpenDataTitle);
    if (path) LoadPath(*path);
}

void CalculatorDialog::SaveFile() {
    if (current_file_.empty()) {
        SaveFileAs();
    } else {
        SavePath(current_file_);
    }
}

void CalculatorDialog::SaveFileAs() {
    const std::optional<std::string> path =
        ChooseFileToSave(app(), window(), InfoOf(kind_).filter_text, kSaveDataTitle);
    if (path) SavePath(*path);
}

bool CalculatorDialog::LoadPath(const std::string& path) {
    const std::optional<ProfileFile> file = ReadDataFile(*app().files, path, kind_);
    if (!file || !LoadFrom(*file)) return false;
    current_file_ = path;
    ShowCurrent();
    return true;
}

void CalculatorDialog::SavePath(const std::string& path) {
    // What the program does not know of an existing file survives.
    ProfileFile file = ProfileFile::Read(*app().files, path).value_or(ProfileFile());
    StoreTo(file);
    if (!file.Save(*app().files, path)) {
        ShowMessage(SaveFailure(path));
        return;
    }
    current_file_ = path;
    ShowCurrent();
}

void CalculatorDialog::ShowCurrent() {
    ShowCurrentFile(Control(IDC_STATUS_BAR), current_file_);
}

void CalculatorDialog::Print() {
    const WaitCursor wait;
    const std::unique_ptr<Printer> printer = app().open_printer ? app().open_printer() : nullptr;
    if (printer) PrintPages(*printer, CurrentPrintout());
}

}  // namespace tonvale
