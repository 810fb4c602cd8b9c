#include "exposure/exposure_item_dialog.h"

#include <optional>
#include <string>

#include "common/unicode_win.h"
#include "exposure/level_item_dialog.h"
#include "exposure/time_unit.h"
#include "exposure/typed_value.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_TIME_EDIT, L"Tempo d'esposizione"},
    {IDC_LEVEL_EDIT, L"Livello equivalente"},
    kReadLevelTip,
    {IDOK, L"Aggiunge / Modifica / Elimina un elemento della lista"},
    kCancelTip,
};

constexpr ControlTextLimit kTextLimits[] = {
    kLevelLimit,
    {IDC_TIME_EDIT, kMaxValueCharacters},
};

constexpr ControlHelp kHelp[] = {
    {IDC_LEVEL_EDIT, kHelpExposureItemLevel}, {IDC_TIME_LABEL, kHelpExposureItemTime},
    {IDC_TIME_EDIT, kHelpExposureItemTime},   {IDC_READ_LEVEL, kHelpExposureItemReadLevel},
    {IDOK, kHelpExposureItemConfirm},         {IDCANCEL, kHelpExposureItemCancel},
};

constexpr DialogDescription kDescription = {
    .template_name = L"ADD_LEPD",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpExposureItem,
    .help_file = nullptr,
    .accepts_files = true,
};

class ExposureItemDialog : public LevelItemDialog {
  public:
    ExposureItemDialog(AppContext& app, ItemAction action, int time_unit, ExposureItem& item)
        : LevelItemDialog(app, kDescription, kLevelOfSpectrum),
          action_(action),
          time_unit_(time_unit),
          item_(item) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    void OnDrop(const std::string& path) override;

  private:
    bool deletes() const { return action_ == ItemAction::kDelete; }
    void Confirm();

    ItemAction action_;
    int time_unit_;
    ExposureItem& item_;
};

bool ExposureItemDialog::OnInit() {
    SetWindowTextUtf8(window(), ItemActionName(action_));
    SetControlText(IDOK, ItemActionName(action_));
    SetControlText(IDC_TIME_LABEL, "Esposizione " + std::string(TimeUnitAt(time_unit_).suffix));
    SetControlText(IDC_LEVEL_EDIT, item_.level_dba);
    SetControlText(IDC_TIME_EDIT, item_.duration);
    for (int field : {IDC_LEVEL_EDIT, IDC_TIME_EDIT}) {
        SendMessageW(Control(field), EM_SETREADONLY, deletes(), 0);
    }
    Enable(IDC_READ_LEVEL, !deletes());
    FocusOnField(IDC_LEVEL_EDIT);
    return false;
}

bool ExposureItemDialog::OnCommand(int id, int notification) {
    if (id != IDOK) return LevelItemDialog::OnCommand(id, notification);
    if (!deletes()) {
        Confirm();
    } else if (ConfirmsDeletion()) {
        End(IDOK);
    }
    return true;
}

void ExposureItemDialog::OnDrop(const std::string& path) {
    if (!deletes()) LevelItemDialog::OnDrop(path);
}

void ExposureItemDialog::Confirm() {
    const ExposureItem typed{FieldText(IDC_LEVEL_EDIT), FieldText(IDC_TIME_EDIT)};
    if (const std::optional<UserMessage> refusal = CheckExposureItem(typed)) {
        Refuse(*refusal, CheckTypedLevel(typed.level_dba) ? IDC_LEVEL_EDIT : IDC_TIME_EDIT);
        return;
    }
    item_ = typed;
    End(IDOK);
}

}  // namespace

bool EditExposureItem(AppContext& app, HWND owner, ItemAction action, int time_unit,
                      ExposureItem& item) {
    return ExposureItemDialog(app, action, time_unit, item).RunModal(owner) == IDOK;
}

}  // namespace tonvale
