#include "protectors/attenuation_spectrum.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "common/numbers.h"

namespace tonvale {

namespace {

// Sound level of the reference noises.
constexpr double kReferenceLevel = 100;

// A-weighted band levels of the reference noises of ISO 4869-2, from the highest frequencies to
// the lowest, each 100 dB(A); H follows from the first four, M and L from the others.
constexpr std::size_t kHalf = 4;
constexpr std::array<OctaveSpectrum, 2 * kHalf> kReferenceNoises{{
    {62.6, 70.8, 81.0, 90.4, 96.2, 94.7, 92.3},
    {68.9, 78.3, 84.3, 92.8, 96.3, 94.0, 90.0},
    {71.1, 80.8, 88.0, 95.0, 94.4, 94.1, 89.0},
    {77.2, 84.5, 89.8, 95.5, 94.3, 92.5, 88.8},
    {77.4, 86.5, 92.5, 96.4, 93.0, 90.4, 83.7},
    {82.0, 89.4, 93.5, 95.6, 93.0, 90.1, 83.0},
    {84.2, 90.1, 93.6, 96.2, 91.3, 87.9, 81.9},
    {88.0, 93.4, 93.8, 94.2, 91.4, 87.9, 79.9},
}};
// The standard's constants d of the reference noises.
constexpr std::array<double, 2 * kHalf> kNoiseConstants{-1.20, -0.49, 0.14, 1.56,
                                                        -2.98, -1.01, 0.85, 3.14};

// A-weighted band levels of a pink noise of 100 dB(C) (ISO 4869-2).
constexpr OctaveSpectrum kPinkNoise{75.4, 82.9, 88.3, 91.5, 92.7, 92.5, 90.4};

constexpr double kTolerance = 1;  // dB between a declared rating and its spectrum's

double LevelAtTheEar(const OctaveSpectrum& noise_dba, const OctaveSpectrum& protection_db) {
    OctaveSpectrum at_ear;
    std::transform(noise_dba.begin(), noise_dba.end(), protection_db.begin(), at_ear.begin(),
                   std::minus<>());
    return EnergySum(at_ear);
}

// Sums over the predicted noise level reductions of four reference noises.
struct ReductionSums {
    double plain = 0;
    double weighted = 0;  // with the noises' constants
};

ReductionSums SumReductions(std::size_t first_noise, const OctaveSpectrum& protection_db) {
    ReductionSums sums;
    for (std::size_t k = first_noise; k < first_noise + kHalf; ++k) {
        const double reduction =
            kReferenceLevel - LevelAtTheEar(kReferenceNoises[k], protection_db);
        sums.plain += reduction;
        sums.weighted += kNoiseConstants[k] * reduction;
    }
    return sums;
}

// What is not finite is no rating.
double Truncated(double rating) {
    return std::isfinite(rating) ? std::trunc(rating) : 0;
}

double RoundedSnr(double level_at_ear) {
    if (level_at_ear >= kReferenceLevel - 1) return 0;
    return Truncated(kReferenceLevel + 0.5 - level_at_ear);
}

// The four ratings, in the order of the data file.
constexpr std::array<double ProtectorRatings::*, kMaxSpectrumResults> kRatings{
    &ProtectorRatings::h, &ProtectorRatings::m, &ProtectorRatings::l, &ProtectorRatings::snr};
constexpr std::array<SpectrumResult, kMaxSpectrumResults> kRatingTexts{{
    {"H", "Attenuazione H (dB):", "Valore di attenuazione H (dB):"},
    {"M", "Attenuazione M (dB):", "Valore di attenuazione M (dB):"},
    {"L", "Attenuazione L (dB):", "Valore di attenuazione L (dB):"},
    {"SNR", "Attenuazione SNR (dB):", "Valore di attenuazione SNR (dB):"},
}};

ReducedValues ReduceAttenuation(const OctaveSpectrum& protection_db) {
    const ComputedRatings ratings = ComputeRatings(protection_db);
    ReducedValues values;
    for (std::size_t i = 0; i < kRatings.size(); ++i) {
        values[i] = {ratings.exact.*kRatings[i], ratings.rounded.*kRatings[i]};
    }
    return values;
}

constexpr SpectrumKind kAttenuationSpectrum{
    .file_kind = FileKind::kSpi,
    .document_name = "Spettro DPI",
    .printout_title = "Spettro del DPI",
    .printout_column = "Attenuazione del DPI (dB):",
    .printout_drawing_line = 18,
    .summary_title = "Spettro di attenuazione",
    .summary_column = "Attenuazione (dB):",
    .chart = {.full_scale_db = 60},
    .number_width = 4,
    .results = kRatingTexts,
    .reduce = ReduceAttenuation,
    .results_are_entries = true,
    .refusal_shows_text = true,
};

}  // namespace

ComputedRatings ComputeRatings(const OctaveSpectrum& protection_db) {
    const ReductionSums high = SumReductions(0, protection_db);
    const ReductionSums low = SumReductions(kHalf, protection_db);
    const double pink_at_ear = LevelAtTheEar(kPinkNoise, protection_db);
    const ProtectorRatings exact{.h = 0.25 * high.plain - 0.48 * high.weighted,
                                 .m = 0.25 * low.plain - 0.16 * low.weighted,
                                 .l = 0.25 * low.plain + 0.23 * low.weighted,
                                 .snr = kReferenceLevel - pink_at_ear};
    return {exact,
            {.h = Truncated(exact.h + 0.5),
             .m = Truncated(exact.m + 0.5),
             .l = Truncated(exact.l + 0.5),
             .snr = RoundedSnr(pink_at_ear)}};
}

std::vector<std::string> AuditRatings(const ProtectorRatings& declared,
                                      const OctaveSpectrum& protection_db) {
    std::vector<std::string> differences;
    const auto is_zero = [](double value) { return value == 0; };
    if (std::all_of(protection_db.begin(), protection_db.end(), is_zero)) return differences;
    const ProtectorRatings computed = ComputeRatings(protection_db).rounded;
    for (std::size_t i = 0; i < kRatings.size(); ++i) {
        const double rating = declared.*kRatings[i];
        const double expected = computed.*kRatings[i];
        // Not a number at all is a difference too.
        if (rating == 0 || std::fabs(rating - expected) <= kTolerance) continue;
        differences.push_back(std::string(kRatingTexts[i].key) + " " + FormatFixed(rating, 0, 1) +
                              " invece di " + FormatFixed(expected, 0, 1));
    }
    return differences;
}

std::string DescribeAudit(const std::vector<std::string>& differences) {
    std::string text = "valori dichiarati che distano più di 1 dB dallo spettro: ";
    for (std::size_t i = 0; i < differences.size(); ++i) {
        if (i > 0) text += ", ";
        text += differences[i];
    }
    return text;
}

const SpectrumKind& AttenuationSpectrumKind() {
    return kAttenuationSpectrum;
}

Assessment AssessAttenuationSpectrum(const ProfileFile& file) {
    Assessment assessment = AssessSpectrum(kAttenuationSpectrum, file);
    SpectrumForm form(kAttenuationSpectrum);
    LoadForm(file, form);
    ProtectorRatings declared;
    for (std::size_t i = 0; i < kRatings.size(); ++i) {
        declared.*kRatings[i] = ParseNumber(form.results[i]);
    }
    CompleteLoad(form);
    if (!IsComplete(form)) return assessment;
    const std::vector<std::string> differences = AuditRatings(declared, BandLevels(form));
    if (!differences.empty()) assessment.findings.push_back(DescribeAudit(differences));
    return assessment;
}

}  // namespace tonvale
