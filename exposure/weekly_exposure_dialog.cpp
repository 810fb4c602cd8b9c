#include "exposure/weekly_exposure_dialog.h"

#include <cstddef>
#include <string>

#include "dialogs/form_dialog_win.h"
#include "dialogs/item_list_win.h"
#include "exposure/weekday_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_ITEM_LIST, L"Lista con i livelli d'esposizione quotidiani per giorno della settimana"},
    kModifyItemTip,
    {IDC_WEEKLY_LEVEL, L"Valore risultante del livello d'esposizione settimanale"},
    kStatusBarTip,
    kNotesTip,
};

constexpr ControlTextLimit kTextLimits[] = {kNotesLimit};

constexpr ControlColors kColors[] = {{IDC_WEEKLY_LEVEL, Surface::kMenu}};

constexpr ControlHelp kHelp[] = {
    {IDC_WEEKLY_LEVEL, kHelpWeeklyLevel},   {IDC_NOTES_EDIT, kHelpWeeklyNotes},
    {IDC_ITEM_LIST, kHelpWeeklyDays},       {IDC_MODIFY, kHelpWeeklyModify},
    {IDC_STATUS_BAR, kHelpWeeklyStatusBar},
};

constexpr DialogDescription kDescription = {
    .template_name = L"LEPW",
    .tips = kTips,
    .text_limits = kTextLimits,
    .colors = kColors,
    .help = kHelp,
    .main_help_context = kHelpWeeklyExposure,
    .help_file = "LEPD.HLP",
    .accepts_files = true,
};

constexpr ItemListColumn kColumns[] = {{L"Giorno della settimana", 2}, {L"Lep,d", 1}};

class WeeklyExposureDialog : public FormDialog<WeeklyExposureForm, WeeklyExposureState>,
                             private ItemListClient {
  public:
    WeeklyExposureDialog(AppContext& app, WeeklyExposureState& state, const std::string& path)
        : FormDialog(app, kDescription, FileKind::kLepw, path, state) {}

  protected:
    bool OnInit() override;
    void ShowFields() override;
    void RecomputeResults() override;

  private:
    std::size_t ItemCount() const override { return kWeekDays; }
    std::string ItemText(std::size_t day, std::size_t column) const override;
    bool ModifyItem(std::size_t day) override;
    void OnItemsChanged() override { RecomputeResults(); }

    void ShowResult() { SetControlText(IDC_WEEKLY_LEVEL, form().weekly_level_dba); }

    ItemList list_{*this, ItemList::Items::kFixed};
};

bool WeeklyExposureDialog::OnInit() {
    list_.TakeControl(Control(IDC_ITEM_LIST), kColumns);
    Attach(list_);
    return FormDialog::OnInit();
}

void WeeklyExposureDialog::ShowFields() {
    list_.RefreshItems();
    ShowResult();
}

void WeeklyExposureDialog::RecomputeResults() {
    Recompute(form(), state());
    ShowResult();
}

std::string WeeklyExposureDialog::ItemText(std::size_t day, std::size_t column) const {
    return column == 0 ? std::string(kDayNames[day]) : form().levels_dba[day];
}

bool WeeklyExposureDialog::ModifyItem(std::size_t day) {
    return EditWeekday(app(), window(), kDayNames[day], form().levels_dba[day]);
}

}  // namespace

void OpenWeeklyExposure(AppContext& app, WeeklyExposureState& state, HWND owner,
                        const std::string& path) {
    WeeklyExposureDialog(app, state, path).RunModal(owner);
}

}  // namespace tonvale
