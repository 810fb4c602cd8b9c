// Any bytes, taken for a data file: they parse, what is written reads back the same, edits hold,
// and as each kind of file they are assessed, told, printed and drawn.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "calc/assessment_table.h"
#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/print_frame.h"
#include "common/text.h"
#include "tests/common/fake_printer.h"

namespace {

using tonvale::ProfileFile;

void Check(bool holds) {
    if (!holds) std::abort();
}

// The names that the program asks for, and some that are easy to hit upon by chance.
constexpr std::string_view kSections[] = {tonvale::kHeaderSection, "NOTE", "LEQ", "S", ""};
constexpr std::string_view kKeys[] = {tonvale::kKindKey, "Num", "1", "2", "k", "a", ""};

void CheckRoundTrip(const ProfileFile& file) {
    const std::string bytes = file.Serialize();
    const ProfileFile again = ProfileFile::Parse(bytes);
    Check(again.Serialize() == bytes);
    for (const std::string_view section : kSections) {
        for (const std::string_view key : kKeys) {
            Check(file.Find(section, key) == again.Find(section, key));
        }
        Check(file.NumberedKeys(section, INT_MAX) == again.NumberedKeys(section, INT_MAX));
    }
}

void CheckEdits(ProfileFile file, std::string_view value) {
    for (const std::string_view section : {kSections[0], std::string_view("S")}) {
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

void CheckTexts(const tonvale::Assessment& assessment) {
    for (const std::string& text :
         {PrintoutAsText(assessment.printout), assessment.summarize(";")}) {
        Check(!text.empty() && tonvale::ValidUtf8(text) == text);
    }
    tonvale::FakePrinter printer;
    PrintPages(printer, assessment.printout);
    Check(printer.ended && !printer.pages.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ProfileFile file = ProfileFile::Parse(bytes);
    CheckRoundTrip(file);
    CheckEdits(file, bytes);
    CheckNotes(file, bytes);
    for (const tonvale::FileKindInfo& kind : tonvale::FileKinds()) {
        file.Set(tonvale::kHeaderSection, tonvale::kKindKey, kind.tag);
        const tonvale::AssessedKind* row = tonvale::AssessedKindOf(file);
        if (row == nullptr) continue;  // the report document
        const tonvale::Assessment assessment = row->assess(file);
        if (assessment.computed) CheckTexts(assessment);
    }
    return 0;
}
