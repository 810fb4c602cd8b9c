// Tables within Rich Text Format.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// `rtf` with each row of a table as a paragraph: its cells are parted by tabs, with stops where the
// cells begin. Nothing else changes.
std::string FlattenTables(std::string_view rtf);

}  // namespace tonvale
