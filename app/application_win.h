// The program from its start to its end.
#pragma once

#include <windows.h>

#include <string>

namespace tonvale {

// Runs the program until its main window closes and gives its exit code. `path`, when not empty, is
// opened with the calculator of its extension. A second instance only tells the user so.
int RunApplication(HINSTANCE instance, const std::string& path, int show);

}  // namespace tonvale
