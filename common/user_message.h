// What the core wants the user told; the front end shows it in a message box.
#pragma once

#include <string>

namespace tonvale {

enum class MessageIcon { kNone, kInformation, kExclamation, kStop };

struct UserMessage {
    std::string caption;
    std::string text;
    MessageIcon icon = MessageIcon::kNone;
};

}  // namespace tonvale
