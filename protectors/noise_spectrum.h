// Noise spectrum (.spr): octave-band levels reduced to the A- and C-weighted levels.
#pragma once

#include "protectors/spectrum_form.h"

namespace tonvale {

// Places of the results of a noise spectrum.
inline constexpr std::size_t kLaeqResult = 0;
inline constexpr std::size_t kLceqResult = 1;

const SpectrumKind& NoiseSpectrumKind();

// Recomputes a .spr file.
Assessment AssessNoiseSpectrum(const ProfileFile& file);

}  // namespace tonvale
