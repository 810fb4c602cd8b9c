#include "exposure/weekday_dialog.h"

#include "exposure/level_item_dialog.h"
#include "exposure/typed_value.h"
#include "exposure/weekly_exposure.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_DAY_NAME, L"Giorno della settimana"},
    {IDC_LEVEL_EDIT, L"Livello di esposizione quotidiano"},
    kReadLevelTip,
    {IDOK, L"Modifica un elemento della lista"},
    {IDC_DELETE, L"Azzera un elemento della lista"},
    kCancelTip,
};

constexpr ControlTextLimit kTextLimits[] = {kLevelLimit};

constexpr ControlHelp kHelp[] = {
    {IDC_LEVEL_EDIT, kHelpWeekdayLevel}, {IDC_DELETE, kHelpWeekdayDelete},
    {IDC_DAY_NAME, kHelpWeekdayName},    {IDC_READ_LEVEL, kHelpWeekdayReadLevel},
    {IDOK, kHelpWeekdayModify},          {IDCANCEL, kHelpWeekdayCancel},
};

constexpr DialogDescription kDescription = {
    .template_name = L"EDIT_LEPW",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpWeekday,
    .help_file = nullptr,
    .accepts_files = true,
};

class WeekdayDialog : public LevelItemDialog {
  public:
    WeekdayDialog(AppContext& app, std::string_view day_name, std::string& level_dba)
        : LevelItemDialog(app, kDescription, kLevelOfDay),
          day_name_(day_name),
          level_dba_(level_dba) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;

  private:
    void Confirm();
    void Finish(std::string_view level_dba);

    std::string_view day_name_;
    std::string& level_dba_;
};

bool WeekdayDialog::OnInit() {
    SetControlText(IDC_DAY_NAME, day_name_);
    SetControlText(IDC_LEVEL_EDIT, level_dba_);
    FocusOnField(IDC_LEVEL_EDIT);
    return false;
}

bool WeekdayDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDOK:
            Confirm();
            return true;
        case IDC_DELETE:
            if (ConfirmsDeletion()) Finish(kNoExposure);
            return true;
        default:
            return LevelItemDialog::OnCommand(id, notification);
    }
}

void WeekdayDialog::Confirm() {
    const std::string typed = FieldText(IDC_LEVEL_EDIT);
    if (const auto refusal = CheckTypedLevel(typed)) {
        Refuse(*refusal, IDC_LEVEL_EDIT);
    } else {
        Finish(typed);
    }
}

void WeekdayDialog::Finish(std::string_view level_dba) {
    level_dba_ = level_dba;
    End(IDOK);
}

}  // namespace

bool EditWeekday(AppContext& app, HWND owner, std::string_view day_name, std::string& level_dba) {
    return WeekdayDialog(app, day_name, level_dba).RunModal(owner) == IDOK;
}

}  // namespace tonvale
