// The dialog NIPTS: prediction of the hearing loss of one person.
#pragma once

#include <windows.h>

#include <optional>

#include "common/result_view.h"
#include "dialogs/app_context_win.h"
#include "hearing/loss_prediction.h"

namespace tonvale {

// Lets the user choose what to predict, beginning with `quantity`. On "Ok" `state` has what
// was confirmed, and its view is given. The choices of damage table and sex stay even when the user
// cancels.
std::optional<ResultView> AskLossPrediction(AppContext& app, HWND owner, QuantityKind quantity,
                                            LossPredictionState& state);

}  // namespace tonvale
