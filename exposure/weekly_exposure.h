// Weekly personal noise exposure level Lep,w: form, kept state, files (.lew), summary, printout.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "common/assessment.h"
#include "common/printout.h"
#include "common/profile_file.h"

namespace tonvale {

inline constexpr std::size_t kWeekDays = 7;

// The days from Monday on, as lists, reports and data files name them: without accents.
inline constexpr std::array<std::string_view, kWeekDays> kDayNames{
    "Lunedi", "Martedi", "Mercoledi", "Giovedi", "Venerdi", "Sabato", "Domenica"};

// What a deleted day holds.
inline constexpr std::string_view kNoExposure = "0.0";

// What the dialog shows.
struct WeeklyExposureForm {
    std::array<std::string, kWeekDays> levels_dba;  // Lep,d as typed, at most 15 characters each
    std::string weekly_level_dba;                   // result, as shown
    std::string notes;
};

// What is kept between two openings of the dialog.
struct WeeklyExposureState {
    std::array<double, kWeekDays> levels_dba{90, 90, 90, 90, 90, 0, 0};  // as last computed with
    std::string notes;
};

// Computes the form's result from its days and keeps these in `state`. A day that is no number is
// one of 0 dBA.
void Recompute(WeeklyExposureForm& form, WeeklyExposureState& state);

// The form as a new opening shows it: kept days with one decimal, result not yet computed.
WeeklyExposureForm FormFromState(const WeeklyExposureState& state);

// Keeps the notes of a closing dialog (at most 512 characters). The days stay as the last
// computation left them.
void KeepForm(const WeeklyExposureForm& form, WeeklyExposureState& state);

// Takes over a .lew file as it stands: the result is the one stored, or stays when there is none; a
// day whose key is missing becomes empty. False, and the form unchanged, when the file is of
// another kind.
bool LoadForm(const ProfileFile& file, WeeklyExposureForm& form);
void StoreForm(const WeeklyExposureForm& form, ProfileFile& file);

std::string Summary(const WeeklyExposureForm& form, std::string_view list_separator);
Printout MakePrintout(const WeeklyExposureForm& form);

// Recomputes a .lew file.
Assessment AssessWeeklyExposure(const ProfileFile& file);

}  // namespace tonvale
