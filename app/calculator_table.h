// One row for every kind of file: the menu command that opens it and, once its calculator exists,
// how a data file of the kind is recomputed. The main window and the command-line companion both
// work from this table.
#pragma once

#include "common/assessment.h"
#include "common/file_kinds.h"
#include "common/profile_file.h"

namespace tonvale {

struct CalculatorInfo {
    FileKind kind;
    int command;  // of the main menu
    // Recomputes a data file of this kind; nullptr while there is no calculator for it.
    Assessment (*assess)(const ProfileFile& file);
};

const CalculatorInfo& CalculatorOf(FileKind kind);

// The row of the kind that the file's header names; nullptr when it names none.
const CalculatorInfo* CalculatorOfFile(const ProfileFile& file);

}  // namespace tonvale
