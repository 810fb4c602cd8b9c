// The dialog LEQGROUP: equivalent level of a homogeneous group from the levels of some workers.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "exposure/group_exposure.h"

namespace tonvale {

// Runs the dialog over `owner`. It shows `state`, or the data file at `path` when it is not empty,
// and keeps its content there when it closes.
void OpenGroupExposure(AppContext& app, GroupExposureState& state, HWND owner,
                       const std::string& path);

}  // namespace tonvale
