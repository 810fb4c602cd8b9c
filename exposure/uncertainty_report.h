// What the study of a measurement's uncertainty tells in the end: the final report, the printout,
// and a data file recomputed.
#pragma once

#include <string>

#include "common/assessment.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "exposure/uncertainty_study.h"

namespace tonvale {

// The final report of the study's page, lines ended by CR LF, at most 1,023 characters. Empty for a
// start page whose level is sampled: nothing has been computed yet.
std::string ReportText(const UncertaintyStudy& study);

// The page's title, the report, the notes.
Printout MakePrintout(const UncertaintyStudy& study);

// Computes a .err file on the pages that its settings lead through. It stores no results. Details:
// "page", the number of the last page, and "text", its report.
Assessment AssessUncertainty(const ProfileFile& file);

}  // namespace tonvale
