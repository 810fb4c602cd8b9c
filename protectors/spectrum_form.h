// What the noise spectrum and the attenuation spectrum have in common: seven band levels that are
// reduced to a few numbers, with their form, kept state, files, summary and printout.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/assessment.h"
#include "common/file_kinds.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "common/user_message.h"
#include "protectors/octave_bands.h"
#include "protectors/octave_chart.h"

namespace tonvale {

inline constexpr std::string_view kSpectrumSection = "SPECTRUM";

// A band field and a rating field take this many typed characters, and no more are computed with.
inline constexpr std::size_t kMaxBandCharacters = 8;

inline constexpr std::size_t kMaxSpectrumResults = 4;

// What a spectrum is reduced to: one number, and where it is told.
struct SpectrumResult {
    std::string_view key;  // in the header section of the data file
    std::string_view summary_label;
    std::string_view printout_label;
};

// A result, before and after it is rounded to what is shown (with one decimal).
struct ReducedValue {
    double exact = 0;
    double shown = 0;
};
using ReducedValues = std::array<ReducedValue, kMaxSpectrumResults>;  // the first ones count

// How the two kinds of spectrum differ.
struct SpectrumKind {
    FileKind file_kind;
    std::string_view document_name;
    std::string_view printout_title;
    std::string_view printout_column;
    int printout_drawing_line;
    std::string_view summary_title;
    std::string_view summary_column;
    OctaveChartScale chart;  // its full scale is the highest value that a field takes
    int number_width;        // of "%W.1f", for bands and results
    std::span<const SpectrumResult> results;
    ReducedValues (*reduce)(const OctaveSpectrum& levels_db);
    // The results may be typed in too: what an incomplete spectrum or a result of 0 leaves
    // standing.
    bool results_are_entries;
    // A refused field is named by its text, else by the label of its band.
    bool refusal_shows_text;
};

// What the dialog shows: texts as typed, or as loaded (at most 15 characters).
struct SpectrumForm {
    explicit SpectrumForm(const SpectrumKind& spectrum_kind) : kind(&spectrum_kind) {}

    const SpectrumKind* kind;
    std::array<std::string, kOctaveBandCount> bands;
    std::array<std::string, kMaxSpectrumResults> results;  // as many as the kind has
    std::string notes;
};

// What is kept between two openings of the dialog.
struct SpectrumState {
    explicit SpectrumState(const SpectrumKind& spectrum_kind) : kind(&spectrum_kind) {}

    const SpectrumKind* kind;
    OctaveSpectrum levels_db{};
    std::array<double, kMaxSpectrumResults> results_db{};
    std::string notes;
};

// The numbers that the band fields hold; text that is no number counts as 0.
OctaveSpectrum BandLevels(const SpectrumForm& form);

// Whether every band field holds text; blanks are text.
bool IsComplete(const SpectrumForm& form);

// Computes the results from the bands and shows them. Where results are entries, an incomplete
// spectrum leaves them all as they are, and so does a result of 0
// its own field.
void Recompute(SpectrumForm& form);

// To call when the user has changed a field: a text above the highest value is emptied, and the
// message says so. A band has the results recomputed.
std::optional<UserMessage> EnterBand(SpectrumForm& form, std::size_t band);
// The same for a result that may be typed in; nothing is recomputed.
std::optional<UserMessage> EnterResult(SpectrumForm& form, std::size_t result);

// The form as a new opening shows it, computed where results are no entries.
SpectrumForm FormFromState(const SpectrumState& state);
// Keeps what a closing dialog holds: fields as numbers, notes (at most 511 characters).
void KeepForm(const SpectrumForm& form, SpectrumState& state);

// The text of a band in a file of either kind, at most 15 characters; "0" when it is missing.
std::string BandText(const ProfileFile& file, std::size_t band);

// Takes over a data file as it stands. False, and the form unchanged, when it is of another kind.
// Results whose key is missing stay as they were, bands become "0".
bool LoadForm(const ProfileFile& file, SpectrumForm& form);
// What follows a load: bands above the highest value are emptied, with a message each in the order
// of the bands, and the results are recomputed once.
std::vector<UserMessage> CompleteLoad(SpectrumForm& form);
void StoreForm(const SpectrumForm& form, ProfileFile& file);

void DrawChart(Canvas& canvas, const Rect& area, const SpectrumForm& form, Color ground);

std::string Summary(const SpectrumForm& form, std::string_view list_separator);
// With the chart, and the bands' names below it.
Printout MakePrintout(const SpectrumForm& form);

// Recomputes a data file of `kind`: the results are the texts that stand in the dialog after
// loading it. Bands above the highest value are told as warnings and findings.
Assessment AssessSpectrum(const SpectrumKind& kind, const ProfileFile& file);

}  // namespace tonvale
