// The data files that the project shows its users.
#pragma once

#include <cstdlib>
#include <string>

#include "common/profile_file.h"

namespace tonvale {

inline std::string ExampleBytes(const std::string& name) {
    const char* folder = std::getenv("TONVALE_EXAMPLES");
    std::string bytes;
    SystemFiles().Read(std::string(folder ? folder : ".") + "/" + name, bytes);
    return bytes;
}

}  // namespace tonvale
