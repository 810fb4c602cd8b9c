// Which of many hearing protectors suit a noise best.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "protectors/protector_check.h"

namespace tonvale {

struct RankingTask {
    CheckInputs noise;  // its noise fields and its class
    double action_level_dba = 85;
    CheckMethod deciding_method = CheckMethod::kOctaveBand;
};

// What is known of the noise: a spectrum has all its bands.
NoiseInformation InformationOf(const CheckInputs& noise);

// The class by the difference of the levels; HM where LCeq is not known.
bool IsClassL(const CheckInputs& noise);

// The method that decides unless another is asked for: the most exact that the information allows.
// nullopt when it allows none.
std::optional<CheckMethod> MostExactMethod(const NoiseInformation& information);

// The label of a band in a table: without its point and without what stands in brackets.
std::string_view ShortLabel(ProtectionBand band);

struct RankedLevel {
    double level_dba = 0;  // at the ear
    ProtectionBand band = ProtectionBand::kInsufficient;
};

struct RankedProtector {
    std::string file;
    PerCheckField<double> values;  // its ratings and attenuations; 0: not given
    // In the order of the methods; none where the noise or the protector lacks what one needs, or
    // where it cannot tell.
    std::array<std::optional<RankedLevel>, kCheckMethodCount> levels{};
    std::vector<std::string> warnings{};  // Italian
};

// Checks a protector by every method that the information about the noise allows.
RankedProtector CheckForRanking(const RankingTask& task, std::string file,
                                const PerCheckField<double>& protector);

// Best first by the deciding method: the good band, the acceptable ones (the one nearer to the
// action level first), the too high, the insufficient; within a band the level nearest to the
// middle of the good one; equal ones and those that it cannot tell of by the name of their file.
void SortBestFirst(const RankingTask& task, std::vector<RankedProtector>& protectors);

}  // namespace tonvale
