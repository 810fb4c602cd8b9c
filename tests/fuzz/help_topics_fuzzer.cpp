// Any bytes make a help book whose places exist, and whose rich text is 7-bit with balanced braces.
#include "help/help_topics.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "help/help_rtf.h"

namespace {

using tonvale::HelpBook;
using tonvale::HelpPlace;
using tonvale::HelpTopic;

void Check(bool holds) {
    if (!holds) std::abort();
}

void CheckPlace(const HelpBook& book, const HelpPlace& place) {
    Check(place.topic < book.topics().size());
    if (place.block) Check(*place.block <= book.topics()[place.topic].blocks.size());
}

void CheckBraces(std::string_view rtf) {
    int depth = 0;
    for (std::size_t i = 0; i < rtf.size(); ++i) {
        Check(rtf[i] == '\n' || (rtf[i] >= ' ' && rtf[i] < 0x7F));
        if (rtf[i] == '\\') {
            ++i;
        } else if (rtf[i] == '{') {
            ++depth;
        } else if (rtf[i] == '}') {
            --depth;
            Check(depth > 0 || i + 1 == rtf.size());
        }
    }
    Check(depth == 0);
}

void CheckRtf(const HelpTopic& topic) {
    const tonvale::HelpRtf rtf = tonvale::MakeHelpRtf(topic);
    CheckBraces(rtf.rtf);
    Check(rtf.block_starts.size() == topic.blocks.size());
    std::size_t position = 0;
    for (const tonvale::HelpLinkRange& link : rtf.links) {
        Check(link.start >= position && link.end > link.start);
        position = link.end;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const HelpBook book = HelpBook::Parse(bytes);
    for (const HelpTopic& topic : book.topics()) {
        const auto place = book.Find(topic.context);
        Check(place.has_value());
        CheckPlace(book, *place);
        for (const tonvale::HelpAnchor& anchor : topic.anchors) {
            Check(book.Find(anchor.context).has_value());
            CheckPlace(book, *book.Find(anchor.context));
        }
        CheckRtf(topic);
    }
    for (const HelpPlace& place : book.Search(bytes.substr(0, 40))) CheckPlace(book, place);
    return 0;
}
