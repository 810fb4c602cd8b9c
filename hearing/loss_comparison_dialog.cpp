#include "hearing/loss_comparison_dialog.h"

#include <optional>
#include <string>
#include <vector>

#include "common/unicode_win.h"
#include "dialogs/dialog_win.h"
#include "dialogs/status_bar_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr int kMaxFieldCharacters = 7;

constexpr ControlTip kTips[] = {
    {IDC_FRACTILE_LIST, L"Valore del frattile della popolazione"},
    {IDC_FREQUENCY_LIST, L"Frequenza di interesse"},
    {IDC_EXPOSURE_LEVEL, L"Livello di esposizione di partenza del calcolo"},
    {IDC_STATUS_BAR, L"Visualizza il tipo di previsione effettuato"},
    {IDOK, L"Conferma i dati ed esegue il calcolo"},
    {CMD_DIALOG_HELP, L"Richiama la Guida in linea"},
    {IDCANCEL, L"Chiude la finestra senza eseguire il calcolo"},
};

constexpr ControlTextLimit kTextLimits[] = {{IDC_EXPOSURE_LEVEL, kMaxFieldCharacters}};

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
    .text_limits = kTextLimits,
    .items = kItems,
    .help = kHelp,
    .main_help_context = kHelpPredictions,
    .help_file = "PREV.HLP",
    .accepts_files = false,
};

class LossComparisonDialog : public ModalDialog {
  public:
    LossComparisonDialog(AppContext& app, LossComparisonState& state)
        : ModalDialog(app, kDescription), state_(state) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;

  private:
    void ConfirmForm();

    LossComparisonState& state_;
};

bool LossComparisonDialog::OnInit() {
    CreateStatusBar(app().instance, window());
    SetControlText(IDC_STATUS_BAR, "Perdite dovute alla sola esposizione professionale");
    const LossComparisonForm form = FormFromState(state_);
    ChooseItem(IDC_FRACTILE_LIST, form.fractile_position);
    ChooseItem(IDC_FREQUENCY_LIST, form.frequency_position);
    SetControlText(IDC_EXPOSURE_LEVEL, form.level_dba);
    return true;
}

bool LossComparisonDialog::OnCommand(int id, int notification) {
    if (id != IDOK) return ModalDialog::OnCommand(id, notification);
    ConfirmForm();
    return true;
}

void LossComparisonDialog::ConfirmForm() {
    const LossComparisonForm form{ChosenItem(IDC_FRACTILE_LIST), ChosenItem(IDC_FREQUENCY_LIST),
                                  FieldText(IDC_EXPOSURE_LEVEL)};
    if (const std::optional<HearingRefusal> refusal = Confirm(form, state_)) {
        Refuse(refusal->message, IDC_EXPOSURE_LEVEL);
    } else {
        End(IDOK);
    }
}

}  // namespace

std::optional<ResultView> AskLossComparison(AppContext& app, HWND owner,
                                            LossComparisonState& state) {
    if (LossComparisonDialog(app, state).RunModal(owner) != IDOK) return std::nullopt;
    return MakeResultView(state);
}

}  // namespace tonvale
