// The one place where numbers become text and text becomes numbers.
//
// Both directions are independent of the locale and give the same bytes on every platform.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tonvale {

// The number that `text` begins with: after blanks and tabs, the longest prefix of the form
// [sign] digits [point digits] [exponent], with at least one digit before or after the point.
// Text without such a prefix gives 0. No hexadecimal, "inf" or "nan"; a comma ends the number.
// A magnitude beyond the range of double gives an infinity, one below it 0, as strtod does.
double ParseNumber(std::string_view text);

// The decimal digits that `text` begins with, as an integer: 0 when it begins with none (a sign or
// a blank is not a digit), INT_MAX when they exceed it.
int ParseInteger(std::string_view text);

// The same behind a sign and, before it, blanks and tabs: "-5 dB" is -5, "25.9" is 25, "abc" is 0.
// Held at -INT_MAX and INT_MAX.
int ParseSignedInteger(std::string_view text);

// The digits as an unsigned number of 32 bits: its largest value when the digits exceed it.
std::uint32_t ParseUnsigned(std::string_view text);

// `value` with `decimals` (0 to 17) digits after the point, padded with blanks on the left to
// `width` characters, in the manner of "%W.Pf" except that an exact tie rounds away from zero:
// 0.25 with one decimal is "0.3", while 0.15, whose double lies below the tie, is "0.1".
// A value that is not a number gives "nan" whatever its sign; infinities give "inf" and "-inf".
std::string FormatFixed(double value, int width, int decimals);

// With as many of two decimals as it takes: "12", "12.5", "-0.25". Up to 10^15 in magnitude.
std::string FormatHundredths(double value);

// The shortest decimal text that reads back as exactly `value` (finite).
std::string FormatShortest(double value);

std::string FormatInteger(long long value);

// The whole number nearest to `value`, halves upwards, for a positive value; a negative one is
// truncated, and its halves too go towards zero: 2.5 is 3, -2.5 and -2.9 are -2.
double RoundHalvesUp(double value);

}  // namespace tonvale
