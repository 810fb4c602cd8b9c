#include "exposure/weekly_exposure.h"

#include <algorithm>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/summary_text.h"
#include "common/text.h"
#include "exposure/exposure_level.h"

namespace tonvale {

namespace {

constexpr std::string_view kWeeklyLevelKey = "LEPW";
constexpr std::string_view kDaysSection = "GIORNI";

}  // namespace

void Recompute(WeeklyExposureForm& form, WeeklyExposureState& state) {
    std::transform(form.levels_dba.begin(), form.levels_dba.end(), state.levels_dba.begin(),
                   ParseNumber);
    form.weekly_level_dba = FormatFixed(WeeklyExposureLevel(state.levels_dba), 4, 1);
}

WeeklyExposureForm FormFromState(const WeeklyExposureState& state) {
    WeeklyExposureForm form;
    for (std::size_t day = 0; day < kWeekDays; ++day) {
        const std::string level = FormatFixed(state.levels_dba[day], 4, 1);
        form.levels_dba[day] = CutToCharacters(level, kMaxValueCharacters);
    }
    form.notes = state.notes;
    return form;
}

void KeepForm(const WeeklyExposureForm& form, WeeklyExposureState& state) {
    state.notes = CutToCharacters(form.notes, kMaxNotesCharacters);
}

bool LoadForm(const ProfileFile& file, WeeklyExposureForm& form) {
    if (!HasKind(file, FileKind::kLepw)) return false;
    TakeHeaderText(file, kWeeklyLevelKey, form.weekly_level_dba);
    for (std::size_t day = 0; day < kWeekDays; ++day) {
        form.levels_dba[day] =
            file.Text(kDaysSection, kDayNames[day], kMaxValueCharacters).value_or("");
    }
    form.notes = ReadNotes(file);
    return true;
}

void StoreForm(const WeeklyExposureForm& form, ProfileFile& file) {
    file.Set(kHeaderSection, kKindKey, InfoOf(FileKind::kLepw).tag);
    file.Set(kHeaderSection, kWeeklyLevelKey, form.weekly_level_dba);
    for (std::size_t day = 0; day < kWeekDays; ++day) {
        file.Set(kDaysSection, kDayNames[day], form.levels_dba[day]);
    }
    WriteNotes(file, CutToCharacters(form.notes, kMaxNotesCharacters));
}

std::string Summary(const WeeklyExposureForm& form, std::string_view list_separator) {
    SummaryText summary(list_separator);
    summary.AddLine(
        {"Calcolo del livello di esposizione personale settimanale al rumore (Lep,w)", "", "", ""});
    summary.AddLine({"Giorno della settimana:", "", "Lep,d (dBA):"});
    for (std::size_t day = 0; day < kWeekDays; ++day) {
        summary.AddLine({kDayNames[day], "", WithDecimalComma(form.levels_dba[day])});
    }
    summary.AddLine({"Lep,w (dBA):", "", WithDecimalComma(form.weekly_level_dba)});
    summary.AddNotes(form.notes);
    return summary.Take();
}

Printout MakePrintout(const WeeklyExposureForm& form) {
    Printout printout;
    printout.document_name = "Livello di esposizione personale settimanale (Lep,w)";
    printout.lines.push_back({printout.document_name, ""});
    printout.lines.push_back({"Giorni della settimana:", "Lep,d corrispondenti (dBA):"});
    for (std::size_t day = 0; day < kWeekDays; ++day) {
        printout.lines.push_back({std::string(kDayNames[day]), form.levels_dba[day]});
    }
    printout.lines.push_back({"Lep,w (dBA): ", form.weekly_level_dba});
    printout.notes = CutToCharacters(form.notes, kMaxNotesCharacters);
    printout.notes_gap = 3;
    return printout;
}

Assessment AssessWeeklyExposure(const ProfileFile& file) {
    WeeklyExposureForm form;
    LoadForm(file, form);
    WeeklyExposureState state;
    Recompute(form, state);
    Assessment assessment;
    assessment.results = {
        {kWeeklyLevelKey, form.weekly_level_dba, WeeklyExposureLevel(state.levels_dba)}};
    AddTexts(assessment, form);
    return assessment;
}

}  // namespace tonvale
