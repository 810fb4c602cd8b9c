// Any bytes must parse; what is written must read back the same; edits must hold.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/profile_file.h"
#include "common/text.h"

namespace {

using tonvale::ProfileFile;

void Check(bool holds) {
    if (!holds) std::abort();
}

// The names that the program asks for, and some that are easy to hit upon by chance.
constexpr std::string_view kSections[] = {"TONVALE", "NOTE", "LEQ", "S", ""};
constexpr std::string_view kKeys[] = {"Tipo", "Num", "1", "2", "k", "a", ""};

void CheckSameValues(const ProfileFile& a, const ProfileFile& b) {
    for (const std::string_view section : kSections) {
        for (const std::string_view key : kKeys)
            Check(a.Find(section, key) == b.Find(section, key));
        const std::vector<int> numbers = a.NumberedKeys(section, INT_MAX);
        Check(numbers == b.NumberedKeys(section, INT_MAX));
        for (const int number : numbers) {
            const std::string key = tonvale::FormatInteger(number);
            const auto value = a.Find(section, key);
            Check(value.has_value() && value == b.Find(section, key));
        }
    }
}

void CheckRoundTrip(const ProfileFile& file) {
    const std::string bytes = file.Serialize();
    const ProfileFile again = ProfileFile::Parse(bytes);
    CheckSameValues(file, again);
    Check(again.Serialize() == bytes);
}

void CheckEdits(ProfileFile file, std::string_view value) {
    for (const std::string_view section : {"TONVALE", "S"}) {
        file.Set(section, "k", value);
        file.Set(section, "3", value);
        file.RemoveNumberedKeysAbove(section, 2);
        Check(!file.Find(section, "3"));
        Check(file.Find(section, "k")->find_first_of(tonvale::kLineEnd) == std::string_view::npos);
    }
    CheckRoundTrip(file);
    file.RemoveSection("S");
    Check(!file.Find("S", "k"));
    CheckRoundTrip(file);
}

void CheckNotes(ProfileFile file, std::string_view text) {
    Check(tonvale::CharacterCount(tonvale::ReadNotes(file)) <= tonvale::kMaxNotesCharacters);

    // Notes as an edit control gives them: lines joined by CR LF, no NUL.
    std::string notes;
    for (const std::string_view line : tonvale::SplitLines(text.substr(0, text.find('\0')))) {
        if (!notes.empty()) notes += tonvale::kLineEnd;
        notes += line;
    }
    notes = tonvale::CutToCharacters(tonvale::ValidUtf8(notes), tonvale::kMaxKeptNotesCharacters);
    tonvale::WriteNotes(file, notes);
    const std::string read = tonvale::ReadNotes(ProfileFile::Parse(file.Serialize()));
    Check(read == notes || read + std::string(tonvale::kLineEnd) == notes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const ProfileFile file = ProfileFile::Parse(bytes);
    tonvale::HasKind(file, tonvale::FileKind::kLepd);
    CheckRoundTrip(file);
    CheckEdits(file, bytes);
    CheckNotes(file, bytes);
    return 0;
}
