// What each command of the main window's menu, toolbar and keys does.
#pragma once

#include <string>

namespace tonvale {

class MainWindow;

// Carries a command out. `path` is the file that a calculator opens with; empty for a command that
// comes from the menu.
using CommandFunction = void (*)(MainWindow& window, const std::string& path);

// The function of a command; nullptr for one that the program cannot carry out, which the menu then
// shows greyed.
CommandFunction FindCommand(int id);

}  // namespace tonvale
