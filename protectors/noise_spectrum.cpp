#include "protectors/noise_spectrum.h"

namespace tonvale {

namespace {

constexpr std::array<SpectrumResult, 2> kWeightedLevels{{
    {"LAEQ", "Livello equivalente pesato A (dBA):", "Livello equivalente pesato A (dBA): "},
    {"LCEQ", "Livello equivalente pesato C (dBC):", "Livello equivalente pesato C (dBC): "},
}};

ReducedValues ReduceNoise(const OctaveSpectrum& levels_db) {
    const double laeq_dba = WeightedLevel(levels_db, Weighting::kA);
    const double lceq_dbc = WeightedLevel(levels_db, Weighting::kC);
    return {{{laeq_dba, laeq_dba}, {lceq_dbc, lceq_dbc}}};
}

constexpr SpectrumKind kNoiseSpectrum{
    .file_kind = FileKind::kSpr,
    .document_name = "Spettro rumore",
    .printout_title = "Spettro del rumore",
    .printout_column = "Livelli sonori non pesati (dBlin):",
    .printout_drawing_line = 16,
    .summary_title = "Spettro del rumore",
    .summary_column = "Livello (dB):",
    .chart = {.full_scale_db = 140},
    .number_width = 5,
    .results = kWeightedLevels,
    .reduce = ReduceNoise,
    .results_are_entries = false,
    .refusal_shows_text = false,
};

}  // namespace

const SpectrumKind& NoiseSpectrumKind() {
    return kNoiseSpectrum;
}

Assessment AssessNoiseSpectrum(const ProfileFile& file) {
    return AssessSpectrum(kNoiseSpectrum, file);
}

}  // namespace tonvale
