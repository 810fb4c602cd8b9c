// The companion's console on the standard streams, which are left open.
#pragma once

#include <cstdio>
#include <string_view>

#include "calc/companion.h"

namespace tonvale {

class StreamConsole final : public Console {
  public:
    void Write(std::string_view text) override { Put(text, stdout); }
    void WriteError(std::string_view text) override { Put(text, stderr); }

    // Writes out what is buffered; false when any of it was lost (disk full, reader gone).
    bool Flush() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

  private:
    static void Put(std::string_view text, std::FILE* stream) {
        std::fwrite(text.data(), 1, text.size(), stream);
    }
};

}  // namespace tonvale
