// Page 116: the level from samples.
#include <array>
#include <memory>
#include <optional>
#include <string>

#include "exposure/calculation_page_win.h"
#include "exposure/uncertain_sample_dialog.h"
#include "exposure/uncertainty_pages_win.h"

namespace tonvale {

namespace {

constexpr auto kLevelTips = Joined(
    kWizardFileTips,
    std::to_array<ControlTip>({
        {IDC_ITEM_LIST, L"Lista con i valori campionati e i tempi di campionamento"},
        kAddItemTip,
        kModifyItemTip,
        kDeleteItemTip,
        {IDC_TIME_CORRECTION, L"Tiene conto della parte del tempo totale che è stata campionata"},
        {IDC_SAMPLED_TOTAL_TIME, L"Tempo che i campioni rappresentano"},
        kInstrumentErrorTip,
        kTimeUnitTip,
        kRememberTip,
        kGoOnToDayTip,
    }));

constexpr ControlTextLimit kLevelLimits[] = {kInstrumentErrorLimit,
                                             {IDC_SAMPLED_TOTAL_TIME, kMaxValueCharacters}};

constexpr ControlHelp kLevelHelp[] = {
    {IDC_ITEM_LIST, kHelpLevelPageSamples},
    {IDC_ADD, kHelpLevelPageSamples},
    {IDC_MODIFY, kHelpLevelPageSamples},
    {IDC_DELETE, kHelpLevelPageSamples},
    {IDC_TIME_CORRECTION, kHelpLevelPageCorrection},
    {IDC_SAMPLED_TOTAL_TIME, kHelpLevelPageTotalTime},
    {IDC_SAMPLED_TOTAL_TIME_LABEL, kHelpLevelPageTotalTime},
    {IDC_EQUIVALENT_LEVEL, kHelpLevelPageLevel},
    {IDC_TOTAL_TIME, kHelpLevelPageTime},
    kInstrumentErrorHelp,
    kEnvironmentalErrorHelp,
    kTotalErrorHelp,
    kTimeUnitHelp,
    kRememberHelp,
    kGoOnHelp,
    kFileHelp,
};

constexpr DialogDescription kLevelDescription = {
    .template_name = L"",
    .tips = kLevelTips,
    .text_limits = kLevelLimits,
    .items = kTimeUnits,
    .help = kLevelHelp,
    .main_help_context = kHelpUncertaintyLevel,
    .accepts_files = true,
};

constexpr ItemListColumn kLevelColumns[] = {{L"Valori campionati", 9},
                                            {L"Tempi campionamento", 11}};
constexpr std::string SampleRow::*kLevelCells[] = {&SampleRow::level_dba, &SampleRow::time};
constexpr FormField<LevelPage> kLevelSettings[] = {
    {IDC_INSTRUMENT_ERROR, &LevelPage::instrument_error_db},
    {IDC_SAMPLED_TOTAL_TIME, &LevelPage::represented_time},
};
constexpr auto kLevelResults = ResultFields(IDC_EQUIVALENT_LEVEL);

constexpr CalculationPageParts<LevelPage> kLevelParts = {
    .info = {IDD_UNCERTAINTY_LEVEL, L"Errore sul livello equivalente"},
    .description = &kLevelDescription,
    .columns = kLevelColumns,
    .items = ItemList::Items::kAnyNumber,
    .settings = kLevelSettings,
    .results = kLevelResults,
    .show = ShowLevelPage,
};
constexpr TimedPageParts<LevelPage> kLevelTimedParts = {
    .cells = kLevelCells,
    .total_time = &LevelPage::sampled_time,
    .total_time_name = "Tempo campionamento ",
    .remember = RememberLevel,
};

class LevelWizardPage : public TimedPage<LevelPage> {
  public:
    LevelWizardPage(Wizard& wizard, AppContext& app, UncertaintyStudy& study, LevelPage& shown)
        : TimedPage(wizard, app, kLevelParts, kLevelTimedParts, study, shown) {}

  protected:
    void ShowUnit(const std::string& suffix) override {
        TimedPage::ShowUnit(suffix);
        SetControlText(IDC_SAMPLED_TOTAL_TIME_LABEL, "Tempo totale " + suffix);
    }
    void ShowSettings() override {
        TimedPage::ShowSettings();
        Check(IDC_TIME_CORRECTION, shown().corrects_time);
    }
    void ReadSettings() override {
        TimedPage::ReadSettings();
        shown().corrects_time = IsChecked(IDC_TIME_CORRECTION);
    }
    bool OnCommand(int id, int notification) override {
        if (id != IDC_TIME_CORRECTION) return TimedPage::OnCommand(id, notification);
        ComputeAndTell();
        return true;
    }
    std::optional<UserMessage> Compute() override { return Recompute(shown(), study()); }
    bool EditItem(ItemAction action, SampleRow& sample) override {
        return EditSample(app(), window(), action, shown().time_unit, sample);
    }
};

}  // namespace

std::unique_ptr<WizardPage> MakeUncertaintyLevelPage(Wizard& wizard, AppContext& app,
                                                     UncertaintyStudy& study, LevelPage& shown) {
    return std::make_unique<LevelWizardPage>(wizard, app, study, shown);
}

}  // namespace tonvale
