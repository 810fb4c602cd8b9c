// Page 115: was the level sampled?
#include <array>
#include <memory>

#include "exposure/uncertainty_pages_win.h"

namespace tonvale {

namespace {

constexpr auto kStartTips = Joined(
    kWizardFileTips, std::to_array<ControlTip>({
                         {IDC_SAMPLED, L"Il livello equivalente viene stimato da più campioni"},
                         {IDC_NOT_SAMPLED, L"Il livello equivalente è un solo valore misurato"},
                         {IDC_MEASURED_LEVEL, L"Livello equivalente misurato"},
                         kInstrumentErrorTip,
                         kGoOnToDayTip,
                     }));

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

}  // namespace

std::unique_ptr<WizardPage> MakeUncertaintyStartPage(Wizard& wizard, AppContext& app,
                                                     UncertaintyStudy& study) {
    return std::make_unique<StartWizardPage>(wizard, app, study);
}

}  // namespace tonvale
