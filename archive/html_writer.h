// HTML, piece by piece: what comes from a file can only be its text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "common/markup.h"
#include "common/numbers.h"
#include "common/svg_canvas.h"

namespace tonvale {

// Markup of this program's own. It is made of literals only: no text can become markup by mistake.
class Markup {
  public:
    consteval Markup(const char* text) : text_(text) {}  // NOLINT(google-explicit-constructor)
    std::string_view text() const { return text_; }

  private:
    std::string_view text_;
};

// A piece of a page.
class Html {
  public:
    const std::string& text() const { return text_; }
    std::string TakeText() && { return std::move(text_); }
    // For a piece that is kept for long beside many others.
    void DropSpareRoom() { text_.shrink_to_fit(); }

  private:
    friend class HtmlWriter;
    std::string text_;
};

class HtmlWriter {
  public:
    HtmlWriter& Raw(Markup markup) {
        html_.text_ += markup.text();
        return *this;
    }
    // The text of an element, or the value of an attribute in double quotes.
    HtmlWriter& Text(std::string_view text) {
        html_.text_ += EscapeMarkup(text);
        return *this;
    }
    HtmlWriter& Integer(std::size_t number) {
        html_.text_ += FormatInteger(static_cast<long long>(number));
        return *this;
    }
    HtmlWriter& Fixed(double number, int decimals) {
        html_.text_ += FormatFixed(number, 0, decimals);
        return *this;
    }
    HtmlWriter& Picture(const SvgCanvas& picture) {
        html_.text_ += picture.Document();
        return *this;
    }
    HtmlWriter& Piece(const Html& piece) {
        html_.text_ += piece.text();
        return *this;
    }
    void Reserve(std::size_t bytes) { html_.text_.reserve(bytes); }
    Html Take() { return std::exchange(html_, {}); }

  private:
    Html html_;
};

}  // namespace tonvale
