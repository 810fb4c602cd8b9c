// What the hearing-damage dialogs ask alike: the noise, the person and the damage table; what of it
// is refused, and how their results tell what they were computed for.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/user_message.h"
#include "hearing/damage_table.h"
#include "hearing/threshold_model.h"

namespace tonvale {

// What a dialog shows of them. Each dialog asks for some.
struct HearingFields {
    std::string years;  // of exposure
    std::string level_dba;
    std::string age;
    int sex = kMale;
    DamageTable table = DamageTable::kNew;
};

enum class HearingField { kYears, kLevel, kAge, kStartAge, kCriterion };

// "Errore! Dati non validi", its caption the name of the field.
struct HearingRefusal {
    HearingField field;
    UserMessage message;
};

HearingRefusal RefusalOf(HearingField field);

inline constexpr std::size_t kMaxHearingFieldCharacters = 7;
inline constexpr double kMaxExposureLevelDba = 100;
inline constexpr double kMinAgeAtExposure = 18;

// Years, level and age of `person` as an opening dialog shows them: whole numbers.
HearingFields FieldsOfPerson(const PredictionCase& person);

// --- Checks: the typed texts, of which seven characters count, go into `person`. A refused field
// leaves its own value as it was ----------------------------------------------------------------

// Not 0, and at most `max_level_dba`.
std::optional<HearingRefusal> TakeLevel(std::string_view text, PredictionCase& person,
                                        double max_level_dba = kMaxExposureLevelDba);
// Years, not 0 and at most 40; then the level.
std::optional<HearingRefusal> TakeYearsAndLevel(const HearingFields& fields,
                                                PredictionCase& person);
// Age, not 0 and at least 18 more than `years` of exposure; then the sex.
std::optional<HearingRefusal> TakeAgeAndSex(const HearingFields& fields, double years,
                                            PredictionCase& person);
// Age at which the exposure starts, 18 to 68; then the sex.
std::optional<HearingRefusal> TakeStartAgeAndSex(const HearingFields& fields,
                                                 PredictionCase& person);

// --- Lists --------------------------------------------------------------------------------------

// "5", "10", ... in per cent.
std::vector<std::string> FractileItems(int first_percent, int last_percent);
// The item at the position, or else the nearest.
const std::string& ItemAt(const std::vector<std::string>& items, int position);

// --- What a result was computed for -------------------------------------------------------------

// Parameters of a result table, with the blanks that part them from the one before.
std::string LevelParameter(const PredictionCase& person);  // "   Leq: 90.0 dBA"
std::string AgeParameter(double age);                      // "   Età:  60"
std::string SexParameter(const PredictionCase& person);    // "  Sesso: M"
std::string TableParameter(DamageTable table);             // "   Tabella: Nuova"

// Parts of the one line that names a case.
std::string NameOfYearsAndLevel(const PredictionCase& person);  // ", 35 anni, 90 dBA"
std::string NameOfSex(const PredictionCase& person);            // ", sesso M"
std::string NameOfAgeAndSex(const PredictionCase& person);      // ", età 60, sesso M"
std::string NameOfTable(DamageTable table);                     // ", tabella Nuova"

// Why nothing comes out for a person, whose years of exposure count or not.
std::string_view ReasonForNoNumber(const PredictionCase& person, bool years_count);

}  // namespace tonvale
