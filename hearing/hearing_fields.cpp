#include "hearing/hearing_fields.h"

#include <algorithm>
#include <array>

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

constexpr double kMaxYears = 40;
// Two years more are the last that the evolution of the damage is followed to.
constexpr double kMaxStartAge = 68;

double ReadField(std::string_view text) {
    return ParseNumber(CutToCharacters(text, kMaxHearingFieldCharacters));
}

int SexOf(const HearingFields& fields) {
    return fields.sex == kMale ? kMale : kFemale;
}

const char* SexLetter(const PredictionCase& person) {
    return person.sex == kMale ? "M" : "F";
}

}  // namespace

HearingRefusal RefusalOf(HearingField field) {
    constexpr std::array<const char*, 5> kCaptions{
        "Anni di esposizione.", "Livello di esposizione.", "Età individuo.",
        "Età di inizio esposizione.", "Criterio di danno."};
    return {field, {kCaptions[static_cast<std::size_t>(field)], "Errore! Dati non validi"}};
}

HearingFields FieldsOfPerson(const PredictionCase& person) {
    return {.years = FormatFixed(person.years, 3, 0),
            .level_dba = FormatFixed(person.level_dba, 3, 0),
            .age = FormatFixed(person.age, 3, 0),
            .sex = person.sex};
}

std::optional<HearingRefusal> TakeLevel(std::string_view text, PredictionCase& person,
                                        double max_level_dba) {
    const double level = ReadField(text);
    if (level == 0 || level > max_level_dba) return RefusalOf(HearingField::kLevel);
    person.level_dba = level;
    return std::nullopt;
}

std::optional<HearingRefusal> TakeYearsAndLevel(const HearingFields& fields,
                                                PredictionCase& person) {
    const double years = ReadField(fields.years);
    if (years == 0 || years > kMaxYears) return RefusalOf(HearingField::kYears);
    person.years = years;
    return TakeLevel(fields.level_dba, person);
}

std::optional<HearingRefusal> TakeAgeAndSex(const HearingFields& fields, double years,
                                            PredictionCase& person) {
    const double age = ReadField(fields.age);
    if (age == 0 || age - years < kMinAgeAtExposure) return RefusalOf(HearingField::kAge);
    person.age = age;
    person.sex = SexOf(fields);
    return std::nullopt;
}

std::optional<HearingRefusal> TakeStartAgeAndSex(const HearingFields& fields,
                                                 PredictionCase& person) {
    const double age = ReadField(fields.age);
    if (age < kMinAgeAtExposure || age > kMaxStartAge) return RefusalOf(HearingField::kStartAge);
    person.age = age;
    person.sex = SexOf(fields);
    return std::nullopt;
}

std::vector<std::string> FractileItems(int first_percent, int last_percent) {
    std::vector<std::string> items;
    for (int percent = first_percent; percent <= last_percent; percent += 5) {
        items.push_back(FormatInteger(percent));
    }
    return items;
}

const std::string& ItemAt(const std::vector<std::string>& items, int position) {
    const int last = static_cast<int>(items.size()) - 1;
    return items[static_cast<std::size_t>(std::clamp(position, 0, last))];
}

std::string LevelParameter(const PredictionCase& person) {
    return "   Leq: " + FormatFixed(person.level_dba, 4, 1) + " dBA";
}

std::string AgeParameter(double age) {
    return "   Età: " + FormatFixed(age, 3, 0);
}

std::string SexParameter(const PredictionCase& person) {
    return std::string("  Sesso: ") + SexLetter(person);
}

std::string TableParameter(DamageTable table) {
    return std::string("   Tabella: ").append(DamageTableName(table));
}

std::string NameOfYearsAndLevel(const PredictionCase& person) {
    return ", " + FormatShortest(person.years) + (person.years == 1 ? " anno, " : " anni, ") +
           FormatShortest(person.level_dba) + " dBA";
}

std::string NameOfSex(const PredictionCase& person) {
    return std::string(", sesso ") + SexLetter(person);
}

std::string NameOfAgeAndSex(const PredictionCase& person) {
    return ", età " + FormatShortest(person.age) + NameOfSex(person);
}

std::string NameOfTable(DamageTable table) {
    return std::string(", tabella ").append(DamageTableName(table));
}

std::string_view ReasonForNoNumber(const PredictionCase& person, bool years_count) {
    return years_count && person.years < 0
               ? "Nessun risultato: gli anni di esposizione sono negativi"
               : "Nessun risultato: i dati sono fuori scala";
}

}  // namespace tonvale
