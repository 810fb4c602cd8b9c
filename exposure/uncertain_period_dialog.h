// The dialog ERROR_ADD_LEPD: one period of the uncertainty wizard's day.
#pragma once

#include <windows.h>

#include "dialogs/app_context_win.h"
#include "dialogs/item_list_win.h"
#include "exposure/uncertainty_study.h"

namespace tonvale {

// Shows `period`, whose times are in the unit of `study`, beside the levels that the study
// remembers. True when the user confirms; `period` then holds the texts as typed, whatever they
// are, and the duration's error as it is shown.
bool EditPeriod(AppContext& app, HWND owner, ItemAction action, const UncertaintyStudy& study,
                PeriodRow& period);

}  // namespace tonvale
