// Files on Windows.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "common/file_errors_win.h"
#include "common/text.h"

namespace tonvale {
namespace {

// The most that one call of the system reads or writes.
constexpr std::size_t kMaxTransferBytes = std::size_t{1} << 26;

// A scanner, an indexer or a copying program may hold a file for a moment: how often to try it, and
// how long to wait in between.
constexpr int kAttempts = 10;
constexpr DWORD kPauseMs = 30;

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

std::wstring WidePath(const std::string& path) {
    const std::string bytes = Utf8ToUtf16Le(path);
    std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(wide.data(), bytes.data(), bytes.size());
    return wide;
}

// Tries `step` for a while as long as another program holds the file.
template <typename Step>
FileError WhileInUse(Step step) {
    for (int attempt = 1;; ++attempt) {
        const FileError error = step();
        if (error != FileError::kInUse || attempt == kAttempts) return error;
        Sleep(kPauseMs);
    }
}

Handle OpenFile(const std::string& path, DWORD access, DWORD sharing, DWORD disposition) {
    const HANDLE handle = CreateFileW(WidePath(path).c_str(), access, sharing, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

DWORD TransferSize(std::size_t bytes) {
    return static_cast<DWORD>(std::min(bytes, kMaxTransferBytes));
}

FileError ReadAll(HANDLE file, std::size_t size, std::string& bytes) {
    bytes.resize(size);
    std::size_t done = 0;
    while (done < size) {
        DWORD count = 0;
        if (!ReadFile(file, bytes.data() + done, TransferSize(size - done), &count, nullptr)) {
            return ReadingError(GetLastError());
        }
        if (count == 0) break;  // it has become shorter
        done += count;
    }
    bytes.resize(done);
    return FileError::kNone;
}

DWORD AttributesOf(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(WidePath(path).c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes;
}

FileError ReadOnce(const std::string& path, std::string& bytes) {
    constexpr DWORD kEverySharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const Handle file = OpenFile(path, GENERIC_READ, kEverySharing, OPEN_EXISTING);
    if (!file) {
        const DWORD error = GetLastError();
        return (AttributesOf(path) & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileError::kFolder
                                                                    : ReadingError(error);
    }
    LARGE_INTEGER size = {};
    if (GetFileType(file.get()) != FILE_TYPE_DISK) return FileError::kNoPlainFile;
    if (!GetFileSizeEx(file.get(), &size)) return ReadingError(GetLastError());
    if (size.QuadPart > static_cast<LONGLONG>(kMaxFileBytes)) return FileError::kTooLong;
    return ReadAll(file.get(), static_cast<std::size_t>(size.QuadPart), bytes);
}

// Where a file cannot be replaced because it is open, the system speaks of rights as well.
bool IsHeldOpen(const std::string& path) {
    return !OpenFile(path, DELETE, 0, OPEN_EXISTING) && GetLastError() == ERROR_SHARING_VIOLATION;
}

FileError ReplaceOnce(const std::string& from, const std::string& to) {
    if (MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return FileError::kNone;
    }
    const FileError error = WritingError(GetLastError());
    return error == FileError::kDenied && IsHeldOpen(to) ? FileError::kInUse : error;
}

bool WriteAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD count = 0;
        if (!WriteFile(file, bytes.data(), TransferSize(bytes.size()), &count, nullptr)) {
            return false;
        }
        if (count == 0) return false;
        bytes.remove_prefix(count);
    }
    return true;
}

struct SearchCloser {
    void operator()(HANDLE search) const { FindClose(search); }
};
using Search = std::unique_ptr<std::remove_pointer_t<HANDLE>, SearchCloser>;

// Since the start of 1601.
std::int64_t Seconds(const FILETIME& time) {
    constexpr std::int64_t kTicksPerSecond = 10'000'000;
    return ((static_cast<std::int64_t>(time.dwHighDateTime) << 32) + time.dwLowDateTime) /
           kTicksPerSecond;
}
constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;

std::string NameOf(const WIN32_FIND_DATAW& found) {
    const std::wstring_view name = found.cFileName;
    return Utf16LeToUtf8(
        {reinterpret_cast<const char*>(name.data()), name.size() * sizeof(wchar_t)});
}

// Hands on whatever matches the pattern and gives the error that ended the search, when all is
// well ERROR_NO_MORE_FILES.
template <typename Use>
DWORD ForEachMatch(const std::wstring& pattern, Use use) {
    WIN32_FIND_DATAW found{};
    const HANDLE first = FindFirstFileW(pattern.c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) return GetLastError();
    const Search search(first);
    do {
        use(found);
    } while (FindNextFileW(search.get(), &found));
    return GetLastError();
}

// Links and mount points; what a cloud service keeps elsewhere is as good as a file.
bool IsLink(const WIN32_FIND_DATAW& found) {
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           IsReparseTagNameSurrogate(found.dwReserved0);
}

// The number of a folder in its volume, and of that; empty where the system tells none.
std::string IdentityOf(const std::string& folder) {
    constexpr DWORD kEverySharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE handle = CreateFileW(WidePath(folder).c_str(), 0, kEverySharing, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return {};
    const Handle owner(handle);
    BY_HANDLE_FILE_INFORMATION information{};
    if (!GetFileInformationByHandle(handle, &information)) return {};
    std::string identity;
    for (const DWORD part : {information.dwVolumeSerialNumber, information.nFileIndexHigh,
                             information.nFileIndexLow}) {
        identity += std::to_string(part) + ":";
    }
    return identity;
}

bool EndsFolder(const std::string& path) {
    return path.find_last_of("/\\:") == path.size() - 1;
}

class WindowsFileSystem : public FileSystem {
  public:
    FileError Read(const std::string& path, std::string& bytes) override {
        return WhileInUse([&] { return ReadOnce(path, bytes); });
    }

    FileError WriteNew(const std::string& path, std::string_view bytes) override {
        const Handle file = OpenFile(path, GENERIC_WRITE, 0, CREATE_NEW);
        const bool written = file && WriteAll(file.get(), bytes) && FlushFileBuffers(file.get());
        return written ? FileError::kNone : WritingError(GetLastError());
    }

    FileError Replace(const std::string& from, const std::string& to) override {
        const DWORD attributes = AttributesOf(to);
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileError::kFolder;
        if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return FileError::kReadOnly;
        return WhileInUse([&] { return ReplaceOnce(from, to); });
    }

    void Remove(const std::string& path) override { DeleteFileW(WidePath(path).c_str()); }

    std::vector<FolderEntry> FilesBeside(const std::string& path,
                                         std::string_view name_start) override {
        const std::string folder = FolderPart(path);
        const std::wstring pattern = WidePath(folder + std::string(name_start) + "*");
        std::vector<FolderEntry> entries;
        ForEachMatch(pattern, [&](const WIN32_FIND_DATAW& found) {
            constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
            if ((found.dwFileAttributes & kNoFile) != 0) return;
            entries.push_back({folder + NameOf(found), Seconds(found.ftLastWriteTime)});
        });
        return entries;
    }

    FileError ReadFolder(const std::string& path, FolderContents& contents) override {
        if ((AttributesOf(path) & FILE_ATTRIBUTE_DIRECTORY) == 0) return FileError::kMissingFolder;
        contents = {IdentityOf(path), {}};
        const std::wstring pattern = WidePath(path + (EndsFolder(path) ? "*" : "\\*"));
        const DWORD end = ForEachMatch(pattern, [&](const WIN32_FIND_DATAW& found) {
            std::string name = NameOf(found);
            if (IsLink(found) || name == "." || name == "..") return;
            const bool is_folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
            contents.items.push_back({std::move(name), is_folder});
        });
        // The root of an empty disk has no entries at all.
        const bool complete = end == ERROR_NO_MORE_FILES || end == ERROR_FILE_NOT_FOUND;
        return complete ? FileError::kNone : WritingError(end);
    }

    std::optional<std::int64_t> ModifiedTime(const std::string& path) override {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        if (!GetFileAttributesExW(WidePath(path).c_str(), GetFileExInfoStandard, &data)) {
            return std::nullopt;
        }
        return Seconds(data.ftLastWriteTime) - kSecondsFrom1601To1970;
    }
};

}  // namespace

FileError ReadingError(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return FileError::kMissing;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_DIRECTORY:
        case ERROR_FILENAME_EXCED_RANGE:
            return FileError::kBadName;
        case ERROR_ACCESS_DENIED:
        case ERROR_NETWORK_ACCESS_DENIED:
            return FileError::kDenied;
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
        case ERROR_DELETE_PENDING:
            return FileError::kInUse;
        case ERROR_WRITE_PROTECT:
            return FileError::kWriteProtected;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case ERROR_FILE_TOO_LARGE:
            return FileError::kNoRoom;
        case ERROR_NOT_READY:
        case ERROR_REM_NOT_LIST:
        case ERROR_BAD_NETPATH:
        case ERROR_DEV_NOT_EXIST:
        case ERROR_UNEXP_NET_ERR:
        case ERROR_NETNAME_DELETED:
        case ERROR_BAD_NET_NAME:
        case ERROR_SEM_TIMEOUT:
            return FileError::kUnreachable;
        default:
            return FileError::kDiskFailure;
    }
}

FileError WritingError(DWORD error) {
    const FileError kind = ReadingError(error);
    return kind == FileError::kMissing ? FileError::kMissingFolder : kind;
}

FileSystem& SystemFiles() {
    static WindowsFileSystem files;
    return files;
}

}  // namespace tonvale
