#include "exposure/daily_exposure.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/summary_text.h"
#include "common/text.h"
#include "exposure/exposure_level.h"
#include "exposure/time_unit.h"
#include "exposure/typed_value.h"

namespace tonvale {

namespace {

constexpr std::string_view kLevelKey = "LAEQ";
constexpr std::string_view kTotalTimeKey = "TOTTIME";
constexpr std::string_view kDailyLevelKey = "LEPD";
constexpr std::string_view kTimeUnitKey = "TFORM";
constexpr std::string_view kItemCountKey = "ITEMS";
constexpr std::string_view kLevelSection = "LEQ";
constexpr std::string_view kTimeSection = "TIME";

// Converts the items in order, in the form's unit, and stops before the first that has a zero.
struct ConvertedItems {
    std::vector<double> levels_dba;
    std::vector<double> durations;
};

ConvertedItems ConvertItems(const std::vector<ExposureItem>& items) {
    ConvertedItems converted;
    converted.levels_dba.reserve(items.size());
    converted.durations.reserve(items.size());
    for (const ExposureItem& item : items) {
        const double level = ParseNumber(item.level_dba);
        const double duration = ParseNumber(item.duration);
        if (level == 0 || duration == 0) break;
        converted.levels_dba.push_back(level);
        converted.durations.push_back(duration);
    }
    return converted;
}

// The results as numbers, before they are shown.
struct DailyExposureValues {
    double equivalent_level_dba = 0;
    double total_time_s = 0;
    double daily_level_dba = 0;
};

DailyExposureValues Compute(const ConvertedItems& items, const TimeUnit& unit) {
    std::vector<double> durations_s = items.durations;
    for (double& duration : durations_s) duration *= unit.seconds;
    DailyExposureValues values;
    values.equivalent_level_dba = EquivalentLevel(items.levels_dba, durations_s);
    values.total_time_s = TotalTime(durations_s);
    values.daily_level_dba = DailyExposureLevel(values.equivalent_level_dba, values.total_time_s);
    return values;
}

// Computes the form's results and keeps its items, as told of Recompute; nullopt when an item is
// refused.
std::optional<DailyExposureValues> RecomputeValues(DailyExposureForm& form,
                                                   DailyExposureState& state) {
    ConvertedItems items = ConvertItems(form.items);
    std::optional<DailyExposureValues> values;
    if (items.levels_dba.size() == form.items.size()) {
        const TimeUnit& unit = TimeUnitAt(form.time_unit);
        values = Compute(items, unit);
        form.equivalent_level_dba = FormatFixed(values->equivalent_level_dba, 4, 1);
        form.total_time = FormatTotalTime(values->total_time_s, unit);
        form.daily_level_dba = FormatFixed(values->daily_level_dba, 4, 1);
    }
    state.levels_dba = std::move(items.levels_dba);
    state.durations = std::move(items.durations);
    state.levels_dba.resize(form.items.size());
    state.durations.resize(form.items.size());
    state.time_unit = form.time_unit;
    return values;
}

std::vector<Contribution> ContributionsOf(const DailyExposureForm& form,
                                          const DailyExposureState& state) {
    const std::vector<double> shares = ExposureShares(state.levels_dba, state.durations);
    const std::string unit(TimeUnitAt(form.time_unit).name);
    std::vector<Contribution> contributions;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const ExposureItem& item = form.items[i];
        std::string part(TrimBlanks(item.level_dba));
        part.append(" dBA, ").append(TrimBlanks(item.duration));
        if (!unit.empty()) part.append(" ").append(unit);
        contributions.push_back({std::move(part), shares[i]});
    }
    return contributions;
}

UserMessage ItemsRefusal() {
    return {"Errore", "Errore nei valori!"};
}

}  // namespace

std::optional<UserMessage> CheckExposureItem(const ExposureItem& item) {
    if (auto refusal = CheckTypedLevel(item.level_dba)) return refusal;
    return CheckTypedValue(item.duration, "Tempo esposizione ");
}

std::optional<UserMessage> Recompute(DailyExposureForm& form, DailyExposureState& state) {
    if (RecomputeValues(form, state)) return std::nullopt;
    return ItemsRefusal();
}

DailyExposureForm FormFromState(const DailyExposureState& state) {
    DailyExposureForm form;
    form.items.reserve(state.levels_dba.size());
    for (std::size_t i = 0; i < state.levels_dba.size(); ++i) {
        form.items.push_back(
            {FormatFixed(state.levels_dba[i], 4, 1), FormatFixed(state.durations[i], 4, 1)});
    }
    form.time_unit = state.time_unit;
    form.notes = state.notes;
    return form;
}

void KeepForm(const DailyExposureForm& form, DailyExposureState& state) {
    state.levels_dba.clear();
    state.durations.clear();
    for (const ExposureItem& item : form.items) {
        state.levels_dba.push_back(ParseNumber(item.level_dba));
        state.durations.push_back(ParseNumber(item.duration));
    }
    state.time_unit = form.time_unit;
    state.notes = CutToCharacters(form.notes, kMaxKeptNotesCharacters);
}

bool LoadForm(const ProfileFile& file, DailyExposureForm& form) {
    if (!HasKind(file, FileKind::kLepd)) return false;
    TakeHeaderText(file, kLevelKey, form.equivalent_level_dba);
    TakeHeaderText(file, kTotalTimeKey, form.total_time);
    TakeHeaderText(file, kDailyLevelKey, form.daily_level_dba);
    form.time_unit = file.Integer(kHeaderSection, kTimeUnitKey);
    form.items.clear();
    const int item_count = file.Integer(kHeaderSection, kItemCountKey);
    for (const int number : file.NumberedKeys(kLevelSection, item_count)) {
        const std::string key = FormatInteger(number);
        form.items.push_back({file.Text(kLevelSection, key, kMaxValueCharacters).value_or(""),
                              file.Text(kTimeSection, key, kMaxValueCharacters).value_or("")});
    }
    form.notes = ReadNotes(file);
    return true;
}

void StoreForm(const DailyExposureForm& form, ProfileFile& file) {
    const int item_count = static_cast<int>(form.items.size());
    file.Set(kHeaderSection, kKindKey, InfoOf(FileKind::kLepd).tag);
    file.Set(kHeaderSection, kLevelKey, form.equivalent_level_dba);
    file.Set(kHeaderSection, kTotalTimeKey, form.total_time);
    file.Set(kHeaderSection, kDailyLevelKey, form.daily_level_dba);
    file.Set(kHeaderSection, kTimeUnitKey, FormatInteger(form.time_unit));
    file.Set(kHeaderSection, kItemCountKey, FormatInteger(item_count));
    for (int i = 0; i < item_count; ++i) {
        const ExposureItem& item = form.items[static_cast<std::size_t>(i)];
        const std::string key = FormatInteger(i + 1);
        file.Set(kLevelSection, key, item.level_dba);
        file.Set(kTimeSection, key, item.duration);
    }
    file.RemoveNumberedKeysAbove(kLevelSection, item_count);
    file.RemoveNumberedKeysAbove(kTimeSection, item_count);
    WriteNotes(file, CutToCharacters(form.notes, kMaxKeptNotesCharacters));
}

std::string Summary(const DailyExposureForm& form, std::string_view list_separator) {
    const std::string unit_text(TimeUnitAt(form.time_unit).report_text);
    SummaryText summary(list_separator);
    summary.AddLine(
        {"Calcolo del livello di esposizione personale giornaliero al rumore (Lep,d)", "", "", ""});
    summary.AddLine({"Livelli equivalenti (dBA):", "", "Tempi di esposizione " + unit_text + ":"});
    for (const ExposureItem& item : form.items) {
        summary.AddLine({WithDecimalComma(item.level_dba), "", WithDecimalComma(item.duration)});
    }
    summary.AddLine(
        {"Livello equivalente (dBA):", "", WithDecimalComma(form.equivalent_level_dba)});
    summary.AddLine(
        {"Tempo di esposizione " + unit_text + ":", "", WithDecimalComma(form.total_time)});
    summary.AddLine({"Lep,d (dBA):", "", WithDecimalComma(form.daily_level_dba)});
    summary.AddNotes(form.notes);
    return summary.Take();
}

Printout MakePrintout(const DailyExposureForm& form) {
    const std::string suffix(TimeUnitAt(form.time_unit).suffix);
    Printout printout;
    printout.document_name = "Livello di esposizione personale quotidiano (Lep,d)";
    // The printout of the day carries the title of the week's: users' archives expect it so.
    printout.lines.push_back({"Livello di esposizione personale settimanale (Lep,w)", ""});
    printout.lines.push_back(
        {"Livelli sonori equivalenti (dBA):", "Tempi di esposizione " + suffix});
    for (const ExposureItem& item : form.items) {
        printout.lines.push_back({item.level_dba, item.duration});
    }
    printout.lines.push_back({"Livello equivalente (dBA): ", form.equivalent_level_dba});
    printout.lines.push_back({"Tempo d'esposizione totale " + suffix, form.total_time});
    printout.lines.push_back({"Lep,d (dBA): ", form.daily_level_dba});
    printout.notes = CutToCharacters(form.notes, kMaxKeptNotesCharacters);
    printout.notes_gap = 4;
    return printout;
}

Assessment AssessDailyExposure(const ProfileFile& file) {
    DailyExposureForm form;
    LoadForm(file, form);
    DailyExposureState state;
    const std::optional<DailyExposureValues> values = RecomputeValues(form, state);
    if (!values) {
        return RefusedAssessment(ItemsRefusal(), {{kLevelKey}, {kTotalTimeKey}, {kDailyLevelKey}});
    }
    const double total_time = values->total_time_s * TimeUnitAt(form.time_unit).per_second;
    Assessment assessment;
    assessment.results = {
        {kLevelKey, form.equivalent_level_dba, values->equivalent_level_dba},
        {kTotalTimeKey, form.total_time, total_time},
        {kDailyLevelKey, form.daily_level_dba, values->daily_level_dba},
    };
    assessment.contributions = ContributionsOf(form, state);
    AddTexts(assessment, form);
    return assessment;
}

}  // namespace tonvale
