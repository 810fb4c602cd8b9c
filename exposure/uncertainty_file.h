// The data file (.err) of the study of a measurement's uncertainty.
#pragma once

#include "common/profile_file.h"
#include "exposure/uncertainty_study.h"

namespace tonvale {

// Takes over a .err file and returns to the start page without results; the memories stay. What has
// no key is 0; a row of which no key exists is none. False, and the study unchanged, when the file
// is of another kind.
bool LoadStudy(const ProfileFile& file, UncertaintyStudy& study);

// Writes the rows last computed with, rounded as the file keeps them; results are not stored.
void StoreStudy(const UncertaintyStudy& study, ProfileFile& file);

}  // namespace tonvale
