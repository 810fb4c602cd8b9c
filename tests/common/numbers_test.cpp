#include "common/numbers.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <utility>

namespace tonvale {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ParseNumber, TakesTheLongestDecimalPrefix) {
    const std::pair<const char*, double> cases[] = {
        {"90,5", 90},
        {"+3", 3},
        {"  7", 7},
        {" \t7 8", 7},
        {".5", .5},
        {"5.", 5},
        {"5.e2", 500},
        {"-.5", -.5},
        {"5e", 5},
        {"5e+", 5},
        {"5e-x", 5},
        {"5e2.5", 500},
        {"5E-1dB", .5},
        {"1.2.3", 1.2},
        {"0.1", 0.1},
        {"85.25 dBA", 85.25},
        {"007", 7},
        {"5e-324", 5e-324},
        {"1e400", kInfinity},
        {"-1e400", -kInfinity},
        {"1e99999999999999999999", kInfinity},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"0.00001e309", 1e304},
        {"0.00001e320", kInfinity}};
    for (const auto& [text, value] : cases) EXPECT_EQ(ParseNumber(text), value) << text;
    for (const char* zero :
         {"", "abc", "inf", "nan", "-inf", "0x1A", "\n7", ".", "-", "+-3", "--3", "- 3", ".e5",
          "e5", "1e-400", "0e999", "1e-99999999999999999999", "100000e-330"}) {
        EXPECT_EQ(ParseNumber(zero), 0) << zero;
    }
    EXPECT_EQ(ParseNumber(std::string_view("12345", 3)), 123) << "read past the end of the text";
    EXPECT_TRUE(std::signbit(ParseNumber("-0")));
}

TEST(ParseNumber, TakesAnyNumberOfDigits) {
    const std::string digits(1 << 20, '7');
    EXPECT_EQ(ParseNumber(digits), kInfinity);
    EXPECT_EQ(ParseNumber("-" + digits), -kInfinity);
    EXPECT_EQ(ParseNumber("0." + digits), 7.0 / 9.0);
    EXPECT_EQ(ParseNumber(digits + "e-1048576"), 7.0 / 9.0);
    EXPECT_EQ(ParseNumber("0." + std::string(1 << 20, '0') + "1"), 0);
    EXPECT_EQ(ParseNumber("0." + std::string(1 << 20, '0') + "1e1048577"), 1);
}

TEST(ParseInteger, TakesDigitsOnly) {
    EXPECT_EQ(ParseInteger("12a"), 12);
    EXPECT_EQ(ParseInteger("0012"), 12);
    for (const char* text : {"", "-3", "+3", " 3", "x"}) EXPECT_EQ(ParseInteger(text), 0) << text;
    EXPECT_EQ(ParseInteger("2147483647"), INT_MAX);
    EXPECT_EQ(ParseInteger("2147483648"), INT_MAX);
    EXPECT_EQ(ParseInteger(std::string(100, '9')), INT_MAX);
}

TEST(ParseSignedInteger, TakesASignAndDigits) {
    EXPECT_EQ(ParseSignedInteger("25.9"), 25);
    EXPECT_EQ(ParseSignedInteger(" \t-5 dB"), -5);
    EXPECT_EQ(ParseSignedInteger("+007"), 7);
    for (const char* text : {"", "-", "- 5", "--5", "abc", ".5"}) {
        EXPECT_EQ(ParseSignedInteger(text), 0) << text;
    }
    EXPECT_EQ(ParseSignedInteger("2147483648"), INT_MAX);
    EXPECT_EQ(ParseSignedInteger("-99999999999"), -INT_MAX);
}

// Rounds the exact decimal expansion of `value` by hand, half away from zero.
std::string RoundByHand(double value, int width, int decimals) {
    std::array<char, 2000> exact;
    std::snprintf(exact.data(), exact.size(), "%.1100f", std::fabs(value));
    std::string text = exact.data();
    const std::size_t first_dropped = text.find('.') + 1 + static_cast<std::size_t>(decimals);
    bool carry = text[first_dropped] >= '5';
    text.resize(decimals == 0 ? first_dropped - 1 : first_dropped);
    for (std::size_t i = text.size(); carry && i-- > 0;) {
        if (text[i] == '.') continue;
        carry = text[i] == '9';
        text[i] = carry ? '0' : static_cast<char>(text[i] + 1);
    }
    if (carry) text.insert(text.begin(), '1');
    if (std::signbit(value)) text.insert(text.begin(), '-');
    while (static_cast<int>(text.size()) < width) text.insert(text.begin(), ' ');
    return text;
}

double RandomDouble(std::mt19937_64& random) {
    double value = 0;
    do {
        const std::uint64_t bits = random();
        std::memcpy(&value, &bits, sizeof value);
    } while (!std::isfinite(value));
    return value;
}

TEST(FormatFixed, RoundsTheExactValueWithTiesAwayFromZero) {
    EXPECT_EQ(FormatFixed(0.25, 4, 1), " 0.3");
    EXPECT_EQ(FormatFixed(-0.25, 4, 1), "-0.3");
    EXPECT_EQ(FormatFixed(12.5, 4, 0), "  13");
    EXPECT_EQ(FormatFixed(0.15, 4, 1), " 0.1");
    EXPECT_EQ(FormatFixed(999.5, 2, 0), "1000");
    EXPECT_EQ(FormatFixed(9.96875, 0, 4), "9.9688");
    EXPECT_EQ(FormatFixed(-0.0, 6, 1), "  -0.0");
    EXPECT_EQ(FormatFixed(-0.01, 0, 1), "-0.0");
    // Ties so large that the next double lies further away than the last digit.
    EXPECT_EQ(FormatFixed(1125899906842624.25, 0, 1), "1125899906842624.3");
    EXPECT_EQ(FormatFixed(4503599627370495.5, 0, 0), "4503599627370496");

    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const int decimals = static_cast<int>(random() % 18);
        const int width = static_cast<int>(random() % 30);
        const double small = static_cast<double>(static_cast<std::int64_t>(random())) * 1e-15;
        const double tie = std::ldexp(std::floor(small), -decimals - 1);
        const double typed = static_cast<double>(random() % 2000000) / 10000;
        for (const double value : {small, tie, typed, RandomDouble(random)}) {
            ASSERT_EQ(FormatFixed(value, width, decimals), RoundByHand(value, width, decimals))
                << "decimals " << decimals;
        }
    }
}

TEST(FormatFixed, NamesWhatIsNoNumber) {
    EXPECT_EQ(FormatFixed(std::nan(""), 6, 1), "   nan");
    EXPECT_EQ(FormatFixed(-std::nan(""), 6, 1), "   nan");
    EXPECT_EQ(FormatFixed(kInfinity, 6, 1), "   inf");
    EXPECT_EQ(FormatFixed(-kInfinity, 0, 1), "-inf");
    EXPECT_EQ(FormatFixed(-std::numeric_limits<double>::max(), 0, 17).size(), 328U);
}

TEST(FormatShortest, ReadsBackAsTheSameNumber) {
    EXPECT_EQ(FormatShortest(0.1), "0.1");
    EXPECT_EQ(FormatShortest(85), "85");
    std::mt19937_64 random(2);
    for (int i = 0; i < 50000; ++i) {
        const double value = RandomDouble(random);
        ASSERT_EQ(ParseNumber(FormatShortest(value)), value) << FormatShortest(value);
    }
    EXPECT_EQ(FormatInteger(LLONG_MIN), "-9223372036854775808");
}

}  // namespace
}  // namespace tonvale
