// The picture of all exposure levels of a register.
#pragma once

#include "archive/html_writer.h"
#include "archive/register.h"

namespace tonvale {

// The most levels that are told by name.
inline constexpr std::size_t kMaxNamedLevels = 60;

// A bar for each level, the highest first, from 60 to 110 dBA, with lines at 80, 85 and 87 dBA. Few
// levels have their files' names and lead to their sections, many stand close together. Empty when
// there are no levels.
Html LevelChart(const Register& archive);

// The class of the elements that show a band by its colour: "b0" to "b3".
Markup BandClass(ExposureBand band);

// The identifier of a file's section in the page, "f12" for row 12.
void WriteAnchor(std::size_t row, HtmlWriter& html);

}  // namespace tonvale
