#include "hearing/loss_prediction_dialog.h"

#include <optional>
#include <string>

#include "dialogs/dialog_win.h"
#include "dialogs/help_viewer_win.h"
#include "dialogs/status_bar_win.h"
#include "hearing/damage_table.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr int kMaxFieldCharacters = 7;

constexpr ControlTip kTips[] = {
    {IDC_EXPOSURE_YEARS, L"Numero di anni di esposizione al rumore"},
    {IDC_EXPOSURE_LEVEL, L"Livello di esposizione di calcolo"},
    {IDC_AGE, L"Età dell'individuo cui si riferisce il calcolo"},
    {IDC_TABLE_NEW, L"Seleziona la tabella di calcolo del 1994"},
    {IDC_TABLE_OLD, L"Seleziona la tabella di calcolo del 1991"},
    {IDC_TABLE_BIOLOGICAL, L"Seleziona la tabella di calcolo del 2000 (danno biologico)"},
    {IDC_MALE, L"Selezionare per riferire il calcolo agli uomini"},
    {IDC_FEMALE, L"Selezionare per riferire il calcolo alle donne"},
    {IDC_NIPTS, L"Calcola le perdite dovute alla sola esposizione professionale"},
    {IDC_HTLA, L"Calcola le perdite dovute a fattori non professionali"},
    {IDC_HTLAN, L"Calcola le perdite totali dovute a fattori professionali e non"},
    {IDOK, L"Conferma i dati ed esegue il calcolo"},
    {CMD_DIALOG_HELP, L"Richiama la Guida in linea"},
    {IDC_STATUS_BAR, L"Esplicita il contenuto della scelta fatta nelle Opzioni"},
    {IDCANCEL, L"Chiude la finestra senza eseguire il calcolo"},
};

constexpr ControlTextLimit kTextLimits[] = {
    {IDC_EXPOSURE_YEARS, kMaxFieldCharacters},
    {IDC_EXPOSURE_LEVEL, kMaxFieldCharacters},
    {IDC_AGE, kMaxFieldCharacters},
};

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
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpHearingDialog,
    .help_file = "PERDITE.HLP",
    .accepts_files = false,
};

// The option buttons of quantity and table have the codes of what they select.
static_assert(static_cast<int>(QuantityKind::kNipts) == IDC_NIPTS &&
              static_cast<int>(QuantityKind::kHtla) == IDC_HTLA &&
              static_cast<int>(QuantityKind::kHtlan) == IDC_HTLAN);
static_assert(static_cast<int>(DamageTable::kNew) == IDC_TABLE_NEW &&
              static_cast<int>(DamageTable::kOld) == IDC_TABLE_OLD &&
              static_cast<int>(DamageTable::kBiological) == IDC_TABLE_BIOLOGICAL);

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

int ControlOf(HearingField field) {
    switch (field) {
        case HearingField::kYears:
            return IDC_EXPOSURE_YEARS;
        case HearingField::kLevel:
            return IDC_EXPOSURE_LEVEL;
        case HearingField::kAge:
            break;
    }
    return IDC_AGE;
}

class LossPredictionDialog : public ModalDialog {
  public:
    LossPredictionDialog(AppContext& app, QuantityKind quantity, LossPredictionState& state)
        : ModalDialog(app, kDescription), form_(FormFromState(state, quantity)), state_(state) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;

  private:
    void ChooseQuantity(int button);
    void ShowQuantity();
    int FirstField() const;
    void ReadFields();
    void ConfirmForm();

    LossPredictionForm form_;
    LossPredictionState& state_;
};

bool LossPredictionDialog::OnInit() {
    CreateStatusBar(app().instance, window());
    SetControlText(IDC_EXPOSURE_YEARS, form_.years);
    SetControlText(IDC_EXPOSURE_LEVEL, form_.level_dba);
    SetControlText(IDC_AGE, form_.age);
    CheckRadioButton(window(), IDC_TABLE_NEW, IDC_TABLE_BIOLOGICAL, static_cast<int>(form_.table));
    CheckRadioButton(window(), IDC_MALE, IDC_FEMALE, form_.sex == kMale ? IDC_MALE : IDC_FEMALE);
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
            state_.table_choice = form_.table = static_cast<DamageTable>(id);
            return true;
        case IDC_MALE:
        case IDC_FEMALE:
            state_.sex_choice = form_.sex = id == IDC_MALE ? kMale : kFemale;
            return true;
        case CMD_DIALOG_HELP:
            app().help->ShowTopic(window(), HelpOf(form_.quantity));
            return true;
        case IDOK:
            ConfirmForm();
            return true;
        default:
            return ModalDialog::OnCommand(id, notification);
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

void LossPredictionDialog::ReadFields() {
    form_.years = FieldText(IDC_EXPOSURE_YEARS);
    form_.level_dba = FieldText(IDC_EXPOSURE_LEVEL);
    form_.age = FieldText(IDC_AGE);
}

void LossPredictionDialog::ConfirmForm() {
    ReadFields();
    if (const std::optional<HearingRefusal> refusal = Confirm(form_, state_)) {
        Refuse(refusal->message, ControlOf(refusal->field));
    } else {
        End(IDOK);
    }
}

}  // namespace

std::optional<ResultView> AskLossPrediction(AppContext& app, HWND owner, QuantityKind quantity,
                                            LossPredictionState& state) {
    if (LossPredictionDialog(app, quantity, state).RunModal(owner) != IDOK) return std::nullopt;
    return MakeResultView(state.confirmed);
}

}  // namespace tonvale
