// Which groups of Rich Text Format are open, and what text in them is the document's.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "report/rtf/rtf_tokens.h"

namespace tonvale {

// Where the text of a group goes.
enum class RtfDestination : unsigned char {
    kBody,
    kFontTable,
    kColorTable,
    kPicture,
    kBulletText,  // \pntext: the bullet as older readers show it
    kNumbering,   // \*\pn: what the bullet is
    kLeftOut,     // text that the report document has no place for
    kIgnored,     // what is no text
};

class RtfGroups {
  public:
    // To be called with each token, in turn.
    void Follow(const RtfToken& token);
    // Number of open groups; 0 outside of all of them.
    std::size_t depth() const { return destinations_.size() - 1; }
    RtfDestination destination() const { return destinations_.back(); }

  private:
    std::vector<RtfDestination> destinations_ = {RtfDestination::kBody};
    bool is_group_start_ = false;  // nothing but \* has been read of the group
    bool is_optional_ = false;     // \* has just been read
};

}  // namespace tonvale
