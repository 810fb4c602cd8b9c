// The dialog NIPTS: prediction of the hearing loss of one person.
#pragma once

#include <windows.h>

#include "dialogs/app_context_win.h"
#include "hearing/loss_prediction.h"

namespace tonvale {

// Lets the user choose what to predict, beginning with `quantity`. True on "Ok": then `state` has
// what was confirmed. The choices of damage table and sex stay even when the user cancels.
bool AskLossPrediction(AppContext& app, HWND owner, QuantityKind quantity,
                       LossPredictionState& state);

}  // namespace tonvale
