// The companion's command "registro": folders of data files as one register.
#pragma once

#include <span>
#include <string>

#include "calc/companion.h"

namespace tonvale {

// Takes what follows the command's word and gives the exit status.
int RunRegistro(std::span<const std::string> arguments, FileSystem& files, Console& console);

}  // namespace tonvale
