// A line on standard error that tells how far a long work has come.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "calc/companion.h"

namespace tonvale {

// Seen only where somebody watches, and only of a work that takes its time; gone with its end.
class ProgressLine {
  public:
    using Clock = std::function<std::chrono::milliseconds()>;  // since the work began

    explicit ProgressLine(Console& console);
    ProgressLine(Console& console, Clock clock);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    // "what 1200 di 10000"; without a total the number alone.
    void Show(std::string_view what, std::size_t done, std::size_t total = 0);

  private:
    void Replace(const std::string& text);

    Console& console_;
    bool is_seen_;
    Clock clock_;
    std::chrono::milliseconds next_;
    std::size_t shown_characters_ = 0;
};

}  // namespace tonvale
