// The dialog LEPW: weekly personal exposure level from the daily ones.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "exposure/weekly_exposure.h"

namespace tonvale {

// Runs the dialog over `owner`. It shows `state`, or the data file at `path` when it is not empty,
// and keeps its content there.
void OpenWeeklyExposure(AppContext& app, WeeklyExposureState& state, HWND owner,
                        const std::string& path);

}  // namespace tonvale
