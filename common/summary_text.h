// The text that "Copia" puts on the clipboard: cells parted by the locale's list separator.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace tonvale {

class SummaryText {
  public:
    // The block that holds a summary, terminator included, is this long; one character of a
    // summary takes one byte of it (Windows-1252).
    static constexpr std::size_t kBlockBytes = 4096;

    explicit SummaryText(std::string_view list_separator) : separator_(list_separator) {}

    // Appends a line: the cells joined by the separator, then CR LF. An empty cell stands between
    // two separators.
    void AddLine(std::initializer_list<std::string_view> cells);

    // "Note:" on a line of its own, then the notes as they are, cut to 255 characters, and CR LF.
    void AddNotes(std::string_view notes);

    // The summary, cut to 4,095 characters and never inside a CR LF.
    std::string Take() const;

  private:
    std::string separator_;
    std::string text_;
};

}  // namespace tonvale
