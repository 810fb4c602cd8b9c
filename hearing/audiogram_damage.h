// Hearing damage evaluated from an audiogram: form, kept state, files (.ilg), summary, printout.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "common/assessment.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "hearing/binaural_damage.h"

namespace tonvale {

// The hearing losses at one frequency: texts, at most 15 characters each. They count as the whole
// decibels that they begin with.
struct AudiogramRow {
    std::string left_db;
    std::string right_db;
};

// What the dialog shows.
struct AudiogramDamageForm {
    std::array<AudiogramRow, kAudiometricFrequenciesHz.size()> rows;
    bool is_symmetric = false;  // the left ear stands for both; the right one's texts stay kept
    DamageTable table = DamageTable::kNew;
    DamageFormula formula = DamageFormula::kIndustry;
    std::string damage_percent = "Ilg";  // result, as shown: its name as long as there is none
    std::string notes;
};

// What is kept between two openings of the dialog.
struct AudiogramDamageState {
    Audiogram audiogram;
    DamageTable table = DamageTable::kNew;
    DamageFormula formula = DamageFormula::kIndustry;
    std::string notes;
};

// What a deleted row holds.
inline constexpr std::string_view kNoLoss = " 0";

// A typed loss as the list shows it: whole decibels, "%2.0f"; 0 for what is no number.
std::string ShownLoss(std::string_view typed_db);

// `row` after its losses have been typed anew. Of a symmetric loss the right ear stays as it is,
// unless it was like the left one: then it goes along with it.
AudiogramRow EnteredRow(const AudiogramRow& row, std::string_view left_db,
                        std::string_view right_db, bool is_symmetric);

// The right ear's loss in a row: of a symmetric loss the left one's.
const std::string& RightLoss(const AudiogramDamageForm& form, const AudiogramRow& row);

// Whether the formula enters the result: not when the loss is symmetric, nor with the biological
// table.
bool UsesFormula(const AudiogramDamageForm& form);

Audiogram AudiogramOf(const AudiogramDamageForm& form);

// Computes the form's result.
void Recompute(AudiogramDamageForm& form);

// The form as a new opening shows it, its result not yet computed.
AudiogramDamageForm FormFromState(const AudiogramDamageState& state);
// Keeps what a closing dialog holds: losses as numbers, choices, notes (at most 511 characters).
void KeepForm(const AudiogramDamageForm& form, AudiogramDamageState& state);

// Takes over an .ilg file as it stands: the result is the one stored, or stays when there is none.
// A file without the key SIMM is symmetric; the right ear of a symmetric one becomes like the left.
// False, and the form unchanged, when the file is of another kind.
bool LoadForm(const ProfileFile& file, AudiogramDamageForm& form);
// Of a symmetric loss, no right ear is left in the file.
void StoreForm(const AudiogramDamageForm& form, ProfileFile& file);

std::string Summary(const AudiogramDamageForm& form, std::string_view list_separator);
// With the audiogram.
Printout MakePrintout(const AudiogramDamageForm& form);

// Recomputes an .ilg file.
Assessment AssessAudiogramDamage(const ProfileFile& file);

}  // namespace tonvale
