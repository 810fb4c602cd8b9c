// A dialog as it stands on the screen: what it is made of and what it shows.
#pragma once

#include <windows.h>

#include <map>
#include <set>
#include <string>
#include <utility>

#include "dialogs/dialog_win.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {

// The page that a property sheet shows; any other window itself.
HWND PageOf(HWND window);

// The rows of a list, "90|240; 80|240".
std::string RowsOf(HWND list);

// What every visible control shows to the user, one line each; not the name of the current file.
std::string Shown(HWND window);

// Presses Escape, or "No" where a question has no way out.
void LeaveByKey(HWND window);

// Presses the buttons of a dialog, or of a wizard's pages, one after the other, with the first row
// selected, and leaves what each opens. The tables of every dialog that comes have to be in force
// and to tell of its own controls, and its texts, those of its lists too, have to fit their
// controls at every scale.
class ButtonWalk {
  public:
    ButtonWalk() = default;
    ~ButtonWalk();
    ButtonWalk(const ButtonWalk&) = delete;
    ButtonWalk& operator=(const ButtonWalk&) = delete;

    // Presses one button or leaves one window; true when there is nothing left to do on what is in
    // front. To be called in a condition of `ui`.
    bool Step(UiDriver& ui);
    HWND dialog() const { return dialog_; }  // or the wizard's sheet: the first window that came

  private:
    void Examine(const Dialog& dialog);
    HWND NextButton(HWND page);

    HWND dialog_ = nullptr;
    std::set<std::wstring> seen_;  // templates
    std::set<std::pair<std::wstring, int>> pressed_;
    // Whether a control of a table, which several pages may share, is on any of them.
    std::map<std::pair<const void*, int>, bool> found_;
};

}  // namespace tonvale
