// The dialog SPETTRODPI: attenuation spectrum of a protector.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "protectors/spectrum_form.h"

namespace tonvale {

// Runs the dialog over `owner`. It shows `state`, or the data file at `path` when it is not empty,
// and keeps its content there when it closes.
void OpenAttenuationSpectrum(AppContext& app, SpectrumState& state, HWND owner,
                             const std::string& path);

}  // namespace tonvale
