// The companion's commands over the hearing-damage dialogs: "nipts", "previsioni", "rischio" and
// "evoluzione".
#pragma once

#include <span>
#include <string>

#include "calc/companion.h"

namespace tonvale {

// Each takes what follows the command's word and gives the exit status.
int RunNipts(std::span<const std::string> arguments, FileSystem& files, Console& console);
int RunPrevisioni(std::span<const std::string> arguments, FileSystem& files, Console& console);
int RunRischio(std::span<const std::string> arguments, FileSystem& files, Console& console);
int RunEvoluzione(std::span<const std::string> arguments, FileSystem& files, Console& console);

}  // namespace tonvale
