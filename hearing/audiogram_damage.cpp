#include "hearing/audiogram_damage.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/summary_text.h"
#include "common/text.h"
#include "hearing/audiogram_chart.h"

namespace tonvale {

namespace {

constexpr std::string_view kDamageKey = "ILG";
constexpr std::string_view kSymmetricKey = "SIMM";
constexpr std::string_view kTableKey = "TABELLA";
constexpr std::string_view kFormulaKey = "INDUS";
constexpr std::string_view kLeftSection = "SX";
constexpr std::string_view kRightSection = "DX";

constexpr std::string_view kTitle = "Calcolo del danno uditivo";
constexpr std::string_view kSymmetric = "Ipoacusia simmetrica";

// Each frequency's column in the printout has this many characters.
constexpr std::size_t kColumnCharacters = 6;

// The numbers 1, 2 and 3 by which a file names the tables.
constexpr std::array<DamageTable, 3> kStoredTables{DamageTable::kNew, DamageTable::kOld,
                                                   DamageTable::kBiological};

double LossOf(std::string_view text) {
    return ParseSignedInteger(text);
}

std::string ShownWhole(double loss_db) {
    return FormatFixed(loss_db, 2, 0);
}

// One text a frequency.
using RowTexts = std::array<std::string, kAudiometricFrequenciesHz.size()>;

RowTexts FrequencyTexts() {
    RowTexts texts;
    std::transform(kAudiometricFrequenciesHz.begin(), kAudiometricFrequenciesHz.end(),
                   texts.begin(), FormatInteger);
    return texts;
}

RowTexts LeftTexts(const AudiogramDamageForm& form) {
    RowTexts texts;
    std::transform(form.rows.begin(), form.rows.end(), texts.begin(),
                   std::mem_fn(&AudiogramRow::left_db));
    return texts;
}

RowTexts RightTexts(const AudiogramDamageForm& form) {
    RowTexts texts;
    std::transform(form.rows.begin(), form.rows.end(), texts.begin(),
                   [&](const AudiogramRow& row) { return RightLoss(form, row); });
    return texts;
}

EarAudiogram LossesOf(const RowTexts& texts) {
    EarAudiogram losses_db;
    std::transform(texts.begin(), texts.end(), losses_db.begin(), LossOf);
    return losses_db;
}

// What report and summary tell of the audiogram, row by row.
std::array<std::pair<std::string_view, RowTexts>, 3> AudiogramTable(
    const AudiogramDamageForm& form) {
    return {{{"Frequenza (Hz):", FrequencyTexts()},
             {"Orecchio Sx (dB):", LeftTexts(form)},
             {"Orecchio Dx (dB):", RightTexts(form)}}};
}

// What they tell below it.
std::vector<std::pair<std::string_view, std::string>> EvaluationLines(
    const AudiogramDamageForm& form) {
    std::vector<std::pair<std::string_view, std::string>> lines;
    if (form.is_symmetric) lines.emplace_back(kSymmetric, "");
    lines.emplace_back("Tabella Danno:", DamageTableName(form.table));
    lines.emplace_back("Formula:", DamageFormulaName(form.formula));
    lines.emplace_back("Danno (%):", form.damage_percent);
    return lines;
}

std::string InColumns(const RowTexts& texts) {
    std::string line;
    for (const std::string_view text : texts) {
        const std::string_view trimmed = TrimBlanks(text);
        const std::size_t width = std::max(kColumnCharacters, CharacterCount(trimmed) + 1);
        line.append(width - CharacterCount(trimmed), ' ').append(trimmed);
    }
    return line;
}

// A missing key is 1.
int StoredChoice(const ProfileFile& file, std::string_view key) {
    return file.Find(kHeaderSection, key) ? file.Integer(kHeaderSection, key) : 1;
}

DamageTable StoredTable(const ProfileFile& file) {
    const int number = StoredChoice(file, kTableKey);
    const bool is_known = number >= 1 && number <= static_cast<int>(kStoredTables.size());
    return is_known ? kStoredTables[static_cast<std::size_t>(number - 1)]
                    : DamageTable::kBiological;
}

std::string_view NumberOf(DamageTable table) {
    constexpr std::array<std::string_view, kStoredTables.size()> kNumbers{"1", "2", "3"};
    const auto* found = std::find(kStoredTables.begin(), kStoredTables.end(), table);
    return kNumbers[static_cast<std::size_t>(found - kStoredTables.begin())];
}

HearingDamage RecomputeValues(AudiogramDamageForm& form) {
    HearingDamage damage = EvaluateHearingDamage(AudiogramOf(form), form.table, form.formula);
    form.damage_percent = FormatFixed(damage.percent, 4, 0);
    return damage;
}

PrintoutDrawing AudiogramDrawing(const AudiogramDamageForm& form, std::size_t lines) {
    constexpr int kFirstPrintoutLine = 2;
    PrintoutDrawing drawing;
    drawing.first_line = kFirstPrintoutLine + static_cast<int>(lines) + 1;
    drawing.draw = [audiogram = AudiogramOf(form)](Canvas& canvas, const Rect& area,
                                                   bool use_color) {
        DrawAudiogram(canvas, area, audiogram, use_color);
    };
    return drawing;
}

}  // namespace

std::string ShownLoss(std::string_view typed_db) {
    return ShownWhole(LossOf(typed_db));
}

AudiogramRow EnteredRow(const AudiogramRow& row, std::string_view left_db,
                        std::string_view right_db, bool is_symmetric) {
    if (!is_symmetric) return {ShownLoss(left_db), ShownLoss(right_db)};
    const bool was_alike = LossOf(row.left_db) == LossOf(row.right_db);
    return {ShownLoss(left_db), was_alike ? ShownLoss(left_db) : row.right_db};
}

const std::string& RightLoss(const AudiogramDamageForm& form, const AudiogramRow& row) {
    return form.is_symmetric ? row.left_db : row.right_db;
}

bool UsesFormula(const AudiogramDamageForm& form) {
    return !form.is_symmetric && form.table != DamageTable::kBiological;
}

Audiogram AudiogramOf(const AudiogramDamageForm& form) {
    return {.left_db = LossesOf(LeftTexts(form)),
            .right_db = LossesOf(RightTexts(form)),
            .is_symmetric = form.is_symmetric};
}

void Recompute(AudiogramDamageForm& form) {
    RecomputeValues(form);
}

AudiogramDamageForm FormFromState(const AudiogramDamageState& state) {
    AudiogramDamageForm form;
    for (std::size_t i = 0; i < form.rows.size(); ++i) {
        form.rows[i] = {ShownWhole(state.audiogram.left_db[i]),
                        ShownWhole(state.audiogram.right_db[i])};
    }
    form.is_symmetric = state.audiogram.is_symmetric;
    form.table = state.table;
    form.formula = state.formula;
    form.notes = state.notes;
    return form;
}

void KeepForm(const AudiogramDamageForm& form, AudiogramDamageState& state) {
    for (std::size_t i = 0; i < form.rows.size(); ++i) {
        state.audiogram.left_db[i] = LossOf(form.rows[i].left_db);
        state.audiogram.right_db[i] = LossOf(form.rows[i].right_db);
    }
    state.audiogram.is_symmetric = form.is_symmetric;
    state.table = form.table;
    state.formula = form.formula;
    state.notes = CutToCharacters(form.notes, kMaxKeptNotesCharacters);
}

bool LoadForm(const ProfileFile& file, AudiogramDamageForm& form) {
    if (!HasKind(file, FileKind::kIlg)) return false;
    TakeHeaderText(file, kDamageKey, form.damage_percent);
    form.is_symmetric = StoredChoice(file, kSymmetricKey) != 0;
    form.table = StoredTable(file);
    form.formula = StoredChoice(file, kFormulaKey) == 1 ? DamageFormula::kIndustry
                                                        : DamageFormula::kAgriculture;
    // The right ear must not stay that of the audiogram before.
    const std::string_view right_section = form.is_symmetric ? kLeftSection : kRightSection;
    const RowTexts keys = FrequencyTexts();
    for (std::size_t i = 0; i < form.rows.size(); ++i) {
        form.rows[i] = {file.Text(kLeftSection, keys[i], kMaxValueCharacters).value_or(""),
                        file.Text(right_section, keys[i], kMaxValueCharacters).value_or("")};
    }
    form.notes = ReadNotes(file);
    return true;
}

void StoreForm(const AudiogramDamageForm& form, ProfileFile& file) {
    file.Set(kHeaderSection, kKindKey, InfoOf(FileKind::kIlg).tag);
    file.Set(kHeaderSection, kDamageKey, form.damage_percent);
    file.Set(kHeaderSection, kSymmetricKey, form.is_symmetric ? "1" : "0");
    file.Set(kHeaderSection, kTableKey, NumberOf(form.table));
    file.Set(kHeaderSection, kFormulaKey, form.formula == DamageFormula::kIndustry ? "1" : "2");
    const RowTexts keys = FrequencyTexts();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        file.Set(kLeftSection, keys[i], form.rows[i].left_db);
    }
    if (form.is_symmetric) {
        file.RemoveSection(kRightSection);
    } else {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            file.Set(kRightSection, keys[i], form.rows[i].right_db);
        }
    }
    WriteNotes(file, CutToCharacters(form.notes, kMaxKeptNotesCharacters));
}

std::string Summary(const AudiogramDamageForm& form, std::string_view list_separator) {
    SummaryText summary(list_separator);
    summary.AddLine({kTitle, "", "", "", "", "", "", ""});
    for (auto& [label, texts] : AudiogramTable(form)) {
        for (std::string& text : texts) text = WithDecimalComma(text);
        summary.AddLine({label, "", texts[0], texts[1], texts[2], texts[3], texts[4], texts[5]});
    }
    for (const auto& [label, text] : EvaluationLines(form)) {
        summary.AddLine({label, "", WithDecimalComma(text)});
    }
    summary.AddNotes(form.notes);
    return summary.Take();
}

Printout MakePrintout(const AudiogramDamageForm& form) {
    Printout printout;
    printout.document_name = kTitle;
    printout.lines.push_back({std::string(kTitle)});
    for (const auto& [label, texts] : AudiogramTable(form)) {
        printout.lines.push_back({std::string(label), InColumns(texts)});
    }
    for (const auto& [label, text] : EvaluationLines(form)) {
        printout.lines.push_back({std::string(label), text});
    }
    printout.drawing = AudiogramDrawing(form, printout.lines.size());
    if (!form.notes.empty()) {
        printout.notes = std::string("Note:").append(kLineEnd);
        printout.notes += CutToCharacters(form.notes, kMaxKeptNotesCharacters);
    }
    return printout;
}

Assessment AssessAudiogramDamage(const ProfileFile& file) {
    AudiogramDamageForm form;
    LoadForm(file, form);
    const HearingDamage damage = RecomputeValues(form);
    Assessment assessment;
    assessment.results = {{kDamageKey, form.damage_percent, damage.percent}};
    assessment.details = {
        {"left", damage.left_percent},
        {"right", damage.right_percent ? DetailValue(*damage.right_percent) : DetailValue(nullptr)},
        {"table", std::string(DamageTableName(form.table))},
        {"formula", std::string(DamageFormulaName(form.formula))},
    };
    AddTexts(assessment, form);
    return assessment;
}

}  // namespace tonvale
