// The measurement uncertainty wizard: from sampled levels to the day and to the week, with the
// errors of each.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "exposure/uncertainty_study.h"

namespace tonvale {

// Runs the wizard over `owner` on `study`, or on the data file at `path` when it is not empty,
// which then replaces the study.
void OpenUncertainty(AppContext& app, UncertaintyStudy& study, HWND owner, const std::string& path);

}  // namespace tonvale
