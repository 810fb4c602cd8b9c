// The command line "tonvale-calc": recomputes and checks data files without a window.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/file_system.h"

namespace tonvale {

// What the companion has around it: where it writes, UTF-8, lines ended by LF, and what the user
// does meanwhile.
class Console {
  public:
    virtual ~Console() = default;
    virtual void Write(std::string_view text) = 0;
    virtual void WriteError(std::string_view text) = 0;
    // Whether somebody reads standard error while it is written.
    virtual bool ShowsProgress() const { return false; }
    // Whether the user has asked to end (Ctrl+C). May be asked from any thread.
    virtual bool IsInterrupted() const { return false; }
    // Opens a file in the user's program for it; false when there is none.
    virtual bool OpenDocument(const std::string& /*path*/) { return false; }
};

// The statuses that the companion ends with.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFindings = 1;  // a file is refused, or is not what its inputs give
inline constexpr int kExitFailure = 2;   // a file cannot be read, or the command line is wrong
inline constexpr int kExitInterrupted = 130;

// Each tells standard error of it and gives the exit status.
int WrongCommandLine(Console& console, std::string_view error);
int Interrupted(Console& console);

// Runs one command line, without the program's name.
int RunCompanion(const std::vector<std::string>& arguments, FileSystem& files, Console& console);

}  // namespace tonvale
