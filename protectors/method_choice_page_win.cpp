#include <array>
#include <cstddef>
#include <memory>
#include <optional>

#include "protectors/method_page_win.h"
#include "protectors/selection_pages_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr const wchar_t* kMethodTip = L"Metodo con cui calcolare il livello all'orecchio";
constexpr const wchar_t* kActionLevelTip = L"Livello d'azione con cui confrontare il risultato";

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

constexpr DialogDescription kChoiceDescription = {
    .template_name = nullptr,
    .tips = kChoiceTips,
    .help = kChoiceHelp,
    .main_help_context = kHelpSelectionMethod,
    .accepts_files = true,
};

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

}  // namespace

std::unique_ptr<WizardPage> MakeMethodChoicePage(Wizard& wizard, AppContext& app,
                                                 SelectionState& state) {
    return std::make_unique<MethodChoicePage>(wizard, app, state);
}

}  // namespace tonvale
