#include "protectors/protector_selection_wizard.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "common/file_kinds.h"
#include "dialogs/wizard_win.h"
#include "protectors/method_page_wizard.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

// --- Descriptions --------------------------------------------------------------------------------

constexpr const wchar_t* kKindTip = L"Tipologie consigliate secondo le risposte";
constexpr const wchar_t* kMethodTip = L"Metodo con cui calcolare il livello all'orecchio";
constexpr const wchar_t* kActionLevelTip = L"Livello d'azione con cui confrontare il risultato";

constexpr auto kQuestionTips =
    Joined(kWizardFileTips,
           std::to_array<ControlTip>({
               {IDC_CONDITIONS_YES, L"Le condizioni ambientali sono sfavorevoli"},
               {IDC_CONDITIONS_NO, L"Le condizioni ambientali non sono sfavorevoli"},
               {IDC_SHORT_NOISES_YES, L"L'esposizione a rumori di breve durata è ripetitiva"},
               {IDC_SHORT_NOISES_NO, L"Non c'è esposizione ripetitiva a rumori di breve durata"},
               {IDC_KIND_FIRST, kKindTip},
               {IDC_KIND_FIRST + 1, kKindTip},
               {IDC_KIND_FIRST + 2, kKindTip},
               {IDC_KIND_FIRST + 3, kKindTip},
           }));

constexpr auto kQuestionHelp =
    Joined(kWizardFileHelp, std::to_array<ControlHelp>({
                                {IDC_CONDITIONS_YES, kHelpSelectionConditions},
                                {IDC_CONDITIONS_NO, kHelpSelectionConditions},
                                {IDC_SHORT_NOISES_YES, kHelpSelectionShortNoises},
                                {IDC_SHORT_NOISES_NO, kHelpSelectionShortNoises},
                                {IDC_KIND_FIRST, kHelpSelectionKinds},
                                {IDC_KIND_FIRST + 1, kHelpSelectionKinds},
                                {IDC_KIND_FIRST + 2, kHelpSelectionKinds},
                                {IDC_KIND_FIRST + 3, kHelpSelectionKinds},
                            }));

constexpr auto kChoiceTips = Joined(
    kWizardFileTips, std::to_array<ControlTip>({
                         {IDC_HAS_SPECTRUM, L"Del rumore si conosce lo spettro da 125 a 8000 Hz"},
                         {IDC_HAS_C_LEVEL, L"Del rumore si conosce il livello equivalente in dBC"},
                         {IDC_HAS_A_LEVEL, L"Del rumore si conosce il livello equivalente in dBA"},
                         {IDC_METHOD_OCTAVE_BAND, kMethodTip},
                         {IDC_METHOD_HML, kMethodTip},
                         {IDC_METHOD_HML_CHECK, kMethodTip},
                         {IDC_METHOD_SNR, kMethodTip},
                         {IDC_METHOD_CORRECTED_SNR, kMethodTip},
                         {IDC_ACTION_LEVEL_80, kActionLevelTip},
                         {IDC_ACTION_LEVEL_85, kActionLevelTip},
                         {IDC_ACTION_LEVEL_90, kActionLevelTip},
                     }));

constexpr auto kChoiceHelp =
    Joined(kWizardFileHelp, std::to_array<ControlHelp>({
                                {IDC_HAS_SPECTRUM, kHelpSelectionInformation},
                                {IDC_HAS_C_LEVEL, kHelpSelectionInformation},
                                {IDC_HAS_A_LEVEL, kHelpSelectionInformation},
                                {IDC_METHOD_OCTAVE_BAND, kHelpSelectionMethods},
                                {IDC_METHOD_HML, kHelpSelectionMethods},
                                {IDC_METHOD_HML_CHECK, kHelpSelectionMethods},
                                {IDC_METHOD_SNR, kHelpSelectionMethods},
                                {IDC_METHOD_CORRECTED_SNR, kHelpSelectionMethods},
                                {IDC_ACTION_LEVEL_80, kHelpSelectionActionLevel},
                                {IDC_ACTION_LEVEL_85, kHelpSelectionActionLevel},
                                {IDC_ACTION_LEVEL_90, kHelpSelectionActionLevel},
                            }));

constexpr auto kResultTips = Joined(
    kWizardFileTips,
    std::to_array<ControlTip>(
        {{IDC_RESULT_TEXT, L"Livello all'orecchio e giudizio sulla protezione"}, kNotesTip}));

constexpr auto kResultHelp =
    Joined(kWizardFileHelp, std::to_array<ControlHelp>({{IDC_RESULT_TEXT, kHelpSelectionResultText},
                                                        {IDC_NOTES_EDIT, kHelpSelectionNotes}}));

constexpr ControlTextLimit kResultLimits[] = {kNotesLimit};

constexpr DialogDescription kQuestionsDescription = {
    .template_name = nullptr,
    .tips = kQuestionTips,
    .help = kQuestionHelp,
    .main_help_context = kHelpSelectionQuestions,
    .accepts_files = true,
};

constexpr DialogDescription kChoiceDescription = {
    .template_name = nullptr,
    .tips = kChoiceTips,
    .help = kChoiceHelp,
    .main_help_context = kHelpSelectionMethod,
    .accepts_files = true,
};

constexpr DialogDescription kResultsDescription = {
    .template_name = nullptr,
    .tips = kResultTips,
    .text_limits = kResultLimits,
    .help = kResultHelp,
    .main_help_context = kHelpSelectionResults,
    .accepts_files = true,
};

// --- The pages before the methods ----------------------------------------------------------------

class QuestionsPage : public WizardPage {
  public:
    QuestionsPage(Wizard& wizard, AppContext& app, SelectionState& state)
        : WizardPage(wizard, app, {IDD_QUESTIONS_PAGE, L"Rispondere alle domande"},
                     kQuestionsDescription),
          state_(state) {}

    void ShowState() override;

  protected:
    bool OnCommand(int id, int notification) override;
    DWORD Buttons() const override { return state_.has_answers ? PSWIZB_NEXT : 0; }

  private:
    SelectionState& state_;
};

void QuestionsPage::ShowState() {
    CheckRadioButton(window(), IDC_CONDITIONS_YES, IDC_CONDITIONS_NO,
                     state_.unfavourable_conditions ? IDC_CONDITIONS_YES : IDC_CONDITIONS_NO);
    CheckRadioButton(window(), IDC_SHORT_NOISES_YES, IDC_SHORT_NOISES_NO,
                     state_.repetitive_short_noises ? IDC_SHORT_NOISES_YES : IDC_SHORT_NOISES_NO);
    const auto kinds =
        RecommendedKinds(state_.unfavourable_conditions, state_.repetitive_short_noises);
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        Check(IDC_KIND_FIRST + static_cast<int>(i), kinds[i]);
    }
}

bool QuestionsPage::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_CONDITIONS_YES:
        case IDC_CONDITIONS_NO:
            state_.unfavourable_conditions = id == IDC_CONDITIONS_YES;
            break;
        case IDC_SHORT_NOISES_YES:
        case IDC_SHORT_NOISES_NO:
            state_.repetitive_short_noises = id == IDC_SHORT_NOISES_YES;
            break;
        default:
            return WizardPage::OnCommand(id, notification);
    }
    state_.has_answers = true;
    ShowState();
    UpdateButtons();
    return true;
}

struct MethodButton {
    int control;
    CheckMethod method;
};
constexpr std::array<MethodButton, kCheckMethodCount> kMethodButtons{{
    {IDC_METHOD_OCTAVE_BAND, CheckMethod::kOctaveBand},
    {IDC_METHOD_HML, CheckMethod::kHml},
    {IDC_METHOD_HML_CHECK, CheckMethod::kHmlCheck},
    {IDC_METHOD_SNR, CheckMethod::kSnr},
    {IDC_METHOD_CORRECTED_SNR, CheckMethod::kCorrectedSnr},
}};

// As kActionLevels.
constexpr std::array<int, kActionLevels.size()> kActionLevelButtons{
    IDC_ACTION_LEVEL_80, IDC_ACTION_LEVEL_85, IDC_ACTION_LEVEL_90};

class MethodChoicePage : public WizardPage {
  public:
    MethodChoicePage(Wizard& wizard, AppContext& app, SelectionState& state)
        : WizardPage(wizard, app, {IDD_METHOD_CHOICE_PAGE, L"Scelta del metodo di calcolo"},
                     kChoiceDescription),
          state_(state) {}

    void ShowState() override;

  protected:
    bool OnCommand(int id, int notification) override;
    int NextPage() override;
    DWORD Buttons() const override;

  private:
    bool TakeChoice(int id);
    void ShowMethods() const;

    SelectionState& state_;
};

void MethodChoicePage::ShowState() {
    Check(IDC_HAS_SPECTRUM, state_.information.has_spectrum);
    Check(IDC_HAS_C_LEVEL, state_.information.has_lceq);
    Check(IDC_HAS_A_LEVEL, state_.information.has_laeq);
    ShowMethods();
    const std::optional<std::size_t> place = ActionLevelPlace(state_);
    ShowChoice(kActionLevelButtons, place ? kActionLevelButtons.at(*place) : 0);
}

void MethodChoicePage::ShowMethods() const {
    const CheckMethodInfo* chosen = AllowedMethod(state_);
    std::array<int, kCheckMethodCount> buttons{};
    int checked = 0;
    for (std::size_t i = 0; i < kCheckMethodCount; ++i) {
        const auto& [control, method] = kMethodButtons[i];
        buttons[i] = control;
        Enable(control, IsAvailable(method, state_.information));
        if (chosen && chosen->method == method) checked = control;
    }
    ShowChoice(buttons, checked);
}

bool MethodChoicePage::OnCommand(int id, int notification) {
    if (!TakeChoice(id)) return WizardPage::OnCommand(id, notification);
    ShowState();
    UpdateButtons();
    return true;
}

// Takes over what the user has chosen with a button; false when it stands for no choice.
bool MethodChoicePage::TakeChoice(int id) {
    if (id == IDC_HAS_SPECTRUM || id == IDC_HAS_C_LEVEL || id == IDC_HAS_A_LEVEL) {
        SetInformation({.has_spectrum = IsChecked(IDC_HAS_SPECTRUM),
                        .has_lceq = IsChecked(IDC_HAS_C_LEVEL),
                        .has_laeq = IsChecked(IDC_HAS_A_LEVEL)},
                       state_);
        return true;
    }
    for (const auto& [control, method] : kMethodButtons) {
        if (control != id) continue;
        state_.method = static_cast<int>(method);
        return true;
    }
    for (std::size_t i = 0; i < kActionLevels.size(); ++i) {
        if (kActionLevelButtons[i] != id) continue;
        state_.action_level_dba = kActionLevels[i];
        return true;
    }
    return false;
}

int MethodChoicePage::NextPage() {
    const CheckMethodInfo* method = AllowedMethod(state_);
    return method ? PageOf(method) : kStay;
}

DWORD MethodChoicePage::Buttons() const {
    return AllowedMethod(state_) ? PSWIZB_BACK | PSWIZB_NEXT : PSWIZB_BACK;
}

// --- The sheet -----------------------------------------------------------------------------------

class SelectionWizard : public Wizard {
  public:
    SelectionWizard(AppContext& app, SelectionState& state, const std::string& path);

  protected:
    bool LoadFrom(const ProfileFile& file) override;
    void StoreTo(ProfileFile& file) override { StoreState(state_, file); }
    Printout CurrentPrintout() override { return MakePrintout(state_); }

  private:
    SelectionState& state_;
    MethodPageForm form_;
};

SelectionWizard::SelectionWizard(AppContext& app, SelectionState& state, const std::string& path)
    : Wizard(app, FileKind::kDpi, path), state_(state), form_(FormFromState(state)) {
    AddPage<QuestionsPage>(*this, app, state);
    AddPage<MethodChoicePage>(*this, app, state);
    for (const MethodPageRow& row : MethodPages())
        AddPage<MethodPage>(*this, app, row, form_, state);
    AddPage<ResultsPage>(
        *this, app, kResultsDescription,
        ResultsPage::Content{
            [&state] { return ResultText(state.effective_level_dba, state.action_level_dba); },
            state.notes, [&state] { return PageOf(FindCheckMethod(state.method)); }});
}

bool SelectionWizard::LoadFrom(const ProfileFile& file) {
    if (!LoadState(file, state_)) return false;
    form_ = FormFromState(state_);
    const auto* page = dynamic_cast<const MethodPage*>(page_in_front());
    const auto change = page ? MethodChange(page->method(), state_) : std::nullopt;
    if (change) {
        ShowMessageBox(window(), *change);
        GoTo(PageOf(FindCheckMethod(state_.method)));
    } else {
        ShowPageInFront();
    }
    return true;
}

}  // namespace

void OpenProtectorSelection(AppContext& app, SelectionState& state, HWND owner,
                            const std::string& path) {
    SelectionWizard(app, state, path).Run(owner);
}

}  // namespace tonvale
