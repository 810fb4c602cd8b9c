#include "common/file_system.h"

#include <algorithm>
#include <array>
#include <random>

#include "common/numbers.h"

namespace tonvale {
namespace {

struct ReasonRow {
    FileError error;
    std::string_view clause;
};

constexpr std::array<ReasonRow, 13> kReasons{{
    {FileError::kMissing, "il file non esiste"},
    {FileError::kMissingFolder, "la cartella non esiste"},
    {FileError::kFolder, "il nome è quello di una cartella"},
    {FileError::kNoPlainFile, "il nome è quello di un dispositivo"},
    {FileError::kTooLong, "il file è troppo lungo"},
    {FileError::kBadName, "il nome del file non è valido"},
    {FileError::kReadOnly, "il file è di sola lettura"},
    {FileError::kDenied, "non si ha il permesso di accedere al file o alla cartella"},
    {FileError::kInUse, "un'altra applicazione sta usando il file"},
    {FileError::kWriteProtected, "il disco è protetto da scrittura"},
    {FileError::kNoRoom, "il disco è pieno"},
    {FileError::kUnreachable, "il disco o la rete non risponde"},
    {FileError::kDiskFailure, "errore del disco"},
}};

// The names of the files that become others: these texts round a number. Short, so that a path that
// is just short enough for the system does not grow past its limit.
constexpr std::string_view kTemporaryStart = "~tnv";
constexpr std::string_view kTemporaryEnd = ".tmp";

// No save takes so long.
constexpr std::int64_t kStaleAfterS = 10 * 60;

std::string TemporaryBeside(const std::string& path) {
    return FolderPart(path)
        .append(kTemporaryStart)
        .append(FormatInteger(std::random_device{}()))
        .append(kTemporaryEnd);
}

bool IsTemporaryName(std::string_view name) {
    if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd)) return false;
    name.remove_prefix(kTemporaryStart.size());
    if (name.size() <= kTemporaryEnd.size()) return false;
    name.remove_suffix(kTemporaryEnd.size());
    return name.find_first_not_of("0123456789") == std::string_view::npos;
}

// Removes what was left beside the temporary file `own` long before it was written: by the clock of
// the disk, which may not be this machine's.
void RemoveStaleBeside(FileSystem& files, const std::string& own) {
    const std::vector<FolderEntry> entries = files.FilesBeside(own, kTemporaryStart);
    const auto newest = std::find_if(entries.begin(), entries.end(),
                                     [&](const FolderEntry& entry) { return entry.path == own; });
    if (newest == entries.end()) return;
    for (const FolderEntry& entry : entries) {
        const bool is_stale = newest->modified_s - entry.modified_s > kStaleAfterS;
        if (is_stale && IsTemporaryName(FileName(entry.path))) files.Remove(entry.path);
    }
}

}  // namespace

std::string_view Reason(FileError error) {
    const auto* row = std::find_if(kReasons.begin(), kReasons.end(),
                                   [error](const auto& reason) { return reason.error == error; });
    return row == kReasons.end() ? std::string_view() : row->clause;
}

FileError FileSystem::ReadFolder(const std::string& /*path*/, FolderContents& /*contents*/) {
    return FileError::kMissingFolder;
}

std::optional<std::int64_t> FileSystem::ModifiedTime(const std::string& /*path*/) {
    return std::nullopt;
}

FileError WriteFileSafely(FileSystem& files, const std::string& path, std::string_view bytes) {
    const std::string target = files.ResolveLinks(path);
    const std::string temporary = TemporaryBeside(target);
    FileError error = files.WriteNew(temporary, bytes);
    RemoveStaleBeside(files, temporary);
    if (error == FileError::kNone) error = files.Replace(temporary, target);
    if (error != FileError::kNone) files.Remove(temporary);
    return error;
}

std::string FolderPart(const std::string& path) {
    return path.substr(0, path.find_last_of("/\\:") + 1);  // npos + 1 is 0
}

std::string_view FileName(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);  // npos + 1 is 0
}

std::string_view FileExtension(std::string_view path) {
    const std::string_view name = FileName(path);
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string_view() : name.substr(point);
}

}  // namespace tonvale
