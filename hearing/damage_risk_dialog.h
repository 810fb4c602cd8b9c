// The dialog RISK: the share of a population that noise puts at risk of hearing damage.
#pragma once

#include <windows.h>

#include <optional>

#include "common/result_view.h"
#include "dialogs/app_context_win.h"
#include "hearing/damage_risk.h"

namespace tonvale {

// Lets the user choose exposure, person and criterion. On "Ok" `risk` has what was confirmed, and
// its view is given.
std::optional<ResultView> AskDamageRisk(AppContext& app, HWND owner, DamageRisk& risk);

}  // namespace tonvale
