// The companion's command "classifica": the protectors of a cabinet, best first.
#pragma once

#include <span>
#include <string>

#include "calc/companion.h"

namespace tonvale {

// Takes what follows the command's word and gives the exit status.
int RunClassifica(std::span<const std::string> arguments, FileSystem& files, Console& console);

}  // namespace tonvale
