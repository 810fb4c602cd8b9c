// The register of a folder of data files: what there is to tell of each in one row.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "archive/data_folder.h"
#include "common/assessment.h"
#include "common/file_kinds.h"
#include "common/profile_file.h"

namespace tonvale {

// Where a daily or weekly exposure level lies between the lower and the upper action value (80 and
// 85 dBA) and the limit value (87 dBA, at the ear). A value belongs to the band that it begins.
// Source: Directive 2003/10/EC, article 3.
enum class ExposureBand { kBelowLowerAction, kBelowUpperAction, kBelowLimit, kAboveLimit };
inline constexpr std::size_t kExposureBandCount = 4;

// "<80", "80-85", "85-87", ">87".
std::string_view BandName(ExposureBand band);

// The band of a level in dBA, as shown (with one decimal).
ExposureBand BandOf(double level_dba);

// A result that a row tells: "Lep,d" "88.2" "dBA".
struct MainResult {
    std::string_view label;
    std::string text;  // as shown
    std::string_view unit;
    std::string total_error = {};  // in the same unit; empty unless the file tells one
};

struct RegisterResult {
    std::string_view key;
    std::string text;  // as shown, without the blanks around it
};

struct RegisterRow {
    // Valid UTF-8; bytes that are none are told by their numbers.
    std::string folder;
    std::string file;
    std::optional<FileKind> kind;  // none of a file that is no data file
    std::string note;              // the first line of the notes
    std::string date;              // of the file's last change, as LocalDate
    // All results, recomputed, and for a protector chosen its rating; none when there are none.
    std::vector<RegisterResult> results;
    std::vector<MainResult> main_results;
    std::string rating;  // of a protector chosen: "BUONA"; else empty
    // Of a file whose main result is a Lep,d or Lep,w other than 0: the level as shown, its band.
    std::optional<double> exposure_level_dba;
    std::optional<ExposureBand> band;
    // Whether the stored results follow from the inputs; nullopt when there is nothing to compare.
    std::optional<bool> consistent;
    std::string message;  // what is wrong or doubtful; empty when all is well
};

struct Register {
    std::string title;
    std::string date;  // of its making, as LocalDate
    std::vector<RegisterRow> rows;
};

// The row of a file of `kind`, without its date.
RegisterRow MakeRegisterRow(const FoundFile& found, FileKind kind, const ProfileFile& file,
                            const Assessment& assessment);

// The row of a file that cannot be recomputed, for the reason given.
RegisterRow MakeUnreadableRow(const FoundFile& found, std::string_view problem);

// "LEPD"; "Lep,d", as the program's file dialogs call the kind. Empty when there is none.
std::string_view KindTag(const RegisterRow& row);
std::string_view KindName(const RegisterRow& row);

}  // namespace tonvale
