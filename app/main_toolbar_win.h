// The main window's toolbar.
#pragma once

#include <windows.h>

#include <functional>

#include "dialogs/toolbar_images_win.h"

namespace tonvale {

class MainToolbar {
  public:
    // Creates the toolbar (id 12) in `parent`; false when it cannot be had.
    bool Create(HINSTANCE instance, HWND parent);

    // Takes the images drawn for the resolution of the parent's monitor.
    void OnDpiChanged();
    // Places it along the parent's top edge and gives its height.
    int Layout(int width) const;

    // Enables the buttons of whose commands `is_enabled` says so.
    void EnableButtons(const std::function<bool(int command)>& is_enabled) const;
    void CheckButton(int command, bool checked) const;
    void ShowButton(int command, bool shown) const;
    // Whether the view buttons show what the predictions draw: losses over time and level.
    void ShowPredictionImages(bool shown) const;

  private:
    void AddButtons() const;

    HINSTANCE instance_ = nullptr;
    HWND window_ = nullptr;
    ToolbarImages images_;
};

// The tip of a command that has a button; nullptr of any other.
const wchar_t* CommandTip(int command);

}  // namespace tonvale
