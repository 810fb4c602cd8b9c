// What each command of the main window's menu, toolbar and keys does, and when it can be done.
#pragma once

#include <string>

#include "common/file_kinds.h"

namespace tonvale {

class MainWindow;

// The command that opens a file of `kind`.
int CommandOfKind(FileKind kind);

// Carries a command out. `path` is the file that it works on; empty for a command that comes from
// the menu.
void RunCommand(MainWindow& window, int id, const std::string& path);

// False for a command that cannot be carried out now, or that the program does not have: its menu
// item and its button are greyed.
bool CanRunCommand(const MainWindow& window, int id);

}  // namespace tonvale
