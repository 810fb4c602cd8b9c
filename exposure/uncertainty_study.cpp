#include "exposure/uncertainty_study.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "common/file_kinds.h"
#include "common/numbers.h"
#include "exposure/time_unit.h"
#include "exposure/weekly_exposure.h"

namespace tonvale {

namespace {

using enum UncertaintyPage;

std::string LevelText(double level_dba) {
    return FormatFixed(level_dba, 5, 1);
}

std::string ErrorText(double error_db) {
    return FormatFixed(error_db, 4, 2);
}

// A time in the study's unit.
std::string TimeText(double time, const UncertaintyStudy& study) {
    const TimeUnit& unit = TimeUnitAt(study.time_unit);
    return FormatFixed(time, unit.width, unit.decimals);
}

// A number of a row: `decimals` digits after the point, or as many as it takes.
std::string RowText(double value, int decimals) {
    const std::string text = FormatFixed(value, 0, decimals);
    const bool is_exact = ParseNumber(text) == value && text.size() <= kMaxValueCharacters;
    return is_exact ? text : FormatShortest(value);
}

// Makes one item of each row.
template <typename Item, typename Row, typename Convert>
std::vector<Item> ConvertAll(const std::vector<Row>& rows, Convert convert) {
    std::vector<Item> items;
    items.reserve(rows.size());
    std::transform(rows.begin(), rows.end(), std::back_inserter(items), convert);
    return items;
}

// --- The three computations --------------------------------------------------------------------

constexpr std::string_view kTooLongSampling =
    "Il tempo totale è inferiore al tempo di campionamento: la correzione del tempo non verrà "
    "applicata!";

std::optional<UserMessage> ComputeLevel(UncertaintyStudy& study) {
    const auto represented_time =
        study.corrects_time ? std::optional(study.represented_time) : std::nullopt;
    study.level = EstimateLevel(study.samples, represented_time, study.instrument_error_db);
    if (!study.level.is_correction_refused) return std::nullopt;
    return UserMessage{"Errore nell'inserimento dei dati", std::string(kTooLongSampling),
                       MessageIcon::kExclamation};
}

void ComputeDay(UncertaintyStudy& study) {
    study.day = CombinePeriods(study.periods, TimeUnitAt(study.time_unit).seconds,
                               study.instrument_error_db);
}

void ComputeWeek(UncertaintyStudy& study) {
    study.week = CombineDays(study.days, study.instrument_error_db);
}

}  // namespace

double FiniteNumber(std::string_view text) {
    const double value = ParseNumber(text);
    return std::isfinite(value) ? value : 0;
}

LevelTexts TextsOf(const UncertainLevel& level) {
    return {LevelText(level.level_dba), ErrorText(level.environmental_error_db),
            ErrorText(level.total_error_db)};
}

std::string SampledTimeText(const UncertaintyStudy& study) {
    return TimeText(study.level.sampled_time, study);
}

std::string RepresentedTimeText(const UncertaintyStudy& study) {
    return TimeText(study.represented_time, study);
}

std::string TotalTimeText(const UncertaintyStudy& study) {
    return FormatTotalTime(study.day.total_time_s, TimeUnitAt(study.time_unit));
}

// --- Pages -------------------------------------------------------------------------------------

StartPage ShowStartPage(const UncertaintyStudy& study) {
    return {study.is_sampled, FormatFixed(study.measured_level_dba, 5, 2),
            ErrorText(study.instrument_error_db), study.goes_on_from_start};
}

LevelPage ShowLevelPage(const UncertaintyStudy& study) {
    LevelPage page;
    page.rows = ConvertAll<SampleRow>(study.samples, [](const SampledLevel& sample) {
        return SampleRow{RowText(sample.level_dba, 1), RowText(sample.time, 1)};
    });
    page.instrument_error_db = ErrorText(study.instrument_error_db);
    page.corrects_time = study.corrects_time;
    page.represented_time = FormatFixed(study.represented_time, 0, 2);
    page.time_unit = study.time_unit;
    page.goes_on = study.goes_on_from_level;
    page.results = TextsOf(study.level.level);
    page.sampled_time = SampledTimeText(study);
    return page;
}

DayPage ShowDayPage(const UncertaintyStudy& study) {
    DayPage page;
    page.rows = ConvertAll<PeriodRow>(study.periods, [](const UncertainPeriod& period) {
        return PeriodRow{RowText(period.level_dba, 1), RowText(period.duration, 1),
                         RowText(period.level_error_db, 2), RowText(period.duration_error, 2)};
    });
    page.instrument_error_db = ErrorText(study.instrument_error_db);
    page.time_unit = study.time_unit;
    page.goes_on = study.goes_on_from_day;
    page.results = TextsOf(study.day.day);
    page.total_time = TotalTimeText(study);
    return page;
}

WeekPage ShowWeekPage(const UncertaintyStudy& study) {
    WeekPage page;
    page.rows = ConvertAll<DayRow>(study.days, [](const UncertainDay& day) {
        return DayRow{RowText(day.level_dba, 1), RowText(day.error_db, 2)};
    });
    page.rows.resize(std::max(page.rows.size(), kWeekDays));
    page.instrument_error_db = ErrorText(study.instrument_error_db);
    page.results = TextsOf(study.week);
    return page;
}

void ChooseSampled(bool is_sampled, StartPage& page) {
    page.is_sampled = is_sampled;
    if (is_sampled) page.goes_on = false;
}

void KeepPage(const StartPage& page, UncertaintyStudy& study) {
    study.is_sampled = page.is_sampled;
    study.goes_on_from_start = page.goes_on;
    study.instrument_error_db = FiniteNumber(page.instrument_error_db);
    study.measured_level_dba = FiniteNumber(page.measured_level_dba);
}

void KeepPage(const LevelPage& page, UncertaintyStudy& study) {
    study.instrument_error_db = FiniteNumber(page.instrument_error_db);
    study.corrects_time = page.corrects_time;
    study.represented_time = FiniteNumber(page.represented_time);
    study.time_unit = page.time_unit;
    study.goes_on_from_level = page.goes_on;
}

void KeepPage(const DayPage& page, UncertaintyStudy& study) {
    study.instrument_error_db = FiniteNumber(page.instrument_error_db);
    study.time_unit = page.time_unit;
    study.goes_on_from_day = page.goes_on;
}

void KeepPage(const WeekPage& page, UncertaintyStudy& study) {
    study.instrument_error_db = FiniteNumber(page.instrument_error_db);
}

std::optional<UserMessage> Recompute(LevelPage& page, UncertaintyStudy& study) {
    KeepPage(page, study);
    study.samples = ConvertAll<SampledLevel>(page.rows, [&](const SampleRow& row) {
        return SampledLevel{FiniteNumber(row.level_dba),
                            page.corrects_time ? FiniteNumber(row.time) : 0};
    });
    std::optional<UserMessage> message = ComputeLevel(study);
    page.results = TextsOf(study.level.level);
    page.sampled_time = SampledTimeText(study);
    return message;
}

void Recompute(DayPage& page, UncertaintyStudy& study) {
    KeepPage(page, study);
    study.periods = ConvertAll<UncertainPeriod>(page.rows, [](const PeriodRow& row) {
        return UncertainPeriod{FiniteNumber(row.level_dba), FiniteNumber(row.duration),
                               FiniteNumber(row.level_error_db), FiniteNumber(row.duration_error)};
    });
    ComputeDay(study);
    page.results = TextsOf(study.day.day);
    page.total_time = TotalTimeText(study);
}

void Recompute(WeekPage& page, UncertaintyStudy& study) {
    KeepPage(page, study);
    study.days = ConvertAll<UncertainDay>(page.rows, [](const DayRow& row) {
        return UncertainDay{FiniteNumber(row.level_dba), FiniteNumber(row.error_db)};
    });
    ComputeWeek(study);
    page.results = TextsOf(study.week);
}

std::optional<UserMessage> ComputePage(UncertaintyStudy& study) {
    switch (study.page) {
        case kLevel:
            return ComputeLevel(study);
        case kDay:
            ComputeDay(study);
            break;
        case kWeek:
            ComputeWeek(study);
            break;
        case kStart:
        case kResults:
            break;
    }
    return std::nullopt;
}

void ActivatePage(UncertaintyPage page, UncertaintyStudy& study) {
    if (page != kResults) study.page = page;
}

UncertaintyPage NextPage(const UncertaintyStudy& study) {
    switch (study.page) {
        case kStart:
            if (study.is_sampled) return kLevel;
            return study.goes_on_from_start ? kDay : kResults;
        case kLevel:
            return study.goes_on_from_level ? kDay : kResults;
        case kDay:
            return study.goes_on_from_day ? kWeek : kResults;
        case kWeek:
        case kResults:
            break;
    }
    return kResults;
}

UncertaintyPage PreviousPage(UncertaintyPage page, const UncertaintyStudy& study) {
    switch (page) {
        case kResults:
            return study.page;
        case kWeek:
            return kDay;
        case kDay:
            return study.goes_on_from_start ? kStart : kLevel;
        case kLevel:
        case kStart:
            break;
    }
    return kStart;
}

// --- Memories ----------------------------------------------------------------------------------

namespace {

UserMessage Remember(const UncertainLevel& level, std::vector<RememberedResult>& memory) {
    memory.insert(memory.begin(), {level.level_dba, level.environmental_error_db});
    return {"Operazione completata", "I valori sono stati memorizzati"};
}

}  // namespace

UserMessage RememberLevel(UncertaintyStudy& study) {
    return Remember(study.level.level, study.remembered_levels);
}

UserMessage RememberDay(UncertaintyStudy& study) {
    return Remember(study.day.day, study.remembered_days);
}

RememberedTexts TextsOf(const RememberedResult& result) {
    return {LevelText(result.level_dba), ErrorText(result.error_db)};
}

UserMessage NothingToRecall() {
    return {"Errore", "Attenzione! Nessun dato selezionato."};
}

std::string DurationErrorText(DurationErrorMode mode, const std::string& typed,
                              std::string_view duration, std::string_view percent,
                              std::string_view minimum, int time_unit) {
    switch (mode) {
        case DurationErrorMode::kZero:
            return "0";
        case DurationErrorMode::kAbsolute:
            return typed;
        case DurationErrorMode::kPercent:
            break;
    }
    const double error =
        PercentDurationError(FiniteNumber(duration), FiniteNumber(percent), FiniteNumber(minimum));
    const bool is_in_hours = time_unit == 2;
    return FormatFixed(error, 7, is_in_hours ? 2 : 4);
}

}  // namespace tonvale
