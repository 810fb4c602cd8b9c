#include "app/calculator_table.h"

#include <algorithm>
#include <array>

#include "exposure/daily_exposure.h"
#include "exposure/weekly_exposure.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr std::array<CalculatorInfo, 9> kCalculators{{
    {FileKind::kLepd, CMD_DAILY_EXPOSURE, AssessDailyExposure},
    {FileKind::kLepw, CMD_WEEKLY_EXPOSURE, AssessWeeklyExposure},
    {FileKind::kLeg, CMD_GROUP_STATISTICS, nullptr},
    {FileKind::kIlg, CMD_AUDIOGRAM_DAMAGE, nullptr},
    {FileKind::kSpr, CMD_NOISE_SPECTRUM, nullptr},
    {FileKind::kSpi, CMD_ATTENUATION_SPECTRUM, nullptr},
    {FileKind::kDpi, CMD_PROTECTOR_SELECTION, nullptr},
    {FileKind::kErr, CMD_UNCERTAINTY, nullptr},
    {FileKind::kReport, CMD_NEW_DOCUMENT, nullptr},
}};

}  // namespace

const CalculatorInfo& CalculatorOf(FileKind kind) {
    return *std::find_if(kCalculators.begin(), kCalculators.end(),
                         [kind](const CalculatorInfo& row) { return row.kind == kind; });
}

const CalculatorInfo* CalculatorOfFile(const ProfileFile& file) {
    const auto* row =
        std::find_if(kCalculators.begin(), kCalculators.end(),
                     [&](const CalculatorInfo& info) { return HasKind(file, info.kind); });
    return row == kCalculators.end() ? nullptr : row;
}

}  // namespace tonvale
