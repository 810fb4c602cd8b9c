#include "exposure/uncertainty_wizard_win.h"

#include <array>
#include <string>
#include <utility>

#include "exposure/uncertainty_file.h"
#include "exposure/uncertainty_pages_win.h"
#include "exposure/uncertainty_report.h"

namespace tonvale {

namespace {

constexpr auto kResultsTips =
    Joined(kWizardFileTips, std::to_array<ControlTip>({
                                {IDC_RESULT_TEXT, L"Rapporto sull'ultimo calcolo"},
                                kNotesTip,
                            }));

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
    AddPage(MakeUncertaintyStartPage(*this, app, study_));
    AddPage(MakeUncertaintyLevelPage(*this, app, study_, level_));
    AddPage(MakeUncertaintyDayPage(*this, app, study_, day_));
    AddPage(MakeUncertaintyWeekPage(*this, app, study_, week_));
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
