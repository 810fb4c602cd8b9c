// How a data file of each kind is recomputed.
#pragma once

#include "common/assessment.h"
#include "common/file_kinds.h"
#include "common/profile_file.h"

namespace tonvale {

struct AssessedKind {
    FileKind kind;
    // Recomputes a data file of this kind.
    Assessment (*assess)(const ProfileFile& file);
};

// The row of the kind that the file's header names; nullptr when it names none.
const AssessedKind* AssessedKindOf(const ProfileFile& file);

}  // namespace tonvale
