// The companion's commands over data files: "calcola", "verifica" and "grafico".
#pragma once

#include <span>
#include <string>

#include "calc/companion.h"

namespace tonvale {

// Each takes what follows the command's word and gives the exit status.
int RunCalcola(std::span<const std::string> arguments, FileSystem& files, Console& console);
int RunVerifica(std::span<const std::string> arguments, FileSystem& files, Console& console);
int RunGrafico(std::span<const std::string> arguments, FileSystem& files, Console& console);

}  // namespace tonvale
