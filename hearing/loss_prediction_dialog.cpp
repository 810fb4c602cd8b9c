#include "hearing/loss_prediction_dialog.h"

#include <optional>

#include "dialogs/help_viewer_win.h"
#include "hearing/hearing_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kOwnTips[] = {
    {IDC_AGE, L"Età dell'individuo cui si riferisce il calcolo"},
    {IDC_NIPTS, L"Calcola le perdite dovute alla sola esposizione professionale"},
    {IDC_HTLA, L"Calcola le perdite dovute a fattori non professionali"},
    {IDC_HTLAN, L"Calcola le perdite totali dovute a fattori professionali e non"},
    {IDC_STATUS_BAR, L"Esplicita il contenuto della scelta fatta nelle Opzioni"},
};
constexpr auto kTips =
    JoinTips(kOwnTips, kYearsTips, kLevelTips, kSexTips, kDamageTableTips, kButtonTips);

constexpr ControlHelp kHelp[] = {
    {IDC_EXPOSURE_YEARS, kHelpHearingYears},
    {IDC_EXPOSURE_LEVEL, kHelpHearingLevel},
    {IDC_AGE, kHelpHearingAge},
    {IDC_TABLE_NEW, kHelpHearingTableNew},
    {IDC_TABLE_OLD, kHelpHearingTableOld},
    {IDC_TABLE_BIOLOGICAL, kHelpHearingTableBiological},
    {IDC_MALE, kHelpHearingMale},
    {IDC_FEMALE, kHelpHearingFemale},
    {IDC_NIPTS, kHelpHearingQuantity},
    {IDC_HTLA, kHelpHearingQuantity},
    {IDC_HTLAN, kHelpHearingQuantity},
    {IDOK, kHelpHearingConfirm},
    {IDC_STATUS_BAR, kHelpHearingStatusBar},
    {IDCANCEL, kHelpHearingClose},
};

constexpr DialogDescription kDescription = {
    .template_name = L"NIPTS",
    .tips = kTips,
    .text_limits = kHearingTextLimits,
    .help = kHelp,
    .main_help_context = kHelpHearingDialog,
    .help_file = "PERDITE.HLP",
    .accepts_files = false,
};

// The option buttons of the quantity have the codes of what they select.
static_assert(static_cast<int>(QuantityKind::kNipts) == IDC_NIPTS &&
              static_cast<int>(QuantityKind::kHtla) == IDC_HTLA &&
              static_cast<int>(QuantityKind::kHtlan) == IDC_HTLAN);

constexpr int kNoiseControls[] = {IDC_EXPOSURE_YEARS_LABEL, IDC_EXPOSURE_YEARS,
                                  IDC_EXPOSURE_LEVEL_LABEL, IDC_EXPOSURE_LEVEL};
constexpr int kPersonControls[] = {IDC_AGE_LABEL, IDC_AGE, IDC_SEX_GROUP, IDC_MALE, IDC_FEMALE};
constexpr int kTableControls[] = {IDC_TABLE_GROUP, IDC_TABLE_NEW, IDC_TABLE_OLD,
                                  IDC_TABLE_BIOLOGICAL};

unsigned long HelpOf(QuantityKind quantity) {
    switch (quantity) {
        case QuantityKind::kNipts:
            return kHelpNipts;
        case QuantityKind::kHtla:
            return kHelpHtla;
        default:
            return kHelpHtlan;
    }
}

class LossPredictionDialog : public HearingDialog {
  public:
    LossPredictionDialog(AppContext& app, QuantityKind quantity, LossPredictionState& state)
        : HearingDialog(app, kDescription), form_(FormFromState(state, quantity)), state_(state) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    std::optional<HearingRefusal> ConfirmForm() override;

  private:
    void ChooseQuantity(int button);
    void ShowQuantity();
    int FirstField() const;

    LossPredictionForm form_;
    LossPredictionState& state_;
};

bool LossPredictionDialog::OnInit() {
    HearingDialog::OnInit();
    ShowFields(form_);
    CheckRadioButton(window(), IDC_NIPTS, IDC_HTLAN, static_cast<int>(form_.quantity));
    ShowQuantity();
    FocusOnField(FirstField());
    return false;
}

bool LossPredictionDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_NIPTS:
        case IDC_HTLA:
        case IDC_HTLAN:
            ChooseQuantity(id);
            return true;
        case IDC_TABLE_NEW:
        case IDC_TABLE_OLD:
        case IDC_TABLE_BIOLOGICAL:
        case IDC_MALE:
        case IDC_FEMALE:
            ReadFields(form_);
            state_.table_choice = form_.table;
            state_.sex_choice = form_.sex;
            return true;
        case CMD_DIALOG_HELP:
            app().help->ShowTopic(window(), HelpOf(form_.quantity));
            return true;
        default:
            return HearingDialog::OnCommand(id, notification);
    }
}

void LossPredictionDialog::ChooseQuantity(int button) {
    form_.quantity = static_cast<QuantityKind>(button);
    ShowQuantity();
}

void LossPredictionDialog::ShowQuantity() {
    const LossPredictionFields fields = FieldsOf(form_.quantity);
    Enable(kNoiseControls, fields.noise);
    Enable(kPersonControls, fields.person);
    Enable(kTableControls, fields.table);
    SetControlText(IDC_STATUS_BAR, QuantityName(form_.quantity));
}

int LossPredictionDialog::FirstField() const {
    return FieldsOf(form_.quantity).noise ? IDC_EXPOSURE_YEARS : IDC_AGE;
}

std::optional<HearingRefusal> LossPredictionDialog::ConfirmForm() {
    ReadFields(form_);
    return Confirm(form_, state_);
}

}  // namespace

std::optional<ResultView> AskLossPrediction(AppContext& app, HWND owner, QuantityKind quantity,
                                            LossPredictionState& state) {
    if (LossPredictionDialog(app, quantity, state).RunModal(owner) != IDOK) return std::nullopt;
    return MakeResultView(state.confirmed);
}

}  // namespace tonvale
