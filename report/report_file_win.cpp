#include "report/report_file_win.h"

#include <windows.h>

#include "common/file_errors_win.h"
#include "common/file_system.h"
#include "common/unicode_win.h"
#include "dialogs/handles_win.h"

namespace tonvale {

namespace {

struct FileCloser {
    static void Close(HANDLE file) noexcept { CloseHandle(file); }
};
using UniqueFile = UniqueHandle<HANDLE, FileCloser>;

UniqueFile OpenAlone(const std::string& path, DWORD access, DWORD disposition, DWORD flags) {
    HANDLE file = CreateFileW(Widen(path).c_str(), access, 0, nullptr, disposition, flags, nullptr);
    return UniqueFile(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

}  // namespace

std::optional<std::string> ReadAlone(const std::string& path) {
    const UniqueFile file = OpenAlone(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN);
    LARGE_INTEGER size{};
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.get(), &size) ||
        size.QuadPart > static_cast<LONGLONG>(kMaxFileBytes)) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD count = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr)) {
        return std::nullopt;
    }
    bytes.resize(count);
    return bytes;
}

FileError TryWritingAlone(const std::string& path) {
    constexpr DWORD kAccess = GENERIC_READ | GENERIC_WRITE;
    const DWORD attributes = GetFileAttributesW(Widen(path).c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileError::kFolder;
    if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) return FileError::kReadOnly;
    const UniqueFile file =
        exists ? OpenAlone(path, kAccess, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL)
               : OpenAlone(path, kAccess | DELETE, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
    return file ? FileError::kNone : WritingError(GetLastError());
}

UserMessage OpenLockMessage(const std::string& path) {
    return {path, "File bloccato da un'altra applicazione. Impossibile aprire!",
            MessageIcon::kStop};
}

UserMessage SaveLockMessage(const std::string& path, FileError error) {
    std::string text = "File bloccato da un'altra applicazione. Impossibile salvare!";
    if (error != FileError::kInUse) text.append("\r\nMotivo: ").append(Reason(error)).append(".");
    return {path, text, MessageIcon::kStop};
}

}  // namespace tonvale
