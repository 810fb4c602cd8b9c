// Whether the results kept in a data file are those that follow from its inputs.
#pragma once

#include <optional>
#include <string>

#include "common/assessment.h"
#include "common/profile_file.h"

namespace tonvale {

// The text that the file keeps of a result; nullopt when it keeps none.
std::optional<std::string> StoredResult(const ProfileFile& file, const AssessedResult& result);

// False when the calculator refuses the inputs, too; true when there is nothing to compare.
bool IsConsistent(const Assessment& assessment, const ProfileFile& file);

// The same, but nullopt when there is nothing to compare: nothing has been computed, or files of
// this kind keep no results.
std::optional<bool> Consistency(const Assessment& assessment, const ProfileFile& file);

// What there is to tell of a file, in Italian, parted by "; ": why the calculator refuses it, where
// its results differ, what makes it doubtful. Empty when all is well.
std::string DescribeFindings(const Assessment& assessment, const ProfileFile& file);

}  // namespace tonvale
