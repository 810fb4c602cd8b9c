// What is repaired or marked has the same text, stays whole when it was, and stays broken when it
// was not.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "report/rtf_reader.h"
#include "report/rtf_repair.h"
#include "report/rtf_tables.h"

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}

std::string TextOf(std::string_view rtf) {
    return tonvale::PlainTextOf(tonvale::ReadRichText(rtf));
}

// Without the characters of marks, which are EF B7 xx in UTF-8, and without the ends of paragraphs:
// there may be one with nothing but a mark in it.
std::string WithoutMarks(std::string text) {
    for (std::size_t i = 0; (i = text.find("\xEF\xB7", i)) != std::string::npos;) text.erase(i, 3);
    std::erase(text, '\n');
    return text;
}

// Tables part their cells differently.
std::string WithoutBlanks(std::string text) {
    std::erase_if(text, [](char c) { return c == '\n' || c == '\t'; });
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const bool is_whole = tonvale::IsWholeRtf(bytes);
    Check(tonvale::RepairWrittenRtf(bytes, {}) == bytes);
    const std::string repaired = tonvale::RepairWrittenRtf(bytes, {true, true, true, false});
    Check(tonvale::IsWholeRtf(repaired) == is_whole);
    Check(TextOf(repaired) == TextOf(bytes));
    const std::string flat = tonvale::FlattenTables(bytes);
    Check(tonvale::IsWholeRtf(flat) == is_whole);
    Check(WithoutBlanks(TextOf(flat)) == WithoutBlanks(TextOf(bytes)));
    if (const auto marked = tonvale::MarkOffsets(bytes)) {
        Check(tonvale::IsWholeRtf(*marked) == is_whole);
        Check(WithoutMarks(TextOf(*marked)) == WithoutMarks(TextOf(bytes)));
    }
    return 0;
}
