#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "common/numbers.h"
#include "common/profile_file.h"
#include "tests/common/file_system_fixture.h"

namespace tonvale {
namespace {

namespace fs = std::filesystem;

class PosixFileSystemTest : public FileSystemTest {
  protected:
    const std::string path_ = Path("a.lep");
};

// Long enough that a write in place would be caught in the middle.
ProfileFile Version(int version) {
    ProfileFile file;
    file.Set("TONVALE", "Tipo", "LEPD");
    for (int i = 1; i <= 2000 + version % 7 * 100; ++i) {
        file.Set("LEQ", FormatInteger(i), "value of version " + FormatInteger(version));
    }
    file.Set("TONVALE", "VERSION", FormatInteger(version));
    return file;
}

TEST_F(PosixFileSystemTest, AKilledSaveLeavesAWholeFile) {
    constexpr int kKills = 60;
    ASSERT_EQ(Version(0).Save(files_, path_), FileError::kNone);
    std::mt19937 random(1);
    int last_version = 0;
    for (int kill_number = 0; kill_number < kKills; ++kill_number) {
        int saved[2];  // the child writes a byte after each save
        ASSERT_EQ(pipe(saved), 0);
        const pid_t child = fork();
        if (child == 0) {
            for (int version = last_version + 1;; ++version) {
                if (Version(version).Save(files_, path_) != FileError::kNone) _exit(1);
                if (write(saved[1], "s", 1) != 1) _exit(1);
            }
        }
        close(saved[1]);
        char first = 0;
        EXPECT_EQ(read(saved[0], &first, 1), 1) << "no save came to its end";
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        close(saved[0]);

        const std::string bytes = Read(path_);
        last_version = ProfileFile::Parse(bytes).Integer("TONVALE", "VERSION");
        ASSERT_EQ(bytes, Version(last_version).Serialize());
    }
    EXPECT_GE(last_version, kKills);
}

TEST_F(PosixFileSystemTest, ADiskThatFillsUpKeepsTheOldFile) {
    ASSERT_EQ(Write(path_, "old"), FileError::kNone);
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);  // a write past the limit stops short, then fails
        const rlimit limit = {10000, 10000};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(Write(path_, std::string(20000, 'x')) == FileError::kNoRoom ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "no room, it should say";
    EXPECT_EQ(Read(path_), "old");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(PosixFileSystemTest, KeepsPermissionsAndLinks) {
    ASSERT_EQ(Write(path_, "old"), FileError::kNone);
    ASSERT_EQ(chmod(path_.c_str(), 0640), 0);
    fs::create_directory(folder_ / "links");
    const fs::path link = folder_ / "links" / "link.lep";
    fs::create_symlink("../a.lep", link);

    EXPECT_EQ(Write(link.string(), "new"), FileError::kNone);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Read(path_), "new");
    struct stat status = {};
    ASSERT_EQ(stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(PosixFileSystemTest, RefusesWhatIsNoPlainFile) {
    const std::string pipe = Path("pipe.lep");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    std::string bytes;
    EXPECT_EQ(files_.Read(pipe, bytes), FileError::kNoPlainFile);
    EXPECT_EQ(Write(pipe, "x"), FileError::kNoPlainFile);
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(files_.Read("/dev/zero", bytes), FileError::kNoPlainFile);

    const std::string huge = Path("huge.lep");
    ASSERT_EQ(files_.WriteNew(huge, ""), FileError::kNone);
    fs::resize_file(huge, kMaxFileBytes + 1);  // takes no room on the disk
    EXPECT_EQ(files_.Read(huge, bytes), FileError::kTooLong);
}

}  // namespace
}  // namespace tonvale
