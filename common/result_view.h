// The results of a hearing-damage dialog, as the main window shows them instead of the document.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "common/canvas.h"

namespace tonvale {

enum class ViewKind { kTable, kChart, kAudiogram };
inline constexpr std::size_t kViewKindCount = 3;

inline constexpr int kAllCurves = -1;

struct DrawingStyle {
    bool use_color = true;            // else everything is black, as on a two-colour printer
    int selected_curve = kAllCurves;  // or the index of the one curve to draw
};

// One way to look at the results.
struct ResultPage {
    ViewKind kind;
    std::string menu_text;                      // with its access key ("&Grafico")
    std::vector<std::string> curve_names = {};  // to pick one of; empty when there is no choice
    std::string empty_reason = {};              // why nothing can be seen; empty when it can
    // Draws within `area` in the canvas's current font; an area without width or height gets
    // nothing.
    std::function<void(Canvas& canvas, const Rect& area, const DrawingStyle& style)> draw = {};
};

// Which of the toolbar's images the view has, and what the dialog was.
enum class ResultSubject { kHearingLoss, kPredictions, kDamageEvolution, kRisk };

// All pages of what the dialog's "Ok" confirmed: nothing that happens later changes them.
struct ResultView {
    ResultSubject subject = ResultSubject::kHearingLoss;
    std::string case_name = {};          // "HTLAN, 35 anni, 90 dBA, ..."
    std::vector<ResultPage> pages = {};  // of every kind at most one; a table is always there
    // The table for the clipboard and for .csv files, lines ended by CR LF.
    std::function<std::string(std::string_view list_separator)> table_text = {};

    // nullptr when there is no page of the kind.
    const ResultPage* Page(ViewKind kind) const {
        for (const ResultPage& page : pages) {
            if (page.kind == kind) return &page;
        }
        return nullptr;
    }
    // One line that names the case; where the page shows nothing of it, the reason first.
    std::string StatusText(ViewKind kind) const {
        const ResultPage* page = Page(kind);
        if (!page || page->empty_reason.empty()) return case_name;
        return page->empty_reason + " (" + case_name + ")";
    }
};

}  // namespace tonvale
