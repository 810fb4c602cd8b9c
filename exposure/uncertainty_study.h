// The study of a measurement's uncertainty, page after page: what is kept, what the pages hold and
// show, where they lead.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/user_message.h"
#include "exposure/uncertainty.h"

namespace tonvale {

// The pages by the numbers of their resources.
enum class UncertaintyPage { kResults = 107, kStart = 115, kLevel = 116, kDay = 117, kWeek = 118 };

// A result kept for a later page.
struct RememberedResult {
    double level_dba = 0;
    double error_db = 0;  // environmental
};

// What is kept while the program runs; the file stores all but results, memories and page.
struct UncertaintyStudy {
    bool is_sampled = true;           // the equivalent level comes from samples
    bool goes_on_from_start = false;  // to the day
    bool goes_on_from_level = false;  // to the day
    bool goes_on_from_day = false;    // to the week
    double instrument_error_db = 0.7;
    double measured_level_dba = 0;  // when it does not come from samples
    int time_unit = 0;              // index of TimeUnits(); a file may hold any number
    bool corrects_time = false;
    double represented_time = 8;  // what the samples stand for, in the unit of their times

    // Rows as last computed with, and what came of them.
    std::vector<SampledLevel> samples;
    std::vector<UncertainPeriod> periods;
    std::vector<UncertainDay> days;
    SampledLevelResult level;
    UncertainDayResult day;
    UncertainLevel week;

    std::vector<RememberedResult> remembered_levels;  // newest first
    std::vector<RememberedResult> remembered_days;
    UncertaintyPage page = UncertaintyPage::kStart;  // last activated, the results page apart
    std::string notes;
};

// The number that `text` begins with (ParseNumber); one beyond all range counts as 0.
double FiniteNumber(std::string_view text);

// --- Pages: texts as their controls hold them, at most 15 characters each ---

struct StartPage {
    bool is_sampled = true;
    std::string measured_level_dba;
    std::string instrument_error_db;
    bool goes_on = false;
};

struct SampleRow {
    std::string level_dba;
    std::string time;
};

struct PeriodRow {
    std::string level_dba;
    std::string duration;
    std::string level_error_db;
    std::string duration_error;
};

// As it stands: a day without exposure, which is what a deleted day becomes.
struct DayRow {
    std::string level_dba = "0.0";
    std::string error_db = "0.00";
};

// The results that every calculation page shows.
struct LevelTexts {
    std::string level_dba;
    std::string environmental_error_db;
    std::string total_error_db;
};

struct LevelPage {
    std::vector<SampleRow> rows;
    std::string instrument_error_db;
    bool corrects_time = false;
    std::string represented_time;
    int time_unit = 0;
    bool goes_on = false;
    LevelTexts results;
    std::string sampled_time;
};

struct DayPage {
    std::vector<PeriodRow> rows;
    std::string instrument_error_db;
    int time_unit = 0;
    bool goes_on = false;
    LevelTexts results;
    std::string total_time;
};

struct WeekPage {
    std::vector<DayRow> rows;  // from Monday on, seven or more
    std::string instrument_error_db;
    LevelTexts results;
};

// Results as pages and report show them: levels "%5.1f", errors "%4.2f", times in the study's unit.
LevelTexts TextsOf(const UncertainLevel& level);
std::string SampledTimeText(const UncertaintyStudy& study);
std::string RepresentedTimeText(const UncertaintyStudy& study);
std::string TotalTimeText(const UncertaintyStudy& study);  // of the day

// A page as the study fills it: settings, rows and the results last computed. The numbers of a row
// keep all their digits.
StartPage ShowStartPage(const UncertaintyStudy& study);
LevelPage ShowLevelPage(const UncertaintyStudy& study);
DayPage ShowDayPage(const UncertaintyStudy& study);
WeekPage ShowWeekPage(const UncertaintyStudy& study);

// Answers whether the level was sampled; when it was, the start page leads to the samples only.
void ChooseSampled(bool is_sampled, StartPage& page);

// Keeps a page's settings, as leaving it and its file commands do. Rows and results stay as last
// computed.
void KeepPage(const StartPage& page, UncertaintyStudy& study);
void KeepPage(const LevelPage& page, UncertaintyStudy& study);
void KeepPage(const DayPage& page, UncertaintyStudy& study);
void KeepPage(const WeekPage& page, UncertaintyStudy& study);

// Keeps the page with its rows, computes and shows the results. What there is to tell of the
// samples does not stop the computation. Without the time correction sampling times count as 0.
std::optional<UserMessage> Recompute(LevelPage& page, UncertaintyStudy& study);
void Recompute(DayPage& page, UncertaintyStudy& study);
void Recompute(WeekPage& page, UncertaintyStudy& study);

// Computes the study's page from its rows; nothing on the start page.
std::optional<UserMessage> ComputePage(UncertaintyStudy& study);

// Makes `page` the one that the report, "Avanti" and "Indietro" go by; the results page does not
// count.
void ActivatePage(UncertaintyPage page, UncertaintyStudy& study);

// Where "Avanti" leads from the study's page, once its settings are kept.
UncertaintyPage NextPage(const UncertaintyStudy& study);
// Where "Indietro" leads from `page`.
UncertaintyPage PreviousPage(UncertaintyPage page, const UncertaintyStudy& study);

// --- Memories ---

// "M+": puts the result last computed at the head of its memory and tells so.
UserMessage RememberLevel(UncertaintyStudy& study);
UserMessage RememberDay(UncertaintyStudy& study);

// A row of a memory's list; "MR" copies its texts into the item dialog.
struct RememberedTexts {
    std::string level_dba;
    std::string error_db;
};
RememberedTexts TextsOf(const RememberedResult& result);

// What "MR" tells when no row is selected.
UserMessage NothingToRecall();

// --- The error of a duration, in the dialog of a period ---

enum class DurationErrorMode { kZero, kAbsolute, kPercent };

// The error's field after a change of the mode, the duration, the percentage or the minimum: "0"
// and locked, as typed, or computed (and locked too). `typed` is what the field holds.
std::string DurationErrorText(DurationErrorMode mode, const std::string& typed,
                              std::string_view duration, std::string_view percent,
                              std::string_view minimum, int time_unit);

}  // namespace tonvale
