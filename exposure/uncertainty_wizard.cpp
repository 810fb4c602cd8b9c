#include "exposure/uncertainty_wizard.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "dialogs/calculator_dialog_win.h"
#include "exposure/calculation_page_wizard.h"
#include "exposure/uncertain_day_dialog.h"
#include "exposure/uncertain_period_dialog.h"
#include "exposure/uncertain_sample_dialog.h"
#include "exposure/uncertainty_file.h"
#include "exposure/uncertainty_report.h"
#include "exposure/weekly_exposure.h"
#include "resources/help_contexts.h"

namespace tonvale {

namespace {

// --- What several pages have -------------------------------------------------------------------

constexpr int kErrorCharacters = 8;

constexpr ControlTip kInstrumentErrorTip{IDC_INSTRUMENT_ERROR,
                                         L"Errore dello strumento, aggiunto a ogni risultato"};
constexpr ControlTip kTimeUnitTip{IDC_TIME_UNIT, L"Per scegliere il formato del tempo"};
constexpr ControlTip kRememberTip{IDC_REMEMBER, L"Memorizza il livello e il suo errore ambientale"};
constexpr ControlTip kGoOnToDayTip{IDC_GO_ON, L"Prosegue con il calcolo di Lep,d"};

constexpr ControlTextLimit kInstrumentErrorLimit{IDC_INSTRUMENT_ERROR, kErrorCharacters};

constexpr ControlItems kTimeUnits[] = {{IDC_TIME_UNIT, TimeUnitNames}};

constexpr ControlHelp kInstrumentErrorHelp{IDC_INSTRUMENT_ERROR, kHelpUncertaintyInstrument};
constexpr ControlHelp kEnvironmentalErrorHelp{IDC_LEVEL_ERROR, kHelpUncertaintyEnvironmental};
constexpr ControlHelp kTotalErrorHelp{IDC_TOTAL_ERROR, kHelpUncertaintyTotal};
constexpr ControlHelp kTimeUnitHelp{IDC_TIME_UNIT, kHelpUncertaintyTimeUnit};
constexpr ControlHelp kRememberHelp{IDC_REMEMBER, kHelpUncertaintyRemember};
constexpr ControlHelp kGoOnHelp{IDC_GO_ON, kHelpUncertaintyGoOn};
constexpr ControlHelp kFileHelp{IDC_WIZARD_FILE, kHelpUncertaintyFile};

// The result `level` with its errors.
constexpr std::array<FormField<LevelTexts>, 3> ResultFields(int level) {
    return {{{level, &LevelTexts::level_dba},
             {IDC_LEVEL_ERROR, &LevelTexts::environmental_error_db},
             {IDC_TOTAL_ERROR, &LevelTexts::total_error_db}}};
}

// --- 115: was the level sampled? ---------------------------------------------------------------

constexpr ControlTip kStartTips[] = {
    {IDC_SAMPLED, L"Il livello equivalente viene stimato da più campioni"},
    {IDC_NOT_SAMPLED, L"Il livello equivalente è un solo valore misurato"},
    {IDC_MEASURED_LEVEL, L"Livello equivalente misurato"},
    kInstrumentErrorTip,
    kGoOnToDayTip,
    kWizardOpenTip,
    kWizardSaveTip,
    kWizardSaveAsTip,
    kWizardPrintTip,
    kWizardFileTip,
};

constexpr ControlTextLimit kStartLimits[] = {{IDC_MEASURED_LEVEL, kErrorCharacters},
                                             kInstrumentErrorLimit};

constexpr ControlHelp kStartHelp[] = {
    {IDC_SAMPLED, kHelpUncertaintySampled},
    {IDC_NOT_SAMPLED, kHelpUncertaintySampled},
    {IDC_MEASURED_LEVEL, kHelpUncertaintyMeasured},
    kInstrumentErrorHelp,
    kGoOnHelp,
    kFileHelp,
};

constexpr DialogDescription kStartDescription = {
    .template_name = L"",
    .tips = kStartTips,
    .text_limits = kStartLimits,
    .help = kStartHelp,
    .main_help_context = kHelpUncertainty,
    .accepts_files = true,
};

constexpr FormField<StartPage> kStartFields[] = {
    {IDC_MEASURED_LEVEL, &StartPage::measured_level_dba},
    {IDC_INSTRUMENT_ERROR, &StartPage::instrument_error_db},
};
// What is asked only of a level that was not sampled.
constexpr int kMeasuredControls[] = {IDC_MEASURED_GROUP,   IDC_MEASURED_LEVEL_LABEL,
                                     IDC_MEASURED_LEVEL,   IDC_INSTRUMENT_ERROR_LABEL,
                                     IDC_INSTRUMENT_ERROR, IDC_GO_ON};

class StartWizardPage : public WizardPage {
  public:
    StartWizardPage(Wizard& wizard, AppContext& app, UncertaintyStudy& study)
        : WizardPage(wizard, app, {IDD_UNCERTAINTY_START, L"Errore di misura"}, kStartDescription),
          study_(study) {}

    void ShowState() override {
        ActivatePage(UncertaintyPage::kStart, study_);
        ShowPage(ShowStartPage(study_));
    }
    void StoreState() override { KeepPage(ReadPage(), study_); }

  protected:
    bool OnCommand(int id, int notification) override;
    int NextPage() override { return static_cast<int>(tonvale::NextPage(study_)); }
    DWORD Buttons() const override { return PSWIZB_NEXT; }

  private:
    void ShowPage(const StartPage& page);
    StartPage ReadPage() const;

    UncertaintyStudy& study_;
};

void StartWizardPage::ShowPage(const StartPage& page) {
    FillFields<StartPage>(page, kStartFields);
    Check(IDC_SAMPLED, page.is_sampled);
    Check(IDC_NOT_SAMPLED, !page.is_sampled);
    Check(IDC_GO_ON, page.goes_on);
    Show(kMeasuredControls, !page.is_sampled);
}

StartPage StartWizardPage::ReadPage() const {
    StartPage page;
    ReadFields<StartPage>(page, kStartFields);
    page.is_sampled = IsChecked(IDC_SAMPLED);
    page.goes_on = IsChecked(IDC_GO_ON);
    return page;
}

bool StartWizardPage::OnCommand(int id, int notification) {
    if (id != IDC_SAMPLED && id != IDC_NOT_SAMPLED) return WizardPage::OnCommand(id, notification);
    if (notification != BN_CLICKED) return true;
    StartPage page = ReadPage();
    ChooseSampled(id == IDC_SAMPLED, page);
    KeepPage(page, study_);
    ShowPage(page);
    return true;
}

// --- 116: the level from samples ---------------------------------------------------------------

constexpr ControlTip kLevelTips[] = {
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
    kWizardOpenTip,
    kWizardSaveTip,
    kWizardSaveAsTip,
    kWizardPrintTip,
    kWizardFileTip,
};

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

// --- 117: the day from periods -----------------------------------------------------------------

constexpr ControlTip kDayTips[] = {
    {IDC_ITEM_LIST, L"Lista con livelli e tempi d'esposizione e i loro errori"},
    kAddItemTip,
    kModifyItemTip,
    kDeleteItemTip,
    kInstrumentErrorTip,
    kTimeUnitTip,
    kRememberTip,
    {IDC_GO_ON, L"Prosegue con il calcolo di Lep,w"},
    kWizardOpenTip,
    kWizardSaveTip,
    kWizardSaveAsTip,
    kWizardPrintTip,
    kWizardFileTip,
};

constexpr ControlTextLimit kInstrumentErrorLimits[] = {kInstrumentErrorLimit};

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

// --- 118: the week from days -------------------------------------------------------------------

constexpr ControlTip kWeekTips[] = {
    {IDC_ITEM_LIST, L"Lista con i livelli d'esposizione quotidiani e i loro errori"},
    kModifyItemTip,
    kInstrumentErrorTip,
    kWizardOpenTip,
    kWizardSaveTip,
    kWizardSaveAsTip,
    kWizardPrintTip,
    kWizardFileTip,
};

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

// --- 107: the report ---------------------------------------------------------------------------

constexpr ControlTip kResultsTips[] = {
    {IDC_RESULT_TEXT, L"Rapporto sull'ultimo calcolo"},
    kNotesTip,
    kWizardOpenTip,
    kWizardSaveTip,
    kWizardSaveAsTip,
    kWizardPrintTip,
    kWizardFileTip,
};

constexpr ControlTextLimit kResultsLimits[] = {kNotesLimit};

constexpr ControlHelp kResultsHelp[] = {
    {IDC_RESULT_TEXT, kHelpUncertaintyReportText},
    {IDC_NOTES_EDIT, kHelpUncertaintyNotes},
    kFileHelp,
};

constexpr DialogDescription kResultsDescription = {
    .template_name = L"",
    .tips = kResultsTips,
    .text_limits = kResultsLimits,
    .help = kResultsHelp,
    .main_help_context = kHelpUncertaintyReport,
    .accepts_files = true,
};

// --- The wizard --------------------------------------------------------------------------------

class UncertaintyWizard : public Wizard {
  public:
    UncertaintyWizard(AppContext& app, UncertaintyStudy& study, std::string path);

  protected:
    bool LoadFrom(const ProfileFile& file) override;
    void StoreTo(ProfileFile& file) override { StoreStudy(study_, file); }
    Printout CurrentPrintout() override { return MakePrintout(study_); }

  private:
    void FillPages();

    UncertaintyStudy& study_;
    // As typed, while the wizard runs.
    LevelPage level_;
    DayPage day_;
    WeekPage week_;
};

UncertaintyWizard::UncertaintyWizard(AppContext& app, UncertaintyStudy& study, std::string path)
    : Wizard(app, FileKind::kErr, std::move(path)), study_(study) {
    FillPages();
    AddPage<StartWizardPage>(*this, app, study_);
    AddPage<LevelWizardPage>(*this, app, study_, level_);
    AddPage<DayWizardPage>(*this, app, study_, day_);
    AddPage<WeekWizardPage>(*this, app, study_, week_);
    AddPage<ResultsPage>(
        *this, app, kResultsDescription,
        ResultsPage::Content{
            [&study] { return ReportText(study); }, study.notes,
            [&study] { return static_cast<int>(PreviousPage(UncertaintyPage::kResults, study)); }});
}

void UncertaintyWizard::FillPages() {
    level_ = ShowLevelPage(study_);
    day_ = ShowDayPage(study_);
    week_ = ShowWeekPage(study_);
}

bool UncertaintyWizard::LoadFrom(const ProfileFile& file) {
    if (!LoadStudy(file, study_)) return false;
    FillPages();
    WizardPage* const page = page_in_front();
    if (page && page->id() == IDD_UNCERTAINTY_START) {
        page->ShowState();
    } else if (page) {
        GoTo(IDD_UNCERTAINTY_START);
    }
    return true;
}

}  // namespace

void OpenUncertainty(AppContext& app, UncertaintyStudy& study, HWND owner,
                     const std::string& path) {
    UncertaintyWizard(app, study, path).Run(owner);
}

}  // namespace tonvale
