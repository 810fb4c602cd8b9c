#include "dialogs/calculator_dialog_win.h"

#include <utility>

#include "dialogs/clipboard_win.h"
#include "dialogs/status_bar_win.h"

namespace tonvale {

CalculatorDialog::CalculatorDialog(AppContext& app, const DialogDescription& description,
                                   FileKind kind, std::string path)
    : ModalDialog(app, description), initial_path_(std::move(path)), session_(app, kind, *this) {}

bool CalculatorDialog::OnInit() {
    CreateStatusBar(app().instance, window());
    Attach(session_);
    Attach(status_bar_);
    ShowKeptState();
    if (!initial_path_.empty()) session_.Load(initial_path_);
    ShowCurrentFile(session_.current_file());
    RecomputeResults();
    return true;
}

bool CalculatorDialog::OnCommand(int id, int notification) {
    switch (id) {
        case CMD_COPY:
            CopyCsvText(app(), window(), CurrentSummary(ListSeparator()));
            return true;
        case CMD_FILE_CLOSE:
        case IDCANCEL:
            KeepState();
            End(IDCANCEL);
            return true;
        default:
            return ModalDialog::OnCommand(id, notification);
    }
}

void CalculatorDialog::OnDrop(const std::string& path) {
    if (session_.LoadDropped(path)) RecomputeResults();
}

void CalculatorDialog::ShowCurrentFile(const std::string& path) {
    tonvale::ShowCurrentFile(Control(IDC_STATUS_BAR), path);
}

}  // namespace tonvale
