// A dialog as it stands on the screen: what it is made of and what it shows.
#pragma once

#include <windows.h>

#include <set>
#include <string>
#include <vector>

#include "dialogs/dialog_win.h"

namespace tonvale {

// The page that a property sheet shows; any other window itself.
HWND PageOf(HWND window);

// The program's dialog, or page of a wizard, behind a window; nullptr for windows of the system.
Dialog* DialogBehind(HWND window);

// The dialog that can be used now, the others being below it; nullptr when there is none.
HWND DialogInFront();

// What every visible control shows to the user, one line each; not the name of the current file.
std::vector<std::string> Shown(HWND window);

// The name of the current file that the status bar or a wizard's page shows.
std::string CurrentFileName(HWND window);

// Expects that the tables of the dialog's description tell of its own controls, and are in force.
void ExpectDescribed(const Dialog& dialog);

// Expects that the texts that it shows now, and those of its lists, fit their controls at every
// scale.
void ExpectTextsFit(const Dialog& dialog);

// Presses Escape, or "No" where a question has no way out.
void LeaveByKey(HWND window);

// Presses the buttons of a dialog one after the other, with its first row selected, and leaves what
// each opens. Every dialog that comes has to be well described, and its texts have to fit.
class ButtonWalk {
  public:
    // Presses one button or leaves one window; true when there is nothing left to do.
    bool Step(HWND dialog);

  private:
    HWND NextButton(HWND page) const;

    std::vector<int> pressed_;
    std::set<std::wstring> seen_;  // templates
};

}  // namespace tonvale
