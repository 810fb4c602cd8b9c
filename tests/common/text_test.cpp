#include "common/text.h"

#include <gtest/gtest.h>

namespace tonvale {
namespace {

using namespace std::string_literals;

TEST(CutToCharacters, NeverSplitsACharacterOrALineEnd) {
    EXPECT_EQ(CutToCharacters("perché no", 6), "perché");
    EXPECT_EQ(CutToCharacters("perché no", 5), "perch");
    EXPECT_EQ(CutToCharacters("😀€à", 2), "😀€");
    EXPECT_EQ(CutToCharacters("abc", 3), "abc");
    EXPECT_EQ(CutToCharacters("abc", 0), "");
    EXPECT_EQ(CutToCharacters("a\r\nb", 3), "a\r\n");
    EXPECT_EQ(CutToCharacters("a\r\nb", 2), "a");
    EXPECT_EQ(CutToCharacters("a\r\rb", 2), "a\r");
    EXPECT_EQ(CharacterCount("😀€à\r\n"), 5U);
}

TEST(Text, TreatsOnlyTheLettersAToZAsHavingCase) {
    EXPECT_TRUE(EqualsIgnoringCase("LepD", "lEPd"));
    EXPECT_FALSE(EqualsIgnoringCase("LEPD", "LEPDX"));
    EXPECT_FALSE(EqualsIgnoringCase("[", "{"));
    EXPECT_FALSE(EqualsIgnoringCase("È", "è"));
    EXPECT_EQ(LowerCase("AZ@[È"), "az@[È");
}

TEST(Text, TrimsBlanksAndPutsOneComma) {
    EXPECT_EQ(TrimBlanks(" \tLEPD x\t "), "LEPD x");
    EXPECT_EQ(TrimBlanks("  "), "");
    EXPECT_EQ(TrimBlanks("\ra\n"), "\ra\n");
    EXPECT_EQ(WithDecimalComma("1.5 - 2.5"), "1,5 - 2.5");
    EXPECT_EQ(WithDecimalComma("15"), "15");
}

TEST(SplitLines, KnowsEveryLineEnd) {
    using Lines = std::vector<std::string_view>;
    EXPECT_EQ(SplitLines(""), Lines());
    EXPECT_EQ(SplitLines("\r\n"), Lines({""}));
    EXPECT_EQ(SplitLines("a\r\n\r\nb"), Lines({"a", "", "b"}));
    EXPECT_EQ(SplitLines("a\nb\rc\r\n"), Lines({"a", "b", "c"}));
    EXPECT_EQ(SplitLines("a\n\rb\r\r\n"), Lines({"a", "", "b", ""}));
}

TEST(Windows1252, EveryCodeComesBack) {
    std::string bytes;
    for (int code = 0; code < 256; ++code) bytes += static_cast<char>(code);
    const std::string utf8 = Windows1252ToUtf8(bytes);
    EXPECT_EQ(CharacterCount(utf8), 256U);
    EXPECT_EQ(Utf8ToWindows1252(utf8), bytes);
    EXPECT_EQ(Windows1252ToUtf8("\x80\x8E\x99\xB0\xE0\x81\x9F"), "€Ž™°à\u0081Ÿ");
}

TEST(Windows1252, RefusesOrReplacesWhatHasNoCode) {
    EXPECT_EQ(Utf8ToWindows1252("è Ω"), std::nullopt);
    EXPECT_EQ(Utf8ToWindows1252("\u0080"), std::nullopt);
    EXPECT_EQ(Utf8ToWindows1252Lossy("è Ω😀\u0080\xFF!"), "\xE8 ?\?\?\?!");
    EXPECT_EQ(Utf8ToWindows1252(""), "");
}

TEST(Utf16, ConvertsPairsAndReplacesLoneHalves) {
    EXPECT_EQ(Utf8ToUtf16Le("aà€😀"), "a\0\xE0\0\xAC\x20\x3D\xD8\x00\xDE"s);
    EXPECT_EQ(Utf16LeToUtf8("a\0\xE0\0\xAC\x20\x3D\xD8\x00\xDE"s), "aà€😀");
    EXPECT_EQ(Utf16LeToUtf8("\x3D\xD8"s + "a\0"s), "\uFFFDa");  // a high half alone
    EXPECT_EQ(Utf16LeToUtf8("\x00\xDE"s + "a\0"s), "\uFFFDa");  // a low half alone
    EXPECT_EQ(Utf16LeToUtf8("\x3D\xD8\x3D\xD8\x00\xDE"s), "\uFFFD😀");
    EXPECT_EQ(Utf16LeToUtf8("\x3D\xD8\x00"s), "\uFFFD");
    EXPECT_EQ(Utf16LeToUtf8("a\0b"s), "a");
}

TEST(ValidUtf8, ReplacesIllFormedSequences) {
    const char* const cases[][2] = {
        {"aà€😀", "aà€😀"},
        {"\x80z", "\uFFFDz"},                              // a continuation alone
        {"\xC0\xAF", "\uFFFD\uFFFD"},                      // overlong
        {"\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD"},            // overlong
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},            // a surrogate
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},  // past U+10FFFF
        {"\xE2\x82z", "\uFFFDz"},                          // cut short
        {"\xF0\x9F\x98", "\uFFFD"},                        // cut short at the end
        {"\xF4\x8F\xBF\xBF", "\U0010FFFF"},
        {"\xEF\xBF\xBD", "\uFFFD"},
    };
    for (const auto& [bytes, text] : cases) EXPECT_EQ(ValidUtf8(bytes), text);
    const char* const distinct[][2] = {{"aà😀", "aà😀"},
                                       {"\x80z", "\uFFFD80z"},
                                       {"\xE2\x82z", "\uFFFDE2\uFFFD82z"},
                                       {"\uFFFD80", "\uFFFDEF\uFFFDBF\uFFFDBD80"}};
    for (const auto& [bytes, text] : distinct) EXPECT_EQ(DistinctUtf8(bytes), text);
    EXPECT_EQ(Utf8ToUtf16Le("\xED\xA0\x80"), "\xFD\xFF\xFD\xFF\xFD\xFF");
}

}  // namespace
}  // namespace tonvale
