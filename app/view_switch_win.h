// Which of its two sides the main window shows: the report document, or the results of the last
// hearing-damage dialog.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "app/main_toolbar_win.h"
#include "app/result_view_window.h"
#include "common/result_view.h"
#include "report/report_document_win.h"

namespace tonvale {

// What the main window shows.
inline constexpr int kHearingLossView = 0;  // NIPTS, HTLA, HTLAN
inline constexpr int kPredictionsView = 3;
inline constexpr int kDamageEvolutionView = 6;
inline constexpr int kRiskView = 9;
inline constexpr int kDocumentView = 100;

class ViewSwitch {
  public:
    ViewSwitch(MainToolbar& toolbar, ReportDocument& document, ResultViewWindow& results)
        : toolbar_(toolbar), document_(document), results_(results) {}

    // Shows the table of `result`, the outcome of `command`, and adapts the view menu in `menu` and
    // the buttons to it.
    void ShowResult(HMENU menu, int view, int command, std::shared_ptr<const ResultView> result);
    // Shows another kind of the last result; nothing when CanShow says no.
    void ShowKind(ViewKind kind);
    void ShowDocument();

    bool ShowsDocument() const { return view_ == kDocumentView; }
    // Whether there is something of this kind to show that is not shown already.
    bool CanShow(ViewKind kind) const;
    int view() const { return view_; }
    // The command whose dialog gave the last result.
    int command() const { return command_; }

    // Puts the check marks of the view menu right.
    void MarkMenu(HMENU popup) const;
    // The tip of a view button; empty for any other command and while there is no result.
    std::string Tip(int command) const;

  private:
    void MarkButtons() const;

    MainToolbar& toolbar_;
    ReportDocument& document_;
    ResultViewWindow& results_;
    int view_ = kDocumentView;
    int result_view_ = kHearingLossView;  // of the last result
    int command_ = 0;
};

}  // namespace tonvale
