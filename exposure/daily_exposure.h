// Daily personal noise exposure level Lep,d: form, kept state, files (.lep), summary, printout.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/assessment.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "common/user_message.h"

namespace tonvale {

// One exposure: texts as typed, at most 15 characters each.
struct ExposureItem {
    std::string level_dba;  // LAeq
    std::string duration;   // in the form's time unit
};

// What the dialog shows.
struct DailyExposureForm {
    std::vector<ExposureItem> items;
    int time_unit = 0;  // index of TimeUnits(); a file may hold any number
    // Results, as shown: their names as long as there are none.
    std::string equivalent_level_dba = "Laeq";
    std::string total_time = "Te";
    std::string daily_level_dba = "Lepd";
    std::string notes;
};

// What is kept between two openings of the dialog. `levels_dba` and `durations` have one size.
struct DailyExposureState {
    std::vector<double> levels_dba;
    std::vector<double> durations;  // in the time unit, as typed
    int time_unit = 0;
    std::string notes;
    ExposureItem last_item = {};  // last confirmed in the item dialog
};

// Why an item cannot be taken into the list: its level or its duration is 0 or no number.
std::optional<UserMessage> CheckExposureItem(const ExposureItem& item);

// Computes the form's results from its items and keeps them in `state`. An item whose level or
// duration is 0 stops it: the message says so, the results stay, and the state keeps the items
// before it and zeros for the others.
std::optional<UserMessage> Recompute(DailyExposureForm& form, DailyExposureState& state);

// The form as a new opening shows it: kept items with one decimal, results not yet computed.
DailyExposureForm FormFromState(const DailyExposureState& state);

// Keeps what a closing dialog holds: items as numbers, unit, notes (at most 511 characters).
void KeepForm(const DailyExposureForm& form, DailyExposureState& state);

// Takes over a .lep file as it stands: results are those stored. False, and the form unchanged,
// when it is of another kind. Fields whose key is missing stay as they were.
bool LoadForm(const ProfileFile& file, DailyExposureForm& form);
void StoreForm(const DailyExposureForm& form, ProfileFile& file);

std::string Summary(const DailyExposureForm& form, std::string_view list_separator);
Printout MakePrintout(const DailyExposureForm& form);

// Recomputes a .lep file.
Assessment AssessDailyExposure(const ProfileFile& file);

}  // namespace tonvale
