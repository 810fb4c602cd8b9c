#include "archive/natural_order.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "common/text.h"

namespace tonvale {

namespace {

// The letters under the accents of the characters U+00C0 to U+00FF; "." for what has none.
constexpr std::string_view kBaseLetters =
    "aaaaaa.ceeeeiiii.nooooo.ouuuuy.."
    "aaaaaa.ceeeeiiii.nooooo.ouuuuy.y";
static_assert(kBaseLetters.size() == 64);
constexpr std::string_view kAccentedLead = "\xC3";

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Appends the number of the digits that `rest` begins with, and takes them away: how many digits it
// has without leading zeros, in two bytes, then these.
void AppendNumber(std::string_view& rest, std::string& key) {
    const auto end = std::find_if_not(rest.begin(), rest.end(), IsDigit);
    std::string_view digits = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(digits.size());
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    const std::size_t count = std::min<std::size_t>(digits.size(), 0xFFFF);
    key += '0';  // where a digit stands among other characters
    key += static_cast<char>(count >> 8);
    key += static_cast<char>(count & 0xFF);
    key += digits;
}

// The letter under the accent of the character that `rest` begins with; "." when it has none.
char BaseLetter(std::string_view rest) {
    if (rest.size() < 2 || !rest.starts_with(kAccentedLead)) return '.';
    const std::size_t index = static_cast<std::uint8_t>(rest[1]) - std::size_t{0x80};
    return index < kBaseLetters.size() ? kBaseLetters[index] : '.';
}

}  // namespace

std::string NaturalKey(std::string_view name) {
    std::string key;
    key.reserve(name.size() + 4);
    const std::string lower = LowerCase(name);
    for (std::string_view rest = lower; !rest.empty();) {
        if (IsDigit(rest.front())) {
            AppendNumber(rest, key);
            continue;
        }
        const char base = BaseLetter(rest);
        key += base != '.' ? base : rest.front();
        rest.remove_prefix(base != '.' ? 2 : 1);
    }
    return key;
}

}  // namespace tonvale
