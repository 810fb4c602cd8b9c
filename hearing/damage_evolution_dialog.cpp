#include "hearing/damage_evolution_dialog.h"

#include <optional>

#include "hearing/hearing_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kOwnTips[] = {
    {IDC_STATUS_BAR, L"Visualizza il tipo di previsione effettuato"},
};
constexpr auto kTips =
    JoinTips(kOwnTips, kFractileTips, kLevelTips, kSexTips, kDamageTableTips, kButtonTips);

constexpr ControlItems kItems[] = {{IDC_FRACTILE_LIST, EvolutionFractileItems}};

constexpr ControlHelp kHelp[] = {
    {IDC_FRACTILE_LIST, kHelpEvolutionFractile},
    {IDC_EXPOSURE_LEVEL, kHelpEvolutionLevel},
    {IDC_AGE, kHelpEvolutionAge},
    {IDC_TABLE_NEW, kHelpEvolutionTable},
    {IDC_TABLE_OLD, kHelpEvolutionTable},
    {IDC_TABLE_BIOLOGICAL, kHelpEvolutionTable},
    {IDC_MALE, kHelpEvolutionSex},
    {IDC_FEMALE, kHelpEvolutionSex},
    {IDC_STATUS_BAR, kHelpEvolutionStatusBar},
    {IDOK, kHelpEvolutionConfirm},
    {IDCANCEL, kHelpEvolutionClose},
};

constexpr DialogDescription kDescription = {
    .template_name = L"PEPPECUR",
    .tips = kTips,
    .text_limits = FirstTextLimits(2),
    .items = kItems,
    .help = kHelp,
    .main_help_context = kHelpEvolution,
    .help_file = "EVOL.HLP",
    .accepts_files = false,
};

class DamageEvolutionDialog : public HearingDialog {
  public:
    DamageEvolutionDialog(AppContext& app, DamageEvolutionState& state)
        : HearingDialog(app, kDescription), state_(state) {}

  protected:
    bool OnInit() override;
    std::optional<HearingRefusal> ConfirmForm() override;

  private:
    DamageEvolutionState& state_;
};

bool DamageEvolutionDialog::OnInit() {
    HearingDialog::OnInit();
    SetControlText(IDC_STATUS_BAR, kEvolutionTitle);
    const DamageEvolutionForm form = FormFromState(state_);
    ShowFields(form);
    ChooseItem(IDC_FRACTILE_LIST, form.fractile_position);
    return true;
}

std::optional<HearingRefusal> DamageEvolutionDialog::ConfirmForm() {
    DamageEvolutionForm form;
    ReadFields(form);
    form.fractile_position = ChosenItem(IDC_FRACTILE_LIST);
    return Confirm(form, state_);
}

}  // namespace

std::optional<ResultView> AskDamageEvolution(AppContext& app, HWND owner,
                                             DamageEvolutionState& state) {
    if (DamageEvolutionDialog(app, state).RunModal(owner) != IDOK) return std::nullopt;
    return MakeResultView(state.confirmed);
}

}  // namespace tonvale
