// The dialog LEPD: daily personal exposure level from a list of levels and times.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "exposure/daily_exposure.h"

namespace tonvale {

// Runs the dialog over `owner`. It shows `state`, or the data file at `path` when it is not empty,
// and keeps its content there when it closes.
void OpenDailyExposure(AppContext& app, DailyExposureState& state, HWND owner,
                       const std::string& path);

}  // namespace tonvale
