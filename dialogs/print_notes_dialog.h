// ADDNOTES: asks for a comment before the main window prints a chart or a table.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/app_context_win.h"

namespace tonvale {

// Shows `notes`, and replaces them by what the user confirms, unless that is empty. False when the
// user does not want to print.
bool AskPrintNotes(AppContext& app, HWND owner, std::string& notes);

}  // namespace tonvale
