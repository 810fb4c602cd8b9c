// The dialog CALCOLOILG: the damage of a person's hearing from an audiogram.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "hearing/audiogram_damage.h"

namespace tonvale {

// Runs the dialog on the kept `state`. A path that is not empty is loaded while it opens.
void OpenAudiogramDamage(AppContext& app, AudiogramDamageState& state, HWND owner,
                         const std::string& path);

}  // namespace tonvale
