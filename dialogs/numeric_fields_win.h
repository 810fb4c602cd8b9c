// The filter that keeps numeric fields numeric while they are typed in.
#pragma once

#include <windows.h>

namespace tonvale {

// Sees the keystrokes of all modal dialogs and wizards. Installed for the thread at start-up,
// removed at the end.
class NumericKeystrokeFilter {
  public:
    NumericKeystrokeFilter();
    ~NumericKeystrokeFilter();
    NumericKeystrokeFilter(const NumericKeystrokeFilter&) = delete;
    NumericKeystrokeFilter& operator=(const NumericKeystrokeFilter&) = delete;

  private:
    HHOOK hook_ = nullptr;
};

}  // namespace tonvale
