// The pages of the wizard "Scelta DPI" on which a method is given its numbers and run.
#pragma once

#include <array>

#include "common/file_kinds.h"
#include "common/profile_file.h"
#include "dialogs/wizard_win.h"
#include "protectors/protector_selection.h"
#include "resources/resource.h"

namespace tonvale {

struct MethodPageRow {
    CheckMethod method;
    WizardPageInfo page;
    DialogDescription description;
};

// In the order of the sheet.
const std::array<MethodPageRow, kCheckMethodCount>& MethodPages();

// The number of a method's page; without a method, that of the page on which one is chosen.
int PageOf(const CheckMethodInfo* method);

// The page of any method. `form` is common to all of them: what is typed or imported stays as it
// is while the wizard runs, and can be tried with another method.
class MethodPage : public WizardPage {
  public:
    MethodPage(Wizard& wizard, AppContext& app, const MethodPageRow& row, MethodPageForm& form,
               SelectionState& state)
        : WizardPage(wizard, app, row.page, row.description),
          method_(InfoOf(row.method)),
          form_(form),
          state_(state) {}

    const CheckMethodInfo& method() const { return method_; }

    void ShowState() override;
    void StoreState() override;

  protected:
    bool OnCommand(int id, int notification) override;
    int NextPage() override;
    int PreviousPage() override { return IDD_METHOD_CHOICE_PAGE; }
    DWORD Buttons() const override { return PSWIZB_BACK | PSWIZB_NEXT; }

  private:
    using ImportFunction = bool (*)(const ProfileFile& file, MethodPageForm& form);
    void Import(FileKind kind, ImportFunction import);

    const CheckMethodInfo& method_;
    MethodPageForm& form_;
    SelectionState& state_;
};

}  // namespace tonvale
