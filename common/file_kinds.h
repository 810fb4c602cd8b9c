// The kinds of file that the program knows, in the order of its "Apri" dialog.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "common/profile_file.h"

namespace tonvale {

// The header section of every data file and its key for the kind tag.
inline constexpr std::string_view kHeaderSection = "TONVALE";
inline constexpr std::string_view kKindKey = "Tipo";

// Most values of a data file are read into fields of this many characters.
inline constexpr std::size_t kMaxValueCharacters = 15;

enum class FileKind { kLepd, kLepw, kLeg, kIlg, kSpr, kSpi, kDpi, kErr, kReport };

struct FileKindInfo {
    FileKind kind;
    std::string_view tag;          // value of `Tipo`; empty for the report document
    std::string_view extension;    // with its point, lower case
    std::string_view filter_text;  // description, "|", pattern, "|"
};

const std::array<FileKindInfo, 9>& FileKinds();
const FileKindInfo& InfoOf(FileKind kind);

// The row whose extension is `path`'s, ignoring case; nullptr when there is none.
const FileKindInfo* FileKindOfPath(std::string_view path);

// True when the header's `Tipo` is the tag of `kind`, ignoring case and surrounding blanks.
bool HasKind(const ProfileFile& file, FileKind kind);

// Puts the value `key` of the header section, at most 15 characters, into `text`, which stays as it
// was when the key is missing.
void TakeHeaderText(const ProfileFile& file, std::string_view key, std::string& text);

// Reads `path` and gives it when it is a data file of `kind`.
std::optional<ProfileFile> ReadDataFile(FileSystem& files, const std::string& path, FileKind kind);

// The value `key` of the header section of another calculator's data file, at most 15 characters;
// nullopt unless the file is of `kind` and has the key.
std::optional<std::string> ReadHeaderValue(FileSystem& files, const std::string& path,
                                           FileKind kind, std::string_view key);

}  // namespace tonvale
