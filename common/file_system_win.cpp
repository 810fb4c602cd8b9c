// Files on Windows.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <type_traits>

#include "common/file_system.h"
#include "common/text.h"

namespace tonvale {
namespace {

// The most that one call of the system reads or writes.
constexpr std::size_t kMaxTransferBytes = std::size_t{1} << 26;

// A scanner or indexer may hold a fresh file for a moment: how often and how long to wait for it.
constexpr int kReplaceAttempts = 5;
constexpr DWORD kReplacePauseMs = 20;

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

Handle OpenFile(const std::string& path, DWORD access, DWORD sharing, DWORD disposition) {
    const HANDLE handle = CreateFileW(WidePath(path).c_str(), access, sharing, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

DWORD TransferSize(std::size_t bytes) {
    return static_cast<DWORD>(std::min(bytes, kMaxTransferBytes));
}

bool ReadAll(HANDLE file, std::size_t size, std::string& bytes) {
    bytes.resize(size);
    std::size_t done = 0;
    while (done < size) {
        DWORD count = 0;
        if (!ReadFile(file, bytes.data() + done, TransferSize(size - done), &count, nullptr)) {
            return false;
        }
        if (count == 0) break;  // it has become shorter
        done += count;
    }
    bytes.resize(done);
    return true;
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

class WindowsFileSystem : public FileSystem {
  public:
    std::optional<std::string> Read(const std::string& path) override {
        const Handle file = OpenFile(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
        LARGE_INTEGER size = {};
        if (!file || GetFileType(file.get()) != FILE_TYPE_DISK) return std::nullopt;
        if (!GetFileSizeEx(file.get(), &size)) return std::nullopt;
        const auto length = static_cast<std::size_t>(size.QuadPart);
        std::string bytes;
        if (length > kMaxFileBytes || !ReadAll(file.get(), length, bytes)) return std::nullopt;
        return bytes;
    }

    bool WriteNew(const std::string& path, std::string_view bytes) override {
        const Handle file = OpenFile(path, GENERIC_WRITE, 0, CREATE_NEW);
        return file && WriteAll(file.get(), bytes) && FlushFileBuffers(file.get());
    }

    bool Replace(const std::string& from, const std::string& to) override {
        const std::wstring wide_to = WidePath(to);
        const DWORD attributes = GetFileAttributesW(wide_to.c_str());
        constexpr DWORD kObstacles = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY;
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kObstacles) != 0) return false;

        const std::wstring wide_from = WidePath(from);
        for (int attempt = 1;; ++attempt) {
            if (MoveFileExW(wide_from.c_str(), wide_to.c_str(),
                            MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
                return true;
            }
            const DWORD error = GetLastError();
            const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
            if (!held || attempt == kReplaceAttempts) return false;
            Sleep(kReplacePauseMs);
        }
    }

    void Remove(const std::string& path) override { DeleteFileW(WidePath(path).c_str()); }
};

}  // namespace

FileSystem& SystemFiles() {
    static WindowsFileSystem files;
    return files;
}

}  // namespace tonvale
