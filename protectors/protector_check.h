// Whether a hearing protector suits a noise: the level at the ear by five methods, its rating
// against an action level (EN 458), and the kinds of protector that the work suggests.
//
// An input of exactly 0 is not given, throughout.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "common/user_message.h"
#include "protectors/octave_bands.h"

namespace tonvale {

// --- What a check needs to know ------------------------------------------------------------------

// The numbers about noise and protector, all in dB. Each spectrum has a number a band.
enum class CheckField : std::size_t {
    kNoiseBands = 0,
    kProtectorBands = kNoiseBands + kOctaveBandCount,
    kLaeq = kProtectorBands + kOctaveBandCount,
    kLceq,
    kH,
    kM,
    kL,
    kSnr,
};
inline constexpr std::size_t kCheckFieldCount = static_cast<std::size_t>(CheckField::kSnr) + 1;

// The field of band `band` of a spectrum, given by its first field.
constexpr CheckField BandField(CheckField spectrum, std::size_t band) {
    return static_cast<CheckField>(static_cast<std::size_t>(spectrum) + band);
}

// True of noise levels, false of what describes a protector.
bool IsNoiseField(CheckField field);

// Something for each field.
template <typename Value>
class PerCheckField {
  public:
    Value& operator[](CheckField field) { return values_[static_cast<std::size_t>(field)]; }
    const Value& operator[](CheckField field) const {
        return values_[static_cast<std::size_t>(field)];
    }

  private:
    std::array<Value, kCheckFieldCount> values_{};
};

struct CheckInputs {
    PerCheckField<double> values;
    // Noise class of the HML check: L (LCeq - LAeq above 5 dB), or else HM.
    bool is_class_l = false;
};

OctaveSpectrum SpectrumOf(const PerCheckField<double>& values, CheckField spectrum);

// --- Methods -------------------------------------------------------------------------------------

// Effective A-weighted levels at the ear in dBA, L'Aeq, rounded by RoundHalvesUp (ISO 4869-2,
// EN 458). Levels in dBA or dBC, ratings and attenuations in dB.
double SnrLevel(double lceq_dbc, double snr);
// The SNR is lowered by 7 dB where the A-weighted level alone is known.
double CorrectedSnrLevel(double laeq_dba, double snr);
double OctaveBandLevel(const OctaveSpectrum& noise_db, const OctaveSpectrum& attenuation_db);
// Only the predicted noise reduction is rounded: the level keeps the fraction of LAeq.
double HmlLevel(double laeq_dba, double lceq_dbc, double h, double m, double l);

struct HmlCheckLevel {
    double level_dba = 0;
    bool is_decided = true;  // false: the check cannot tell whether the protection is enough
};
HmlCheckLevel CheckHml(double laeq_dba, double h, double m, double l, bool is_class_l);

// The numbers by which data files know the methods.
enum class CheckMethod { kCorrectedSnr = 1, kSnr, kHmlCheck, kHml, kOctaveBand };
inline constexpr std::size_t kCheckMethodCount = 5;

struct CheckOutcome {
    std::optional<double> level_dba;     // what the method arrives at, even if it then refuses
    std::optional<UserMessage> refusal;  // why it cannot tell
};

struct CheckMethodInfo {
    CheckMethod method;
    std::string_view name;               // on command lines and in JSON
    std::string_view title;              // of its page
    std::string_view printed_name;       // with its point
    std::span<const CheckField> fields;  // all it needs, in the order of its page
    CheckOutcome (*run)(const CheckInputs& inputs);
};

// In the order of their numbers.
const std::array<CheckMethodInfo, kCheckMethodCount>& CheckMethods();
const CheckMethodInfo& InfoOf(CheckMethod method);
// The method of a number of a data file; nullptr when it stands for none.
const CheckMethodInfo* FindCheckMethod(int number);

// Runs a method on its inputs; it refuses an input of 0.
CheckOutcome RunCheck(const CheckMethodInfo& method, const CheckInputs& inputs);

// What is known of the noise.
struct NoiseInformation {
    bool has_spectrum = false;
    bool has_lceq = false;
    bool has_laeq = false;
};
bool IsAvailable(CheckMethod method, const NoiseInformation& information);

// --- Rating --------------------------------------------------------------------------------------

// The bands of the level at the ear, from the action level downwards (EN 458).
enum class ProtectionBand { kInsufficient, kAcceptableHigh, kGood, kAcceptableLow, kTooHigh };

inline constexpr std::array<double, 3> kActionLevels{80, 85, 90};  // dBA
// How far below the action level the middle of the good band lies, in dB.
inline constexpr double kBestMargin = 7.5;

// What is not a number is insufficient.
ProtectionBand RateProtection(double effective_level_dba, double action_level_dba);
// The Italian label, with its point.
std::string_view RatingLabel(ProtectionBand band);

// What the results page tells; lines parted by CR LF.
std::string ResultText(double effective_level_dba, double action_level_dba);

// --- Kinds of protector --------------------------------------------------------------------------

inline constexpr std::array<std::string_view, 4> kProtectorKinds{
    "Cuffie", "Cuffie con cuscinetti ricoperti o imbottiti", "Inserti con archetto",
    "Inserti monouso"};

// Which of kProtectorKinds the work suggests: `unfavourable_conditions` are heat, humidity or dust,
// `repetitive_short_noises` a repeated exposure to short noises.
std::array<bool, kProtectorKinds.size()> RecommendedKinds(bool unfavourable_conditions,
                                                          bool repetitive_short_noises);

}  // namespace tonvale
