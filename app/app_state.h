// What the calculators keep for the life of the program (nothing of it goes into a file).
#pragma once

#include <string>

#include "exposure/daily_exposure.h"
#include "exposure/group_exposure.h"
#include "exposure/uncertainty_study.h"
#include "exposure/weekly_exposure.h"
#include "hearing/audiogram_damage.h"
#include "hearing/damage_evolution.h"
#include "hearing/damage_risk.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/noise_spectrum.h"
#include "protectors/protector_selection.h"

namespace tonvale {

struct AppState {
    DailyExposureState daily_exposure;
    WeeklyExposureState weekly_exposure;
    GroupExposureState group_exposure;
    UncertaintyStudy uncertainty;
    SpectrumState noise_spectrum{NoiseSpectrumKind()};
    SpectrumState attenuation_spectrum{AttenuationSpectrumKind()};
    SelectionState protector_selection;
    AudiogramDamageState audiogram_damage;
    LossPredictionState loss_prediction;
    LossComparisonState loss_comparison;
    DamageEvolutionState damage_evolution;
    DamageRisk damage_risk;
    std::string print_notes;  // at most 1,023 characters, at the foot of the views' printouts
};

}  // namespace tonvale
