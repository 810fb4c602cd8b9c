// Names in the order in which a person sorts them.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// A key for `name` (UTF-8, or any bytes): keys compare as bytes the way a person compares names. A
// run of digits counts as a number ("2" before "10"); the case of letters, and the accents of
// those of Western Europe, count for nothing. Names that differ may have equal keys.
std::string NaturalKey(std::string_view name);

}  // namespace tonvale
