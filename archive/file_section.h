// The section of a register's page that tells all of one file.
#pragma once

#include <cstddef>

#include "archive/html_writer.h"
#include "archive/register.h"
#include "common/assessment.h"

namespace tonvale {

// What `row`, the row of number `number`, tells, and its report: lines, notes, picture, what each
// part adds to the whole. `assessment` is nullptr for a file that cannot be recomputed.
Html FileSection(std::size_t number, const RegisterRow& row, const Assessment* assessment);

// "<85-87" in its colour.
void WriteBand(ExposureBand band, HtmlWriter& html);

}  // namespace tonvale
