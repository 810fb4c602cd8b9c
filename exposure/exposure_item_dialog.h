// The dialog ADD_LEPD: one exposure, added to, modified in or deleted from the list of LEPD, or one
// level, in that of LEQGROUP.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "dialogs/item_list_win.h"
#include "exposure/daily_exposure.h"

namespace tonvale {

// Shows `item`, whose duration is in the time unit of index `time_unit`. True when the user
// confirms; `item` then holds the two texts as typed.
bool EditExposureItem(AppContext& app, HWND owner, ItemAction action, int time_unit,
                      ExposureItem& item);

// The same for a level in dBA, without a duration.
bool EditLevelItem(AppContext& app, HWND owner, ItemAction action, std::string& level_dba);

}  // namespace tonvale
