// Where the running program lies.
#pragma once

#include <string>

namespace tonvale {

std::string ProgramFile();    // full path
std::string ProgramFolder();  // its folder; a bare drive ends with "\"

// `path` as a full path, so that it keeps its meaning when a file dialog changes the folder.
std::string AbsolutePath(const std::string& path);

}  // namespace tonvale
