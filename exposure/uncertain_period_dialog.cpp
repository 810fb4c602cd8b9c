#include "exposure/uncertain_period_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "common/text.h"
#include "exposure/level_item_dialog.h"
#include "exposure/memory_list_win.h"
#include "exposure/time_unit.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_LEVEL_EDIT, L"Livello equivalente del periodo"},
    kReadLevelTip,
    {IDC_LEVEL_ERROR, L"Errore ambientale del livello equivalente"},
    {IDC_TIME_EDIT, L"Tempo d'esposizione"},
    {IDC_ERROR_ABSOLUTE, L"L'errore sul tempo viene scritto"},
    {IDC_DURATION_ERROR, L"Errore sul tempo d'esposizione"},
    {IDC_ERROR_PERCENTAGE, L"L'errore sul tempo è una percentuale del tempo"},
    {IDC_ERROR_PERCENT, L"Percentuale del tempo d'esposizione"},
    {IDC_ERROR_ZERO, L"Il tempo d'esposizione non ha errore"},
    {IDC_ERROR_MINIMUM, L"Valore minimo dell'errore calcolato come percentuale"},
    kMemoryListTip,
    kRecallTip,
    kConfirmItemTip,
    kCancelTip,
};

constexpr ControlTextLimit kTextLimits[] = {
    kLevelLimit,
    {IDC_LEVEL_ERROR, kMaxValueCharacters},
    {IDC_TIME_EDIT, kMaxValueCharacters},
    {IDC_DURATION_ERROR, kMaxValueCharacters},
    {IDC_ERROR_PERCENT, kMaxValueCharacters},
    {IDC_ERROR_MINIMUM, kMaxValueCharacters},
};

constexpr ControlHelp kHelp[] = {
    {IDC_LEVEL_EDIT, kHelpPeriodLevel},
    {IDC_READ_LEVEL, kHelpPeriodReadLevel},
    {IDC_LEVEL_ERROR, kHelpPeriodLevelError},
    {IDC_TIME_LABEL, kHelpPeriodTime},
    {IDC_TIME_EDIT, kHelpPeriodTime},
    {IDC_ERROR_ABSOLUTE, kHelpPeriodAbsolute},
    {IDC_DURATION_ERROR, kHelpPeriodAbsolute},
    {IDC_ERROR_PERCENTAGE, kHelpPeriodPercent},
    {IDC_ERROR_PERCENT, kHelpPeriodPercent},
    {IDC_ERROR_MINIMUM, kHelpPeriodPercent},
    {IDC_ERROR_ZERO, kHelpPeriodZero},
    {IDC_MEMORY_LIST, kHelpPeriodMemory},
    {IDC_RECALL, kHelpPeriodMemory},
    {IDOK, kHelpPeriodConfirm},
    {IDCANCEL, kHelpPeriodCancel},
};

constexpr DialogDescription kDescription = {
    .template_name = L"ERROR_ADD_LEPD",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpPeriod,
    .accepts_files = true,
};

constexpr FormField<PeriodRow> kFields[] = {
    {IDC_LEVEL_EDIT, &PeriodRow::level_dba},
    {IDC_TIME_EDIT, &PeriodRow::duration},
    {IDC_LEVEL_ERROR, &PeriodRow::level_error_db},
    {IDC_DURATION_ERROR, &PeriodRow::duration_error},
};

// The buttons of the ways to give the duration's error.
struct ModeButton {
    int control;
    DurationErrorMode mode;
};
constexpr ModeButton kModes[] = {
    {IDC_ERROR_ABSOLUTE, DurationErrorMode::kAbsolute},
    {IDC_ERROR_PERCENTAGE, DurationErrorMode::kPercent},
    {IDC_ERROR_ZERO, DurationErrorMode::kZero},
};
constexpr int kPercentControls[] = {IDC_ERROR_PERCENT, IDC_ERROR_PERCENT_SPIN, IDC_ERROR_MINIMUM};

class PeriodDialog : public ListItemDialog {
  public:
    PeriodDialog(AppContext& app, ItemAction action, const UncertaintyStudy& study,
                 PeriodRow& period)
        : ListItemDialog(app, kDescription, kLevelOfSpectrum, action),
          study_(study),
          period_(period),
          memory_(study.remembered_levels,
                  [this](const RememberedTexts& texts) { Recall(texts); }) {}

  protected:
    void ShowItem() override;
    bool TakeItem() override;
    bool OnCommand(int id, int notification) override;
    void OnEdited(int control) override;

  private:
    void ChooseMode(DurationErrorMode mode);
    void ShowDurationError();
    void Recall(const RememberedTexts& texts);

    const UncertaintyStudy& study_;
    PeriodRow& period_;
    DurationErrorMode mode_ = DurationErrorMode::kZero;
    MemoryList memory_;
};

void PeriodDialog::ShowItem() {
    memory_.TakeControls(window());
    Attach(memory_);
    const std::string unit(TimeUnitAt(study_.time_unit).suffix);
    SetControlText(IDC_TIME_LABEL, "Tempo esposizione " + unit);
    SetControlText(IDC_DURATION_ERROR_UNIT, unit);
    FillFields<PeriodRow>(period_, kFields);
    SendMessageW(Control(IDC_ERROR_PERCENT_SPIN), UDM_SETRANGE32, 0, 100);
    for (const int field : {IDC_ERROR_PERCENT, IDC_ERROR_MINIMUM}) SetControlText(field, "0");
    ChooseMode(FiniteNumber(period_.duration_error) == 0 ? DurationErrorMode::kZero
                                                         : DurationErrorMode::kAbsolute);
    if (!deletes()) return;
    memory_.Disable();
    for (const ModeButton& button : kModes) Enable(button.control, false);
}

bool PeriodDialog::TakeItem() {
    ReadFields<PeriodRow>(period_, kFields);
    return true;
}

bool PeriodDialog::OnCommand(int id, int notification) {
    const auto* button =
        std::find_if(std::begin(kModes), std::end(kModes),
                     [id](const ModeButton& candidate) { return candidate.control == id; });
    if (button == std::end(kModes)) return ListItemDialog::OnCommand(id, notification);
    if (notification == BN_CLICKED) ChooseMode(button->mode);
    return true;
}

void PeriodDialog::OnEdited(int control) {
    if (control != IDC_DURATION_ERROR) ShowDurationError();
}

void PeriodDialog::ChooseMode(DurationErrorMode mode) {
    mode_ = mode;
    for (const ModeButton& button : kModes) Check(button.control, button.mode == mode);
    Enable(IDC_DURATION_ERROR, mode == DurationErrorMode::kAbsolute);
    Enable(kPercentControls, mode == DurationErrorMode::kPercent);
    ShowDurationError();
}

void PeriodDialog::ShowDurationError() {
    const std::string error = DurationErrorText(
        mode_, FieldText(IDC_DURATION_ERROR), FieldText(IDC_TIME_EDIT),
        FieldText(IDC_ERROR_PERCENT), FieldText(IDC_ERROR_MINIMUM), study_.time_unit);
    if (mode_ != DurationErrorMode::kAbsolute) SetControlText(IDC_DURATION_ERROR, error);
}

void PeriodDialog::Recall(const RememberedTexts& texts) {
    SetControlText(IDC_LEVEL_EDIT, TrimBlanks(texts.level_dba));
    SetControlText(IDC_LEVEL_ERROR, TrimBlanks(texts.error_db));
}

}  // namespace

bool EditPeriod(AppContext& app, HWND owner, ItemAction action, const UncertaintyStudy& study,
                PeriodRow& period) {
    return PeriodDialog(app, action, study, period).RunModal(owner) == IDOK;
}

}  // namespace tonvale
