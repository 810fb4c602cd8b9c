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
    bool shows_progress = false;
    bool is_interrupted = false;
    std::string opened;  // the path last opened

    void Write(std::string_view text) override { output += text; }
    void WriteError(std::string_view text) override { errors += text; }
    bool ShowsProgress() const override { return shows_progress; }
    bool IsInterrupted() const override { return is_interrupted; }
    bool OpenDocument(const std::string& path) override {
        opened = path;
        return true;
    }
};

}  // namespace tonvale
