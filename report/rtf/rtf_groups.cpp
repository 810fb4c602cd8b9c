#include "report/rtf/rtf_groups.h"

#include <algorithm>
#include <array>

namespace tonvale {

namespace {

using Kind = RtfToken::Kind;

struct DestinationWord {
    std::string_view name;
    RtfDestination destination;
};

constexpr std::array<DestinationWord, 25> kDestinations = {{
    {"colortbl", RtfDestination::kColorTable}, {"fonttbl", RtfDestination::kFontTable},
    {"pict", RtfDestination::kPicture},        {"pn", RtfDestination::kNumbering},
    {"pntext", RtfDestination::kBulletText},   {"shppict", RtfDestination::kBody},
    {"annotation", RtfDestination::kLeftOut},  {"fldinst", RtfDestination::kIgnored},
    {"footer", RtfDestination::kLeftOut},      {"footerf", RtfDestination::kLeftOut},
    {"footerl", RtfDestination::kLeftOut},     {"footerr", RtfDestination::kLeftOut},
    {"footnote", RtfDestination::kLeftOut},    {"header", RtfDestination::kLeftOut},
    {"headerf", RtfDestination::kLeftOut},     {"headerl", RtfDestination::kLeftOut},
    {"headerr", RtfDestination::kLeftOut},     {"info", RtfDestination::kIgnored},
    {"nonshppict", RtfDestination::kIgnored},  {"objdata", RtfDestination::kLeftOut},
    {"pntxta", RtfDestination::kIgnored},      {"pntxtb", RtfDestination::kIgnored},
    {"stylesheet", RtfDestination::kIgnored},  {"xe", RtfDestination::kIgnored},
    {"shpinst", RtfDestination::kLeftOut},
}};

}  // namespace

void RtfGroups::Follow(const RtfToken& token) {
    if (token.kind == Kind::kOpen) {
        destinations_.push_back(destinations_.back());
        is_group_start_ = true;
        is_optional_ = false;
        return;
    }
    if (token.kind == Kind::kClose && destinations_.size() > 1) destinations_.pop_back();
    if (token.kind == Kind::kBlank) return;
    if (is_group_start_ && token.kind == Kind::kWord) {
        if (token.name == "*") {
            is_optional_ = true;
            return;
        }
        const auto* row =
            std::find_if(kDestinations.begin(), kDestinations.end(),
                         [&](const DestinationWord& word) { return word.name == token.name; });
        // Nothing in a group that is not read is the document's.
        const bool is_read = destinations_.back() != RtfDestination::kIgnored &&
                             destinations_.back() != RtfDestination::kLeftOut;
        if (is_read && row != kDestinations.end()) {
            destinations_.back() = row->destination;
        } else if (is_read && is_optional_) {
            destinations_.back() = RtfDestination::kIgnored;
        }
    }
    is_group_start_ = false;
}

}  // namespace tonvale
