// The dialog PEPPECUR: how the damage of a worker's hearing grows with age and noise.
#pragma once

#include <windows.h>

#include <optional>

#include "common/result_view.h"
#include "dialogs/app_context_win.h"
#include "hearing/damage_evolution.h"

namespace tonvale {

// Lets the user choose whose damage is followed. On "Ok" `state` has what was confirmed, and its
// view is given.
std::optional<ResultView> AskDamageEvolution(AppContext& app, HWND owner,
                                             DamageEvolutionState& state);

}  // namespace tonvale
