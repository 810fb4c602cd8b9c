// The dialog EDIT_LEPW: the level of one day of the week.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "dialogs/app_context_win.h"

namespace tonvale {

// Shows the day and its level Lep,d. True when the user confirms or deletes it; `level_dba` then
// holds the text as typed, or kNoExposure.
bool EditWeekday(AppContext& app, HWND owner, std::string_view day_name, std::string& level_dba);

}  // namespace tonvale
