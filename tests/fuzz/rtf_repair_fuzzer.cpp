// What is repaired has the same text, stays whole when it was, and stays broken when it was not.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_repair.h"

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}

std::string TextOf(std::string_view rtf) {
    return tonvale::PlainTextOf(tonvale::ReadRichText(rtf));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Check(tonvale::RepairWrittenRtf(bytes, {}) == bytes);
    const std::string repaired = tonvale::RepairWrittenRtf(bytes, {true, true, true, false});
    Check(tonvale::IsWholeRtf(repaired) == tonvale::IsWholeRtf(bytes));
    Check(TextOf(repaired) == TextOf(bytes));
    return 0;
}
