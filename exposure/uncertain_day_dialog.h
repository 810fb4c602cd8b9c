// The dialog ERROR_EDIT_LEPW: one day of the uncertainty wizard's week.
#pragma once

#include <windows.h>

#include <string_view>

#include "dialogs/app_context_win.h"
#include "exposure/uncertainty_study.h"

namespace tonvale {

// Shows `day`, called `day_name`, beside the days that the study remembers. True when the user
// confirms; `day` then holds the texts as typed, whatever they are, or a day without exposure.
bool EditUncertainDay(AppContext& app, HWND owner, std::string_view day_name,
                      const UncertaintyStudy& study, DayRow& day);

}  // namespace tonvale
