// Page 118: the week from days.
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "exposure/calculation_page_win.h"
#include "exposure/uncertain_day_dialog.h"
#include "exposure/uncertainty_pages_win.h"
#include "exposure/weekly_exposure.h"

namespace tonvale {

namespace {

constexpr auto kWeekTips =
    Joined(kWizardFileTips,
           std::to_array<ControlTip>({
               {IDC_ITEM_LIST, L"Lista con i livelli d'esposizione quotidiani e i loro errori"},
               kModifyItemTip,
               kInstrumentErrorTip,
           }));

constexpr ControlHelp kWeekHelp[] = {
    {IDC_ITEM_LIST, kHelpWeekPageDays},
    {IDC_MODIFY, kHelpWeekPageDays},
    {IDC_WEEKLY_LEVEL, kHelpWeekPageLevel},
    kInstrumentErrorHelp,
    kEnvironmentalErrorHelp,
    kTotalErrorHelp,
    kFileHelp,
};

constexpr DialogDescription kWeekDescription = {
    .template_name = L"",
    .tips = kWeekTips,
    .text_limits = kInstrumentErrorLimits,
    .help = kWeekHelp,
    .main_help_context = kHelpUncertaintyWeek,
    .accepts_files = true,
};

constexpr ItemListColumn kWeekColumns[] = {
    {L"Giorno della settimana", 97}, {L"Lep,d", 45}, {L"Errore Lep,d", 63}};
constexpr FormField<WeekPage> kWeekSettings[] = {
    {IDC_INSTRUMENT_ERROR, &WeekPage::instrument_error_db}};
constexpr auto kWeekResults = ResultFields(IDC_WEEKLY_LEVEL);

constexpr CalculationPageParts<WeekPage> kWeekParts = {
    .info = {IDD_UNCERTAINTY_WEEK, L"Errore sul livello di esposizione personale settimanale"},
    .description = &kWeekDescription,
    .columns = kWeekColumns,
    .items = ItemList::Items::kFixed,
    .settings = kWeekSettings,
    .results = kWeekResults,
    .show = ShowWeekPage,
};

// The name of the day of a row; a file may hold more rows than the week has days.
std::string_view DayName(std::size_t row) {
    return row < kWeekDays ? kDayNames[row] : std::string_view();
}

class WeekWizardPage : public CalculationPage<WeekPage, ItemListClient> {
  public:
    WeekWizardPage(Wizard& wizard, AppContext& app, UncertaintyStudy& study, WeekPage& shown)
        : CalculationPage(wizard, app, kWeekParts, study, shown) {}

  protected:
    std::optional<UserMessage> Compute() override {
        Recompute(shown(), study());
        return std::nullopt;
    }
    std::string ItemText(std::size_t row, std::size_t column) const override {
        if (column == 0) return std::string(DayName(row));
        return column == 1 ? shown().rows[row].level_dba : shown().rows[row].error_db;
    }
    bool ModifyItem(std::size_t row) override {
        return EditUncertainDay(app(), window(), DayName(row), study(), shown().rows[row]);
    }
};

}  // namespace

std::unique_ptr<WizardPage> MakeUncertaintyWeekPage(Wizard& wizard, AppContext& app,
                                                    UncertaintyStudy& study, WeekPage& shown) {
    return std::make_unique<WeekWizardPage>(wizard, app, study, shown);
}

}  // namespace tonvale
