// What the dialogs SPETTRORUM (noise) and SPETTRODPI (protector) have in common.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <string>

#include "dialogs/dialog_win.h"
#include "protectors/spectrum_form.h"
#include "resources/resource.h"

namespace tonvale {

// How the dialogs differ beyond their kind of spectrum.
struct SpectrumControls {
    const DialogDescription& description;
    int first_result;
    bool opens_on_notes;  // else on the first band
};

// Runs a dialog over `owner`. It shows `state`, of the dialog's kind, or the data file at `path`
// when it is not empty, and keeps its content there when it closes.
void RunSpectrumDialog(AppContext& app, const SpectrumControls& controls, SpectrumState& state,
                       HWND owner, const std::string& path);

// For the dialogs' tables: a row for each band field, like `band` but for its control, and `others`
// after them.
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

constexpr int kBandFieldCharacters = static_cast<int>(kMaxBandCharacters);
inline constexpr ControlTextLimit kBandLimit{0, kBandFieldCharacters};

}  // namespace tonvale
