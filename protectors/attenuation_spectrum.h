// Attenuation spectrum of a hearing protector (.spi): octave-band attenuations reduced to the
// single-number ratings H, M, L and SNR.
#pragma once

#include <string>
#include <vector>

#include "protectors/spectrum_form.h"

namespace tonvale {

// Single-number ratings of a protector, in dB.
struct ProtectorRatings {
    double h = 0;
    double m = 0;
    double l = 0;
    double snr = 0;
};

// Ratings that follow from a spectrum.
struct ComputedRatings {
    ProtectorRatings exact;
    // In whole decibels, as they are declared: 0.5 added, then truncated. An SNR below 1, and what
    // is not finite, is 0: none.
    ProtectorRatings rounded;
};

// The ratings of a protector whose assumed protection values in the seven bands are given, in dB:
// H, M and L by eight reference noises, SNR by the reference pink noise (ISO 4869-2).
ComputedRatings ComputeRatings(const OctaveSpectrum& protection_db);

// The declared ratings that differ from those of the spectrum by more than 1 dB, an Italian text
// each ("H 25.0 invece di 31.0"). A rating of 0 is not declared; without any attenuation there is
// no spectrum that ratings could follow from.
std::vector<std::string> AuditRatings(const ProtectorRatings& declared,
                                      const OctaveSpectrum& protection_db);

// The audit's texts as one sentence of a finding; there is at least one.
std::string DescribeAudit(const std::vector<std::string>& differences);

const SpectrumKind& AttenuationSpectrumKind();

// Recomputes an .spi file; the findings audit its declared ratings.
Assessment AssessAttenuationSpectrum(const ProfileFile& file);

}  // namespace tonvale
