#include "exposure/daily_exposure_dialog.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "dialogs/form_dialog_win.h"
#include "dialogs/item_list_win.h"
#include "exposure/exposure_item_dialog.h"
#include "exposure/time_unit.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_ITEM_LIST, L"Lista con livelli e tempi d'esposizione"},
    kAddItemTip,
    kModifyItemTip,
    kDeleteItemTip,
    {IDC_TIME_UNIT, L"Per scegliere il formato del tempo"},
    {IDC_TOTAL_TIME, L"Tempo d'esposizione totale quotidiano"},
    {IDC_DAILY_LEVEL, L"Valore risultante del livello d'esposizione quotidiano"},
    {IDC_EQUIVALENT_LEVEL, L"Valore risultante del livello equivalente di rumore"},
    kStatusBarTip,
    kNotesTip,
};

constexpr ControlTextLimit kTextLimits[] = {kNotesLimit};

constexpr ControlItems kItems[] = {{IDC_TIME_UNIT, TimeUnitNames}};

constexpr ControlHelp kHelp[] = {
    {IDC_ITEM_LIST, kHelpDailyItems},      {IDC_ADD, kHelpDailyAdd},
    {IDC_MODIFY, kHelpDailyModify},        {IDC_DELETE, kHelpDailyDelete},
    {IDC_TIME_UNIT, kHelpDailyTimeUnit},   {IDC_EQUIVALENT_LEVEL, kHelpDailyEquivalentLevel},
    {IDC_TOTAL_TIME, kHelpDailyTotalTime}, {IDC_TOTAL_TIME_LABEL, kHelpDailyTotalTime},
    {IDC_DAILY_LEVEL, kHelpDailyLevel},    {IDC_NOTES_EDIT, kHelpDailyNotes},
    {IDC_STATUS_BAR, kHelpDailyStatusBar},
};

constexpr DialogDescription kDescription = {
    .template_name = L"LEPD",
    .tips = kTips,
    .text_limits = kTextLimits,
    .items = kItems,
    .help = kHelp,
    .main_help_context = kHelpDailyExposure,
    .help_file = "LEPD.HLP",
    .accepts_files = true,
};

constexpr ItemListColumn kColumns[] = {{L"Livelli equivalenti", 1}, {L"Tempi esposizione", 1}};

class DailyExposureDialog : public FormDialog<DailyExposureForm, DailyExposureState>,
                            private ItemVectorClient<ExposureItem> {
  public:
    DailyExposureDialog(AppContext& app, DailyExposureState& state, const std::string& path)
        : FormDialog(app, kDescription, FileKind::kLepd, path, state) {}

  protected:
    bool OnInit() override;
    void OnItemChosen(int control) override;
    void ShowFields() override;
    void RecomputeResults() override;

  private:
    const std::vector<ExposureItem>& Items() const override { return form().items; }
    std::string ItemText(std::size_t item, std::size_t column) const override;
    ExposureItem NewItem() const override { return state().last_item; }
    bool EditItem(ItemAction action, ExposureItem& item) override;
    void OnItemsChanged() override { RecomputeResults(); }

    void ShowResults();
    void ShowTimeUnit();

    ItemList list_{*this};
};

bool DailyExposureDialog::OnInit() {
    list_.TakeControl(Control(IDC_ITEM_LIST), kColumns);
    Attach(list_);
    return FormDialog::OnInit();
}

void DailyExposureDialog::ShowFields() {
    list_.ShowItems();
    ShowResults();
    ShowTimeUnit();
}

void DailyExposureDialog::RecomputeResults() {
    const std::optional<UserMessage> refusal = Recompute(form(), state());
    if (refusal) {
        ShowMessage(*refusal);
    } else {
        ShowResults();
    }
}

void DailyExposureDialog::ShowResults() {
    SetControlText(IDC_EQUIVALENT_LEVEL, form().equivalent_level_dba);
    SetControlText(IDC_TOTAL_TIME, form().total_time);
    SetControlText(IDC_DAILY_LEVEL, form().daily_level_dba);
}

void DailyExposureDialog::ShowTimeUnit() {
    ChooseItem(IDC_TIME_UNIT, form().time_unit);
    SetControlText(IDC_TOTAL_TIME_LABEL,
                   "Tempo esposizione " + std::string(TimeUnitAt(form().time_unit).suffix));
}

void DailyExposureDialog::OnItemChosen(int control) {
    form().time_unit = ChosenItem(control);
    ShowTimeUnit();
    if (!form().items.empty()) RecomputeResults();
}

std::string DailyExposureDialog::ItemText(std::size_t item, std::size_t column) const {
    return column == 0 ? form().items[item].level_dba : form().items[item].duration;
}

bool DailyExposureDialog::EditItem(ItemAction action, ExposureItem& item) {
    if (!EditExposureItem(app(), window(), action, form().time_unit, item)) return false;
    if (action != ItemAction::kDelete) state().last_item = item;
    return true;
}

}  // namespace

void OpenDailyExposure(AppContext& app, DailyExposureState& state, HWND owner,
                       const std::string& path) {
    DailyExposureDialog(app, state, path).RunModal(owner);
}

}  // namespace tonvale
