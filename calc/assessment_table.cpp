#include "calc/assessment_table.h"

#include <algorithm>
#include <array>

#include "exposure/daily_exposure.h"
#include "exposure/group_exposure.h"
#include "exposure/uncertainty_report.h"
#include "exposure/weekly_exposure.h"
#include "hearing/audiogram_damage.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/noise_spectrum.h"
#include "protectors/protector_selection.h"

namespace tonvale {

namespace {

constexpr std::array<AssessedKind, 8> kAssessedKinds{{
    {FileKind::kLepd, AssessDailyExposure},
    {FileKind::kLepw, AssessWeeklyExposure},
    {FileKind::kLeg, AssessGroupExposure},
    {FileKind::kIlg, AssessAudiogramDamage},
    {FileKind::kSpr, AssessNoiseSpectrum},
    {FileKind::kSpi, AssessAttenuationSpectrum},
    {FileKind::kDpi, AssessProtectorSelection},
    {FileKind::kErr, AssessUncertainty},
}};

}  // namespace

const AssessedKind* AssessedKindOf(const ProfileFile& file) {
    const auto* row =
        std::find_if(kAssessedKinds.begin(), kAssessedKinds.end(),
                     [&](const AssessedKind& candidate) { return HasKind(file, candidate.kind); });
    return row == kAssessedKinds.end() ? nullptr : row;
}

}  // namespace tonvale
