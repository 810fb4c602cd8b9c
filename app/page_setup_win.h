// The settings of the default printer.
#pragma once

#include <windows.h>

namespace tonvale {

// Lets the user change the default printer's settings in its driver's dialog and stores them as its
// defaults. True, too, when there is no printer and when the user cancels; false when the printer
// cannot be opened or its settings cannot be read or stored.
bool PageSetup(HWND owner);

}  // namespace tonvale
