// A console that keeps what is written to it.
#pragma once

#include <string>
#include <string_view>

#include "calc/companion.h"

namespace tonvale {

class RecordingConsole final : public Console {
  public:
    std::string output;
    std::string errors;

    void Write(std::string_view text) override { output += text; }
    void WriteError(std::string_view text) override { errors += text; }
};

}  // namespace tonvale
