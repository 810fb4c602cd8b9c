#include "exposure/uncertainty_report.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "common/notes.h"
#include "common/numbers.h"
#include "common/summary_text.h"
#include "common/text.h"
#include "exposure/time_unit.h"
#include "exposure/uncertainty_file.h"

namespace tonvale {

namespace {

using enum UncertaintyPage;

constexpr std::size_t kMaxReportCharacters = 1023;

// --- The report's lines ------------------------------------------------------------------------

// Tells a level or an error: the value stands directly after the text.
std::string LevelLine(std::string_view what, const std::string& value) {
    return std::string(what).append(value).append(" dBA.");
}

std::string TimeWithUnit(const std::string& time, const UncertaintyStudy& study) {
    const std::string_view unit = TimeUnitAt(study.time_unit).name;
    return unit.empty() ? time : std::string(time).append(" ").append(unit);
}

std::string InstrumentError(const UncertaintyStudy& study) {
    return FormatFixed(study.instrument_error_db, 4, 2);
}

using Lines = std::vector<std::string>;

constexpr std::string_view kInstrumentErrorIs = "L'errore dello strumento è ";

// The lines on the errors of the quantity `name`.
void AddErrors(const std::string& name, const LevelTexts& texts, const UncertaintyStudy& study,
               Lines& lines) {
    lines.push_back(
        LevelLine("L'errore ambientale del " + name + " è ", texts.environmental_error_db));
    lines.push_back(LevelLine(kInstrumentErrorIs, InstrumentError(study)));
    lines.push_back(LevelLine("L'errore totale del " + name + " è ", texts.total_error_db));
}

Lines StartLines(const UncertaintyStudy& study) {
    if (study.is_sampled) return {};
    const std::string instrument_error = InstrumentError(study);
    return {
        "Il livello equivalente non è stato campionato.",
        LevelLine("Il livello equivalente (LEQ) è ", FormatFixed(study.measured_level_dba, 5, 1)),
        "L'errore ambientale del LEQ è nullo.",
        LevelLine(kInstrumentErrorIs, instrument_error),
        LevelLine("L'errore totale del LEQ è ", instrument_error),
    };
}

Lines LevelLines(const UncertaintyStudy& study) {
    const LevelTexts texts = TextsOf(study.level.level);
    Lines lines{
        "Il livello equivalente è stato campionato.",
        LevelLine("Il livello equivalente (LEQ) calcolato statisticamente è ", texts.level_dba)};
    if (study.corrects_time) {
        lines.emplace_back("E' stata utilizzata la correzione dovuta al tempo di campionamento.");
        lines.push_back("Il tempo di campionamento è pari a " +
                        TimeWithUnit(SampledTimeText(study), study) + " su un totale di " +
                        TimeWithUnit(RepresentedTimeText(study), study) + ".");
    }
    AddErrors("LEQ", texts, study, lines);
    return lines;
}

Lines DayLines(const UncertaintyStudy& study) {
    const LevelTexts texts = TextsOf(study.day.day);
    Lines lines{
        LevelLine("Il livello di esposizione personale quotidiano (LEP,D) è ", texts.level_dba),
        "Il tempo di esposizione totale è pari a " + TimeWithUnit(TotalTimeText(study), study) +
            "."};
    AddErrors("LEP,D", texts, study, lines);
    return lines;
}

Lines WeekLines(const UncertaintyStudy& study) {
    const LevelTexts texts = TextsOf(study.week);
    Lines lines{
        LevelLine("Il livello di esposizione personale settimanale (LEP,W) è ", texts.level_dba)};
    AddErrors("LEP,W", texts, study, lines);
    return lines;
}

// --- The results as the companion tells them ---------------------------------------------------

struct LabelledResult {
    std::string_view label;
    AssessedResult result;
};
using LabelledResults = std::vector<LabelledResult>;

// The keys of a level and of its two errors.
struct LevelKeys {
    std::string_view level;
    std::string_view environmental_error;
    std::string_view total_error;
};

void AddResult(std::string_view label, std::string_view key, std::string shown, double value,
               LabelledResults& results) {
    results.push_back({label, {key, std::move(shown), value, std::nullopt}});
}

void AddLevel(std::string_view label, const LevelKeys& keys, const UncertainLevel& level,
              LabelledResults& results) {
    const LevelTexts texts = TextsOf(level);
    AddResult(label, keys.level, texts.level_dba, level.level_dba, results);
    AddResult("Errore ambientale (dBA):", keys.environmental_error, texts.environmental_error_db,
              level.environmental_error_db, results);
    AddResult("Errore totale (dBA):", keys.total_error, texts.total_error_db, level.total_error_db,
              results);
}

LabelledResults StartResults(const UncertaintyStudy& /*study*/) {
    return {};
}

LabelledResults LevelResults(const UncertaintyStudy& study) {
    LabelledResults results;
    AddLevel("Livello equivalente (dBA):", {"LEQ", "LEQ_U", "LEQ_UTOT"}, study.level.level,
             results);
    AddResult("Tempo campionamento:", "LEQ_TIME", SampledTimeText(study), study.level.sampled_time,
              results);
    return results;
}

LabelledResults DayResults(const UncertaintyStudy& study) {
    const double equivalent = study.day.equivalent_level_dba;
    const double total_time = study.day.total_time_s * TimeUnitAt(study.time_unit).per_second;
    LabelledResults results;
    AddResult("Livello equivalente (dBA):", "LEPD_LEQ", FormatFixed(equivalent, 5, 1), equivalent,
              results);
    AddLevel("Lep,d (dBA):", {"LEPD", "LEPD_U", "LEPD_UTOT"}, study.day.day, results);
    AddResult("Tempo esposizione:", "LEPD_TIME", TotalTimeText(study), total_time, results);
    return results;
}

LabelledResults WeekResults(const UncertaintyStudy& study) {
    LabelledResults results;
    AddLevel("Lep,w (dBA):", {"LEPW", "LEPW_U", "LEPW_UTOT"}, study.week, results);
    return results;
}

// --- What the pages tell -----------------------------------------------------------------------

struct PageReport {
    std::string_view title;
    Lines (*lines)(const UncertaintyStudy& study);
    LabelledResults (*results)(const UncertaintyStudy& study);
};

// In the order of the pages' numbers.
constexpr std::array<PageReport, 4> kPageReports{{
    {"Errore di misura", StartLines, StartResults},
    {"Errore sul livello equivalente", LevelLines, LevelResults},
    {"Errore sul livello di esposizione personale quotidiano", DayLines, DayResults},
    {"Errore sul livello di esposizione personale settimanale", WeekLines, WeekResults},
}};

const PageReport& ReportOf(UncertaintyPage page) {
    return kPageReports[static_cast<std::size_t>(page) - static_cast<std::size_t>(kStart)];
}

// The results of the pages `walked`, one page after the other under its title.
std::string SummaryOf(const UncertaintyStudy& study, const std::vector<UncertaintyPage>& walked,
                      std::string_view list_separator) {
    SummaryText summary(list_separator);
    summary.AddLine({ReportOf(kStart).title, "", "", ""});
    if (!study.is_sampled) {
        summary.AddLine({"Livello equivalente pesato A (dBA):", "",
                         WithDecimalComma(FormatFixed(study.measured_level_dba, 5, 2))});
    }
    summary.AddLine({"Errore strumento (dBA):", "", WithDecimalComma(InstrumentError(study))});
    for (const UncertaintyPage page : walked) {
        summary.AddLine({ReportOf(page).title, "", "", ""});
        for (const LabelledResult& row : ReportOf(page).results(study)) {
            summary.AddLine({row.label, "", WithDecimalComma(row.result.shown)});
        }
    }
    summary.AddNotes(study.notes);
    return summary.Take();
}

}  // namespace

std::string ReportText(const UncertaintyStudy& study) {
    std::string text;
    for (const std::string& line : ReportOf(study.page).lines(study)) {
        text.append(line).append(kLineEnd);
    }
    return std::string(CutToCharacters(text, kMaxReportCharacters));
}

Printout MakePrintout(const UncertaintyStudy& study) {
    Printout printout;
    printout.document_name = ReportOf(kStart).title;
    printout.lines = {{std::string(ReportOf(study.page).title)}};
    printout.closing_text = ReportText(study);
    printout.notes = CutToCharacters(study.notes, kMaxNotesCharacters);
    printout.notes_gap = 3;
    return printout;
}

Assessment AssessUncertainty(const ProfileFile& file) {
    UncertaintyStudy study;
    LoadStudy(file, study);
    Assessment assessment;
    std::vector<UncertaintyPage> walked;
    for (UncertaintyPage page = NextPage(study); page != kResults; page = NextPage(study)) {
        ActivatePage(page, study);
        if (auto warning = ComputePage(study)) assessment.warnings.push_back(warning->text);
        for (LabelledResult& row : ReportOf(page).results(study)) {
            assessment.results.push_back(std::move(row.result));
        }
        walked.push_back(page);
    }
    assessment.details = {{"page", static_cast<double>(study.page)}, {"text", ReportText(study)}};
    assessment.findings = {"il file non conserva risultati: non c'è nulla da confrontare"};
    assessment.printout = MakePrintout(study);
    assessment.summarize = [study, walked](std::string_view list_separator) {
        return SummaryOf(study, walked, list_separator);
    };
    return assessment;
}

}  // namespace tonvale
