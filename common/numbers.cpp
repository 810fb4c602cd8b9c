#include "common/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <system_error>

namespace tonvale {
namespace {

// The sign, the longest finite number and the most decimals that FormatFixed knows.
constexpr std::size_t kMaxFixedCharacters = 1 + 309 + 1 + 18;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t DigitRun(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
    return static_cast<std::size_t>(end - text.begin());
}

// The digits that `text` begins with, held at the largest value of T. from_chars would take a sign.
template <typename T>
T ParseDigits(std::string_view text) {
    T value = 0;
    const auto result = std::from_chars(text.data(), text.data() + DigitRun(text), value);
    return result.ec == std::errc::result_out_of_range ? std::numeric_limits<T>::max() : value;
}

// Takes blanks, tabs and a sign away from the start of `text`. True when the sign is a minus.
bool TakeSign(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool has_sign = !text.empty() && (text[0] == '+' || text[0] == '-');
    const bool negative = has_sign && text[0] == '-';
    if (has_sign) text.remove_prefix(1);
    return negative;
}

// An unsigned decimal number at the start of a text.
struct Decimal {
    std::string_view text;  // all of it
    std::string_view whole_digits;
    std::string_view fraction_digits;
    long long exponent = 0;
};

Decimal ScanDecimal(std::string_view text) {
    Decimal decimal;
    decimal.whole_digits = text.substr(0, DigitRun(text));
    std::size_t length = decimal.whole_digits.size();
    if (length < text.size() && text[length] == '.') {
        const std::string_view rest = text.substr(length + 1);
        decimal.fraction_digits = rest.substr(0, DigitRun(rest));
        length += 1 + decimal.fraction_digits.size();
    }
    if (decimal.whole_digits.empty() && decimal.fraction_digits.empty()) return {};

    if (length < text.size() && (text[length] == 'e' || text[length] == 'E')) {
        std::string_view rest = text.substr(length + 1);
        const bool has_sign = !rest.empty() && (rest[0] == '+' || rest[0] == '-');
        const bool negative = has_sign && rest[0] == '-';
        if (has_sign) rest.remove_prefix(1);
        // An exponent letter without digits is not part of the number.
        if (const std::size_t digits = DigitRun(rest); digits > 0) {
            decimal.exponent = ParseInteger(rest);
            if (negative) decimal.exponent = -decimal.exponent;
            length += 1 + (has_sign ? 1 : 0) + digits;
        }
    }
    decimal.text = text.substr(0, length);
    return decimal;
}

// Whether a number beyond the range of double lies above it (true) or below.
bool IsAboveRange(const Decimal& decimal) {
    const std::size_t whole = decimal.whole_digits.find_first_not_of('0');
    if (whole != std::string_view::npos) {
        return static_cast<long long>(decimal.whole_digits.size() - whole) + decimal.exponent > 0;
    }
    const std::size_t zeros = decimal.fraction_digits.find_first_not_of('0');
    return zeros != std::string_view::npos && decimal.exponent - static_cast<long long>(zeros) > 0;
}

// `magnitude` lies exactly between two numbers of `decimals` decimals when the product with
// 2 * 10^decimals is odd; as 5^decimals is odd, the product with 2 * 2^decimals decides.
bool IsTie(double magnitude, int decimals) {
    const double product = std::ldexp(magnitude, decimals + 1);
    // Few products are whole, and the remainder takes long.
    return product == std::trunc(product) && std::fmod(product, 2.0) == 1.0;
}

std::string ToFixed(double value, int decimals) {
    std::array<char, kMaxFixedCharacters> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return std::string(buffer.data(), result.ptr);
}

// Adds one to the last digit of the unsigned decimal number `text`.
void IncrementLastDigit(std::string& text) {
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
        if (*digit == '.') continue;
        if (*digit != '9') {
            ++*digit;
            return;
        }
        *digit = '0';
    }
    text.insert(text.begin(), '1');
}

std::string FormatMagnitude(double magnitude, int decimals) {
    if (!IsTie(magnitude, decimals)) return ToFixed(magnitude, decimals);
    // With one decimal more a tie is exact and ends in 5.
    std::string text = ToFixed(magnitude, decimals + 1);
    text.pop_back();
    if (text.back() == '.') text.pop_back();
    IncrementLastDigit(text);
    return text;
}

}  // namespace

double ParseNumber(std::string_view text) {
    const bool negative = TakeSign(text);
    const Decimal decimal = ScanDecimal(text);
    if (decimal.text.empty()) return 0;
    double magnitude = 0;
    const auto result =
        std::from_chars(decimal.text.data(), decimal.text.data() + decimal.text.size(), magnitude);
    if (result.ec == std::errc::result_out_of_range) {
        magnitude = IsAboveRange(decimal) ? std::numeric_limits<double>::infinity() : 0;
    }
    return negative ? -magnitude : magnitude;
}

int ParseInteger(std::string_view text) {
    return ParseDigits<int>(text);
}

int ParseSignedInteger(std::string_view text) {
    const bool negative = TakeSign(text);
    const int magnitude = ParseInteger(text);
    return negative ? -magnitude : magnitude;
}

std::uint32_t ParseUnsigned(std::string_view text) {
    return ParseDigits<std::uint32_t>(text);
}

std::string FormatFixed(double value, int width, int decimals) {
    const double magnitude = std::fabs(value);
    std::string text = std::isnan(value)   ? "nan"
                       : std::isinf(value) ? "inf"
                                           : FormatMagnitude(magnitude, decimals);
    if (std::signbit(value) && !std::isnan(value)) text.insert(text.begin(), '-');
    const auto field = static_cast<std::size_t>(std::max(width, 0));
    if (text.size() < field) text.insert(0, field - text.size(), ' ');
    return text;
}

std::string FormatShortest(double value) {
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}

std::string FormatHundredths(double value) {
    const long long hundredths = std::llround(value * 100);
    const long long magnitude = std::llabs(hundredths);
    std::string text = hundredths < 0 ? "-" : "";
    text += FormatInteger(magnitude / 100);
    const auto digit = [](long long number) { return static_cast<char>('0' + number % 10); };
    if (magnitude % 100 != 0) text.append({'.', digit(magnitude / 10)});
    if (magnitude % 10 != 0) text += digit(magnitude);
    return text;
}

std::string FormatInteger(long long value) {
    return std::to_string(value);
}

double RoundHalvesUp(double value) {
    const double whole = std::trunc(value) + 0.0;  // never -0
    return value - 0.5 < whole ? whole : whole + 1;
}

}  // namespace tonvale
