#include "protectors/spectrum_form.h"

#include <algorithm>
#include <utility>

#include "common/notes.h"
#include "common/numbers.h"
#include "common/summary_text.h"
#include "common/text.h"

namespace tonvale {

namespace {

constexpr Color kWhite{255, 255, 255};

std::string_view TypedPart(std::string_view text) {
    return CutToCharacters(text, kMaxBandCharacters);
}

double FieldValue(std::string_view text) {
    return ParseNumber(TypedPart(text));
}

std::string Shown(const SpectrumKind& kind, double value) {
    return FormatFixed(value, kind.number_width, 1);
}

// Empties `text` when it is above the highest value; the message has its label as caption, or the
// text itself.
std::optional<UserMessage> CheckEntry(const SpectrumKind& kind, std::string& text,
                                      std::string_view label) {
    if (text.empty() || FieldValue(text) <= kind.chart.full_scale_db) return std::nullopt;
    UserMessage message{std::string(kind.refusal_shows_text ? TypedPart(text) : label),
                        "Valore troppo elevato."};
    text.clear();
    return message;
}

// The numbers before they were rounded; of results that stand as they were, what their texts say.
std::array<double, kMaxSpectrumResults> RecomputeValues(SpectrumForm& form) {
    const SpectrumKind& kind = *form.kind;
    std::array<double, kMaxSpectrumResults> values{};
    ReducedValues reduced{};
    if (!kind.results_are_entries || IsComplete(form)) reduced = kind.reduce(BandLevels(form));
    for (std::size_t i = 0; i < kind.results.size(); ++i) {
        if (kind.results_are_entries && reduced[i].shown == 0) {
            values[i] = FieldValue(form.results[i]);
            continue;
        }
        values[i] = reduced[i].exact;
        form.results[i] = Shown(kind, reduced[i].shown);
    }
    return values;
}

std::vector<UserMessage> CheckBands(SpectrumForm& form) {
    std::vector<UserMessage> refusals;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        auto refusal = CheckEntry(*form.kind, form.bands[i], kOctaveBands[i].label);
        if (refusal) refusals.push_back(*std::move(refusal));
    }
    return refusals;
}

PrintoutDrawing ChartDrawing(const SpectrumForm& form) {
    PrintoutDrawing drawing;
    drawing.first_line = form.kind->printout_drawing_line;
    drawing.draw = [form](Canvas& canvas, const Rect& area, bool use_color) {
        DrawChart(canvas, area, form, use_color ? kChartGround : kWhite);
    };
    drawing.draw_captions = DrawOctaveBandNames;
    return drawing;
}

}  // namespace

OctaveSpectrum BandLevels(const SpectrumForm& form) {
    OctaveSpectrum levels_db;
    std::transform(form.bands.begin(), form.bands.end(), levels_db.begin(), FieldValue);
    return levels_db;
}

bool IsComplete(const SpectrumForm& form) {
    return std::none_of(form.bands.begin(), form.bands.end(),
                        [](const std::string& text) { return text.empty(); });
}

void Recompute(SpectrumForm& form) {
    RecomputeValues(form);
}

std::optional<UserMessage> EnterBand(SpectrumForm& form, std::size_t band) {
    auto refusal = CheckEntry(*form.kind, form.bands[band], kOctaveBands[band].label);
    Recompute(form);
    return refusal;
}

std::optional<UserMessage> EnterResult(SpectrumForm& form, std::size_t result) {
    return CheckEntry(*form.kind, form.results[result], form.kind->results[result].key);
}

SpectrumForm FormFromState(const SpectrumState& state) {
    SpectrumForm form(*state.kind);
    const auto show = [&](double value) { return Shown(*state.kind, value); };
    std::transform(state.levels_db.begin(), state.levels_db.end(), form.bands.begin(), show);
    std::transform(state.results_db.begin(), state.results_db.end(), form.results.begin(), show);
    form.notes = state.notes;
    if (!state.kind->results_are_entries) Recompute(form);
    return form;
}

void KeepForm(const SpectrumForm& form, SpectrumState& state) {
    state.levels_db = BandLevels(form);
    std::transform(form.results.begin(), form.results.end(), state.results_db.begin(), FieldValue);
    state.notes = CutToCharacters(form.notes, kMaxKeptNotesCharacters);
}

std::string BandText(const ProfileFile& file, std::size_t band) {
    return file.Text(kSpectrumSection, kOctaveBands[band].key, kMaxValueCharacters).value_or("0");
}

bool LoadForm(const ProfileFile& file, SpectrumForm& form) {
    if (!HasKind(file, form.kind->file_kind)) return false;
    for (std::size_t i = 0; i < form.kind->results.size(); ++i) {
        TakeHeaderText(file, form.kind->results[i].key, form.results[i]);
    }
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) form.bands[i] = BandText(file, i);
    form.notes = ReadNotes(file);
    return true;
}

std::vector<UserMessage> CompleteLoad(SpectrumForm& form) {
    std::vector<UserMessage> refusals = CheckBands(form);
    Recompute(form);
    return refusals;
}

void StoreForm(const SpectrumForm& form, ProfileFile& file) {
    file.Set(kHeaderSection, kKindKey, InfoOf(form.kind->file_kind).tag);
    for (std::size_t i = 0; i < form.kind->results.size(); ++i) {
        file.Set(kHeaderSection, form.kind->results[i].key, form.results[i]);
    }
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        file.Set(kSpectrumSection, kOctaveBands[i].key, form.bands[i]);
    }
    WriteNotes(file, CutToCharacters(form.notes, kMaxKeptNotesCharacters));
}

void DrawChart(Canvas& canvas, const Rect& area, const SpectrumForm& form, Color ground) {
    DrawOctaveChart(canvas, area, form.kind->chart, BandLevels(form), ground);
}

std::string Summary(const SpectrumForm& form, std::string_view list_separator) {
    SummaryText summary(list_separator);
    summary.AddLine({form.kind->summary_title, "", "", ""});
    summary.AddLine({"Frequenza (Hz):", "", form.kind->summary_column});
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        summary.AddLine({kOctaveBands[i].key, "", WithDecimalComma(form.bands[i])});
    }
    for (std::size_t i = 0; i < form.kind->results.size(); ++i) {
        summary.AddLine(
            {form.kind->results[i].summary_label, "", WithDecimalComma(form.results[i])});
    }
    summary.AddLine({"Note:"});
    summary.AddLine({form.notes});
    return summary.Take();
}

Printout MakePrintout(const SpectrumForm& form) {
    Printout printout;
    printout.document_name = form.kind->document_name;
    printout.lines.push_back({std::string(form.kind->printout_title)});
    printout.lines.push_back({"Frequenze (Hz):", std::string(form.kind->printout_column)});
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        const std::string& text = form.bands[i];
        printout.lines.push_back({std::string(kOctaveBands[i].key), text.empty() ? "0.0" : text});
    }
    for (std::size_t i = 0; i < form.kind->results.size(); ++i) {
        printout.lines.push_back({std::string(form.kind->results[i].printout_label),
                                  form.results[i], SecondColumn::kTwoThirds});
    }
    printout.drawing = ChartDrawing(form);
    printout.notes = CutToCharacters(form.notes, kMaxKeptNotesCharacters);
    return printout;
}

Assessment AssessSpectrum(const SpectrumKind& kind, const ProfileFile& file) {
    SpectrumForm form(kind);
    LoadForm(file, form);
    Assessment assessment;
    for (const UserMessage& refusal : CheckBands(form)) {
        assessment.warnings.push_back(refusal.caption + ": " + refusal.text);
    }
    assessment.findings = assessment.warnings;
    const auto values = RecomputeValues(form);
    for (std::size_t i = 0; i < kind.results.size(); ++i) {
        assessment.results.push_back({kind.results[i].key, form.results[i], values[i]});
    }
    AddTexts(assessment, form);
    return assessment;
}

}  // namespace tonvale
