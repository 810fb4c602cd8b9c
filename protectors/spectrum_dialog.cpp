#include "protectors/spectrum_dialog.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "dialogs/drawing_area_win.h"
#include "dialogs/form_dialog_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr ControlTip kNoiseTips[] = {
    {IDC_BAND_FIRST, L"Inserire il valore del livello di rumore a 125 Hz"},
    {IDC_BAND_FIRST + 1, L"Inserire il valore del livello di rumore a 250 Hz"},
    {IDC_BAND_FIRST + 2, L"Inserire il valore del livello di rumore a 500 Hz"},
    {IDC_BAND_FIRST + 3, L"Inserire il valore del livello di rumore a 1000 Hz"},
    {IDC_BAND_FIRST + 4, L"Inserire il valore del livello di rumore a 2000 Hz"},
    {IDC_BAND_FIRST + 5, L"Inserire il valore del livello di rumore a 4000 Hz"},
    {IDC_BAND_FIRST + 6, L"Inserire il valore del livello di rumore a 8000 Hz"},
    {IDC_A_WEIGHTED_LEVEL, L"Livello equivalente pesato A dello spettro"},
    {IDC_C_WEIGHTED_LEVEL, L"Livello equivalente pesato C dello spettro"},
    kStatusBarTip,
    kNotesTip,
};

constexpr ControlTip kAttenuationTips[] = {
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

// A row for each band field, like `band` but for its control, and `others` after them.
template <typename Row, std::size_t kOthers>
constexpr std::array<Row, kOctaveBandCount + kOthers> WithBandRows(Row band,
                                                                   const Row (&others)[kOthers]) {
    std::array<Row, kOctaveBandCount + kOthers> rows{};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i] = i < kOctaveBandCount ? band : others[i - kOctaveBandCount];
        if (i < kOctaveBandCount) rows[i].control = IDC_BAND_FIRST + static_cast<int>(i);
    }
    return rows;
}

constexpr int kFieldCharacters = static_cast<int>(kMaxBandCharacters);
constexpr ControlTextLimit kBandLimit{0, kFieldCharacters};
constexpr auto kNoiseLimits = WithBandRows<ControlTextLimit>(kBandLimit, {kNotesLimit});
constexpr auto kAttenuationLimits =
    WithBandRows<ControlTextLimit>(kBandLimit, {{IDC_RATING_H, kFieldCharacters},
                                                {IDC_RATING_M, kFieldCharacters},
                                                {IDC_RATING_L, kFieldCharacters},
                                                {IDC_RATING_SNR, kFieldCharacters},
                                                kNotesLimit});

constexpr auto kNoiseColors = WithBandRows<ControlColors>(
    {0, Surface::kWhite, kRedText}, {{IDC_A_WEIGHTED_LEVEL, Surface::kMenu, kRedText},
                                     {IDC_C_WEIGHTED_LEVEL, Surface::kMenu, kRedText}});
constexpr auto kAttenuationColors = WithBandRows<ControlColors>(
    {0, Surface::kWhite, kBlueText}, {{IDC_RATING_H, Surface::kWhite, kBlueText},
                                      {IDC_RATING_M, Surface::kWhite, kBlueText},
                                      {IDC_RATING_L, Surface::kWhite, kBlueText},
                                      {IDC_RATING_SNR, Surface::kWhite, kBlueText}});

constexpr auto kNoiseHelp =
    WithBandRows<ControlHelp>({0, kHelpNoiseBands}, {{IDC_A_WEIGHTED_LEVEL, kHelpNoiseALevel},
                                                     {IDC_C_WEIGHTED_LEVEL, kHelpNoiseCLevel},
                                                     {IDC_NOTES_EDIT, kHelpNoiseNotes},
                                                     {IDC_STATUS_BAR, kHelpNoiseStatusBar}});
constexpr auto kAttenuationHelp = WithBandRows<ControlHelp>(
    {0, kHelpAttenuationBands}, {{IDC_RATING_H, kHelpAttenuationHml},
                                 {IDC_RATING_M, kHelpAttenuationHml},
                                 {IDC_RATING_L, kHelpAttenuationHml},
                                 {IDC_RATING_SNR, kHelpAttenuationSnr},
                                 {IDC_NOTES_EDIT, kHelpAttenuationNotes},
                                 {IDC_STATUS_BAR, kHelpAttenuationStatusBar}});

constexpr DialogDescription kNoiseDescription = {
    .template_name = L"SPETTRORUM",
    .tips = kNoiseTips,
    .text_limits = kNoiseLimits,
    .colors = kNoiseColors,
    .help = kNoiseHelp,
    .main_help_context = kHelpNoiseSpectrum,
    .accepts_files = true,
};

constexpr DialogDescription kAttenuationDescription = {
    .template_name = L"SPETTRODPI",
    .tips = kAttenuationTips,
    .text_limits = kAttenuationLimits,
    .colors = kAttenuationColors,
    .help = kAttenuationHelp,
    .main_help_context = kHelpAttenuationSpectrum,
    .accepts_files = true,
};

// How the two dialogs differ beyond their kind of spectrum.
struct SpectrumControls {
    const DialogDescription& description;
    int first_result;
    bool opens_on_notes;  // else on the first band
};

constexpr SpectrumControls kNoiseControls{kNoiseDescription, IDC_A_WEIGHTED_LEVEL, true};
constexpr SpectrumControls kAttenuationControls{kAttenuationDescription, IDC_RATING_H, false};

class SpectrumDialog : public FormDialog<SpectrumForm, SpectrumState> {
  public:
    SpectrumDialog(AppContext& app, const SpectrumControls& controls, SpectrumState& state,
                   const std::string& path)
        : FormDialog(app, controls.description, state.kind->file_kind, path, state),
          controls_(controls) {}

  protected:
    bool OnInit() override;
    void OnEdited(int control) override;
    bool LoadFrom(const ProfileFile& file) override;
    void ShowFields() override;
    // What is kept or loaded is computed as far as it has to be.
    void RecomputeResults() override {}

  private:
    std::size_t result_count() const { return form().kind->results.size(); }
    void ShowField(int control, const std::string& text);
    void Draw(Canvas& canvas, Rect area, Color ground) const;

    const SpectrumControls& controls_;
    DrawingArea chart_{
        [this](Canvas& canvas, const Rect& area, Color ground) { Draw(canvas, area, ground); }};
};

bool SpectrumDialog::OnInit() {
    chart_.TakeControl(Control(IDC_DRAWING));
    Attach(chart_);
    FormDialog::OnInit();
    if (!controls_.opens_on_notes) return true;
    SetFocus(Control(IDC_NOTES_EDIT));
    return false;
}

// The place of `control` in a row of controls; nullopt when it is none of them.
std::optional<std::size_t> PlaceOf(int control, int first, std::size_t count) {
    const int place = control - first;
    if (place < 0 || static_cast<std::size_t>(place) >= count) return std::nullopt;
    return static_cast<std::size_t>(place);
}

void SpectrumDialog::OnEdited(int control) {
    std::optional<UserMessage> refusal;
    if (const auto band = PlaceOf(control, IDC_BAND_FIRST, kOctaveBandCount)) {
        form().bands[*band] = ControlText(control);
        refusal = EnterBand(form(), *band);
    } else if (const auto result = PlaceOf(control, controls_.first_result, result_count())) {
        form().results[*result] = ControlText(control);
        refusal = EnterResult(form(), *result);
    } else {
        return;
    }
    if (refusal) ShowMessage(*refusal);
    ShowFields();
}

bool SpectrumDialog::LoadFrom(const ProfileFile& file) {
    if (!FormDialog::LoadFrom(file)) return false;
    // The fields show what the messages are about, until the last of them.
    for (const UserMessage& refusal : CompleteLoad(form())) ShowMessage(refusal);
    ShowFields();
    return true;
}

void SpectrumDialog::ShowFields() {
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        ShowField(IDC_BAND_FIRST + static_cast<int>(i), form().bands[i]);
    }
    for (std::size_t i = 0; i < result_count(); ++i) {
        ShowField(controls_.first_result + static_cast<int>(i), form().results[i]);
    }
    chart_.Redraw();
}

// A text that stands there already keeps its caret.
void SpectrumDialog::ShowField(int control, const std::string& text) {
    if (ControlText(control) != text) SetControlText(control, text);
}

// The top label stands above the chart, its axes and grid on the chart's edges. In a height of
// whole steps the bars agree with the grid.
void SpectrumDialog::Draw(Canvas& canvas, Rect area, Color ground) const {
    const OctaveChartScale& scale = form().kind->chart;
    --area.right;
    --area.bottom;
    area.top += canvas.FontAscent();
    area.top += area.Height() % (scale.full_scale_db / scale.step_db);
    DrawChart(canvas, area, form(), ground);
}

}  // namespace

void OpenNoiseSpectrum(AppContext& app, SpectrumState& state, HWND owner, const std::string& path) {
    SpectrumDialog(app, kNoiseControls, state, path).RunModal(owner);
}

void OpenAttenuationSpectrum(AppContext& app, SpectrumState& state, HWND owner,
                             const std::string& path) {
    SpectrumDialog(app, kAttenuationControls, state, path).RunModal(owner);
}

}  // namespace tonvale
