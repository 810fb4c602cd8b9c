#include "exposure/group_exposure.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/summary_text.h"
#include "common/text.h"
#include "exposure/level_statistics.h"
#include "exposure/student_t.h"

namespace tonvale {

namespace {

constexpr std::string_view kSampleCountKey = "SAMPLES";
constexpr std::string_view kMeanKey = "LEQGROUP";
constexpr std::string_view kDeviationKey = "DEVST";
constexpr std::string_view kTotalKey = "TOTLAV";
constexpr std::string_view kConfidenceKey = "FIDUCIA";
constexpr std::string_view kIntervalKey = "CONFIDENZA";
constexpr std::string_view kItemCountKey = "ITEMS";
constexpr std::string_view kLevelSection = "LEQ";

constexpr std::uint32_t kMinWorkers = 4;
constexpr std::uint32_t kMinSamples = 3;

static_assert(kConfidencePercents.size() == kStudentProbabilities.size());

// The item of a list, or nothing for an index outside it.
std::string_view ItemAt(std::span<const std::string_view> items, int index) {
    const bool known = index >= 0 && index < static_cast<int>(items.size());
    return known ? items[static_cast<std::size_t>(index)] : std::string_view();
}

double IntervalDb(int index) {
    return index + 1.0;
}

std::uint32_t WorkersOf(const GroupExposureForm& form) {
    return ParseUnsigned(TrimBlanks(form.total_workers));
}

double HalfWidthDb(double sample_count, double total_workers, double deviation_db,
                   double quantile) {
    return quantile * deviation_db / std::sqrt(sample_count) *
           std::sqrt((total_workers - sample_count) / (total_workers - 1));
}

// The results as numbers, before they are shown.
struct GroupExposureValues {
    double mean_level_dba = 0;
    double deviation_db = 0;
    std::optional<std::uint64_t> required_samples;  // none for fewer than kMinSamples
};

GroupExposureValues Compute(const GroupExposureState& state) {
    const LevelStatistics statistics = StatisticsOf(state.levels_dba);
    GroupExposureValues values{statistics.mean_dba, std::sqrt(statistics.variance_db2), {}};
    if (state.levels_dba.size() >= kMinSamples) {
        values.required_samples = RequiredSamples(state.total_workers, values.deviation_db,
                                                  state.confidence, IntervalDb(state.interval));
    }
    return values;
}

// The verdict when more samples are needed.
std::string Demand(std::string_view purpose, std::uint64_t samples) {
    return std::string(purpose) + " è necessario inserire almeno " +
           FormatInteger(static_cast<long long>(samples)) + " campioni";
}

void ShowValues(const GroupExposureValues& values, GroupExposureForm& form) {
    form.sample_count = FormatInteger(static_cast<long long>(form.levels_dba.size()));
    form.mean_level_dba = FormatFixed(values.mean_level_dba, 4, 1);
    form.deviation_db = FormatFixed(values.deviation_db, 4, 1);
    form.is_validated =
        values.required_samples && *values.required_samples <= form.levels_dba.size();
    if (form.is_validated) {
        form.verdict = "Sono stati inseriti i campioni necessari per validare i risultati";
    } else if (values.required_samples) {
        form.verdict = Demand("Per validare i risultati", *values.required_samples);
    } else {
        form.verdict = Demand("Per far partire il calcolo", kMinSamples);
    }
}

// Keeps the form's samples in `state` up to the first that is 0, zeros for the others. False when
// there is such a sample.
bool KeepSamples(const GroupExposureForm& form, GroupExposureState& state) {
    state.levels_dba.assign(form.levels_dba.size(), 0);
    for (std::size_t i = 0; i < form.levels_dba.size(); ++i) {
        state.levels_dba[i] = ParseNumber(form.levels_dba[i]);
        if (state.levels_dba[i] == 0) return false;
    }
    return true;
}

// Why the form cannot be computed with, once `state` has its settings and samples.
std::optional<UserMessage> KeepInputs(const GroupExposureForm& form, GroupExposureState& state) {
    state.confidence = form.confidence;
    state.interval = form.interval;
    state.total_workers = WorkersOf(form);
    if (state.total_workers < kMinWorkers) {
        return UserMessage{"Attenzione: dato incompleto o mancante",
                           "Inserire un valore maggiore di 3 per il totale dei lavoratori"};
    }
    if (!KeepSamples(form, state)) return UserMessage{"Errore", "Errore nei valori!"};
    return std::nullopt;
}

void TakeIndex(const ProfileFile& file, std::string_view key, int& index) {
    if (file.Find(kHeaderSection, key)) index = file.Integer(kHeaderSection, key);
}

}  // namespace

// The half-width never grows with m, nor does its computed value: each step of HalfWidthDb is a
// correctly rounded operation on factors that are positive and do not grow with m, and such
// operations keep the order. So do StudentQuantile and RoundHalvesUp, and the numbers that qualify
// are the last ones: bisection finds the first of them, as trying one after the other would.
std::uint64_t RequiredSamples(std::uint32_t total_workers, double deviation_db, int confidence,
                              double interval_db) {
    const auto qualifies = [&](std::uint64_t samples) {
        const double quantile =
            StudentQuantile(static_cast<std::uint32_t>(samples - 1), confidence);
        const double half_width =
            HalfWidthDb(static_cast<double>(samples), total_workers, deviation_db, quantile);
        return RoundHalvesUp(half_width) <= interval_db;
    };
    std::uint64_t first = kMinSamples;
    std::uint64_t end = std::max<std::uint64_t>(total_workers + std::uint64_t{1}, kMinSamples);
    while (first < end) {
        const std::uint64_t middle = first + (end - first) / 2;
        if (qualifies(middle)) {
            end = middle;
        } else {
            first = middle + 1;
        }
    }
    return first;
}

std::optional<UserMessage> Recompute(GroupExposureForm& form, GroupExposureState& state) {
    if (auto refusal = KeepInputs(form, state)) return refusal;
    ShowValues(Compute(state), form);
    return std::nullopt;
}

GroupExposureForm FormFromState(const GroupExposureState& state) {
    GroupExposureForm form;
    for (const double level : state.levels_dba) {
        form.levels_dba.emplace_back(
            CutToCharacters(FormatFixed(level, 4, 1), kMaxValueCharacters));
    }
    form.total_workers = FormatInteger(state.total_workers);
    form.confidence = state.confidence;
    form.interval = state.interval;
    form.notes = state.notes;
    return form;
}

void KeepForm(const GroupExposureForm& form, GroupExposureState& state) {
    state.levels_dba.clear();
    for (const std::string& level : form.levels_dba) state.levels_dba.push_back(ParseNumber(level));
    state.confidence = form.confidence;
    state.interval = form.interval;
    if (!form.total_workers.empty()) state.total_workers = WorkersOf(form);
    state.notes = CutToCharacters(form.notes, kMaxNotesCharacters);
}

bool LoadForm(const ProfileFile& file, GroupExposureForm& form) {
    if (!HasKind(file, FileKind::kLeg)) return false;
    TakeHeaderText(file, kSampleCountKey, form.sample_count);
    TakeHeaderText(file, kMeanKey, form.mean_level_dba);
    TakeHeaderText(file, kDeviationKey, form.deviation_db);
    TakeIndex(file, kConfidenceKey, form.confidence);
    TakeIndex(file, kIntervalKey, form.interval);
    form.levels_dba.clear();
    const int item_count = file.Integer(kHeaderSection, kItemCountKey);
    for (const int number : file.NumberedKeys(kLevelSection, item_count)) {
        form.levels_dba.push_back(
            file.Text(kLevelSection, FormatInteger(number), kMaxValueCharacters).value_or(""));
    }
    if (const auto total = file.Text(kHeaderSection, kTotalKey, kMaxValueCharacters)) {
        form.total_workers = FormatInteger(ParseUnsigned(TrimBlanks(*total)));
    }
    form.notes = ReadNotes(file);
    return true;
}

void StoreForm(const GroupExposureForm& form, ProfileFile& file) {
    const int item_count = static_cast<int>(form.levels_dba.size());
    file.Set(kHeaderSection, kKindKey, InfoOf(FileKind::kLeg).tag);
    file.Set(kHeaderSection, kSampleCountKey, form.sample_count);
    file.Set(kHeaderSection, kMeanKey, form.mean_level_dba);
    file.Set(kHeaderSection, kDeviationKey, form.deviation_db);
    file.Set(kHeaderSection, kTotalKey, form.total_workers);
    file.Set(kHeaderSection, kConfidenceKey, FormatInteger(form.confidence));
    file.Set(kHeaderSection, kIntervalKey, FormatInteger(form.interval));
    file.Set(kHeaderSection, kItemCountKey, FormatInteger(item_count));
    for (int i = 0; i < item_count; ++i) {
        file.Set(kLevelSection, FormatInteger(i + 1), form.levels_dba[static_cast<std::size_t>(i)]);
    }
    file.RemoveNumberedKeysAbove(kLevelSection, item_count);
    WriteNotes(file, CutToCharacters(form.notes, kMaxNotesCharacters));
}

std::string Summary(const GroupExposureForm& form, std::string_view list_separator) {
    SummaryText summary(list_separator);
    summary.AddLine(
        {"Calcolo del livello equivalente di rumore per gruppi di lavoratori (Leq gruppi)", "", "",
         ""});
    summary.AddLine({"Livelli equivalenti (dBA):", "", "", ""});
    for (const std::string& level : form.levels_dba) {
        summary.AddLine({WithDecimalComma(level), "", "", ""});
    }
    summary.AddLine(
        {"Coefficiente di fiducia (%):", "", ItemAt(kConfidencePercents, form.confidence)});
    summary.AddLine(
        {"Intervallo di confidenza (dB):", "", ItemAt(kConfidenceIntervalsDb, form.interval)});
    summary.AddLine({"Numero totale lavoratori del gruppo:", "", form.total_workers});
    summary.AddLine({"Numero di campioni prelevati:", "", form.sample_count});
    summary.AddLine({"Leq,gruppo (dBA):", "", WithDecimalComma(form.mean_level_dba)});
    summary.AddLine(
        {"Deviazione standard del Leq,gruppo (dBA):", "", WithDecimalComma(form.deviation_db)});
    summary.AddLine({form.verdict, "", "", ""});
    summary.AddNotes(form.notes);
    return summary.Take();
}

Printout MakePrintout(const GroupExposureForm& form) {
    const std::string_view percent = ItemAt(kConfidencePercents, form.confidence);
    Printout printout;
    printout.document_name = "Livello equivalente per gruppi di lavoratori (Leq,gruppo)";
    printout.lines = {
        {printout.document_name},
        {"Numero totale di lavoratori del gruppo in esame: " + form.total_workers},
        {"Coefficiente di fiducia: " + (percent.empty() ? "" : std::string(percent) + "%")},
        {"Intervallo di confidenza: " + FormatFixed(IntervalDb(form.interval), 0, 0) + " dB"},
        {"Livelli sonori equivalenti (dBA):"},
    };
    for (const std::string& level : form.levels_dba) printout.lines.push_back({level});
    const auto add_result = [&](std::string label, const std::string& result) {
        printout.lines.push_back({std::move(label), result, SecondColumn::kTwoThirds});
    };
    add_result("Numero campioni:", form.sample_count);
    add_result("Livello equivalente medio del gruppo (dBA): ", form.mean_level_dba);
    add_result("Deviazione standard del livello equivalente (dBA):", form.deviation_db);
    printout.closing_text = form.verdict;
    printout.notes = CutToCharacters(form.notes, kMaxNotesCharacters);
    printout.notes_gap = 3;
    return printout;
}

Assessment AssessGroupExposure(const ProfileFile& file) {
    GroupExposureForm form;
    LoadForm(file, form);
    GroupExposureState state;
    if (const auto refusal = KeepInputs(form, state)) {
        return RefusedAssessment(*refusal, {{kSampleCountKey}, {kMeanKey}, {kDeviationKey}});
    }
    const GroupExposureValues values = Compute(state);
    ShowValues(values, form);
    Assessment assessment;
    assessment.results = {
        {kSampleCountKey, form.sample_count, static_cast<double>(form.levels_dba.size())},
        {kMeanKey, form.mean_level_dba, values.mean_level_dba},
        {kDeviationKey, form.deviation_db, values.deviation_db},
    };
    DetailValue required = nullptr;
    if (values.required_samples) required = static_cast<double>(*values.required_samples);
    assessment.details = {{"required", std::move(required)}, {"verdict", form.verdict}};
    AddTexts(assessment, form);
    return assessment;
}

}  // namespace tonvale
