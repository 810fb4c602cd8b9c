#include "common/notes.h"

#include <gtest/gtest.h>

#include "common/text.h"
#include "tests/common/faulty_file_system.h"

namespace tonvale {
namespace {

TEST(Notes, AreWrittenLineByLineAndReadBack) {
    const char* const cases[][3] = {
        {"", "[NOTE]\r\nNum=0\r\n", ""},
        {"a", "[NOTE]\r\n1=a\r\nNum=1\r\n", "a"},
        {"a\r\n\r\nb", "[NOTE]\r\n1=a\r\n2=\r\n3=b\r\nNum=3\r\n", "a\r\n\r\nb"},
        {"a\r\n", "[NOTE]\r\n1=a\r\nNum=1\r\n", "a"},
        {"a\r\n\r\n", "[NOTE]\r\n1=a\r\n2=\r\nNum=2\r\n", "a\r\n"},
        {"\r\n", "[NOTE]\r\n1=\r\nNum=1\r\n", ""},
        {" a=b \r\n[x]\r\n;c", "[NOTE]\r\n1= a=b \r\n2=[x]\r\n3=;c\r\nNum=3\r\n",
         " a=b \r\n[x]\r\n;c"},
    };
    for (const auto& [notes, bytes, read] : cases) {
        ProfileFile file;
        WriteNotes(file, notes);
        EXPECT_EQ(file.Serialize(), bytes);
        EXPECT_EQ(ReadNotes(ProfileFile::Parse(bytes)), read);
    }
}

TEST(Notes, HaveALimitWhateverTheFileClaims) {
    const ProfileFile long_line =
        ProfileFile::Parse("[NOTE]\nNum=2\n1=" + std::string(600, 'x') + "\n2=y\n");
    EXPECT_EQ(ReadNotes(long_line), std::string(511, 'x'));  // and no half of the line end

    std::string expected = "a\r\n\r\nb";
    while (expected.size() + 2 <= kMaxNotesCharacters) expected += kLineEnd;
    EXPECT_EQ(ReadNotes(ProfileFile::Parse("[NOTE]\nNum=9999999999\n1=a\n3=b\n")), expected);

    std::string accents = "[NOTE]\nNum=2\n1=" + std::string(300, '\xE0') + "\n2=";
    accents += std::string(300, '\xE8') + "\n";
    EXPECT_EQ(CharacterCount(ReadNotes(ProfileFile::Parse(accents))), kMaxNotesCharacters);
    EXPECT_EQ(ReadNotes(ProfileFile::Parse("[NOTE]\nNum=-1\n1=a\n")), "");
    EXPECT_EQ(ReadNotes(ProfileFile::Parse("[NOTE]\n1=a\n")), "");
}

TEST(Notes, OfAFileAreChangedWithoutTouchingTheRest) {
    FaultyFileSystem files;
    const std::string old_bytes = "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\n1=a\r\n2=b\r\nNum=2\r\n";
    files.contents["a.lep"] = old_bytes;
    std::string notes;
    EXPECT_EQ(ReadNotesOfFile(files, "a.lep", notes), FileError::kNone);
    EXPECT_EQ(notes, "a\r\nb");
    EXPECT_EQ(WriteNotesOfFile(files, "a.lep", "perché"), FileError::kNone);
    EXPECT_EQ(files.contents["a.lep"],
              "[TONVALE]\r\nTipo=LEPD\r\n[NOTE]\r\n1=perch\xE9\r\nNum=1\r\n");
    EXPECT_EQ(WriteNotesOfFile(files, "b.lep", "x"), FileError::kMissing);
    EXPECT_EQ(ReadNotesOfFile(files, "b.lep", notes), FileError::kMissing);
    EXPECT_EQ(notes, "");
    EXPECT_EQ(files.contents.size(), 1U);
}

}  // namespace
}  // namespace tonvale
