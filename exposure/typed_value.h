// What the exposure dialogs refuse in their fields.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/user_message.h"

namespace tonvale {

// Why `text` cannot be taken, under `caption`: it is exactly 0, or no number. Negative values pass.
std::optional<UserMessage> CheckTypedValue(std::string_view text, std::string caption);

// The same for a level in dBA.
std::optional<UserMessage> CheckTypedLevel(std::string_view level_dba);

}  // namespace tonvale
