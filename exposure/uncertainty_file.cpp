#include "exposure/uncertainty_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

constexpr std::string_view kSettings = "SETTINGS";
constexpr std::string_view kItemCountKey = "NUMITEM";

struct FlagKey {
    std::string_view section;
    std::string_view key;
    bool UncertaintyStudy::*flag;
};
constexpr std::array<FlagKey, 4> kFlags{{
    {kSettings, "CAMPLEQ", &UncertaintyStudy::is_sampled},
    {kSettings, "GO_ON_1", &UncertaintyStudy::goes_on_from_start},
    {kSettings, "GO_ON_2", &UncertaintyStudy::goes_on_from_level},
    {kSettings, "GO_ON_3", &UncertaintyStudy::goes_on_from_day},
}};
constexpr FlagKey kTimeCorrection{"LEQ", "TIMECORR", &UncertaintyStudy::corrects_time};

// A field of a row: key and number, in the section of its list.
template <typename Row>
struct FieldKey {
    std::string_view prefix;
    double Row::*value;
    int width;
    int decimals;
};

// A list of rows; the rows' numbers count from 0.
template <typename Row, std::size_t kFields>
struct ListKeys {
    std::string_view section;
    std::vector<Row> UncertaintyStudy::*rows;
    std::array<FieldKey<Row>, kFields> fields;
};

constexpr ListKeys<SampledLevel, 2> kSampleKeys{
    "LEQ",
    &UncertaintyStudy::samples,
    {{{"LEQ_", &SampledLevel::level_dba, 5, 1}, {"TIME_", &SampledLevel::time, 5, 1}}}};
constexpr ListKeys<UncertainPeriod, 4> kPeriodKeys{
    "LEPD",
    &UncertaintyStudy::periods,
    {{{"LEQ_", &UncertainPeriod::level_dba, 5, 1},
      {"TIME_", &UncertainPeriod::duration, 5, 1},
      {"ILEQ_", &UncertainPeriod::level_error_db, 4, 2},
      {"ITIME_", &UncertainPeriod::duration_error, 5, 2}}}};
constexpr ListKeys<UncertainDay, 2> kDayKeys{
    "LEPW",
    &UncertaintyStudy::days,
    {{{"LEP_", &UncertainDay::level_dba, 5, 1}, {"ILEP_", &UncertainDay::error_db, 4, 2}}}};

double StoredNumber(const ProfileFile& file, std::string_view section, std::string_view key) {
    return FiniteNumber(file.Text(section, key, kMaxValueCharacters).value_or(""));
}

void LoadFlag(const ProfileFile& file, const FlagKey& row, UncertaintyStudy& study) {
    study.*row.flag = file.Integer(row.section, row.key) != 0;
}

void StoreFlag(const UncertaintyStudy& study, const FlagKey& row, ProfileFile& file) {
    file.Set(row.section, row.key, study.*row.flag ? "1" : "0");
}

std::string NumberedKey(std::string_view prefix, int number) {
    return std::string(prefix) + FormatInteger(number);
}

// The numbers of the rows of which the file holds a key, ascending; costs what it holds, whatever
// count it claims.
template <typename Row, std::size_t kFields>
std::vector<int> StoredRows(const ProfileFile& file, const ListKeys<Row, kFields>& list) {
    const int last = file.Integer(list.section, kItemCountKey) - 1;
    std::vector<int> numbers;
    for (const FieldKey<Row>& field : list.fields) {
        const std::vector<int> found = file.NumberedKeys(list.section, field.prefix, last);
        numbers.insert(numbers.end(), found.begin(), found.end());
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

template <typename Row, std::size_t kFields>
void LoadList(const ProfileFile& file, const ListKeys<Row, kFields>& list,
              UncertaintyStudy& study) {
    std::vector<Row>& rows = study.*list.rows;
    rows.clear();
    for (const int number : StoredRows(file, list)) {
        Row& row = rows.emplace_back();
        for (const FieldKey<Row>& field : list.fields) {
            row.*field.value = StoredNumber(file, list.section, NumberedKey(field.prefix, number));
        }
    }
}

template <typename Row, std::size_t kFields>
void StoreList(const UncertaintyStudy& study, const ListKeys<Row, kFields>& list,
               ProfileFile& file) {
    const std::vector<Row>& rows = study.*list.rows;
    const int count = static_cast<int>(rows.size());
    file.Set(list.section, kItemCountKey, FormatInteger(count));
    for (int i = 0; i < count; ++i) {
        for (const FieldKey<Row>& field : list.fields) {
            const double value = rows[static_cast<std::size_t>(i)].*field.value;
            file.Set(list.section, NumberedKey(field.prefix, i),
                     FormatFixed(value, field.width, field.decimals));
        }
    }
    for (const FieldKey<Row>& field : list.fields) {
        file.RemoveNumberedKeysAbove(list.section, field.prefix, count - 1);
    }
}

}  // namespace

bool LoadStudy(const ProfileFile& file, UncertaintyStudy& study) {
    if (!HasKind(file, FileKind::kErr)) return false;
    for (const FlagKey& flag : kFlags) LoadFlag(file, flag, study);
    study.instrument_error_db = StoredNumber(file, kSettings, "INCSTRU");
    study.time_unit = file.Integer(kSettings, "TIMEFORM");
    study.measured_level_dba = StoredNumber(file, "LEQ", "LEQ_NOCAMP");
    LoadFlag(file, kTimeCorrection, study);
    study.represented_time = StoredNumber(file, "LEQ", "TIMETOT");
    LoadList(file, kSampleKeys, study);
    LoadList(file, kPeriodKeys, study);
    LoadList(file, kDayKeys, study);
    study.level = {};
    study.day = {};
    study.week = {};
    study.page = UncertaintyPage::kStart;
    study.notes = ReadNotes(file);
    return true;
}

void StoreStudy(const UncertaintyStudy& study, ProfileFile& file) {
    file.Set(kHeaderSection, kKindKey, InfoOf(FileKind::kErr).tag);
    for (const FlagKey& flag : kFlags) StoreFlag(study, flag, file);
    file.Set(kSettings, "INCSTRU", FormatFixed(study.instrument_error_db, 4, 2));
    file.Set(kSettings, "TIMEFORM", FormatInteger(study.time_unit));
    file.Set("LEQ", "LEQ_NOCAMP", FormatFixed(study.measured_level_dba, 5, 2));
    StoreFlag(study, kTimeCorrection, file);
    file.Set("LEQ", "TIMETOT", FormatFixed(study.represented_time, 6, 2));
    StoreList(study, kSampleKeys, file);
    StoreList(study, kPeriodKeys, file);
    StoreList(study, kDayKeys, file);
    WriteNotes(file, CutToCharacters(study.notes, kMaxNotesCharacters));
}

}  // namespace tonvale
