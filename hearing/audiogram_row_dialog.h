// The dialog EDIT_ILG: the hearing losses at one frequency.
#pragma once

#include <windows.h>

#include "dialogs/app_context_win.h"
#include "hearing/audiogram_damage.h"

namespace tonvale {

// Lets the user edit a row of the audiogram, and whether the whole loss is symmetric. True when the
// user confirms or deletes it; both are then changed.
bool EditAudiogramRow(AppContext& app, HWND owner, int frequency_hz, AudiogramRow& row,
                      bool& is_symmetric);

}  // namespace tonvale
