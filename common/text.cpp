#include "common/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tonvale {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The characters of the Windows-1252 codes 0x80 to 0x9F; the five codes without a character stand
// for the C1 controls. All other codes stand for the character of the same number.
constexpr std::array<char16_t, 32> kWindows1252Block = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr std::size_t kBlockStart = 0x80;

std::uint8_t ByteAt(std::string_view text, std::size_t position) {
    return static_cast<std::uint8_t>(text[position]);
}

bool IsContinuation(char c) {
    return (static_cast<std::uint8_t>(c) & 0xC0) == 0x80;
}

char LowerLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

struct Decoded {
    char32_t code;
    std::size_t length;  // bytes
};

// The character at `position`; U+FFFD for the longest ill-formed start of one.
Decoded DecodeUtf8(std::string_view text, std::size_t position) {
    const std::uint8_t lead = ByteAt(text, position);
    if (lead < 0x80) return {lead, 1};
    if (lead < 0xC2 || lead > 0xF4) return {kReplacement, 1};

    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t code = lead & (0xFFU >> (length + 1));
    // What the second byte may be keeps out overlong forms, surrogates and codes past U+10FFFF.
    std::uint8_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    std::uint8_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    for (std::size_t i = 1; i < length; ++i) {
        if (position + i >= text.size()) return {kReplacement, i};
        const std::uint8_t byte = ByteAt(text, position + i);
        if (byte < low || byte > high) return {kReplacement, i};
        code = (code << 6) | (byte & 0x3FU);
        low = 0x80;
        high = 0xBF;
    }
    return {code, length};
}

void AppendUtf8(std::string& text, char32_t code) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (code < 0x80) {
        append(code);
        return;
    }
    if (code < 0x800) {
        append(0xC0 | (code >> 6));
    } else {
        if (code < 0x10000) {
            append(0xE0 | (code >> 12));
        } else {
            append(0xF0 | (code >> 18));
            append(0x80 | ((code >> 12) & 0x3F));
        }
        append(0x80 | ((code >> 6) & 0x3F));
    }
    append(0x80 | (code & 0x3F));
}

void AppendUtf16Le(std::string& bytes, char32_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
}

std::optional<char> Windows1252Code(char32_t code) {
    if (code < kBlockStart || (code >= kBlockStart + kWindows1252Block.size() && code <= 0xFF)) {
        return static_cast<char>(code);
    }
    const auto found = std::find(kWindows1252Block.begin(), kWindows1252Block.end(), code);
    if (found == kWindows1252Block.end()) return std::nullopt;
    return static_cast<char>(kBlockStart +
                             static_cast<std::size_t>(found - kWindows1252Block.begin()));
}

// nullopt when there is no substitute for a character without a code.
std::optional<std::string> EncodeWindows1252(std::string_view utf8,
                                             std::optional<char> substitute) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const Decoded character = DecodeUtf8(utf8, i);
        std::optional<char> code = Windows1252Code(character.code);
        if (!code) code = substitute;
        if (!code) return std::nullopt;
        bytes += *code;
        i += character.length;
    }
    return bytes;
}

}  // namespace

std::size_t CharacterCount(std::string_view utf8) {
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return !IsContinuation(c); }));
}

std::string_view CutToCharacters(std::string_view utf8, std::size_t max_characters) {
    if (utf8.size() <= max_characters) return utf8;
    std::size_t characters = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (IsContinuation(utf8[i]) || ++characters <= max_characters) continue;
        const bool splits_line_end = i > 0 && utf8[i - 1] == '\r' && utf8[i] == '\n';
        return utf8.substr(0, splits_line_end ? i - 1 : i);
    }
    return utf8;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerLetter(x) == LowerLetter(y); });
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerLetter);
    return lower;
}

std::string_view TrimBlanks(std::string_view text) {
    const auto is_blank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
    return text;
}

std::string SingleLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(),
        [](char c) { return static_cast<std::uint8_t>(c) < 0x20 || c == 0x7F; }, ' ');
    return line;
}

std::string WithDecimalComma(std::string_view text) {
    std::string result(text);
    const std::size_t point = result.find('.');
    if (point != std::string::npos) result[point] = ',';
    return result;
}

std::string_view TakeLine(std::string_view& text) {
    const auto is_end = [](char c) { return c == '\r' || c == '\n'; };
    const auto end =
        static_cast<std::size_t>(std::find_if(text.begin(), text.end(), is_end) - text.begin());
    const std::string_view line = text.substr(0, end);
    const bool is_pair = text.substr(end, kLineEnd.size()) == kLineEnd;
    text.remove_prefix(std::min(end + (is_pair ? 2 : 1), text.size()));
    return line;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) lines.push_back(TakeLine(text));
    return lines;
}

std::string Windows1252ToUtf8(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    const auto is_ascii = [](char c) { return static_cast<std::uint8_t>(c) < 0x80; };
    for (auto at = bytes.begin(); at != bytes.end(); ++at) {
        const auto run_end = std::find_if_not(at, bytes.end(), is_ascii);
        utf8.append(at, run_end);
        at = run_end;
        if (at == bytes.end()) break;
        const std::size_t code = static_cast<std::uint8_t>(*at);
        const bool in_block = code - kBlockStart < kWindows1252Block.size();
        AppendUtf8(utf8,
                   in_block ? kWindows1252Block[code - kBlockStart] : static_cast<char32_t>(code));
    }
    return utf8;
}

std::optional<std::string> Utf8ToWindows1252(std::string_view utf8) {
    return EncodeWindows1252(utf8, std::nullopt);
}

std::string Utf8ToWindows1252Lossy(std::string_view utf8) {
    return EncodeWindows1252(utf8, '?').value_or(std::string());
}

std::string Utf16LeToUtf8(std::string_view bytes) {
    const auto unit_at = [bytes](std::size_t i) -> char32_t {
        if (i + 1 >= bytes.size()) return 0;
        return ByteAt(bytes, i) | static_cast<char32_t>(ByteAt(bytes, i + 1)) << 8;
    };
    std::string utf8;
    utf8.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t code = unit_at(i);
        if ((code & 0xF800) == 0xD800) {
            const char32_t next = unit_at(i + 2);
            if (code < 0xDC00 && (next & 0xFC00) == 0xDC00) {
                code = 0x10000 + ((code & 0x3FF) << 10) + (next & 0x3FF);
                i += 2;
            } else {
                code = kReplacement;
            }
        }
        AppendUtf8(utf8, code);
    }
    return utf8;
}

std::string Utf8ToUtf16Le(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(2 * utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const Decoded character = DecodeUtf8(utf8, i);
        if (character.code >= 0x10000) {
            const char32_t offset = character.code - 0x10000;
            AppendUtf16Le(bytes, 0xD800 | (offset >> 10));
            AppendUtf16Le(bytes, 0xDC00 | (offset & 0x3FF));
        } else {
            AppendUtf16Le(bytes, character.code);
        }
        i += character.length;
    }
    return bytes;
}

std::string ValidUtf8(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        if (static_cast<unsigned char>(bytes[i]) < 0x80) {
            utf8 += bytes[i++];
            continue;
        }
        const Decoded character = DecodeUtf8(bytes, i);
        AppendUtf8(utf8, character.code);
        i += character.length;
    }
    return utf8;
}

std::string DistinctUtf8(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string utf8;
    for (std::size_t i = 0; i < bytes.size();) {
        const Decoded character = DecodeUtf8(bytes, i);
        const std::size_t end = i + character.length;
        if (character.code != kReplacement) utf8.append(bytes.substr(i, character.length));
        for (; i < end && character.code == kReplacement; ++i) {
            AppendUtf8(utf8, kReplacement);
            utf8 += kDigits[ByteAt(bytes, i) >> 4];
            utf8 += kDigits[ByteAt(bytes, i) & 0xF];
        }
        i = end;
    }
    return utf8;
}

}  // namespace tonvale
