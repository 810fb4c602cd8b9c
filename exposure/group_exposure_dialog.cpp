#include "exposure/group_exposure_dialog.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "dialogs/form_dialog_win.h"
#include "dialogs/item_list_win.h"
#include "exposure/exposure_item_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr int kMaxTotalCharacters = 7;

constexpr ControlTip kTips[] = {
    {IDC_ITEM_LIST, L"Lista con i livelli equivalenti dei campioni"},
    kAddItemTip,
    kModifyItemTip,
    kDeleteItemTip,
    {IDC_TOTAL_WORKERS, L"Numero totale di lavoratori del gruppo in esame"},
    {IDC_CONFIDENCE, L"Selezionare il coefficiente di fiducia da utilizzare nel calcolo"},
    {IDC_INTERVAL, L"Selezionare l'intervallo di confidenza da utilizzare nel calcolo"},
    {IDC_SAMPLE_COUNT, L"Numero di campioni inseriti"},
    {IDC_EQUIVALENT_LEVEL, L"Valore risultante del livello equivalente medio"},
    {IDC_STANDARD_DEVIATION, L"Deviazione standard del livello equivalente"},
    {IDC_RESULT_TEXT, L"Risultato del calcolo"},
    kStatusBarTip,
    kNotesTip,
};

constexpr ControlTextLimit kTextLimits[] = {{IDC_TOTAL_WORKERS, kMaxTotalCharacters}, kNotesLimit};

template <const auto& kTexts>
const std::vector<std::string>& TextsOf() {
    static const std::vector<std::string> texts(kTexts.begin(), kTexts.end());
    return texts;
}

constexpr ControlItems kItems[] = {{IDC_CONFIDENCE, TextsOf<kConfidencePercents>},
                                   {IDC_INTERVAL, TextsOf<kConfidenceIntervalsDb>}};

constexpr ControlColors kColors[] = {
    {IDC_TOTAL_WORKERS, Surface::kYellow, kRedText},
    {IDC_SAMPLE_COUNT, Surface::kMenu},
    {IDC_EQUIVALENT_LEVEL, Surface::kMenu},
    {IDC_STANDARD_DEVIATION, Surface::kMenu},
};

constexpr ControlHelp kHelp[] = {
    {IDC_TOTAL_WORKERS, kHelpGroupTotal},
    {IDC_ITEM_LIST, kHelpGroupSamples},
    {IDC_ADD, kHelpGroupAdd},
    {IDC_MODIFY, kHelpGroupModify},
    {IDC_DELETE, kHelpGroupDelete},
    {IDC_CONFIDENCE, kHelpGroupConfidence},
    {IDC_INTERVAL, kHelpGroupInterval},
    {IDC_SAMPLE_COUNT, kHelpGroupSampleCount},
    {IDC_EQUIVALENT_LEVEL, kHelpGroupMean},
    {IDC_STANDARD_DEVIATION, kHelpGroupDeviation},
    {IDC_RESULT_TEXT, kHelpGroupVerdict},
    {IDC_NOTES_EDIT, kHelpGroupNotes},
    {IDC_STATUS_BAR, kHelpGroupStatusBar},
};

constexpr DialogDescription kDescription = {
    .template_name = L"LEQGROUP",
    .tips = kTips,
    .text_limits = kTextLimits,
    .items = kItems,
    .colors = kColors,
    .help = kHelp,
    .main_help_context = kHelpGroupExposure,
    .accepts_files = true,
};

constexpr ItemListColumn kColumns[] = {{L"Livelli equivalenti", 1}};

constexpr FormField<GroupExposureForm> kResults[] = {
    {IDC_SAMPLE_COUNT, &GroupExposureForm::sample_count},
    {IDC_EQUIVALENT_LEVEL, &GroupExposureForm::mean_level_dba},
    {IDC_STANDARD_DEVIATION, &GroupExposureForm::deviation_db},
    {IDC_RESULT_TEXT, &GroupExposureForm::verdict},
};
// Shown only as long as there are samples enough.
constexpr int kValidatedResults[] = {IDC_EQUIVALENT_LEVEL, IDC_STANDARD_DEVIATION};

class GroupExposureDialog : public FormDialog<GroupExposureForm, GroupExposureState>,
                            private ItemVectorClient<std::string> {
  public:
    GroupExposureDialog(AppContext& app, GroupExposureState& state, const std::string& path)
        : FormDialog(app, kDescription, FileKind::kLeg, path, state) {}

  protected:
    bool OnInit() override;
    void OnEdited(int control) override;
    void OnItemChosen(int control) override;
    void ShowFields() override;
    void RecomputeResults() override;
    // The total of the workers has changed.
    void AfterOpenCommand() override { RecomputeResults(); }

  private:
    const std::vector<std::string>& Items() const override { return form().levels_dba; }
    std::string ItemText(std::size_t item, std::size_t) const override { return Items()[item]; }
    std::string NewItem() const override { return state().last_level_dba; }
    bool EditItem(ItemAction action, std::string& level_dba) override;
    void OnItemsChanged() override { RecomputeResults(); }

    void ShowResults();

    ItemList list_{*this};
};

bool GroupExposureDialog::OnInit() {
    list_.TakeControl(Control(IDC_ITEM_LIST), kColumns);
    Attach(list_);
    return FormDialog::OnInit();
}

void GroupExposureDialog::ShowFields() {
    list_.ShowItems();
    SetControlText(IDC_TOTAL_WORKERS, form().total_workers);
    ChooseItem(IDC_CONFIDENCE, form().confidence);
    ChooseItem(IDC_INTERVAL, form().interval);
    ShowResults();
}

void GroupExposureDialog::RecomputeResults() {
    const std::optional<UserMessage> refusal = Recompute(form(), state());
    if (refusal) {
        ShowMessage(*refusal);
    } else {
        ShowResults();
    }
}

void GroupExposureDialog::ShowResults() {
    FillFields<GroupExposureForm>(form(), kResults);
    Show(kValidatedResults, form().is_validated);
}

void GroupExposureDialog::OnEdited(int control) {
    if (control != IDC_TOTAL_WORKERS) return;
    form().total_workers = FieldText(control);
    RecomputeResults();
}

void GroupExposureDialog::OnItemChosen(int control) {
    (control == IDC_CONFIDENCE ? form().confidence : form().interval) = ChosenItem(control);
    RecomputeResults();
}

bool GroupExposureDialog::EditItem(ItemAction action, std::string& level_dba) {
    if (action == ItemAction::kModify) state().last_level_dba = level_dba;
    if (!EditLevelItem(app(), window(), action, level_dba)) return false;
    if (action != ItemAction::kDelete) state().last_level_dba = level_dba;
    return true;
}

}  // namespace

void OpenGroupExposure(AppContext& app, GroupExposureState& state, HWND owner,
                       const std::string& path) {
    GroupExposureDialog(app, state, path).RunModal(owner);
}

}  // namespace tonvale
