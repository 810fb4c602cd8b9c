#include "app/version_info_win.h"

#include <windows.h>

#include <cstddef>
#include <vector>

#include "app/program_file_win.h"
#include "common/unicode_win.h"

namespace tonvale {
namespace {

constexpr std::string_view kItalianUnicodeBlock = "\\StringFileInfo\\041004B0\\";
constexpr std::string_view kNoVersionRecord = "Informazioni sulla versione non presenti!";

std::vector<std::byte> ReadVersionRecord() {
    const std::wstring program = Widen(ProgramFile());
    std::vector<std::byte> record(GetFileVersionInfoSizeW(program.c_str(), nullptr));
    if (!record.empty() && !GetFileVersionInfoW(program.c_str(), 0,
                                                static_cast<DWORD>(record.size()), record.data())) {
        record.clear();
    }
    return record;
}

}  // namespace

std::string VersionText(std::string_view name) {
    const std::vector<std::byte> record = ReadVersionRecord();
    const std::wstring query = Widen(std::string(kItalianUnicodeBlock).append(name));
    void* text = nullptr;
    UINT length = 0;
    if (record.empty() || !VerQueryValueW(record.data(), query.c_str(), &text, &length) ||
        length == 0) {
        return std::string(kNoVersionRecord);
    }
    return Narrow(static_cast<const wchar_t*>(text));
}

std::string AboutText() {
    std::string text = VersionText("FileDescription");
    text += "\r\nRealizzato da ";
    text += VersionText("CompanyName");
    text += "\r\nSoftware distribuito gratuitamente dall'autore.\r\n";
    text += VersionText("LegalCopyright");
    text += "\r\n\r\nVersione ";
    text += VersionText("FileVersion");
    return text;
}

}  // namespace tonvale
