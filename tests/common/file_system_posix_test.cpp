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

#include "common/file_system.h"
#include "common/numbers.h"
#include "common/profile_file.h"
#include "tests/common/folder_test.h"

namespace tonvale {
namespace {

namespace fs = std::filesystem;

class PosixFileSystemTest : public FolderTest {
  protected:
    const std::string path_ = Path("a.lep");
    FileSystem& files_ = SystemFiles();
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
    ASSERT_TRUE(Version(0).Save(files_, path_));
    std::mt19937 random(1);
    int last_version = 0;
    for (int kill_number = 0; kill_number < kKills; ++kill_number) {
        int saved[2];  // the child writes a byte after each save
        ASSERT_EQ(pipe(saved), 0);
        const pid_t child = fork();
        if (child == 0) {
            for (int version = last_version + 1;; ++version) {
                if (!Version(version).Save(files_, path_) || write(saved[1], "s", 1) != 1) _exit(1);
            }
        }
        close(saved[1]);
        char first = 0;
        EXPECT_EQ(read(saved[0], &first, 1), 1) << "no save came to its end";
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        close(saved[0]);

        const std::optional<std::string> bytes = files_.Read(path_);
        ASSERT_TRUE(bytes);
        last_version = ProfileFile::Parse(*bytes).Integer("TONVALE", "VERSION");
        ASSERT_EQ(*bytes, Version(last_version).Serialize());
    }
    EXPECT_GE(last_version, kKills);
}

TEST_F(PosixFileSystemTest, ADiskThatFillsUpKeepsTheOldFile) {
    ASSERT_TRUE(WriteFileSafely(files_, path_, "old"));
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);  // a write past the limit stops short, then fails
        const rlimit limit = {10000, 10000};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(WriteFileSafely(files_, path_, std::string(20000, 'x')) ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the save claims to have succeeded";
    EXPECT_EQ(files_.Read(path_), "old");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(PosixFileSystemTest, KeepsPermissionsAndLinks) {
    ASSERT_TRUE(WriteFileSafely(files_, path_, "old"));
    ASSERT_EQ(chmod(path_.c_str(), 0640), 0);
    fs::create_directory(folder_ / "links");
    const fs::path link = folder_ / "links" / "link.lep";
    fs::create_symlink("../a.lep", link);

    EXPECT_TRUE(WriteFileSafely(files_, link.string(), "new"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(files_.Read(path_), "new");
    struct stat status = {};
    ASSERT_EQ(stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(PosixFileSystemTest, RefusesWhatIsNoPlainFile) {
    const std::string pipe = Path("pipe.lep");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_EQ(files_.Read(pipe), std::nullopt);
    EXPECT_FALSE(WriteFileSafely(files_, pipe, "x"));
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(files_.Read("/dev/zero"), std::nullopt);

    const std::string huge = Path("huge.lep");
    ASSERT_TRUE(files_.WriteNew(huge, ""));
    fs::resize_file(huge, kMaxFileBytes + 1);  // takes no room on the disk
    EXPECT_EQ(files_.Read(huge), std::nullopt);
}

}  // namespace
}  // namespace tonvale
