#include "protectors/attenuation_spectrum_dialog.h"

#include <string>

#include "dialogs/data_file_session_win.h"
#include "protectors/spectrum_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kTips[] = {
    {IDC_BAND_FIRST, L"Inserire il valore del livello di attenuazione a 125 Hz"},
    {IDC_BAND_FIRST + 1, L"Inserire il valore del livello di attenuazione a 250 Hz"},
    {IDC_BAND_FIRST + 2, L"Inserire il valore del livello di attenuazione a 500 Hz"},
    {IDC_BAND_FIRST + 3, L"Inserire il valore del livello di attenuazione a 1000 Hz"},
    {IDC_BAND_FIRST + 4, L"Inserire il valore del livello di attenuazione a 2000 Hz"},
    {IDC_BAND_FIRST + 5, L"Inserire il valore del livello di attenuazione a 4000 Hz"},
    {IDC_BAND_FIRST + 6, L"Inserire il valore del livello di attenuazione a 8000 Hz"},
    {IDC_RATING_SNR, L"Inserire il valore del livello di attenuazione SNR"},
    {IDC_RATING_H, L"Inserire il valore del livello di attenuazione H"},
    {IDC_RATING_M, L"Inserire il valore del livello di attenuazione M"},
    {IDC_RATING_L, L"Inserire il valore del livello di attenuazione L"},
    kStatusBarTip,
    kNotesTip,
};

constexpr auto kLimits =
    WithBandRows<ControlTextLimit>(kBandLimit, {{IDC_RATING_H, kBandFieldCharacters},
                                                {IDC_RATING_M, kBandFieldCharacters},
                                                {IDC_RATING_L, kBandFieldCharacters},
                                                {IDC_RATING_SNR, kBandFieldCharacters},
                                                kNotesLimit});

constexpr auto kColors = WithBandRows<ControlColors>(
    {0, Surface::kWhite, kBlueText}, {{IDC_RATING_H, Surface::kWhite, kBlueText},
                                      {IDC_RATING_M, Surface::kWhite, kBlueText},
                                      {IDC_RATING_L, Surface::kWhite, kBlueText},
                                      {IDC_RATING_SNR, Surface::kWhite, kBlueText}});

constexpr auto kHelp = WithBandRows<ControlHelp>({0, kHelpAttenuationBands},
                                                 {{IDC_RATING_H, kHelpAttenuationHml},
                                                  {IDC_RATING_M, kHelpAttenuationHml},
                                                  {IDC_RATING_L, kHelpAttenuationHml},
                                                  {IDC_RATING_SNR, kHelpAttenuationSnr},
                                                  {IDC_NOTES_EDIT, kHelpAttenuationNotes},
                                                  {IDC_STATUS_BAR, kHelpAttenuationStatusBar}});

constexpr DialogDescription kDescription = {
    .template_name = L"SPETTRODPI",
    .tips = kTips,
    .text_limits = kLimits,
    .colors = kColors,
    .help = kHelp,
    .main_help_context = kHelpAttenuationSpectrum,
    .accepts_files = true,
};

constexpr SpectrumControls kControls{kDescription, IDC_RATING_H, false};

}  // namespace

void OpenAttenuationSpectrum(AppContext& app, SpectrumState& state, HWND owner,
                             const std::string& path) {
    RunSpectrumDialog(app, kControls, state, owner, path);
}

}  // namespace tonvale
