// Any bytes can be read as rich text, written anew, repaired and printed: no page is without end,
// nothing of the text is lost, and the tokens are the bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "common/text.h"
#include "report/rtf/rich_text_printer.h"
#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_repair.h"
#include "report/rtf/rtf_tokens.h"
#include "report/rtf/rtf_writer.h"
#include "tests/common/fake_printer.h"

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}

void CheckTokens(std::string_view bytes) {
    tonvale::RtfTokenizer tokens(bytes);
    std::size_t length = 0;
    for (tonvale::RtfToken token = tokens.Next(); token.kind != tonvale::RtfToken::Kind::kEnd;
         token = tokens.Next()) {
        Check(!token.source.empty() && token.source.data() == bytes.data() + length);
        length += token.source.size();
    }
    Check(length == bytes.size());
}

// Groups that no control has too few places for, and once written a text stays as it is.
void CheckWriting(const tonvale::RichText& text) {
    const std::string rtf = tonvale::WriteRichText(text);
    Check(tonvale::IsWholeRtf(rtf));
    const tonvale::RichText again = tonvale::ReadRichText(rtf);
    Check(tonvale::PlainTextOf(again) == tonvale::PlainTextOf(text));
    Check(tonvale::ReadRichText(tonvale::WriteRichText(again)) == again);
}

// What is repaired has the same text, stays whole when it was, and stays broken when it was not.
void CheckRepair(std::string_view bytes, const std::string& plain) {
    Check(tonvale::RepairWrittenRtf(bytes, {}) == bytes);
    const std::string repaired = tonvale::RepairWrittenRtf(bytes, {true, true, true, false});
    Check(tonvale::IsWholeRtf(repaired) == tonvale::IsWholeRtf(bytes));
    Check(tonvale::PlainTextOf(tonvale::ReadRichText(repaired)) == plain);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    CheckTokens(bytes);
    const tonvale::RichText text = tonvale::ReadRichText(bytes);
    tonvale::LeavesOut(bytes);
    const std::string plain = tonvale::PlainTextOf(text);
    Check(tonvale::ValidUtf8(plain) == plain);
    tonvale::FakePrinter printer;
    Check(tonvale::PrintRichText(printer, text, "x", [](const auto&, const auto&) {}));
    Check(printer.ended && printer.pages.size() <= size + 1);
    CheckWriting(text);
    CheckRepair(bytes, plain);
    return 0;
}
