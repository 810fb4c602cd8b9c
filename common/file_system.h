// Reading whole files, and replacing them so that no crash, full disk or pulled stick leaves a
// torn one: either the old content is there or the new one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tonvale {

// What is longer is no file of this program, and is not worth running out of memory for.
inline constexpr std::size_t kMaxFileBytes = std::size_t{256} << 20;

// Why a file could not be read or written.
enum class FileError {
    kNone,
    kMissing,         // nothing has this name
    kMissingFolder,   // nor is there the folder that is to hold it
    kFolder,          // the name is a folder's
    kNoPlainFile,     // a device or a pipe
    kTooLong,         // longer than kMaxFileBytes
    kBadName,         // no name that the system takes
    kReadOnly,        // the file may not be changed
    kDenied,          // the user lacks the right
    kInUse,           // another program holds it, and did so for a while
    kWriteProtected,  // the disk takes no writing
    kNoRoom,          // the disk is full
    kUnreachable,     // the disk or the network does not answer
    kDiskFailure,     // anything else
};

// The error as an Italian clause without a full stop, "il disco è pieno"; empty for none.
std::string_view Reason(FileError error);

struct FolderEntry {
    std::string path;
    std::int64_t modified_s;  // since a moment that is the same for all files of a folder
};

struct FolderItem {
    std::string name;
    bool is_folder = false;
};

struct FolderContents {
    std::string identity;           // equal for one and the same folder, whatever path leads to it
    std::vector<FolderItem> items;  // folders and plain files, in no order; links are left out
};

// The steps that touch the disk, each replaceable by one that fails, for the tests.
// Paths are UTF-8.
class FileSystem {
  public:
    virtual ~FileSystem() = default;
    // Puts the whole file into `bytes`, whoever else has it open. On failure they are unspecified.
    virtual FileError Read(const std::string& path, std::string& bytes) = 0;
    // Creates `path`, which must not exist, writes `bytes` and waits until they are on the disk.
    // On failure a part of the file may be left behind.
    virtual FileError WriteNew(const std::string& path, std::string_view bytes) = 0;
    // Puts `from` in place of `to` in one step. Fails, changing nothing, when `to` is a folder, is
    // read-only or is held open by another program.
    virtual FileError Replace(const std::string& from, const std::string& to) = 0;
    virtual void Remove(const std::string& path) = 0;
    // The plain files, links left out, that lie beside `path` and whose names begin with
    // `name_start`. Empty when the folder cannot be read.
    virtual std::vector<FolderEntry> FilesBeside(const std::string& path,
                                                 std::string_view name_start) = 0;
    // Puts what lies in the folder `path` into `contents`; kMissingFolder when that is no folder.
    virtual FileError ReadFolder(const std::string& path, FolderContents& contents);
    // When the file was last changed, in seconds since the start of 1970 (UTC).
    virtual std::optional<std::int64_t> ModifiedTime(const std::string& path);
    // The file that `path` stands for once links are followed; `path` itself where there are none.
    virtual std::string ResolveLinks(const std::string& path) { return path; }
};

// The disk of this machine.
FileSystem& SystemFiles();

// Writes `bytes` to a new file beside `path`, then puts it in place of `path`. On failure the old
// file is as it was, byte for byte, and no other file is left behind. Where `path` is a link, the
// link stays and what it leads to is replaced. What an earlier save, cut short by a crash, has left
// in the folder goes, too.
FileError WriteFileSafely(FileSystem& files, const std::string& path, std::string_view bytes);

// `path` up to and with its last separator ("/", "\", or the ":" of a drive); empty without one.
std::string FolderPart(const std::string& path);

// The part of `path` after its last separator ("/" or "\").
std::string_view FileName(std::string_view path);

// From the last "." of the file name, the "." included; empty when there is none.
std::string_view FileExtension(std::string_view path);

}  // namespace tonvale
