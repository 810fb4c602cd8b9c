// The formatting toolbar above the report's editor.
#pragma once

#include <windows.h>

#include "dialogs/toolbar_images_win.h"
#include "report/report_format_win.h"

namespace tonvale {

class FormatToolbar {
  public:
    // Creates the toolbar (child 14) for the resolution of `parent`; again when that has changed.
    bool Create(HINSTANCE instance, HWND parent);
    HWND window() const { return window_; }
    // Places it with as many rows of buttons as that width takes, and gives its height.
    int Layout(POINT corner, int width) const;

    // The alignment buttons can be used only while the text is wrapped.
    void ShowState(const FormatState& state, bool word_wrap);

    // The tip of a command; nullptr when it has no button here.
    static const wchar_t* TipOf(int command);

  private:
    void Check(int command, bool checked);

    HWND window_ = nullptr;
    ToolbarImages images_;
};

}  // namespace tonvale
