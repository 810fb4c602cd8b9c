#include "hearing/loss_comparison_dialog.h"

#include <optional>

#include "hearing/hearing_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kOwnTips[] = {
    {IDC_FREQUENCY_LIST, L"Frequenza di interesse"},
    {IDC_EXPOSURE_LEVEL, L"Livello di esposizione di partenza del calcolo"},
    {IDC_STATUS_BAR, L"Visualizza il tipo di previsione effettuato"},
};
constexpr auto kTips = JoinTips(kOwnTips, kFractileTips, kButtonTips);

constexpr ControlItems kItems[] = {
    {IDC_FRACTILE_LIST, ComparisonFractiles},
    {IDC_FREQUENCY_LIST, ComparisonFrequencies},
};

constexpr ControlHelp kHelp[] = {
    {IDC_FRACTILE_LIST, kHelpPredictionsFractile},
    {IDC_FREQUENCY_LIST, kHelpPredictionsFrequency},
    {IDC_EXPOSURE_LEVEL, kHelpPredictionsLevel},
    {IDC_STATUS_BAR, kHelpPredictionsStatusBar},
    {IDOK, kHelpPredictionsConfirm},
    {IDCANCEL, kHelpPredictionsClose},
};

constexpr DialogDescription kDescription = {
    .template_name = L"CONFRONTO",
    .tips = kTips,
    .text_limits = FirstTextLimits(1),
    .items = kItems,
    .help = kHelp,
    .main_help_context = kHelpPredictions,
    .help_file = "PREV.HLP",
    .accepts_files = false,
};

class LossComparisonDialog : public HearingDialog {
  public:
    LossComparisonDialog(AppContext& app, LossComparisonState& state)
        : HearingDialog(app, kDescription), state_(state) {}

  protected:
    bool OnInit() override;
    std::optional<HearingRefusal> ConfirmForm() override;

  private:
    LossComparisonState& state_;
};

bool LossComparisonDialog::OnInit() {
    HearingDialog::OnInit();
    SetControlText(IDC_STATUS_BAR, "Perdite dovute alla sola esposizione professionale");
    const LossComparisonForm form = FormFromState(state_);
    ChooseItem(IDC_FRACTILE_LIST, form.fractile_position);
    ChooseItem(IDC_FREQUENCY_LIST, form.frequency_position);
    SetControlText(IDC_EXPOSURE_LEVEL, form.level_dba);
    return true;
}

std::optional<HearingRefusal> LossComparisonDialog::ConfirmForm() {
    return Confirm({ChosenItem(IDC_FRACTILE_LIST), ChosenItem(IDC_FREQUENCY_LIST),
                    FieldText(IDC_EXPOSURE_LEVEL)},
                   state_);
}

}  // namespace

std::optional<ResultView> AskLossComparison(AppContext& app, HWND owner,
                                            LossComparisonState& state) {
    if (LossComparisonDialog(app, state).RunModal(owner) != IDOK) return std::nullopt;
    return MakeResultView(state);
}

}  // namespace tonvale
