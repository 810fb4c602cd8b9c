#include "protectors/protector_selection_wizard_win.h"

#include <string>

#include "common/file_kinds.h"
#include "dialogs/wizard_win.h"
#include "protectors/method_page_win.h"
#include "protectors/selection_pages_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr auto kResultTips = Joined(
    kWizardFileTips,
    std::to_array<ControlTip>(
        {{IDC_RESULT_TEXT, L"Livello all'orecchio e giudizio sulla protezione"}, kNotesTip}));

constexpr auto kResultHelp =
    Joined(kWizardFileHelp, std::to_array<ControlHelp>({{IDC_RESULT_TEXT, kHelpSelectionResultText},
                                                        {IDC_NOTES_EDIT, kHelpSelectionNotes}}));

constexpr ControlTextLimit kResultLimits[] = {kNotesLimit};

constexpr DialogDescription kResultsDescription = {
    .template_name = nullptr,
    .tips = kResultTips,
    .text_limits = kResultLimits,
    .help = kResultHelp,
    .main_help_context = kHelpSelectionResults,
    .accepts_files = true,
};

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
    AddPage(MakeQuestionsPage(*this, app, state));
    AddPage(MakeMethodChoicePage(*this, app, state));
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
