// Which of its two sides the main window shows: the report document, or the results of the last
// hearing-damage dialog.
#pragma once

#include <windows.h>

#include <string>

#include "app/main_toolbar_win.h"
#include "app/result_view_window.h"
#include "common/result_view.h"
#include "report/report_document_win.h"

namespace tonvale {

class ViewSwitch {
  public:
    ViewSwitch(MainToolbar& toolbar, ReportDocument& document, ResultViewWindow& results)
        : toolbar_(toolbar), document_(document), results_(results) {}

    // Shows the table of `result` and adapts the view menu in `menu` and the buttons to it.
    void ShowResult(HMENU menu, ResultView result);
    // Shows another kind of the last result; nothing when CanShow says no.
    void ShowKind(ViewKind kind);
    void ShowDocument();

    bool ShowsDocument() const { return shows_document_; }
    // Whether there is something of this kind to show that is not shown already.
    bool CanShow(ViewKind kind) const;

    // Puts the check marks of the view menu right.
    void MarkMenu(HMENU popup) const;
    // The tip of a view button; empty for any other command and while there is no result.
    std::string Tip(int command) const;

  private:
    void MarkButtons() const;

    MainToolbar& toolbar_;
    ReportDocument& document_;
    ResultViewWindow& results_;
    bool shows_document_ = true;
};

}  // namespace tonvale
