#include "report/rtf/rtf_tokens.h"

#include <algorithm>

#include "common/numbers.h"

namespace tonvale {

namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

// The index behind the characters that `belongs` takes, from `start` on.
template <typename Predicate>
std::size_t EndOf(std::string_view bytes, std::size_t start, Predicate belongs) {
    const auto* first = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(start, bytes.size()));
    return static_cast<std::size_t>(std::find_if_not(first, bytes.end(), belongs) - bytes.begin());
}

}  // namespace

int HexValue(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

RtfToken RtfTokenizer::Take(RtfToken::Kind kind, std::size_t length) {
    RtfToken token;
    token.kind = kind;
    token.source = bytes_.substr(position_, length);
    position_ += token.source.size();
    return token;
}

RtfToken RtfTokenizer::Next() {
    if (position_ >= bytes_.size()) return {};
    const char first = bytes_[position_];
    if (first == '{') return Take(RtfToken::Kind::kOpen, 1);
    if (first == '}') return Take(RtfToken::Kind::kClose, 1);
    if (first == '\\') return NextControl();
    if (IsLineEnd(first)) {
        return Take(RtfToken::Kind::kBlank, EndOf(bytes_, position_, IsLineEnd) - position_);
    }
    return NextText();
}

RtfToken RtfTokenizer::NextText() {
    const auto is_plain = [](char c) { return c != '{' && c != '}' && c != '\\' && !IsLineEnd(c); };
    RtfToken token = Take(RtfToken::Kind::kText, EndOf(bytes_, position_, is_plain) - position_);
    token.text = token.source;
    return token;
}

RtfToken RtfTokenizer::NextControl() {
    if (position_ + 1 >= bytes_.size()) return Take(RtfToken::Kind::kBlank, 1);
    const char next = bytes_[position_ + 1];
    if (IsLetter(next)) return NextWord();
    if (next == '\'') return NextByte();
    const bool is_character = next == '\\' || next == '{' || next == '}';
    RtfToken token = Take(is_character ? RtfToken::Kind::kText : RtfToken::Kind::kWord, 2);
    (is_character ? token.text : token.name) = token.source.substr(1);
    if (IsLineEnd(next)) token.name = "par";
    return token;
}

RtfToken RtfTokenizer::NextByte() {
    const std::size_t digits = position_ + 2;
    const int high = digits < bytes_.size() ? HexValue(bytes_[digits]) : -1;
    const int low = digits + 1 < bytes_.size() ? HexValue(bytes_[digits + 1]) : -1;
    if (high < 0 || low < 0) return Take(RtfToken::Kind::kBlank, 2);
    RtfToken token = Take(RtfToken::Kind::kByte, 4);
    token.parameter = 16 * high + low;
    return token;
}

RtfToken RtfTokenizer::NextWord() {
    const std::size_t name_start = position_ + 1;
    const std::size_t name_end = EndOf(bytes_, name_start, IsLetter);
    const bool is_negative =
        name_end + 1 < bytes_.size() && bytes_[name_end] == '-' && IsDigit(bytes_[name_end + 1]);
    const std::size_t digits = name_end + (is_negative ? 1 : 0);
    const std::size_t end = EndOf(bytes_, digits, IsDigit);
    const int value = ParseInteger(bytes_.substr(digits, end - digits));
    const std::string_view name = bytes_.substr(name_start, name_end - name_start);
    const bool ends_with_blank = end < bytes_.size() && bytes_[end] == ' ';
    const std::size_t word_length = end + (ends_with_blank ? 1 : 0) - position_;

    const bool is_binary = name == "bin" && !is_negative;
    const std::size_t data = is_binary ? static_cast<std::size_t>(value) : 0;
    RtfToken token =
        Take(is_binary ? RtfToken::Kind::kBinary : RtfToken::Kind::kWord, word_length + data);
    token.name = name;
    token.has_parameter = end > digits;
    token.parameter = is_negative ? -value : value;
    if (is_binary) token.text = token.source.substr(word_length);
    return token;
}

}  // namespace tonvale
