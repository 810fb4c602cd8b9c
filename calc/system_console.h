// The companion's console on the standard streams, which are left open.
#pragma once

#include <string>
#include <string_view>

#include "calc/companion.h"

namespace tonvale {

// There is one at most. It takes Ctrl+C as a wish to end; a second one ends the program at once.
class SystemConsole final : public Console {
  public:
    SystemConsole();
    void Write(std::string_view text) override;
    void WriteError(std::string_view text) override;
    bool ShowsProgress() const override;
    bool IsInterrupted() const override;
    bool OpenDocument(const std::string& path) override;

    // Writes out what is buffered. The status to end with: `status`, or where anything was lost
    // (disk full, reader gone), of which standard error is told, kExitFailure.
    int Finish(int status);
};

}  // namespace tonvale
