#include <array>
#include <cstddef>
#include <memory>

#include "protectors/selection_pages_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr const wchar_t* kKindTip = L"Tipologie consigliate secondo le risposte";

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

constexpr DialogDescription kQuestionsDescription = {
    .template_name = nullptr,
    .tips = kQuestionTips,
    .help = kQuestionHelp,
    .main_help_context = kHelpSelectionQuestions,
    .accepts_files = true,
};

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

}  // namespace

std::unique_ptr<WizardPage> MakeQuestionsPage(Wizard& wizard, AppContext& app,
                                              SelectionState& state) {
    return std::make_unique<QuestionsPage>(wizard, app, state);
}

}  // namespace tonvale
