#include "protectors/attenuation_spectrum_dialog.h"

#include <array>
#include <string>

#include "dialogs/data_file_session_win.h"
#include "protectors/band_tips_win.h"
#include "protectors/spectrum_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr auto kTips =
    Joined(Joined(AttenuationBandTips(IDC_BAND_FIRST), kRatingTips), std::to_array<ControlTip>({
                                                                         kStatusBarTip,
                                                                         kNotesTip,
                                                                     }));

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
