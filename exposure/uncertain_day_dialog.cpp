#include "exposure/uncertain_day_dialog.h"

#include <string_view>

#include "common/text.h"
#include "exposure/level_item_dialog.h"
#include "exposure/memory_list_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_DAY_NAME, L"Giorno della settimana"},
    {IDC_LEVEL_EDIT, L"Livello di esposizione quotidiano"},
    kReadLevelTip,
    {IDC_LEVEL_ERROR, L"Errore ambientale del livello di esposizione quotidiano"},
    kMemoryListTip,
    kRecallTip,
    {IDOK, L"Modifica un elemento della lista"},
    {IDC_DELETE, L"Azzera un elemento della lista"},
    kCancelTip,
};

constexpr ControlTextLimit kTextLimits[] = {kLevelLimit, {IDC_LEVEL_ERROR, kMaxValueCharacters}};

constexpr ControlHelp kHelp[] = {
    {IDC_DAY_NAME, kHelpUncertainDayName},
    {IDC_LEVEL_EDIT, kHelpUncertainDayLevel},
    {IDC_READ_LEVEL, kHelpUncertainDayReadLevel},
    {IDC_LEVEL_ERROR, kHelpUncertainDayError},
    {IDC_MEMORY_LIST, kHelpUncertainDayMemory},
    {IDC_RECALL, kHelpUncertainDayMemory},
    {IDOK, kHelpUncertainDayModify},
    {IDC_DELETE, kHelpUncertainDayDelete},
    {IDCANCEL, kHelpUncertainDayCancel},
};

constexpr DialogDescription kDescription = {
    .template_name = L"ERROR_EDIT_LEPW",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpUncertainDay,
    .accepts_files = true,
};

constexpr FormField<DayRow> kFields[] = {{IDC_LEVEL_EDIT, &DayRow::level_dba},
                                         {IDC_LEVEL_ERROR, &DayRow::error_db}};

class UncertainDayDialog : public LevelItemDialog {
  public:
    UncertainDayDialog(AppContext& app, std::string_view day_name, const UncertaintyStudy& study,
                       DayRow& day)
        : LevelItemDialog(app, kDescription, kLevelOfDay),
          day_name_(day_name),
          day_(day),
          memory_(study.remembered_days, [this](const RememberedTexts& texts) { Recall(texts); }) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;

  private:
    void Recall(const RememberedTexts& texts);

    std::string_view day_name_;
    DayRow& day_;
    MemoryList memory_;
};

bool UncertainDayDialog::OnInit() {
    memory_.TakeControls(window());
    Attach(memory_);
    SetControlText(IDC_DAY_NAME, day_name_);
    FillFields<DayRow>(day_, kFields);
    FocusOnField(IDC_LEVEL_EDIT);
    return false;
}

bool UncertainDayDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDOK:
            ReadFields<DayRow>(day_, kFields);
            End(IDOK);
            return true;
        case IDC_DELETE:
            if (!ConfirmsDeletion()) return true;
            day_ = DayRow();
            End(IDOK);
            return true;
        default:
            return LevelItemDialog::OnCommand(id, notification);
    }
}

void UncertainDayDialog::Recall(const RememberedTexts& texts) {
    SetControlText(IDC_LEVEL_EDIT, TrimBlanks(texts.level_dba));
    SetControlText(IDC_LEVEL_ERROR, TrimBlanks(texts.error_db));
}

}  // namespace

bool EditUncertainDay(AppContext& app, HWND owner, std::string_view day_name,
                      const UncertaintyStudy& study, DayRow& day) {
    return UncertainDayDialog(app, day_name, study, day).RunModal(owner) == IDOK;
}

}  // namespace tonvale
