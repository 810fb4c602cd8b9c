#include "common/profile_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {
namespace {

using namespace std::string_literals;

TEST(ProfileFile, KeepsValuesExactly) {
    for (const std::string& value :
         {""s, "  85.0 "s, "\" quoted \""s, "a=b"s, "[x]"s, "; no comment"s, "\t"s, "perché €"s,
          "Ω 😀"s, "\u0081\u0080"s, "ÿþ"s, std::string(100000, 'x')}) {
        ProfileFile file;
        file.Set("S", "k", value);
        file.Set("S", "last", "1");
        const ProfileFile again = ProfileFile::Parse(file.Serialize());
        EXPECT_EQ(file.Find("S", "k"), value);
        EXPECT_EQ(again.Find("S", "k"), value);
        EXPECT_EQ(again.Integer("S", "last"), 1);
    }
}

TEST(ProfileFile, AValueCannotBreakTheFile) {
    const std::pair<std::string, const char*> cases[] = {{"a\r\n[X]\r\nb=1", "a [X] b=1"},
                                                         {"a\rb\nc\r\n", "a b c "},
                                                         {"a\0b"s, "a"},
                                                         {"\xFF", "\uFFFD"}};
    for (const auto& [value, kept] : cases) {
        ProfileFile file;
        file.Set("S", "k", value);
        EXPECT_EQ(file.Find("S", "k"), kept);
        EXPECT_EQ(ProfileFile::Parse(file.Serialize()).Find("S", "k"), kept);
    }
}

TEST(ProfileFile, ReadsHandMadeFiles) {
    const ProfileFile file = ProfileFile::Parse(
        "stray=0\n"
        " [ tonvale ] ; header\r"
        "; Tipo=comment\n"
        "  ;Tipo=comment\n"
        "\tTipo = LEPD \r\n"
        "Tipo=SECOND\n"
        "ITEMS =  12x\n"
        "=no key\n"
        "no value\n"
        "[not a header\n"
        "[OTHER]\n"
        "a=1\n"
        "[TONVALE]\n"
        "Tipo=THIRD\n"
        "LATE=2\n"
        "[]\n"
        "unnamed=3");
    EXPECT_EQ(file.Find("TONVALE", "Tipo"), " LEPD ");
    EXPECT_EQ(file.Integer("TONVALE", "ITEMS"), 12);
    EXPECT_EQ(file.Integer("TONVALE", "LATE"), 2);
    EXPECT_EQ(file.Find("TONVALE", "a"), std::nullopt);
    EXPECT_EQ(file.Find("TONVALE", "stray"), std::nullopt);
    EXPECT_EQ(file.Find("TONVALE", ""), std::nullopt);
    EXPECT_EQ(file.Find("", "stray"), "0");
    EXPECT_EQ(file.Find("", "unnamed"), "3");
    EXPECT_EQ(file.Text("TONVALE", "Tipo", 3), " LE");
    EXPECT_EQ(file.Integer("TONVALE", "Tipo"), 0);
    EXPECT_EQ(ProfileFile::Parse("[S]\nk=a\0b\nl=c"s).Find("S", "k"), "a");
    EXPECT_EQ(ProfileFile::Parse("[S]\nk=a\0b\nl=c"s).Find("S", "l"), "c");
}

TEST(ProfileFile, KeepsWhatItDoesNotKnow) {
    ProfileFile file = ProfileFile::Parse(
        "; mine\r\n\r\n[A]\r\n k = 1\r\n; end of A\r\n\r\n[B]\r\nk=2\r\n[a]\r\nlate=3\r\n");
    file.Set("A", "K", "9");
    file.Set("A", "LATE", "8");
    file.Set("A", "new", "7");
    file.Set("A", "newer", "6");
    EXPECT_EQ(file.Serialize(),
              "; mine\r\n\r\n[A]\r\n k =9\r\nnew=7\r\nnewer=6\r\n; end of A\r\n\r\n"
              "[B]\r\nk=2\r\n[a]\r\nlate=8\r\n");
    EXPECT_EQ(file.Find("A", "new"), "7");
    EXPECT_EQ(file.Find("A", "newer"), "6");
}

TEST(ProfileFile, KnowsEncodingsByTheirMarks) {
    const std::string text = "[S]\r\nk=perché €\r\n";
    ASSERT_TRUE(Utf8ToWindows1252(text));
    for (const std::string& bytes :
         {*Utf8ToWindows1252(text), "\xEF\xBB\xBF" + text, "\xFF\xFE" + Utf8ToUtf16Le(text)}) {
        EXPECT_EQ(ProfileFile::Parse(bytes).Find("S", "k"), "perché €");
        EXPECT_EQ(ProfileFile::Parse(bytes).Serialize(), *Utf8ToWindows1252(text));
    }
    ProfileFile file;
    file.Set("S", "k", "Ω");
    EXPECT_EQ(file.Serialize(), "\xFF\xFE" + Utf8ToUtf16Le("[S]\r\nk=Ω\r\n"));
    file.Set("S", "k", "O");
    EXPECT_EQ(file.Serialize(), "[S]\r\nk=O\r\n");
    // Text that looks like a mark stays text.
    const ProfileFile looks_marked = ProfileFile::Parse("\xFF\xFE" + Utf8ToUtf16Le("ÿþ\n[S]\nk=1"));
    EXPECT_EQ(ProfileFile::Parse(looks_marked.Serialize()).Find("S", "k"), "1");
}

TEST(ProfileFile, ListsAndRemovesNumberedKeys) {
    ProfileFile file = ProfileFile::Parse(
        "[LEQ]\n10=a\n2=b\n2=twice\n01=c\n+3=d\n0=e\n-1=f\n4x=g\n99999999999=h\n2147483647=i\n"
        "x=j\n[TIME]\n3=k\n[leq]\n 7 =l\n10=twice\n");
    EXPECT_EQ(file.NumberedKeys("leq", INT_MAX), std::vector({2, 7, 10, INT_MAX}));
    EXPECT_EQ(file.NumberedKeys("LEQ", 9), std::vector({2, 7}));
    EXPECT_TRUE(file.NumberedKeys("NONE", 9).empty());

    const std::string bytes = file.Serialize();
    file.RemoveNumberedKeysAbove("NONE", 0);
    EXPECT_EQ(file.Serialize(), bytes);
    file.RemoveNumberedKeysAbove("LEQ", 2);
    EXPECT_EQ(file.NumberedKeys("LEQ", INT_MAX), std::vector({2}));
    EXPECT_EQ(file.Find("LEQ", "10"), std::nullopt);
    file.Set("LEQ", "7", "again");
    EXPECT_EQ(file.NumberedKeys("LEQ", INT_MAX), std::vector({2, 7}));
    EXPECT_EQ(file.Serialize(),
              "[LEQ]\r\n2=b\r\n2=twice\r\n01=c\r\n+3=d\r\n0=e\r\n-1=f\r\n4x=g\r\nx=j\r\n7=again\r\n"
              "[TIME]\r\n3=k\r\n[leq]\r\n");
}

TEST(ProfileFile, RemovesASectionWhole) {
    ProfileFile file = ProfileFile::Parse(
        "[A]\nk=1\n[DX]\n500=25\nx=y\n500=30\n; of B\n[B]\nk=2\n[dx]\n1000=30\n");
    file.RemoveSection("Dx");
    file.RemoveSection("none");
    EXPECT_EQ(file.Find("DX", "x"), std::nullopt);
    EXPECT_EQ(file.Find("DX", "1000"), std::nullopt);
    EXPECT_EQ(file.Serialize(), "[A]\r\nk=1\r\n; of B\r\n[B]\r\nk=2\r\n");
    file.Set("DX", "500", "40");
    EXPECT_EQ(file.Find("dx", "500"), "40");
    EXPECT_TRUE(file.Serialize().ends_with("k=2\r\n[DX]\r\n500=40\r\n"));
}

// Each of these takes well under a second when the work grows with the size of the file, and
// minutes when it grows with its square.
TEST(ProfileFile, WorkGrowsWithTheSizeOfTheFile) {
    const auto start = std::chrono::steady_clock::now();
    constexpr int kCount = 100000;
    ProfileFile file = ProfileFile::Parse("[LEQ]\n; comment\n\n[X]\nk=1\n");
    for (int i = 1; i <= kCount; ++i) file.Set("LEQ", FormatInteger(i), "85.0");
    file = ProfileFile::Parse(file.Serialize());
    EXPECT_EQ(file.NumberedKeys("LEQ", INT_MAX).size(), static_cast<std::size_t>(kCount));
    file.RemoveNumberedKeysAbove("LEQ", 0);
    EXPECT_TRUE(file.NumberedKeys("LEQ", INT_MAX).empty());

    const std::string long_name(100000, 'n');
    std::string hostile = "[" + long_name + "]\n";
    hostile.append(4000000, '\n');
    for (int i = 1; i <= kCount; ++i) hostile += FormatInteger(i) + "=\n";
    EXPECT_EQ(ProfileFile::Parse(hostile).NumberedKeys(long_name, 9).size(), 9U);
    EXPECT_EQ(ProfileFile::Parse(std::string("k=").append(16000000, '\xE0')).Text("", "k", 1), "à");
    file.Set("S", "k", std::string().append(8000000, '\n'));
    EXPECT_EQ(file.Text("S", "k", 2), "  ");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace
}  // namespace tonvale
