#include "common/notes.h"

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {
namespace {

constexpr std::string_view kSection = "NOTE";
constexpr std::string_view kCountKey = "Num";
constexpr std::size_t kMaxLineCharacters = 511;

}  // namespace

void WriteNotes(ProfileFile& file, std::string_view notes) {
    int count = 0;
    for (const std::string_view line : SplitLines(notes)) {
        file.Set(kSection, FormatInteger(++count), line);
    }
    file.Set(kSection, kCountKey, FormatInteger(count));
    file.RemoveNumberedKeysAbove(kSection, count);
}

std::string ReadNotes(const ProfileFile& file) {
    const int count = file.Integer(kSection, kCountKey);
    std::string notes;
    std::size_t characters = 0;
    // Each line end takes two characters, so the limit ends the loop whatever the count.
    for (int i = 1; i <= count && characters < kMaxNotesCharacters; ++i) {
        std::string line;
        if (i > 1) line = kLineEnd;
        line += file.Text(kSection, FormatInteger(i), kMaxLineCharacters).value_or(std::string());
        characters += CharacterCount(line);
        notes += line;
    }
    return std::string(CutToCharacters(notes, kMaxNotesCharacters));
}

FileError ReadNotesOfFile(FileSystem& files, const std::string& path, std::string& notes) {
    ProfileFile file;
    const FileError error = ProfileFile::Read(files, path, file);
    notes = ReadNotes(file);
    return error;
}

FileError WriteNotesOfFile(FileSystem& files, const std::string& path, std::string_view notes) {
    ProfileFile file;
    const FileError error = ProfileFile::Read(files, path, file);
    if (error != FileError::kNone) return error;
    WriteNotes(file, notes);
    return file.Save(files, path);
}

}  // namespace tonvale
