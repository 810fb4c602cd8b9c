// The dialog CONFRONTO: noise-induced loss compared over durations and levels.
#pragma once

#include <windows.h>

#include <optional>

#include "common/result_view.h"
#include "dialogs/app_context_win.h"
#include "hearing/loss_comparison.h"

namespace tonvale {

// Lets the user choose what to compare. On "Ok" `state` has what was confirmed, and its
// view is given.
std::optional<ResultView> AskLossComparison(AppContext& app, HWND owner,
                                            LossComparisonState& state);

}  // namespace tonvale
