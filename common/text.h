// Text helpers of the core. Text is UTF-8; lengths count characters (code points), never bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tonvale {

inline constexpr std::string_view kLineEnd = "\r\n";

std::size_t CharacterCount(std::string_view utf8);

// The first `max_characters` characters of `utf8`. The cut never splits a character, nor a CR LF
// pair: a CR whose LF falls beyond the cut goes too.
std::string_view CutToCharacters(std::string_view utf8, std::size_t max_characters);

// Compares without regard to the case of the letters A to Z.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);
std::string LowerCase(std::string_view text);  // of the letters A to Z

// `text` without the blanks and tabs at its ends.
std::string_view TrimBlanks(std::string_view text);

// `text` with a blank for each control character, line ends included.
std::string SingleLine(std::string_view text);

// `text` with its first "." replaced by ",": how a number is written in a clipboard summary.
std::string WithDecimalComma(std::string_view text);

// The first line of `text`, up to CR LF, lone LF or lone CR; `text` goes on behind the line end.
std::string_view TakeLine(std::string_view& text);

// `text` cut into lines at CR LF, lone LF and lone CR. A line end at the very end adds no empty
// line; an empty text has no lines.
std::vector<std::string_view> SplitLines(std::string_view text);

// Conversions at the edges. Decoding never fails: Windows-1252 bytes without a character map to
// the C1 controls, ill-formed UTF-16 or UTF-8 to U+FFFD.
std::string Windows1252ToUtf8(std::string_view bytes);
// nullopt when a character has no Windows-1252 code.
std::optional<std::string> Utf8ToWindows1252(std::string_view utf8);
// As above, with "?" for the characters that have no code.
std::string Utf8ToWindows1252Lossy(std::string_view utf8);
std::string Utf16LeToUtf8(std::string_view bytes);  // an odd last byte is dropped
std::string Utf8ToUtf16Le(std::string_view utf8);
std::string ValidUtf8(std::string_view bytes);  // ill-formed sequences replaced by U+FFFD
// Valid UTF-8 that differs where `bytes` differ: each byte of an ill-formed sequence, and of U+FFFD
// itself, becomes U+FFFD and two hexadecimal digits.
std::string DistinctUtf8(std::string_view bytes);

}  // namespace tonvale
