#include "calc/progress_line.h"

#include <algorithm>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience{500};  // a shorter work needs no word
constexpr milliseconds kPause{100};

ProgressLine::Clock ClockFromNow() {
    using std::chrono::steady_clock;
    return [start = steady_clock::now()] {
        return std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
    };
}

}  // namespace

ProgressLine::ProgressLine(Console& console) : ProgressLine(console, ClockFromNow()) {}

ProgressLine::ProgressLine(Console& console, Clock clock)
    : console_(console),
      is_seen_(console.ShowsProgress()),
      clock_(std::move(clock)),
      next_(kPatience) {}

ProgressLine::~ProgressLine() {
    if (shown_characters_ == 0) return;
    Replace("");
    console_.WriteError("\r");
}

void ProgressLine::Show(std::string_view what, std::size_t done, std::size_t total) {
    if (!is_seen_) return;
    const milliseconds now = clock_();
    if (now < next_) return;
    next_ = now + kPause;
    std::string text = std::string(what) + " " + FormatInteger(static_cast<long long>(done));
    if (total > 0) text += " di " + FormatInteger(static_cast<long long>(total));
    Replace(text);
}

// Blanks cover what is left of a longer text.
void ProgressLine::Replace(const std::string& text) {
    const std::size_t characters = CharacterCount(text);
    std::string line = "\r" + text;
    line.append(std::max(shown_characters_, characters) - characters, ' ');
    console_.WriteError(line);
    shown_characters_ = characters;
}

}  // namespace tonvale
