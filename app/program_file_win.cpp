#include "app/program_file_win.h"

#include <windows.h>

#include "common/unicode_win.h"

namespace tonvale {

std::string ProgramFile() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return Narrow(path);
        }
        path.resize(2 * path.size());
    }
}

std::string ProgramFolder() {
    std::string folder = ProgramFile();
    folder.resize(folder.find_last_of('\\'));
    if (folder.ends_with(':')) folder += '\\';
    return folder;
}

std::string AbsolutePath(const std::string& path) {
    const std::wstring given = Widen(path);
    std::wstring absolute(GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length = GetFullPathNameW(given.c_str(), static_cast<DWORD>(absolute.size()),
                                          absolute.data(), nullptr);
    if (length == 0 || length >= absolute.size()) return path;
    absolute.resize(length);
    return Narrow(absolute);
}

}  // namespace tonvale
