// Any bytes make a help book whose places exist, and whose rich text is whole, 7-bit and has a
// paragraph for each block.
#include "help/help_topics.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "help/help_rtf.h"
#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_repair.h"

namespace tonvale {
namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}

void CheckPlace(const HelpBook& book, const HelpPlace& place) {
    Check(place.topic < book.topics().size());
    if (place.block) Check(*place.block <= book.topics()[place.topic].blocks.size());
}

void CheckRtf(const HelpTopic& topic) {
    const HelpRtf rtf = MakeHelpRtf(topic);
    Check(IsWholeRtf(rtf.rtf));
    for (const char byte : rtf.rtf) Check(byte == '\n' || (byte >= ' ' && byte < 0x7F));
    Check(rtf.block_starts.size() == topic.blocks.size());
    const std::string shown = PlainTextOf(ReadRichText(rtf.rtf));
    const auto paragraphs = std::count(shown.begin(), shown.end(), '\n');
    Check(static_cast<std::size_t>(paragraphs) == 1 + topic.blocks.size());
    std::size_t position = 0;
    for (const HelpLinkRange& link : rtf.links) {
        Check(link.start >= position && link.end > link.start);
        position = link.end;
    }
}

}  // namespace
}  // namespace tonvale

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto book = tonvale::HelpBook::Parse(bytes);
    for (const tonvale::HelpTopic& topic : book.topics()) {
        tonvale::CheckPlace(book, book.Find(topic.context).value());
        for (const tonvale::HelpAnchor& anchor : topic.anchors) {
            tonvale::CheckPlace(book, book.Find(anchor.context).value());
        }
        tonvale::CheckRtf(topic);
    }
    for (const auto& place : book.Search(bytes.substr(0, 40))) tonvale::CheckPlace(book, place);
    return 0;
}
