// The pages of the wizard "Scelta DPI" that come before a method is given its numbers.
#pragma once

#include <memory>

#include "dialogs/wizard_win.h"
#include "protectors/protector_selection.h"

namespace tonvale {

// Which kinds of protector the work suggests. `state` outlives the page.
std::unique_ptr<WizardPage> MakeQuestionsPage(Wizard& wizard, AppContext& app,
                                              SelectionState& state);

// Which method the known facts of the noise allow, and the level to compare with.
std::unique_ptr<WizardPage> MakeMethodChoicePage(Wizard& wizard, AppContext& app,
                                                 SelectionState& state);

}  // namespace tonvale
