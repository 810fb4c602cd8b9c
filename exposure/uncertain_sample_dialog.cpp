#include "exposure/uncertain_sample_dialog.h"

#include <string>

#include "exposure/level_item_dialog.h"
#include "exposure/time_unit.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_TIME_EDIT, L"Tempo di campionamento"},
    {IDC_LEVEL_EDIT, L"Livello equivalente campionato"},
    kReadLevelTip,
    kConfirmItemTip,
    kCancelTip,
};

constexpr ControlTextLimit kTextLimits[] = {
    kLevelLimit,
    {IDC_TIME_EDIT, kMaxValueCharacters},
};

constexpr ControlHelp kHelp[] = {
    {IDC_LEVEL_EDIT, kHelpSampleLevel}, {IDC_READ_LEVEL, kHelpSampleReadLevel},
    {IDC_TIME_LABEL, kHelpSampleTime},  {IDC_TIME_EDIT, kHelpSampleTime},
    {IDOK, kHelpSampleConfirm},         {IDCANCEL, kHelpSampleCancel},
};

constexpr DialogDescription kDescription = {
    .template_name = L"ERROR_ADD_LEQ",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpSample,
    .accepts_files = true,
};

constexpr FormField<SampleRow> kFields[] = {{IDC_LEVEL_EDIT, &SampleRow::level_dba},
                                            {IDC_TIME_EDIT, &SampleRow::time}};

class SampleDialog : public ListItemDialog {
  public:
    SampleDialog(AppContext& app, ItemAction action, int time_unit, SampleRow& sample)
        : ListItemDialog(app, kDescription, kLevelOfSpectrum, action),
          time_unit_(time_unit),
          sample_(sample) {}

  protected:
    void ShowItem() override {
        SetControlText(IDC_TIME_LABEL,
                       "Tempo campionamento " + std::string(TimeUnitAt(time_unit_).suffix));
        FillFields<SampleRow>(sample_, kFields);
    }
    bool TakeItem() override {
        ReadFields<SampleRow>(sample_, kFields);
        return true;
    }

  private:
    int time_unit_;
    SampleRow& sample_;
};

}  // namespace

bool EditSample(AppContext& app, HWND owner, ItemAction action, int time_unit, SampleRow& sample) {
    return SampleDialog(app, action, time_unit, sample).RunModal(owner) == IDOK;
}

}  // namespace tonvale
