#include "common/file_system.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "common/file_kinds.h"
#include "common/profile_file.h"
#include "tests/common/faulty_file_system.h"
#include "tests/common/file_system_fixture.h"

namespace tonvale {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST_F(FileSystemTest, WritesAndReadsBackAnyBytesUnderAnyName) {
    std::string bytes;
    for (int i = 0; i < 3000000; ++i) bytes += static_cast<char>(i * 7 + i / 256);
    for (const char* name : {"a.lep", "perché Ω 😀.lep"}) {
        const std::string path = Path(name);
        EXPECT_EQ(Write(path, bytes), FileError::kNone);
        EXPECT_EQ(Read(path), bytes);
        EXPECT_EQ(Write(path, ""), FileError::kNone);
        EXPECT_EQ(Read(path), "");
    }
    EXPECT_EQ(FileCount(), 2);
}

TEST_F(FileSystemTest, RefusesFoldersAndMissingPaths) {
    std::string bytes;
    EXPECT_EQ(files_.Read(Path("missing.lep"), bytes), FileError::kMissing);
    EXPECT_EQ(files_.Read(Path("missing/a.lep"), bytes), FileError::kMissing);
    EXPECT_NE(files_.Read("", bytes), FileError::kNone);
    fs::create_directory(folder_ / "sub");
    EXPECT_EQ(files_.Read(Path("sub"), bytes), FileError::kFolder);
    EXPECT_EQ(Write(Path("sub"), "x"), FileError::kFolder);
    EXPECT_EQ(Write(Path("missing/a.lep"), "x"), FileError::kMissingFolder);
    EXPECT_TRUE(fs::is_empty(folder_ / "sub"));
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(FileSystemTest, KeepsAReadOnlyFile) {
    const std::string path = Path("a.lep");
    ASSERT_EQ(Write(path, "old"), FileError::kNone);
    constexpr fs::perms kWrite =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    fs::permissions(folder_ / "a.lep", kWrite, fs::perm_options::remove);
    EXPECT_EQ(Write(path, "new"), FileError::kReadOnly);
    EXPECT_EQ(Read(path), "old");
    EXPECT_EQ(FileCount(), 1);
    fs::permissions(folder_ / "a.lep", fs::perms::owner_write, fs::perm_options::add);
    EXPECT_EQ(Write(path, "new"), FileError::kNone);
}

TEST_F(FileSystemTest, AFileHeldOpenIsReplacedWholeOrNotAtAll) {
    const std::string path = Path("a.lep");
    ASSERT_EQ(Write(path, "old"), FileError::kNone);
    {
        const std::ifstream holder(folder_ / "a.lep");
        ASSERT_TRUE(holder.is_open());
#ifdef _WIN32
        EXPECT_EQ(Write(path, "new"), FileError::kInUse);
        EXPECT_EQ(Read(path), "old");
#else
        EXPECT_EQ(Write(path, "new"), FileError::kNone);
        EXPECT_EQ(Read(path), "new");
#endif
    }
    EXPECT_EQ(FileCount(), 1);
    EXPECT_EQ(Write(path, "newer"), FileError::kNone);
}

TEST_F(FileSystemTest, WriteNewNeverTouchesAnExistingFile) {
    ASSERT_EQ(files_.WriteNew(Path("a.lep"), "old"), FileError::kNone);
    EXPECT_NE(files_.WriteNew(Path("a.lep"), "new"), FileError::kNone);
    EXPECT_EQ(Read(Path("a.lep")), "old");
}

TEST_F(FileSystemTest, ASaveRemovesWhatCrashedOnesHaveLeftAndNothingElse) {
    const struct {
        const char* name;
        std::chrono::minutes age;
        bool stays;
    } cases[] = {
        {"~tnv1.tmp", 11min, false},    {"~tnv4294967295.tmp", 999h, false},
        {"~tnv2.tmp", 9min, true},      {"~tnv3.tmp", -99min, true},
        {"~3.tmp", 99min, true},        {"~tnv.tmp", 99min, true},
        {"~tnv4.tmp.lep", 99min, true}, {"~tnv5a.tmp", 99min, true},
        {"a~tnv6.tmp", 99min, true},
    };
    const auto now = fs::file_time_type::clock::now();
    for (const auto& file : cases) {
        WriteFile(file.name, "x");
        fs::last_write_time(folder_ / file.name, now - file.age);
    }
    fs::create_directory(folder_ / "~tnv7.tmp");
    std::error_code ignored;  // not every system dates folders
    fs::last_write_time(folder_ / "~tnv7.tmp", now - 99min, ignored);
    EXPECT_EQ(Write(Path("a.lep"), "x"), FileError::kNone);
    for (const auto& file : cases) EXPECT_EQ(FileExists(file.name), file.stays) << file.name;
    EXPECT_TRUE(FileExists("~tnv7.tmp"));
    EXPECT_EQ(FileCount(), 9);
}

TEST(WriteFileSafely, KeepsTheOldFileWhicheverStepFails) {
    const std::string old_bytes = "[TONVALE]\r\nTipo=LEPD\r\n";
    const auto change = [](ProfileFile& file) { file.Set("TONVALE", "LEPD", "85.0"); };
    for (const char* path : {"a.lep", "C:\\dati\\a.lep", "/dati/a.lep"}) {
        FaultyFileSystem files;
        files.contents[path] = old_bytes;
        int failures = 0;
        for (; failures < 10; ++failures) {
            files.steps_to_failure = failures + 1;
            if (UpdateProfileFile(files, path, change) == FileError::kNone) break;
            EXPECT_EQ(files.contents.size(), 1U);
            EXPECT_EQ(files.contents[path], old_bytes);
        }
        EXPECT_EQ(failures, 3);  // reading, writing and replacing
        EXPECT_EQ(files.contents.size(), 1U);
        EXPECT_EQ(files.contents[path], old_bytes + "LEPD=85.0\r\n");
        files.steps_to_failure = 0;
        EXPECT_EQ(UpdateProfileFile(files, "new.lep", change), FileError::kNone);
        EXPECT_EQ(files.contents["new.lep"], "[TONVALE]\r\nLEPD=85.0\r\n");
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
