// What a console is on Windows.
#include <windows.h>

#include <io.h>
#include <shellapi.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "calc/system_console.h"
#include "common/unicode_win.h"

namespace tonvale {

bool SystemConsole::ShowsProgress() const {
    return _isatty(_fileno(stderr)) != 0;
}

bool SystemConsole::OpenDocument(const std::string& path) {
    constexpr std::intptr_t kLastError = 32;
    std::error_code error;
    const std::wstring absolute = std::filesystem::absolute(Widen(path), error).wstring();
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", absolute.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return !error && reinterpret_cast<std::intptr_t>(result) > kLastError;
}

}  // namespace tonvale
