// The images of a toolbar's buttons, drawn once for each of several resolutions.
#pragma once

#include <windows.h>

#include <string>

#include "dialogs/handles_win.h"

namespace tonvale {

class ToolbarImages {
  public:
    // Gives `toolbar` the `count` images of the strip `name` (bitmaps NAME_16, _20, _24, _32) that
    // is drawn for its resolution; again when that has changed. Disabled buttons show them faded.
    void GiveTo(HWND toolbar, HINSTANCE instance, const std::wstring& name, int count);

  private:
    UniqueImageList images_;
    UniqueImageList faded_images_;
};

}  // namespace tonvale
