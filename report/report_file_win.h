// The report document's file.
#pragma once

#include <optional>
#include <string>

#include "common/file_system.h"
#include "common/user_message.h"

namespace tonvale {

// Reads a file while no other program may use it; nullopt when it is missing, in use, or longer
// than kMaxFileBytes.
std::optional<std::string> ReadAlone(const std::string& path);

// Whether `path` could be opened for writing with no other program using it, or be created; if not,
// why. The file, or its absence, stays as it is.
FileError TryWritingAlone(const std::string& path);

UserMessage OpenLockMessage(const std::string& path);
UserMessage SaveLockMessage(const std::string& path, FileError error);

}  // namespace tonvale
