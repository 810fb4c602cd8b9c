// Page 117: the day from periods.
#include <array>
#include <memory>
#include <optional>
#include <string>

#include "exposure/calculation_page_win.h"
#include "exposure/uncertain_period_dialog.h"
#include "exposure/uncertainty_pages_win.h"

namespace tonvale {

namespace {

constexpr auto kDayTips =
    Joined(kWizardFileTips,
           std::to_array<ControlTip>({
               {IDC_ITEM_LIST, L"Lista con livelli e tempi d'esposizione e i loro errori"},
               kAddItemTip,
               kModifyItemTip,
               kDeleteItemTip,
               kInstrumentErrorTip,
               kTimeUnitTip,
               kRememberTip,
               {IDC_GO_ON, L"Prosegue con il calcolo di Lep,w"},
           }));

constexpr ControlHelp kDayHelp[] = {
    {IDC_ITEM_LIST, kHelpDayPagePeriods},
    {IDC_ADD, kHelpDayPagePeriods},
    {IDC_MODIFY, kHelpDayPagePeriods},
    {IDC_DELETE, kHelpDayPagePeriods},
    {IDC_DAILY_LEVEL, kHelpDayPageLevel},
    {IDC_TOTAL_TIME, kHelpDayPageTime},
    kInstrumentErrorHelp,
    kEnvironmentalErrorHelp,
    kTotalErrorHelp,
    kTimeUnitHelp,
    kRememberHelp,
    kGoOnHelp,
    kFileHelp,
};

constexpr DialogDescription kDayDescription = {
    .template_name = L"",
    .tips = kDayTips,
    .text_limits = kInstrumentErrorLimits,
    .items = kTimeUnits,
    .help = kDayHelp,
    .main_help_context = kHelpUncertaintyDay,
    .accepts_files = true,
};

constexpr ItemListColumn kDayColumns[] = {{L"Livelli equivalenti", 272},
                                          {L"Tempi esposizione", 292},
                                          {L"Errore livello", 213},
                                          {L"Errore tempo", 223}};
constexpr std::string PeriodRow::*kDayCells[] = {&PeriodRow::level_dba, &PeriodRow::duration,
                                                 &PeriodRow::level_error_db,
                                                 &PeriodRow::duration_error};
constexpr FormField<DayPage> kDaySettings[] = {
    {IDC_INSTRUMENT_ERROR, &DayPage::instrument_error_db}};
constexpr auto kDayResults = ResultFields(IDC_DAILY_LEVEL);

constexpr CalculationPageParts<DayPage> kDayParts = {
    .info = {IDD_UNCERTAINTY_DAY, L"Errore sul livello di esposizione personale quotidiano"},
    .description = &kDayDescription,
    .columns = kDayColumns,
    .items = ItemList::Items::kAnyNumber,
    .settings = kDaySettings,
    .results = kDayResults,
    .show = ShowDayPage,
};
constexpr TimedPageParts<DayPage> kDayTimedParts = {
    .cells = kDayCells,
    .total_time = &DayPage::total_time,
    .total_time_name = "Tempo esposizione ",
    .remember = RememberDay,
};

class DayWizardPage : public TimedPage<DayPage> {
  public:
    DayWizardPage(Wizard& wizard, AppContext& app, UncertaintyStudy& study, DayPage& shown)
        : TimedPage(wizard, app, kDayParts, kDayTimedParts, study, shown) {}

  protected:
    std::optional<UserMessage> Compute() override {
        Recompute(shown(), study());
        return std::nullopt;
    }
    bool EditItem(ItemAction action, PeriodRow& period) override {
        return EditPeriod(app(), window(), action, study(), period);
    }
};

}  // namespace

std::unique_ptr<WizardPage> MakeUncertaintyDayPage(Wizard& wizard, AppContext& app,
                                                   UncertaintyStudy& study, DayPage& shown) {
    return std::make_unique<DayWizardPage>(wizard, app, study, shown);
}

}  // namespace tonvale
