// The dialog CONFRONTO: noise-induced loss compared over durations and levels.
#pragma once

#include <windows.h>

#include "dialogs/app_context_win.h"
#include "hearing/loss_comparison.h"

namespace tonvale {

// Lets the user choose what to compare. True on "Ok": then `state` has what was confirmed.
bool AskLossComparison(AppContext& app, HWND owner, LossComparisonState& state);

}  // namespace tonvale
