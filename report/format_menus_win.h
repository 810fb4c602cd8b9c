// The pop-up menus of the report's editor.
#pragma once

#include <windows.h>

#include <vector>

#include "dialogs/app_context_win.h"
#include "dialogs/handles_win.h"
#include "report/report_format_win.h"

namespace tonvale {

// Makes the menus; to be kept as long as any of them is.
class FormatMenus {
  public:
    explicit FormatMenus(const AppContext& app) : app_(app) {}

    // The pop-up of menu FORMATO; that of menu COLORI opens beside its colour command. The caller
    // destroys it. nullptr when it cannot be loaded.
    HMENU MakeFormatMenu();
    // Puts it into a menu bar.
    void AddTo(HMENU bar, UINT position);
    // Shows the pop-up of menu COLORI at the mouse; gives the command that the user chose, 0 when
    // none.
    int ChooseColor(HWND owner);

  private:
    HMENU MakeColorMenu();

    const AppContext& app_;
    std::vector<UniqueBitmap> swatches_;  // of the colours, in the order of their commands
};

// Marks the formatting commands in `menu` as the selection has them, and enables those that can be
// used: none unless `usable`, alignments only while the text is wrapped.
void MarkFormatMenu(HMENU menu, const FormatState& state, bool word_wrap, bool usable);

}  // namespace tonvale
