// Any bytes, taken for a data file of each kind, are assessed, told, printed and drawn.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "calc/assessment_table.h"
#include "common/file_kinds.h"
#include "common/print_frame.h"
#include "common/text.h"
#include "tests/common/fake_printer.h"

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
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
    tonvale::ProfileFile file = tonvale::ProfileFile::Parse(bytes);
    for (const tonvale::FileKindInfo& kind : tonvale::FileKinds()) {
        file.Set(tonvale::kHeaderSection, tonvale::kKindKey, kind.tag);
        const tonvale::AssessedKind* row = tonvale::AssessedKindOf(file);
        if (row == nullptr) continue;  // the report document
        const tonvale::Assessment assessment = row->assess(file);
        if (assessment.computed) CheckTexts(assessment);
    }
    return 0;
}
