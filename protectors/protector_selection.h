// Choice and check of a hearing protector in steps: what the wizard keeps and shows, its files
// (.dpi), printout, and the check of a file.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/assessment.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "common/user_message.h"
#include "protectors/protector_check.h"

namespace tonvale {

// Kept for the life of the program.
struct SelectionState {
    double action_level_dba = 85;
    int method = -1;  // number of a CheckMethod; any other number: none
    NoiseInformation information;
    bool unfavourable_conditions = true;
    bool repetitive_short_noises = true;
    bool has_answers = false;  // given in this run, or loaded: the first page may be left
    CheckInputs inputs;
    double effective_level_dba = 0;  // of the method run last; 0: none has been
    std::string notes;
};

// --- Pages ---------------------------------------------------------------------------------------

// The information as checked. A chosen method that it does not allow any more is chosen no longer.
void SetInformation(const NoiseInformation& information, SelectionState& state);

// The chosen method as far as the information allows it: its button is checked, and the page may
// be left for that of the method. nullptr: no button is checked.
const CheckMethodInfo* AllowedMethod(const SelectionState& state);

// The place of the action level among kActionLevels; nullopt: no button is checked.
std::optional<std::size_t> ActionLevelPlace(const SelectionState& state);

// What a method's page shows: a text for each field, of which it has those of the method.
struct MethodPageForm {
    PerCheckField<std::string> texts;
    bool is_class_l = false;
};

// A number as a page shows it: "%5.1f" for noise, "%4.1f" for the protector.
std::string ShownValue(CheckField field, double value);

MethodPageForm FormFromState(const SelectionState& state);

// Takes the values of a noise spectrum (.spr) or of an attenuation spectrum (.spi) into the page's
// texts: levels or ratings whose key is missing stay, bands become 0. False, and nothing changed,
// when the file is of another kind.
bool ImportNoise(const ProfileFile& file, MethodPageForm& form);
bool ImportProtector(const ProfileFile& file, MethodPageForm& form);
// The same numbers without a page, as it would show them.
bool ImportNoise(const ProfileFile& file, PerCheckField<double>& values);
bool ImportProtector(const ProfileFile& file, PerCheckField<double>& values);

// A field whose text is not a number: it is shown cut, with the caret at its end, after the
// message.
struct FieldRefusal {
    CheckField field;
    std::string cut_text;
    UserMessage message;
};

// What the first seven characters of a field are refused for: a character that is no digit, point
// or blank. nullopt also for an empty text, which is no number all the same.
std::optional<FieldRefusal> CheckTypedField(CheckField field, std::string_view text);

struct MethodRun {
    std::vector<FieldRefusal> field_refusals;  // in the order of the page
    std::optional<UserMessage> refusal;        // told after those; nullopt: on to the results
};

// What "Next" does on a method's page. A success keeps the inputs, the method and the effective
// level; an HML check that cannot tell keeps the effective level alone. Refused texts are cut.
MethodRun RunMethod(const CheckMethodInfo& method, MethodPageForm& form, SelectionState& state);

// Told on the page of `shown` after a file with another method has been loaded; the file's page is
// then turned to. nullopt when it has the same one or none.
std::optional<UserMessage> MethodChange(const CheckMethodInfo& shown, const SelectionState& loaded);

// --- Files and paper -----------------------------------------------------------------------------

// Takes over a .dpi file. False, and nothing changed, when it is of another kind. Numbers, answers
// and choices that are missing become 0.
bool LoadState(const ProfileFile& file, SelectionState& state);
void StoreState(const SelectionState& state, ProfileFile& file);

// The result is left out as long as there is none.
Printout MakePrintout(const SelectionState& state);
// The printed lines as cells, one a line: the wizard has no "Copia", the companion has.
std::string Summary(const SelectionState& state, std::string_view list_separator);

// Recomputes a .dpi file, through the texts that the page of its method shows.
Assessment AssessProtectorSelection(const ProfileFile& file);

}  // namespace tonvale
