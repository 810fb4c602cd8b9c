#include "dialogs/print_notes_dialog.h"

#include <utility>

#include "common/notes.h"
#include "common/text.h"
#include "dialogs/dialog_win.h"
#include "dialogs/help_viewer_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

constexpr std::size_t kMaxPrintNotesCharacters = 1023;

constexpr ControlTip kTips[] = {
    {IDC_NO_COMMENT, L"Chiude la finestra e fa partire la stampa senza tener conto delle note"},
    {IDOK, L"Chiude la finestra e fa partire la stampa con le note"},
    {CMD_DIALOG_HELP, L"Richiama la Guida in linea"},
    {IDCANCEL, L"Chiude la finestra senza far partire la stampa"},
    {IDC_NOTES_EDIT, L"Inserire qui delle note da stampare insieme ai dati"},
};

constexpr ControlTextLimit kTextLimits[] = {{IDC_NOTES_EDIT, kMaxNotesCharacters}};

constexpr ControlHelp kHelp[] = {
    {IDC_NOTES_EDIT, kHelpPrintNotesText}, {IDOK, kHelpPrintNotesConfirm},
    {IDC_NO_COMMENT, kHelpPrintNotesSkip}, {IDCANCEL, kHelpPrintNotesCancel},
    {CMD_DIALOG_HELP, kHelpPrintNotes},
};

constexpr DialogDescription kDescription = {
    .template_name = L"ADDNOTES",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpPrintNotes,
    .help_file = nullptr,
    .accepts_files = false,
};

class PrintNotesDialog : public ModalDialog {
  public:
    PrintNotesDialog(AppContext& app, std::string& notes)
        : ModalDialog(app, kDescription), notes_(notes) {}

  protected:
    bool OnInit() override {
        SetControlText(IDC_NOTES_EDIT, notes_);
        return true;
    }
    bool OnCommand(int id, int notification) override;

  private:
    void Confirm();
    void PrintWithoutReading();

    std::string& notes_;
};

bool PrintNotesDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDOK:
            Confirm();
            return true;
        case IDC_NO_COMMENT:
            PrintWithoutReading();
            return true;
        default:
            return ModalDialog::OnCommand(id, notification);
    }
}

void PrintNotesDialog::Confirm() {
    std::string typed =
        std::string(CutToCharacters(ControlText(IDC_NOTES_EDIT), kMaxPrintNotesCharacters));
    if (!typed.empty()) notes_ = std::move(typed);
    End(IDOK);
}

void PrintNotesDialog::PrintWithoutReading() {
    app().help->Close("Tonvale.hlp");
    End(IDOK);
}

}  // namespace

bool AskPrintNotes(AppContext& app, HWND owner, std::string& notes) {
    return PrintNotesDialog(app, notes).RunModal(owner) == IDOK;
}

}  // namespace tonvale
