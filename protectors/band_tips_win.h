// The tips of the fields that octave bands are typed in.
#pragma once

#include <array>

#include "dialogs/dialog_win.h"
#include "protectors/octave_bands.h"
#include "resources/resource.h"

namespace tonvale {

inline constexpr std::array<ControlTip, kOctaveBandCount> kNoiseBandTips{{
    {IDC_BAND_FIRST, L"Inserire il valore del livello di rumore a 125 Hz"},
    {IDC_BAND_FIRST + 1, L"Inserire il valore del livello di rumore a 250 Hz"},
    {IDC_BAND_FIRST + 2, L"Inserire il valore del livello di rumore a 500 Hz"},
    {IDC_BAND_FIRST + 3, L"Inserire il valore del livello di rumore a 1000 Hz"},
    {IDC_BAND_FIRST + 4, L"Inserire il valore del livello di rumore a 2000 Hz"},
    {IDC_BAND_FIRST + 5, L"Inserire il valore del livello di rumore a 4000 Hz"},
    {IDC_BAND_FIRST + 6, L"Inserire il valore del livello di rumore a 8000 Hz"},
}};

// `first` is the control of the first band.
constexpr std::array<ControlTip, kOctaveBandCount> AttenuationBandTips(int first) {
    return {{
        {first, L"Inserire il valore del livello di attenuazione a 125 Hz"},
        {first + 1, L"Inserire il valore del livello di attenuazione a 250 Hz"},
        {first + 2, L"Inserire il valore del livello di attenuazione a 500 Hz"},
        {first + 3, L"Inserire il valore del livello di attenuazione a 1000 Hz"},
        {first + 4, L"Inserire il valore del livello di attenuazione a 2000 Hz"},
        {first + 5, L"Inserire il valore del livello di attenuazione a 4000 Hz"},
        {first + 6, L"Inserire il valore del livello di attenuazione a 8000 Hz"},
    }};
}

inline constexpr std::array<ControlTip, 4> kRatingTips{{
    {IDC_RATING_SNR, L"Inserire il valore del livello di attenuazione SNR"},
    {IDC_RATING_H, L"Inserire il valore del livello di attenuazione H"},
    {IDC_RATING_M, L"Inserire il valore del livello di attenuazione M"},
    {IDC_RATING_L, L"Inserire il valore del livello di attenuazione L"},
}};

}  // namespace tonvale
