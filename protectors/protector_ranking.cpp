#include "protectors/protector_ranking.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "common/file_system.h"
#include "common/numbers.h"
#include "protectors/attenuation_spectrum.h"

namespace tonvale {

namespace {

// Noise of class L has an LCeq this far above its LAeq, in dB.
constexpr double kClassLDifference = 5;

std::size_t PlaceOf(CheckMethod method) {
    return static_cast<std::size_t>(method) - 1;
}

void WarnOfDeclaredRatings(RankedProtector& protector) {
    const auto& values = protector.values;
    const OctaveSpectrum protection_db = SpectrumOf(values, CheckField::kProtectorBands);
    const auto differences = AuditRatings({.h = values[CheckField::kH],
                                           .m = values[CheckField::kM],
                                           .l = values[CheckField::kL],
                                           .snr = values[CheckField::kSnr]},
                                          protection_db);
    if (!differences.empty()) protector.warnings.push_back(DescribeAudit(differences));
}

std::string DescribeLevel(const CheckMethodInfo& method, const RankedLevel& level) {
    return std::string(method.name) + " " + FormatFixed(level.level_dba, 0, 1) + " dBA (" +
           std::string(ShortLabel(level.band)) + ")";
}

// Methods disagree when their bands are not neighbours.
void WarnOfDisagreement(RankedProtector& protector) {
    const CheckMethodInfo* lowest = nullptr;
    const CheckMethodInfo* highest = nullptr;
    const auto level_of = [&](const CheckMethodInfo& method) -> const RankedLevel& {
        return *protector.levels[PlaceOf(method.method)];
    };
    for (const CheckMethodInfo& method : CheckMethods()) {
        if (!protector.levels[PlaceOf(method.method)]) continue;
        const ProtectionBand band = level_of(method).band;
        if (lowest == nullptr || band < level_of(*lowest).band) lowest = &method;
        if (highest == nullptr || band > level_of(*highest).band) highest = &method;
    }
    if (lowest == nullptr) return;
    const int steps =
        static_cast<int>(level_of(*highest).band) - static_cast<int>(level_of(*lowest).band);
    if (steps <= 1) return;
    protector.warnings.push_back(
        "i metodi discordano: " + DescribeLevel(*lowest, level_of(*lowest)) + ", " +
        DescribeLevel(*highest, level_of(*highest)));
}

// Best first.
int OrderOf(ProtectionBand band) {
    constexpr std::array<int, 5> kOrder{4, 1, 0, 2, 3};  // from insufficient to too high
    return kOrder[static_cast<std::size_t>(band)];
}

// What protectors are compared by, in turn: no level, band, distance from the best level, name of
// the file, its path; then where the protector stands.
using SortKey = std::tuple<bool, int, double, std::string_view, std::string_view, std::size_t>;

}  // namespace

std::string_view ShortLabel(ProtectionBand band) {
    const std::string_view label = RatingLabel(band);
    return label.substr(0, std::min(label.find(" ("), label.find('.')));
}

NoiseInformation InformationOf(const CheckInputs& noise) {
    const OctaveSpectrum spectrum = SpectrumOf(noise.values, CheckField::kNoiseBands);
    return {.has_spectrum = std::find(spectrum.begin(), spectrum.end(), 0.0) == spectrum.end(),
            .has_lceq = noise.values[CheckField::kLceq] != 0,
            .has_laeq = noise.values[CheckField::kLaeq] != 0};
}

bool IsClassL(const CheckInputs& noise) {
    const double lceq_dbc = noise.values[CheckField::kLceq];
    return lceq_dbc != 0 && lceq_dbc - noise.values[CheckField::kLaeq] > kClassLDifference;
}

std::optional<CheckMethod> MostExactMethod(const NoiseInformation& information) {
    for (const CheckMethod method : {CheckMethod::kOctaveBand, CheckMethod::kHml, CheckMethod::kSnr,
                                     CheckMethod::kCorrectedSnr}) {
        if (IsAvailable(method, information)) return method;
    }
    return std::nullopt;
}

RankedProtector CheckForRanking(const RankingTask& task, std::string file,
                                const PerCheckField<double>& protector) {
    RankedProtector ranked{std::move(file), protector};
    CheckInputs inputs = task.noise;
    for (std::size_t i = 0; i < kCheckFieldCount; ++i) {
        const auto field = static_cast<CheckField>(i);
        if (!IsNoiseField(field)) inputs.values[field] = protector[field];
    }
    const NoiseInformation information = InformationOf(task.noise);
    WarnOfDeclaredRatings(ranked);
    for (const CheckMethodInfo& method : CheckMethods()) {
        if (!IsAvailable(method.method, information)) continue;
        const CheckOutcome outcome = RunCheck(method, inputs);
        if (!outcome.level_dba || std::isnan(*outcome.level_dba)) continue;
        if (outcome.refusal) {
            ranked.warnings.push_back(std::string(method.name) + ": " + outcome.refusal->text);
            continue;
        }
        ranked.levels[PlaceOf(method.method)] = {
            *outcome.level_dba, RateProtection(*outcome.level_dba, task.action_level_dba)};
    }
    WarnOfDisagreement(ranked);
    return ranked;
}

void SortBestFirst(const RankingTask& task, std::vector<RankedProtector>& protectors) {
    const double best_dba = task.action_level_dba - kBestMargin;
    std::vector<SortKey> keys;
    keys.reserve(protectors.size());
    for (std::size_t i = 0; i < protectors.size(); ++i) {
        const auto& level = protectors[i].levels[PlaceOf(task.deciding_method)];
        keys.emplace_back(!level, level ? OrderOf(level->band) : 0,
                          level ? std::fabs(level->level_dba - best_dba) : 0.0,
                          FileName(protectors[i].file), protectors[i].file, i);
    }
    std::sort(keys.begin(), keys.end());
    std::vector<RankedProtector> sorted;
    sorted.reserve(protectors.size());
    for (const SortKey& key : keys) {
        sorted.push_back(std::move(protectors[std::get<std::size_t>(key)]));
    }
    protectors = std::move(sorted);
}

}  // namespace tonvale
