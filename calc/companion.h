// The command line "tonvale-calc": recomputes and checks data files without a window.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/file_system.h"

namespace tonvale {

// Where the companion writes, UTF-8, lines ended by LF.
class Console {
  public:
    virtual ~Console() = default;
    virtual void Write(std::string_view text) = 0;
    virtual void WriteError(std::string_view text) = 0;
};

// The statuses that the companion ends with.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFindings = 1;  // a file is refused, or is not what its inputs give
inline constexpr int kExitFailure = 2;   // a file cannot be read, or the command line is wrong

// Runs one command line, without the program's name.
int RunCompanion(const std::vector<std::string>& arguments, FileSystem& files, Console& console);

}  // namespace tonvale
