#include "exposure/daily_exposure_dialog.h"

#include <cstddef>
#include <optional>
#include <span>

#include "dialogs/form_dialog_win.h"
#include "dialogs/list_calculator_dialog_win.h"
#include "common/unicode_win.h"
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
    .help = kHelp,
    .main_help_context = kHelpDailyExposure,
    .help_file = "LEPD.HLP",
    .accepts_files = true,
};

constexpr ItemListColumn kColumns[] = {{L"Livelli equivalenti", 1}, {L"Tempi esposizione", 1}};

class DailyExposureDialog
    : public FormDialog<DailyExposureForm, DailyExposureState, ListCalculatorDialog> {
  public:
    DailyExposureDialog(AppContext& app, DailyExposureState& state, const std::string& path)
        : FormDialog(app, kDescription, FileKind::kLepd, path, state) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    void ShowFields() override;
    void RecomputeResults() override;

    std::span<const ItemListColumn> Columns() const override { return kColumns; }
    std::size_t ItemCount() const override { return form().items.size(); }
    std::string ItemText(std::size_t item, std::size_t column) const override;
    bool AddItem() override;
    bool ModifyItem(std::size_t item) override;
    bool DeleteItem(std::size_t item) override;

  private:
    void ShowResults();
    void ShowTimeUnit();
    void ChooseTimeUnit();
    bool Edit(ExposureItemAction action, ExposureItem& item);
};

bool DailyExposureDialog::OnInit() {
    for (const TimeUnit& unit : TimeUnits()) {
        SendMessageW(Control(IDC_TIME_UNIT), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(Widen(unit.name).c_str()));
    }
    return FormDialog::OnInit();
}

bool DailyExposureDialog::OnCommand(int id, int notification) {
    if (id != IDC_TIME_UNIT) return FormDialog::OnCommand(id, notification);
    if (notification == CBN_SELCHANGE) ChooseTimeUnit();
    return true;
}

void DailyExposureDialog::ShowFields() {
    list().ShowItems();
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
    SendMessageW(Control(IDC_TIME_UNIT), CB_SETCURSEL, static_cast<WPARAM>(form().time_unit), 0);
    SetControlText(IDC_TOTAL_TIME_LABEL,
                   "Tempo esposizione " + std::string(TimeUnitAt(form().time_unit).suffix));
}

void DailyExposureDialog::ChooseTimeUnit() {
    form().time_unit = static_cast<int>(SendMessageW(Control(IDC_TIME_UNIT), CB_GETCURSEL, 0, 0));
    ShowTimeUnit();
    if (!form().items.empty()) RecomputeResults();
}

std::string DailyExposureDialog::ItemText(std::size_t item, std::size_t column) const {
    return column == 0 ? form().items[item].level_dba : form().items[item].duration;
}

bool DailyExposureDialog::Edit(ExposureItemAction action, ExposureItem& item) {
    return EditExposureItem(app(), window(), action, form().time_unit, item);
}

bool DailyExposureDialog::AddItem() {
    ExposureItem item = state().last_item;
    if (!Edit(ExposureItemAction::kAdd, item)) return false;
    state().last_item = item;
    form().items.push_back(item);
    return true;
}

bool DailyExposureDialog::ModifyItem(std::size_t item) {
    ExposureItem edited = form().items[item];
    if (!Edit(ExposureItemAction::kModify, edited)) return false;
    state().last_item = edited;
    form().items[item] = edited;
    return true;
}

bool DailyExposureDialog::DeleteItem(std::size_t item) {
    ExposureItem shown = form().items[item];
    if (!Edit(ExposureItemAction::kDelete, shown)) return false;
    form().items.erase(form().items.begin() + static_cast<std::ptrdiff_t>(item));
    return true;
}

}  // namespace

void OpenDailyExposure(AppContext& app, DailyExposureState& state, HWND owner,
                       const std::string& path) {
    DailyExposureDialog(app, state, path).RunModal(owner);
}

}  // namespace tonvale
