// The words that Rich Text Format is made of.
#pragma once

#include <cstddef>
#include <string_view>

namespace tonvale {

struct RtfToken {
    enum class Kind {
        kEnd,     // of the bytes
        kOpen,    // {
        kClose,   // }
        kWord,    // \name or \nameN; a symbol such as \~ or \* has its one character as name
        kByte,    // \'hh: `parameter` is the byte
        kText,    // plain bytes, or the one byte of \\ \{ \}: `text`
        kBinary,  // \binN and its N bytes: `text`
        kBlank,   // line ends, which mean nothing
    };
    Kind kind = Kind::kEnd;
    std::string_view source;  // the bytes of the whole token
    std::string_view name;
    std::string_view text;
    bool has_parameter = false;
    int parameter = 0;  // of a word; 0 when it has none; held within the range of int
};

// The value of a hexadecimal digit; -1 of another character.
int HexValue(char c);

// Cuts any bytes into tokens, one after the other: their sources together are the bytes.
class RtfTokenizer {
  public:
    explicit RtfTokenizer(std::string_view bytes) : bytes_(bytes) {}
    RtfToken Next();

  private:
    RtfToken Take(RtfToken::Kind kind, std::size_t length);
    RtfToken NextText();
    RtfToken NextControl();
    RtfToken NextWord();
    RtfToken NextByte();

    std::string_view bytes_;
    std::size_t position_ = 0;
};

}  // namespace tonvale
