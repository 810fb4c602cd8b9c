// Equivalent level of a homogeneous group of workers, from the levels measured on some of them:
// form, kept state, files (.leg), summary, printout.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/assessment.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "common/user_message.h"

namespace tonvale {

// The items of the two lists. Item k of the first is the column k of Student's table, item k of the
// second an interval of k + 1 dB.
inline constexpr std::array<std::string_view, 4> kConfidencePercents{"90", "95", "97.5", "99"};
inline constexpr std::array<std::string_view, 10> kConfidenceIntervalsDb{"1", "2", "3", "4", "5",
                                                                         "6", "7", "8", "9", "10"};

// What the dialog shows. The two indexes may lie outside their lists (a file holds any number).
struct GroupExposureForm {
    std::vector<std::string> levels_dba;  // samples as typed, at most 15 characters each
    std::string total_workers = "10";     // as typed
    int confidence = 1;                   // index of kConfidencePercents
    int interval = 1;                     // index of kConfidenceIntervalsDb
    // Results, as shown.
    std::string sample_count;
    std::string mean_level_dba;
    std::string deviation_db;
    std::string verdict = "Risultato:";
    bool is_validated = false;  // else mean and deviation are hidden
    std::string notes;
};

// What is kept between two openings of the dialog.
struct GroupExposureState {
    std::vector<double> levels_dba;
    std::uint32_t total_workers = 10;
    int confidence = 1;
    int interval = 1;
    std::string notes;
    std::string last_level_dba = "90";  // last confirmed in the item dialog
};

// The least number m of samples, from 3 on, for which the half-width of the confidence interval of
// the mean, t(m - 1) s / sqrt(m) sqrt((N - m) / (N - 1)), rounded to whole decibels (halves
// upward), is at most `interval_db`. N = `total_workers`, s = `deviation_db`, t the quantile of
// column `confidence`. 3 when N is below 3; N + 1 when no number does (s beyond all range). Costs
// about 32 trials at most.
std::uint64_t RequiredSamples(std::uint32_t total_workers, double deviation_db, int confidence,
                              double interval_db);

// Computes the form's results and keeps its settings and samples in `state`. A group of fewer than
// 4 workers, or a sample that is 0 or no number, stops it: the message says so, and the results
// stay. In the second case the state keeps the samples before it and zeros for the others.
std::optional<UserMessage> Recompute(GroupExposureForm& form, GroupExposureState& state);

// The form as a new opening shows it: kept samples with one decimal, results not yet computed.
GroupExposureForm FormFromState(const GroupExposureState& state);

// Keeps what a closing dialog holds: samples as numbers, indexes, the total unless its field is
// empty, notes (at most 512 characters).
void KeepForm(const GroupExposureForm& form, GroupExposureState& state);

// Takes over a .leg file with its stored results; what has no key stays as it was. The dialog
// recomputes next, for the total has changed under it. False, and the form unchanged, when the file
// is of another kind.
bool LoadForm(const ProfileFile& file, GroupExposureForm& form);
void StoreForm(const GroupExposureForm& form, ProfileFile& file);

std::string Summary(const GroupExposureForm& form, std::string_view list_separator);
Printout MakePrintout(const GroupExposureForm& form);

// Recomputes a .leg file. Details: "required", the samples that the search asks for (null for fewer
// than 3 samples), and "verdict".
Assessment AssessGroupExposure(const ProfileFile& file);

}  // namespace tonvale
