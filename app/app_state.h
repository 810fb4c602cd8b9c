// What the calculators keep for the life of the program (nothing of it goes into a file).
#pragma once

#include <string>

#include "exposure/daily_exposure.h"

namespace tonvale {

struct AppState {
    DailyExposureState daily_exposure;
    std::string print_notes;  // at most 1,023 characters, at the foot of the views' printouts
};

}  // namespace tonvale
