#include "exposure/exposure_item_dialog.h"

#include <optional>
#include <string>

#include "common/dialog_win.h"
#include "common/file_dialogs_win.h"
#include "common/file_kinds.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "exposure/time_unit.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr unsigned long kHelpTopic = 100110;

constexpr ControlTip kTips[] = {
    {IDC_TIME_EDIT, L"Tempo d'esposizione"},
    {IDC_LEVEL_EDIT, L"Livello equivalente"},
    {IDC_READ_LEVEL, L"Carica il valore del livello da un file"},
    {IDOK, L"Aggiunge / Modifica / Elimina un elemento della lista"},
    {IDCANCEL, L"Annulla l'operazione e chiude la finestra di dialogo"},
};

constexpr ControlTextLimit kTextLimits[] = {
    {IDC_LEVEL_EDIT, kMaxValueCharacters},
    {IDC_TIME_EDIT, kMaxValueCharacters},
};

constexpr ControlHelp kHelp[] = {
    {IDC_LEVEL_EDIT, kHelpTopic}, {IDC_TIME_LABEL, kHelpTopic}, {IDC_TIME_EDIT, kHelpTopic},
    {IDC_READ_LEVEL, kHelpTopic}, {IDOK, kHelpTopic},           {IDCANCEL, kHelpTopic},
};

constexpr DialogDescription kDescription = {
    .template_name = L"ADD_LEPD",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpTopic,
    .help_file = nullptr,
    .accepts_files = true,
};

// Title of the dialog and text of its first button.
std::string_view ActionName(ExposureItemAction action) {
    switch (action) {
        case ExposureItemAction::kAdd:
            return "Aggiungi";
        case ExposureItemAction::kModify:
            return "Modifica";
        case ExposureItemAction::kDelete:
            break;
    }
    return "Elimina";
}

class ExposureItemDialog : public Dialog {
  public:
    ExposureItemDialog(AppContext& app, ExposureItemAction action, int time_unit,
                       ExposureItem& item)
        : Dialog(app, kDescription), action_(action), time_unit_(time_unit), item_(item) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    void OnDrop(const std::string& path) override;

  private:
    bool deletes() const { return action_ == ExposureItemAction::kDelete; }
    void Confirm();
    void ConfirmDeletion();
    void TakeLevel(const std::optional<std::string>& level_dba);
    void FocusOnField(int id);

    ExposureItemAction action_;
    int time_unit_;
    ExposureItem& item_;
};

bool ExposureItemDialog::OnInit() {
    SetWindowTextUtf8(window(), ActionName(action_));
    SetControlText(IDOK, ActionName(action_));
    SetControlText(IDC_TIME_LABEL, "Esposizione " + std::string(TimeUnitAt(time_unit_).suffix));
    SetControlText(IDC_LEVEL_EDIT, item_.level_dba);
    SetControlText(IDC_TIME_EDIT, item_.duration);
    for (int field : {IDC_LEVEL_EDIT, IDC_TIME_EDIT}) {
        SendMessageW(Control(field), EM_SETREADONLY, deletes(), 0);
    }
    EnableWindow(Control(IDC_READ_LEVEL), !deletes());
    FocusOnField(IDC_LEVEL_EDIT);
    return false;
}

bool ExposureItemDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_READ_LEVEL:
            TakeLevel(ReadSpectrumLevel(app(), window()));
            return true;
        case IDOK:
            if (deletes()) {
                ConfirmDeletion();
            } else {
                Confirm();
            }
            return true;
        default:
            return Dialog::OnCommand(id, notification);
    }
}

void ExposureItemDialog::OnDrop(const std::string& path) {
    const FileKindInfo* info = FileKindOfPath(path);
    if (deletes() || !info || info->kind != FileKind::kSpr) return;
    TakeLevel(ReadHeaderValue(*app().files, path, FileKind::kSpr, "LAEQ"));
}

void ExposureItemDialog::Confirm() {
    const ExposureItem typed{ControlText(IDC_LEVEL_EDIT, kMaxValueCharacters),
                             ControlText(IDC_TIME_EDIT, kMaxValueCharacters)};
    if (const std::optional<UserMessage> refusal = CheckExposureItem(typed)) {
        ShowMessage(*refusal);
        FocusOnField(ParseNumber(typed.level_dba) == 0 ? IDC_LEVEL_EDIT : IDC_TIME_EDIT);
        return;
    }
    item_ = typed;
    End(IDOK);
}

void ExposureItemDialog::ConfirmDeletion() {
    const UserMessage question{"Conferma operazione",
                               "Sei sicuro di voler eliminare questo elemento dalla lista?"};
    if (ShowMessage(question, MB_YESNOCANCEL) == IDYES) End(IDOK);
}

void ExposureItemDialog::TakeLevel(const std::optional<std::string>& level_dba) {
    if (level_dba) SetControlText(IDC_LEVEL_EDIT, *level_dba);
}

void ExposureItemDialog::FocusOnField(int id) {
    SetFocus(Control(id));
    SendMessageW(Control(id), EM_SETSEL, 0, -1);
}

}  // namespace

bool EditExposureItem(AppContext& app, HWND owner, ExposureItemAction action, int time_unit,
                      ExposureItem& item) {
    return ExposureItemDialog(app, action, time_unit, item).RunModal(owner) == IDOK;
}

}  // namespace tonvale
