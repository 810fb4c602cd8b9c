// A register as a page for browser and printer: one file that needs no other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "archive/html_writer.h"
#include "archive/register.h"

namespace tonvale {

// What every such page begins with.
std::string_view RegisterPageStart();

// The whole page: summary, levels, table, then `sections`, one a row (FileSection), which are used
// up. A content-security policy lets it load nothing and run only its own few lines of script, by
// which the table can be sorted.
std::string RegisterPage(const Register& archive, std::vector<Html> sections);

}  // namespace tonvale
