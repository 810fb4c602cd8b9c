#include "common/file_system.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "common/file_kinds.h"
#include "common/profile_file.h"
#include "tests/common/faulty_file_system.h"
#include "tests/common/folder_test.h"

namespace tonvale {
namespace {

namespace fs = std::filesystem;

class FileSystemTest : public FolderTest {
  protected:
    FileSystem& files_ = SystemFiles();
};

TEST_F(FileSystemTest, WritesAndReadsBackAnyBytesUnderAnyName) {
    std::string bytes;
    for (int i = 0; i < 3000000; ++i) bytes += static_cast<char>(i * 7 + i / 256);
    for (const char* name : {"a.lep", "perché Ω 😀.lep"}) {
        const std::string path = Path(name);
        EXPECT_TRUE(WriteFileSafely(files_, path, bytes));
        EXPECT_EQ(files_.Read(path), bytes);
        EXPECT_TRUE(WriteFileSafely(files_, path, ""));
        EXPECT_EQ(files_.Read(path), "");
    }
    EXPECT_EQ(FileCount(), 2);
}

TEST_F(FileSystemTest, RefusesFoldersAndMissingPaths) {
    EXPECT_EQ(files_.Read(Path("missing.lep")), std::nullopt);
    EXPECT_EQ(files_.Read(""), std::nullopt);
    fs::create_directory(folder_ / "sub");
    EXPECT_EQ(files_.Read(Path("sub")), std::nullopt);
    EXPECT_FALSE(WriteFileSafely(files_, Path("sub"), "x"));
    EXPECT_FALSE(WriteFileSafely(files_, Path("missing/a.lep"), "x"));
    EXPECT_TRUE(fs::is_empty(folder_ / "sub"));
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(FileSystemTest, KeepsAReadOnlyFile) {
    const std::string path = Path("a.lep");
    ASSERT_TRUE(WriteFileSafely(files_, path, "old"));
    constexpr fs::perms kWrite =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    fs::permissions(folder_ / "a.lep", kWrite, fs::perm_options::remove);
    EXPECT_FALSE(WriteFileSafely(files_, path, "new"));
    EXPECT_EQ(files_.Read(path), "old");
    EXPECT_EQ(FileCount(), 1);
    fs::permissions(folder_ / "a.lep", fs::perms::owner_write, fs::perm_options::add);
    EXPECT_TRUE(WriteFileSafely(files_, path, "new"));
}

TEST_F(FileSystemTest, AFileHeldOpenIsReplacedWholeOrNotAtAll) {
    const std::string path = Path("a.lep");
    ASSERT_TRUE(WriteFileSafely(files_, path, "old"));
    {
        const std::ifstream holder(folder_ / "a.lep");
        ASSERT_TRUE(holder.is_open());
#ifdef _WIN32
        EXPECT_FALSE(WriteFileSafely(files_, path, "new"));
        EXPECT_EQ(files_.Read(path), "old");
#else
        EXPECT_TRUE(WriteFileSafely(files_, path, "new"));
        EXPECT_EQ(files_.Read(path), "new");
#endif
    }
    EXPECT_EQ(FileCount(), 1);
    EXPECT_TRUE(WriteFileSafely(files_, path, "newer"));
}

TEST_F(FileSystemTest, WriteNewNeverTouchesAnExistingFile) {
    ASSERT_TRUE(files_.WriteNew(Path("a.lep"), "old"));
    EXPECT_FALSE(files_.WriteNew(Path("a.lep"), "new"));
    EXPECT_EQ(files_.Read(Path("a.lep")), "old");
}

TEST(WriteFileSafely, KeepsTheOldFileWhicheverStepFails) {
    const std::string old_bytes = "[TONVALE]\r\nTipo=LEPD\r\n";
    ProfileFile file = ProfileFile::Parse(old_bytes);
    file.Set("TONVALE", "LEPD", "85.0");
    for (const char* path : {"a.lep", "C:\\dati\\a.lep", "/dati/a.lep"}) {
        FaultyFileSystem files;
        files.contents[path] = old_bytes;
        int failures = 0;
        for (; failures < 10; ++failures) {
            files.steps_to_failure = failures + 1;
            if (file.Save(files, path)) break;
            EXPECT_EQ(files.contents.size(), 1U);
            EXPECT_EQ(files.contents[path], old_bytes);
        }
        EXPECT_EQ(failures, 2);  // writing and replacing
        EXPECT_EQ(files.contents.size(), 1U);
        EXPECT_EQ(files.contents[path], old_bytes + "LEPD=85.0\r\n");
    }
}

TEST(Paths, NameAndExtension) {
    EXPECT_EQ(FileName("C:\\dati\\a.b\\turno.1.LEP"), "turno.1.LEP");
    EXPECT_EQ(FileName("/dati/a"), "a");
    EXPECT_EQ(FileName("a"), "a");
    EXPECT_EQ(FileExtension("C:\\dati\\a.b\\turno.1.LEP"), ".LEP");
    EXPECT_EQ(FileExtension("C:\\dati.lep\\turno"), "");
    EXPECT_EQ(FileExtension("turno."), ".");
    EXPECT_EQ(FileExtension(""), "");
}

TEST(FileKinds, AreFoundByExtensionWhateverItsCase) {
    EXPECT_EQ(FileKindOfPath("C:\\DATI\\TURNO.LEP")->kind, FileKind::kLepd);
    EXPECT_EQ(FileKindOfPath("a.lep.tnv")->kind, FileKind::kReport);
    for (const char* path : {"a.txt", "lep", "a.lep\\b", "", "a.", "a.le"}) {
        EXPECT_EQ(FileKindOfPath(path), nullptr) << path;
    }
}

TEST(FileKinds, AFileOfAnotherKindIsRefused) {
    FaultyFileSystem files;
    files.contents = {{"a.lep", "[tonvale]\r\nTIPO = lepd \r\nLEPD=  85.04444444444444\r\n"},
                      {"b.lep", "[TONVALE]\r\nTipo=LEPW\r\nLEPD=85\r\n"},
                      {"c.lep", "[TONVALE]\r\nLEPD=85\r\n"},
                      {"d.lep", "[TONVALE]\r\nTipo=\r\nLEPD=85\r\n"},
                      {"e.lep", "[TONVALE]\r\nTipo=LEPDLEPDLEPDLEPD\r\nLEPD=85\r\n"}};
    EXPECT_EQ(ReadHeaderValue(files, "a.lep", FileKind::kLepd, "LEPD"), "  85.0444444444");
    EXPECT_EQ(ReadHeaderValue(files, "a.lep", FileKind::kLepd, "LAEQ"), std::nullopt);
    EXPECT_TRUE(ReadDataFile(files, "a.lep", FileKind::kLepd));
    for (const char* path : {"b.lep", "c.lep", "d.lep", "e.lep", "missing.lep"}) {
        EXPECT_EQ(ReadHeaderValue(files, path, FileKind::kLepd, "LEPD"), std::nullopt) << path;
        EXPECT_FALSE(ReadDataFile(files, path, FileKind::kReport)) << path;
    }
}

}  // namespace
}  // namespace tonvale
