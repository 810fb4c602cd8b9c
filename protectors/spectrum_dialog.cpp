#include "protectors/spectrum_dialog.h"

#include <cstddef>
#include <optional>
#include <string>

#include "dialogs/drawing_area_win.h"
#include "dialogs/form_dialog_win.h"

namespace tonvale {

namespace {

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

void RunSpectrumDialog(AppContext& app, const SpectrumControls& controls, SpectrumState& state,
                       HWND owner, const std::string& path) {
    SpectrumDialog(app, controls, state, path).RunModal(owner);
}

}  // namespace tonvale
