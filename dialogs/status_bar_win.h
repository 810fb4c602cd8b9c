// The status bar that shows the current file.
#pragma once

#include <windows.h>

#include <string_view>

namespace tonvale {

// Creates the status bar (id 15) at the bottom of `parent`.
HWND CreateStatusBar(HINSTANCE instance, HWND parent);

// Shows `path`, its middle folders left out when it is too long for the bar, or
// "Nessun file selezionato" when it is empty. To be called again when the bar's width changes.
void ShowCurrentFile(HWND status_bar, std::string_view path);

}  // namespace tonvale
