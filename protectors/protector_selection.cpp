#include "protectors/protector_selection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/summary_text.h"
#include "common/text.h"
#include "protectors/spectrum_form.h"

namespace tonvale {

namespace {

constexpr std::string_view kSettingsSection = "SETTINGS";
constexpr std::string_view kNoiseSection = "NOISE";
constexpr std::string_view kProtectorSection = "ATT";
constexpr std::string_view kActionLevelKey = "LACT";
constexpr std::string_view kEffectiveLevelKey = "LIVEFF";
constexpr std::string_view kMethodKey = "METODO";

constexpr std::size_t kMaxCheckedCharacters = 7;

// --- Rows of the file ----------------------------------------------------------------------------

struct NumberRow {
    std::string_view section;
    std::string_view key;
    CheckField field;
};
// Behind the two spectra.
constexpr std::array<NumberRow, 6> kNumberRows{{
    {kProtectorSection, "H", CheckField::kH},
    {kProtectorSection, "M", CheckField::kM},
    {kProtectorSection, "L", CheckField::kL},
    {kProtectorSection, "SNR", CheckField::kSnr},
    {kNoiseSection, "A", CheckField::kLaeq},
    {kNoiseSection, "C", CheckField::kLceq},
}};

std::vector<NumberRow> AllNumberRows() {
    std::vector<NumberRow> rows;
    for (const auto& [section, spectrum] :
         {std::pair{kNoiseSection, CheckField::kNoiseBands},
          std::pair{kProtectorSection, CheckField::kProtectorBands}}) {
        for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
            rows.push_back({section, kOctaveBands[i].key, BandField(spectrum, i)});
        }
    }
    rows.insert(rows.end(), kNumberRows.begin(), kNumberRows.end());
    return rows;
}

struct FlagRow {
    std::string_view section;
    std::string_view key;
    bool& (*flag)(SelectionState& state);
};
using State = SelectionState;
constexpr std::array<FlagRow, 6> kFlagRows{{
    {kNoiseSection, "CLASSE", [](State& state) -> bool& { return state.inputs.is_class_l; }},
    {kSettingsSection, "R1", [](State& state) -> bool& { return state.unfavourable_conditions; }},
    {kSettingsSection, "R2", [](State& state) -> bool& { return state.repetitive_short_noises; }},
    {kSettingsSection, "LAEQ", [](State& state) -> bool& { return state.information.has_laeq; }},
    {kSettingsSection, "LCEQ", [](State& state) -> bool& { return state.information.has_lceq; }},
    {kSettingsSection, "BDO", [](State& state) -> bool& { return state.information.has_spectrum; }},
}};

double FileNumber(const ProfileFile& file, std::string_view section, std::string_view key) {
    return ParseNumber(file.Text(section, key, kMaxValueCharacters).value_or("0"));
}

// --- Import --------------------------------------------------------------------------------------

struct ImportedLevel {
    std::string_view key;
    CheckField field;
};
constexpr std::array<ImportedLevel, 2> kImportedNoise{
    {{"LAEQ", CheckField::kLaeq}, {"LCEQ", CheckField::kLceq}}};
constexpr std::array<ImportedLevel, 4> kImportedRatings{{{"H", CheckField::kH},
                                                         {"M", CheckField::kM},
                                                         {"L", CheckField::kL},
                                                         {"SNR", CheckField::kSnr}}};

// Hands on the numbers of a spectrum's file; false when it is of another kind.
template <typename Take>
bool ForEachImported(const ProfileFile& file, FileKind kind, std::span<const ImportedLevel> levels,
                     CheckField spectrum, Take take) {
    if (!HasKind(file, kind)) return false;
    for (const ImportedLevel& level : levels) {
        const auto text = file.Text(kHeaderSection, level.key, kMaxValueCharacters);
        if (text) take(level.field, ParseNumber(*text));
    }
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
        take(BandField(spectrum, i), ParseNumber(BandText(file, i)));
    }
    return true;
}

template <typename Take>
bool ForEachNoiseValue(const ProfileFile& file, Take take) {
    return ForEachImported(file, FileKind::kSpr, kImportedNoise, CheckField::kNoiseBands, take);
}

template <typename Take>
bool ForEachProtectorValue(const ProfileFile& file, Take take) {
    return ForEachImported(file, FileKind::kSpi, kImportedRatings, CheckField::kProtectorBands,
                           take);
}

// Shows a number in the field of a page.
auto ShowIn(MethodPageForm& form) {
    return
        [&form](CheckField field, double value) { form.texts[field] = ShownValue(field, value); };
}

// Takes a number as the field of a page would show it.
auto TakeInto(PerCheckField<double>& values) {
    return [&values](CheckField field, double value) {
        // Most files hold one decimal, and a text takes long.
        const bool has_one_decimal = std::isfinite(value) && value * 10 == std::trunc(value * 10);
        values[field] = has_one_decimal ? value : ParseNumber(ShownValue(field, value));
    };
}

// --- Printout ------------------------------------------------------------------------------------

// "Laeq = 90.0 dBA": a value as it is printed.
std::string Named(std::string_view name, double value, std::string_view unit) {
    std::string text(name);
    return text.append(" = ").append(FormatFixed(value, 4, 1)).append(" ").append(unit);
}

std::string BandRow(const OctaveSpectrum& spectrum) {
    std::string row;
    for (const double value : spectrum) {
        row += row.empty() ? "    " : "  ";
        row += FormatFixed(value, 4, 1) + " dB";
    }
    return row;
}

std::vector<std::string> NoiseLines(CheckMethod method, const CheckInputs& inputs) {
    const std::string laeq = "    " + Named("Laeq", inputs.values[CheckField::kLaeq], "dBA");
    const std::string lceq = Named("Lceq", inputs.values[CheckField::kLceq], "dBC");
    switch (method) {
        case CheckMethod::kCorrectedSnr:
            return {laeq};
        case CheckMethod::kSnr:
            return {"    " + lceq};
        case CheckMethod::kHmlCheck:
            return {laeq + "  Classe di rumore " + (inputs.is_class_l ? "L" : "HM")};
        case CheckMethod::kHml:
            return {laeq + "  " + lceq};
        case CheckMethod::kOctaveBand:
            return {"    125 Hz   250 Hz   500 Hz   1 kHz    2 kHz    4 kHz    8 kHz",
                    BandRow(SpectrumOf(inputs.values, CheckField::kNoiseBands))};
    }
    return {};
}

std::string ProtectorLine(CheckMethod method, const PerCheckField<double>& values) {
    switch (method) {
        case CheckMethod::kCorrectedSnr:
        case CheckMethod::kSnr:
            return "    " + Named("SNR", values[CheckField::kSnr], "dB");
        case CheckMethod::kHmlCheck:
        case CheckMethod::kHml:
            return "    " + Named("H", values[CheckField::kH], "dB") + "   " +
                   Named("M", values[CheckField::kM], "dB") + "   " +
                   Named("L", values[CheckField::kL], "dB");
        case CheckMethod::kOctaveBand:
            return BandRow(SpectrumOf(values, CheckField::kProtectorBands));
    }
    return {};
}

// One text line under another.
class TextLines {
  public:
    void Add(std::string line) { lines_.push_back({std::move(line)}); }
    void AddIf(bool condition, std::string line) {
        if (condition) Add(std::move(line));
    }
    std::vector<PrintoutLine> Take() { return std::move(lines_); }

  private:
    std::vector<PrintoutLine> lines_;
};

void AddWork(const SelectionState& state, TextLines& lines) {
    const auto answer = [](bool yes) { return yes ? "SI" : "NO"; };
    lines.Add(std::string("Il lavoro si svolge in condizioni ambientali sfavorevoli? ") +
              answer(state.unfavourable_conditions));
    lines.Add(std::string("Il lavoro si svolge con esposizione ripetitiva a rumori di breve "
                          "durata? ") +
              answer(state.repetitive_short_noises));
    lines.Add("Tipologie consigliate di otoprotettore:");
    // On paper the ear-plugs with a band come before the covered muffs.
    constexpr std::array<std::size_t, kProtectorKinds.size()> kPrintedOrder{0, 2, 1, 3};
    const auto kinds =
        RecommendedKinds(state.unfavourable_conditions, state.repetitive_short_noises);
    for (const std::size_t kind : kPrintedOrder) {
        lines.AddIf(kinds[kind], "    " + std::string(kProtectorKinds[kind]));
    }
}

void AddMethod(const SelectionState& state, TextLines& lines) {
    lines.Add("Informazioni disponibili sul rumore:");
    lines.AddIf(state.information.has_laeq, "    Livello equivalente pesato A.");
    lines.AddIf(state.information.has_lceq, "    Livello equivalente pesato C.");
    lines.AddIf(state.information.has_spectrum, "    Spettro di frequenza in banda d'ottava.");
    const CheckMethodInfo* method = FindCheckMethod(state.method);
    if (method == nullptr) return lines.Add("Metodo di calcolo utilizzato: ");
    lines.Add("Metodo di calcolo utilizzato: " + std::string(method->printed_name));
    lines.Add("Caratteristiche del rumore:");
    for (std::string& line : NoiseLines(method->method, state.inputs)) lines.Add(std::move(line));
    lines.Add("Caratteristiche del DPI:");
    lines.Add(ProtectorLine(method->method, state.inputs.values));
}

void AddResult(const SelectionState& state, TextLines& lines) {
    if (state.effective_level_dba == 0) return;
    // In one line the sentence would be wider than a page.
    lines.Add("Il livello di pressione sonora equivalente ");
    lines.Add("risultante all'orecchio del lavoratore è pari a: " +
              FormatFixed(state.effective_level_dba, 4, 1) + " dBA");
    lines.Add("Il livello d'azione è: " + FormatFixed(state.action_level_dba, 4, 1) + " dBA");
    lines.Add("La protezione offerta dal DPI è da ritenersi " +
              std::string(
                  RatingLabel(RateProtection(state.effective_level_dba, state.action_level_dba))));
}

// --- Assessment ----------------------------------------------------------------------------------

std::vector<Detail> AssessmentDetails(const SelectionState& state, bool has_result) {
    std::vector<std::string> kinds;
    const auto recommended =
        RecommendedKinds(state.unfavourable_conditions, state.repetitive_short_noises);
    for (std::size_t i = 0; i < kProtectorKinds.size(); ++i) {
        if (recommended[i]) kinds.emplace_back(kProtectorKinds[i]);
    }
    std::vector<Detail> details{
        {"method", nullptr}, {"rating", nullptr}, {"text", nullptr}, {"kinds", std::move(kinds)}};
    if (FindCheckMethod(state.method) != nullptr)
        details[0].value = static_cast<double>(state.method);
    if (has_result) {
        details[1].value = std::string(
            RatingLabel(RateProtection(state.effective_level_dba, state.action_level_dba)));
        details[2].value = ResultText(state.effective_level_dba, state.action_level_dba);
    }
    return details;
}

}  // namespace

void SetInformation(const NoiseInformation& information, SelectionState& state) {
    state.information = information;
    if (AllowedMethod(state) == nullptr) state.method = -1;
}

const CheckMethodInfo* AllowedMethod(const SelectionState& state) {
    const CheckMethodInfo* method = FindCheckMethod(state.method);
    if (method == nullptr || !IsAvailable(method->method, state.information)) return nullptr;
    return method;
}

std::optional<std::size_t> ActionLevelPlace(const SelectionState& state) {
    const auto* found =
        std::find(kActionLevels.begin(), kActionLevels.end(), state.action_level_dba);
    if (found == kActionLevels.end()) return std::nullopt;
    return static_cast<std::size_t>(found - kActionLevels.begin());
}

std::string ShownValue(CheckField field, double value) {
    return FormatFixed(value, IsNoiseField(field) ? 5 : 4, 1);
}

MethodPageForm FormFromState(const SelectionState& state) {
    MethodPageForm form;
    for (std::size_t i = 0; i < kCheckFieldCount; ++i) {
        const auto field = static_cast<CheckField>(i);
        form.texts[field] = ShownValue(field, state.inputs.values[field]);
    }
    form.is_class_l = state.inputs.is_class_l;
    return form;
}

bool ImportNoise(const ProfileFile& file, MethodPageForm& form) {
    return ForEachNoiseValue(file, ShowIn(form));
}

bool ImportNoise(const ProfileFile& file, PerCheckField<double>& values) {
    return ForEachNoiseValue(file, TakeInto(values));
}

bool ImportProtector(const ProfileFile& file, MethodPageForm& form) {
    return ForEachProtectorValue(file, ShowIn(form));
}

bool ImportProtector(const ProfileFile& file, PerCheckField<double>& values) {
    return ForEachProtectorValue(file, TakeInto(values));
}

std::optional<FieldRefusal> CheckTypedField(CheckField field, std::string_view text) {
    const std::size_t bad = text.find_first_not_of("0123456789. ");
    if (bad == std::string_view::npos || bad >= kMaxCheckedCharacters) return std::nullopt;
    return FieldRefusal{field,
                        std::string(text.substr(0, bad)),
                        {"Errore nell'inserimento dei dati!",
                         "Inserire solo numeri, utilizzando il punto come separatore decimale."}};
}

MethodRun RunMethod(const CheckMethodInfo& method, MethodPageForm& form, SelectionState& state) {
    MethodRun run;
    CheckInputs inputs = state.inputs;
    inputs.is_class_l = form.is_class_l;
    bool are_numbers = true;
    for (const CheckField field : method.fields) {
        std::string& text = form.texts[field];
        are_numbers = are_numbers && !text.empty();
        inputs.values[field] = ParseNumber(text);
        auto refusal = CheckTypedField(field, text);
        if (!refusal) continue;
        are_numbers = false;
        text = refusal->cut_text;
        run.field_refusals.push_back(*std::move(refusal));
    }
    if (!are_numbers) {
        run.refusal = {"Errore nell'inserimento dei dati!",
                       "Attenzione: non tutte le caselle di testo contengono un valore numerico.",
                       MessageIcon::kExclamation};
        return run;
    }
    CheckOutcome outcome = RunCheck(method, inputs);
    if (outcome.level_dba) state.effective_level_dba = *outcome.level_dba;
    run.refusal = std::move(outcome.refusal);
    if (run.refusal) return run;
    state.inputs = inputs;
    state.method = static_cast<int>(method.method);
    return run;
}

std::optional<UserMessage> MethodChange(const CheckMethodInfo& shown,
                                        const SelectionState& loaded) {
    const CheckMethodInfo* method = FindCheckMethod(loaded.method);
    if (method == nullptr || method->method == shown.method) return std::nullopt;
    return UserMessage{"Attenzione: il metodo verrà cambiato.",
                       "Il file aperto fa riferimento ad un metodo di calcolo diverso dal " +
                           std::string(shown.title) + ".",
                       MessageIcon::kInformation};
}

bool LoadState(const ProfileFile& file, SelectionState& state) {
    if (!HasKind(file, FileKind::kDpi)) return false;
    state.action_level_dba = FileNumber(file, kSettingsSection, kActionLevelKey);
    state.effective_level_dba = FileNumber(file, kSettingsSection, kEffectiveLevelKey);
    for (const NumberRow& row : AllNumberRows()) {
        state.inputs.values[row.field] = FileNumber(file, row.section, row.key);
    }
    for (const FlagRow& row : kFlagRows) {
        row.flag(state) = file.Integer(row.section, row.key) != 0;
    }
    state.method = file.Integer(kSettingsSection, kMethodKey);
    state.notes = ReadNotes(file);
    state.has_answers = true;
    return true;
}

void StoreState(const SelectionState& state, ProfileFile& file) {
    file.Set(kHeaderSection, kKindKey, InfoOf(FileKind::kDpi).tag);
    file.Set(kSettingsSection, kActionLevelKey, FormatFixed(state.action_level_dba, 4, 1));
    file.Set(kSettingsSection, kEffectiveLevelKey, FormatFixed(state.effective_level_dba, 5, 1));
    for (const NumberRow& row : AllNumberRows()) {
        file.Set(row.section, row.key, ShownValue(row.field, state.inputs.values[row.field]));
    }
    SelectionState flags = state;
    for (const FlagRow& row : kFlagRows) {
        file.Set(row.section, row.key, row.flag(flags) ? "1" : "0");
    }
    file.Set(kSettingsSection, kMethodKey, FormatInteger(state.method));
    WriteNotes(file, CutToCharacters(state.notes, kMaxKeptNotesCharacters));
}

Printout MakePrintout(const SelectionState& state) {
    TextLines lines;
    AddWork(state, lines);
    AddMethod(state, lines);
    AddResult(state, lines);
    Printout printout;
    printout.document_name = "Scelta DPI";
    printout.lines = lines.Take();
    printout.notes = CutToCharacters(state.notes, kMaxKeptNotesCharacters);
    return printout;
}

std::string Summary(const SelectionState& state, std::string_view list_separator) {
    SummaryText summary(list_separator);
    for (const PrintoutLine& line : MakePrintout(state).lines) summary.AddLine({line.left});
    summary.AddNotes(state.notes);
    return summary.Take();
}

Assessment AssessProtectorSelection(const ProfileFile& file) {
    SelectionState state;
    LoadState(file, state);
    Assessment assessment;
    AssessedResult result{kEffectiveLevelKey};
    result.section = kSettingsSection;
    const CheckMethodInfo* method = FindCheckMethod(state.method);
    if (method != nullptr) {
        MethodPageForm form = FormFromState(state);
        assessment.message = RunMethod(*method, form, state).refusal;
    }
    assessment.computed = method != nullptr && !assessment.message;
    if (assessment.computed) {
        result.shown = FormatFixed(state.effective_level_dba, 5, 1);
        result.value = state.effective_level_dba;
    }
    assessment.results = {std::move(result)};
    assessment.details = AssessmentDetails(state, assessment.computed);
    AddTexts(assessment, state);
    return assessment;
}

}  // namespace tonvale
