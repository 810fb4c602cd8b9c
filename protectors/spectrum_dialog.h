// The dialogs SPETTRORUM and SPETTRODPI: spectrum of a noise, attenuation spectrum of a protector.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"
#include "protectors/spectrum_form.h"

namespace tonvale {

// Each runs its dialog over `owner`. It shows `state`, of the kind of its dialog, or the data file
// at `path` when it is not empty, and keeps its content there when it closes.
void OpenNoiseSpectrum(AppContext& app, SpectrumState& state, HWND owner, const std::string& path);
void OpenAttenuationSpectrum(AppContext& app, SpectrumState& state, HWND owner,
                             const std::string& path);

}  // namespace tonvale
