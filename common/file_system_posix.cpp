// Files on POSIX systems. A file that another program holds open is no obstacle there: that
// program keeps the old content.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <utility>

#include "common/file_system.h"

namespace tonvale {
namespace {

class Descriptor {
  public:
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return value_ >= 0; }
    int Get() const { return value_; }
    // False when the system reports a write that failed late.
    bool Close() {
        const int value = std::exchange(value_, -1);
        return value < 0 || close(value) == 0;
    }

  private:
    int value_;
};

// What the system's last error says of a file that is to be read.
FileError ReadingError() {
    switch (errno) {
        case ENOENT:
        case ENOTDIR:
            return FileError::kMissing;
        case EISDIR:
            return FileError::kFolder;
        case ENAMETOOLONG:
        case EINVAL:
        case ELOOP:
            return FileError::kBadName;
        case EACCES:
        case EPERM:
            return FileError::kDenied;
        case EBUSY:
        case ETXTBSY:
            return FileError::kInUse;
        case EROFS:
            return FileError::kWriteProtected;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return FileError::kNoRoom;
        case ENXIO:
        case ENODEV:
        case ESTALE:
        case ETIMEDOUT:
        case EHOSTDOWN:
            return FileError::kUnreachable;
        default:
            return FileError::kDiskFailure;
    }
}

// The same of one that is to be written: all that can be missing then is its folder.
FileError WritingError() {
    const FileError error = ReadingError();
    return error == FileError::kMissing ? FileError::kMissingFolder : error;
}

FileError ReadAll(int descriptor, std::size_t expected_size, std::string& bytes) {
    std::size_t size = 0;
    if (expected_size > kMaxFileBytes) return FileError::kTooLong;
    bytes.resize(expected_size + 1);  // one more: to see the end
    while (size <= kMaxFileBytes) {
        if (size == bytes.size()) bytes.resize(2 * size);  // it is growing
        const ssize_t count = read(descriptor, bytes.data() + size, bytes.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ReadingError();
        if (count == 0) {
            bytes.resize(size);
            return FileError::kNone;
        }
        size += static_cast<std::size_t>(count);
    }
    return FileError::kTooLong;
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// With a "/" at its end.
std::string FolderOf(const std::string& path) {
    const std::size_t length = path.rfind('/') + 1;  // npos + 1 is 0
    return length > 0 ? path.substr(0, length) : "./";
}

// The new name of a file is on the disk only when its folder is. Not every file system can do
// this, and the file is whole either way, so a failure is no failure.
void SyncFolderOf(const std::string& path) {
    const Descriptor descriptor(open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.IsOpen()) fsync(descriptor.Get());
}

// A file that is about to be replaced must be a plain one that its user may write. The permission
// bits count as well: to root every file is writable.
FileError ObstacleToReplacing(const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return FileError::kFolder;
    if (!S_ISREG(status.st_mode)) return FileError::kNoPlainFile;
    if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return FileError::kReadOnly;
    return access(path.c_str(), W_OK) == 0 ? FileError::kNone : WritingError();
}

using Folder = std::unique_ptr<DIR, int (*)(DIR*)>;

Folder OpenFolder(const std::string& path) {
    return {opendir(path.c_str()), closedir};
}

// The number of the file in its file system, and of that.
std::string IdentityOf(const struct stat& status) {
    return std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

// The type of an entry, as d_type tells it; not every file system does.
unsigned char TypeOf(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type;
    struct stat status = {};
    if (fstatat(dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return DT_UNKNOWN;
    return S_ISDIR(status.st_mode) ? DT_DIR : S_ISREG(status.st_mode) ? DT_REG : DT_UNKNOWN;
}

class PosixFileSystem : public FileSystem {
  public:
    FileError Read(const std::string& path, std::string& bytes) override {
        // O_NONBLOCK: a pipe without a writer must not hold the program up.
        Descriptor descriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
        struct stat status = {};
        if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0) return ReadingError();
        if (S_ISDIR(status.st_mode)) return FileError::kFolder;
        if (!S_ISREG(status.st_mode)) return FileError::kNoPlainFile;
        return ReadAll(descriptor.Get(), static_cast<std::size_t>(status.st_size), bytes);
    }

    FileError WriteNew(const std::string& path, std::string_view bytes) override {
        Descriptor descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        const bool written = descriptor.IsOpen() && WriteAll(descriptor.Get(), bytes) &&
                             fsync(descriptor.Get()) == 0 && descriptor.Close();
        return written ? FileError::kNone : WritingError();
    }

    FileError Replace(const std::string& from, const std::string& to) override {
        struct stat status = {};
        if (stat(to.c_str(), &status) == 0) {
            const FileError obstacle = ObstacleToReplacing(to, status);
            if (obstacle != FileError::kNone) return obstacle;
            if (chmod(from.c_str(), status.st_mode & 0777) != 0) return WritingError();
        }
        if (rename(from.c_str(), to.c_str()) != 0) return WritingError();
        SyncFolderOf(to);
        return FileError::kNone;
    }

    void Remove(const std::string& path) override { unlink(path.c_str()); }

    std::vector<FolderEntry> FilesBeside(const std::string& path,
                                         std::string_view name_start) override {
        std::vector<FolderEntry> entries;
        const Folder folder = OpenFolder(FolderOf(path));
        while (const dirent* found = folder ? readdir(folder.get()) : nullptr) {
            if (!std::string_view(found->d_name).starts_with(name_start)) continue;
            const std::string beside = FolderPart(path) + found->d_name;
            struct stat status = {};
            if (lstat(beside.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
            entries.push_back({beside, status.st_mtime});
        }
        return entries;
    }

    FileError ReadFolder(const std::string& path, FolderContents& contents) override {
        const Folder folder = OpenFolder(path);
        struct stat status = {};
        if (!folder || fstat(dirfd(folder.get()), &status) != 0) return WritingError();
        contents = {IdentityOf(status), {}};
        errno = 0;
        while (const dirent* entry = readdir(folder.get())) {
            const std::string_view name = entry->d_name;
            const unsigned char type = TypeOf(folder.get(), *entry);
            if ((type != DT_DIR && type != DT_REG) || name == "." || name == "..") continue;
            contents.items.push_back({std::string(name), type == DT_DIR});
            errno = 0;
        }
        return errno == 0 ? FileError::kNone : ReadingError();
    }

    std::optional<std::int64_t> ModifiedTime(const std::string& path) override {
        struct stat status = {};
        if (stat(path.c_str(), &status) != 0) return std::nullopt;
        return status.st_mtime;
    }

    std::string ResolveLinks(const std::string& path) override {
        const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), free);
        return real ? real.get() : path;
    }
};

}  // namespace

FileSystem& SystemFiles() {
    static PosixFileSystem files;
    return files;
}

}  // namespace tonvale
