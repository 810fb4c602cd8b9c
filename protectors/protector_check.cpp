#include "protectors/protector_check.h"

#include <algorithm>
#include <cmath>

#include "common/numbers.h"

namespace tonvale {

namespace {

// By which the SNR is lowered when it is set against an A-weighted level, in dB.
constexpr double kSnrCorrection = 7;

// Up to here a level at the ear is low enough for the HML check, whatever the action level, in dBA.
constexpr double kHmlCheckLimit = 85;

constexpr std::array<CheckField, 2> kCorrectedSnrFields{CheckField::kLaeq, CheckField::kSnr};
constexpr std::array<CheckField, 2> kSnrFields{CheckField::kLceq, CheckField::kSnr};
constexpr std::array<CheckField, 4> kHmlCheckFields{CheckField::kLaeq, CheckField::kH,
                                                    CheckField::kM, CheckField::kL};
constexpr std::array<CheckField, 5> kHmlFields{CheckField::kLaeq, CheckField::kLceq, CheckField::kH,
                                               CheckField::kM, CheckField::kL};

constexpr std::array<CheckField, 2 * kOctaveBandCount> OctaveBandFields() {
    std::array<CheckField, 2 * kOctaveBandCount> fields{};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i] = BandField(CheckField::kNoiseBands, i);
    }
    return fields;
}
constexpr auto kOctaveBandFields = OctaveBandFields();

CheckOutcome RunCorrectedSnr(const CheckInputs& inputs) {
    const auto& values = inputs.values;
    return {CorrectedSnrLevel(values[CheckField::kLaeq], values[CheckField::kSnr]), {}};
}

CheckOutcome RunSnr(const CheckInputs& inputs) {
    const auto& values = inputs.values;
    return {SnrLevel(values[CheckField::kLceq], values[CheckField::kSnr]), {}};
}

CheckOutcome RunHmlCheck(const CheckInputs& inputs) {
    const auto& values = inputs.values;
    const HmlCheckLevel level =
        CheckHml(values[CheckField::kLaeq], values[CheckField::kH], values[CheckField::kM],
                 values[CheckField::kL], inputs.is_class_l);
    if (level.is_decided) return {level.level_dba, {}};
    return {level.level_dba,
            UserMessage{"Attenzione: non è possibile valutare la protezione offerta!",
                        "Ottenere maggiori informazioni sul rumore ed usare uno degli altri metodi "
                        "proposti"}};
}

CheckOutcome RunHml(const CheckInputs& inputs) {
    const auto& values = inputs.values;
    return {HmlLevel(values[CheckField::kLaeq], values[CheckField::kLceq], values[CheckField::kH],
                     values[CheckField::kM], values[CheckField::kL]),
            {}};
}

CheckOutcome RunOctaveBand(const CheckInputs& inputs) {
    return {OctaveBandLevel(SpectrumOf(inputs.values, CheckField::kNoiseBands),
                            SpectrumOf(inputs.values, CheckField::kProtectorBands)),
            {}};
}

constexpr std::array<CheckMethodInfo, kCheckMethodCount> kMethods{{
    {CheckMethod::kCorrectedSnr, "snr-corretto", "Metodo SNR corretto", "SNR corretto.",
     kCorrectedSnrFields, RunCorrectedSnr},
    {CheckMethod::kSnr, "snr", "Metodo SNR", "SNR.", kSnrFields, RunSnr},
    {CheckMethod::kHmlCheck, "hml-controllo", "Controllo HML", "Controllo HML.", kHmlCheckFields,
     RunHmlCheck},
    {CheckMethod::kHml, "hml", "Metodo HML", "HML.", kHmlFields, RunHml},
    {CheckMethod::kOctaveBand, "ottava", "Metodo banda d'ottava", "Banda d'ottava.",
     kOctaveBandFields, RunOctaveBand},
}};

}  // namespace

bool IsNoiseField(CheckField field) {
    return field < CheckField::kProtectorBands || field == CheckField::kLaeq ||
           field == CheckField::kLceq;
}

OctaveSpectrum SpectrumOf(const PerCheckField<double>& values, CheckField spectrum) {
    OctaveSpectrum bands;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) bands[i] = values[BandField(spectrum, i)];
    return bands;
}

double SnrLevel(double lceq_dbc, double snr) {
    return RoundHalvesUp(lceq_dbc - snr);
}

double CorrectedSnrLevel(double laeq_dba, double snr) {
    return RoundHalvesUp(laeq_dba - (snr - kSnrCorrection));
}

double OctaveBandLevel(const OctaveSpectrum& noise_db, const OctaveSpectrum& attenuation_db) {
    OctaveSpectrum at_ear_dba;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        at_ear_dba[i] = noise_db[i] + kOctaveBands[i].a_weighting_db - attenuation_db[i];
    }
    return RoundHalvesUp(EnergySum(at_ear_dba));
}

double HmlLevel(double laeq_dba, double lceq_dbc, double h, double m, double l) {
    const double difference = lceq_dbc - laeq_dba;
    // Above 2 dB the slope is that from H to L, not from M to L.
    const double slope = difference <= 2 ? (h - m) / 4 : (h - l) / 8;
    return laeq_dba - RoundHalvesUp(m - slope * (difference - 2));
}

HmlCheckLevel CheckHml(double laeq_dba, double h, double m, double l, bool is_class_l) {
    if (is_class_l) return {RoundHalvesUp(laeq_dba - l)};
    const double by_m = RoundHalvesUp(laeq_dba - m);
    if (by_m <= kHmlCheckLimit) return {by_m};
    const double by_h = RoundHalvesUp(laeq_dba - h);
    return {by_h, by_h > kHmlCheckLimit};
}

const std::array<CheckMethodInfo, kCheckMethodCount>& CheckMethods() {
    return kMethods;
}

const CheckMethodInfo& InfoOf(CheckMethod method) {
    return kMethods[static_cast<std::size_t>(method) - 1];
}

const CheckMethodInfo* FindCheckMethod(int number) {
    const auto* found = std::find_if(kMethods.begin(), kMethods.end(), [&](const auto& row) {
        return static_cast<int>(row.method) == number;
    });
    return found == kMethods.end() ? nullptr : found;
}

CheckOutcome RunCheck(const CheckMethodInfo& method, const CheckInputs& inputs) {
    const bool lacks_input =
        std::any_of(method.fields.begin(), method.fields.end(),
                    [&](CheckField field) { return inputs.values[field] == 0; });
    if (lacks_input) return {{}, UserMessage{"Errore", "Inserire valori numerici!"}};
    return method.run(inputs);
}

bool IsAvailable(CheckMethod method, const NoiseInformation& information) {
    if (information.has_spectrum) return true;
    switch (method) {
        case CheckMethod::kCorrectedSnr:
        case CheckMethod::kHmlCheck:
            return information.has_laeq;
        case CheckMethod::kSnr:
            return information.has_lceq;
        case CheckMethod::kHml:
            return information.has_laeq && information.has_lceq;
        case CheckMethod::kOctaveBand:
            return false;
    }
    return false;
}

ProtectionBand RateProtection(double effective_level_dba, double action_level_dba) {
    const double level = effective_level_dba;
    if (level <= action_level_dba - 15) return ProtectionBand::kTooHigh;
    if (level <= action_level_dba - 10) return ProtectionBand::kAcceptableLow;
    if (level <= action_level_dba - 5) return ProtectionBand::kGood;
    if (level <= action_level_dba) return ProtectionBand::kAcceptableHigh;
    return ProtectionBand::kInsufficient;
}

std::string_view RatingLabel(ProtectionBand band) {
    constexpr std::array<std::string_view, 5> kLabels{"INSUFFICIENTE.", "ACCETTABILE.", "BUONA.",
                                                      "ACCETTABILE.",
                                                      "TROPPO ALTA (IPERPROTEZIONE)."};
    return kLabels[static_cast<std::size_t>(band)];
}

std::string ResultText(double effective_level_dba, double action_level_dba) {
    std::string text =
        "Con l'otoprotettore scelto, il livello di pressione sonora "
        "equivalente risultante all'orecchio del lavoratore è pari a ";
    text += FormatFixed(effective_level_dba, 4, 1);
    text += " dBA.\r\nIl livello d'azione è ";
    text += FormatFixed(action_level_dba, 4, 1);
    text += " dBA.\r\nLa protezione offerta dal DPI è da ritenersi ";
    text += RatingLabel(RateProtection(effective_level_dba, action_level_dba));
    return text;
}

std::array<bool, kProtectorKinds.size()> RecommendedKinds(bool unfavourable_conditions,
                                                          bool repetitive_short_noises) {
    return {!unfavourable_conditions, unfavourable_conditions, !unfavourable_conditions,
            !repetitive_short_noises};
}

}  // namespace tonvale
