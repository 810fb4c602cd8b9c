#include "protectors/noise_spectrum_dialog.h"

#include <array>
#include <string>

#include "dialogs/data_file_session_win.h"
#include "protectors/band_tips_win.h"
#include "protectors/spectrum_dialog.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr auto kTips = Joined(
    kNoiseBandTips, std::to_array<ControlTip>({
                        {IDC_A_WEIGHTED_LEVEL, L"Livello equivalente pesato A dello spettro"},
                        {IDC_C_WEIGHTED_LEVEL, L"Livello equivalente pesato C dello spettro"},
                        kStatusBarTip,
                        kNotesTip,
                    }));

constexpr auto kLimits = WithBandRows<ControlTextLimit>(kBandLimit, {kNotesLimit});
constexpr auto kColors = WithBandRows<ControlColors>(
    {0, Surface::kWhite, kRedText}, {{IDC_A_WEIGHTED_LEVEL, Surface::kMenu, kRedText},
                                     {IDC_C_WEIGHTED_LEVEL, Surface::kMenu, kRedText}});
constexpr auto kHelp =
    WithBandRows<ControlHelp>({0, kHelpNoiseBands}, {{IDC_A_WEIGHTED_LEVEL, kHelpNoiseALevel},
                                                     {IDC_C_WEIGHTED_LEVEL, kHelpNoiseCLevel},
                                                     {IDC_NOTES_EDIT, kHelpNoiseNotes},
                                                     {IDC_STATUS_BAR, kHelpNoiseStatusBar}});
constexpr DialogDescription kDescription = {
    .template_name = L"SPETTRORUM",
    .tips = kTips,
    .text_limits = kLimits,
    .colors = kColors,
    .help = kHelp,
    .main_help_context = kHelpNoiseSpectrum,
    .accepts_files = true,
};

constexpr SpectrumControls kControls{kDescription, IDC_A_WEIGHTED_LEVEL, true};

}  // namespace

void OpenNoiseSpectrum(AppContext& app, SpectrumState& state, HWND owner, const std::string& path) {
    RunSpectrumDialog(app, kControls, state, owner, path);
}

}  // namespace tonvale
