// The wizard "Scelta DPI": the kinds of protector that the work suggests, and the check of one by
// one of five methods.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "protectors/protector_selection.h"

namespace tonvale {

// Runs the wizard over `owner`. It shows `state`, or the data file at `path` when it is not empty,
// and keeps its content there, however it is closed.
void OpenProtectorSelection(AppContext& app, SelectionState& state, HWND owner,
                            const std::string& path);

}  // namespace tonvale
