#include "hearing/damage_risk_dialog.h"

#include <optional>

#include "hearing/hearing_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kOwnTips[] = {
    {IDC_CRITERION_LIST, L"Sceglie il criterio di danno da utilizzare per il calcolo"},
    {IDC_STATUS_BAR, L"Visualizza il criterio di danno selezionato"},
};
constexpr auto kTips = JoinTips(kOwnTips, kYearsTips, kLevelTips, kSexTips, kButtonTips);

constexpr ControlItems kItems[] = {{IDC_CRITERION_LIST, DamageCriterionItems}};

constexpr ControlHelp kHelp[] = {
    {IDC_EXPOSURE_YEARS, kHelpRiskYears},
    {IDC_EXPOSURE_LEVEL, kHelpRiskLevel},
    {IDC_AGE, kHelpRiskAge},
    {IDC_MALE, kHelpRiskSex},
    {IDC_FEMALE, kHelpRiskSex},
    {IDC_CRITERION_LIST, kHelpRiskCriterion},
    {IDC_STATUS_BAR, kHelpRiskStatusBar},
    {IDOK, kHelpRiskConfirm},
    {IDCANCEL, kHelpRiskClose},
};

constexpr DialogDescription kDescription = {
    .template_name = L"RISK",
    .tips = kTips,
    .text_limits = kHearingTextLimits,
    .items = kItems,
    .help = kHelp,
    .main_help_context = kHelpRisk,
    .help_file = "RISK.HLP",
    .accepts_files = false,
};

class DamageRiskDialog : public HearingDialog {
  public:
    DamageRiskDialog(AppContext& app, DamageRisk& risk)
        : HearingDialog(app, kDescription), form_(FormFromState(risk)), risk_(risk) {}

  protected:
    bool OnInit() override;
    void OnItemChosen(int control) override;
    std::optional<HearingRefusal> ConfirmForm() override;

  private:
    void ShowCriterion();

    DamageRiskForm form_;
    DamageRisk& risk_;
};

bool DamageRiskDialog::OnInit() {
    HearingDialog::OnInit();
    ShowFields(form_);
    ChooseItem(IDC_CRITERION_LIST, form_.criterion_position);
    ShowCriterion();
    return true;
}

void DamageRiskDialog::OnItemChosen(int /*control*/) {
    form_.criterion_position = ChosenItem(IDC_CRITERION_LIST);
    ShowCriterion();
}

void DamageRiskDialog::ShowCriterion() {
    const auto position = static_cast<std::size_t>(form_.criterion_position);
    SetControlText(IDC_STATUS_BAR, DamageCriteria()[position].status_text);
}

std::optional<HearingRefusal> DamageRiskDialog::ConfirmForm() {
    ReadFields(form_);
    form_.criterion_position = ChosenItem(IDC_CRITERION_LIST);
    return Confirm(form_, risk_);
}

}  // namespace

std::optional<ResultView> AskDamageRisk(AppContext& app, HWND owner, DamageRisk& risk) {
    if (DamageRiskDialog(app, risk).RunModal(owner) != IDOK) return std::nullopt;
    return MakeResultView(risk);
}

}  // namespace tonvale
