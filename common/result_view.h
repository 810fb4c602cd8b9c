// The results of a hearing-damage dialog, as the main window shows them instead of the document.
#pragma once

#include <cstddef>
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

// A view holds a copy of what the dialog's "Ok" confirmed: nothing that happens later changes it.
class ResultView {
  public:
    virtual ~ResultView() = default;
    // Every view has a table; the others may be missing.
    virtual bool Has(ViewKind kind) const = 0;
    // Text of the menu item, with its access key ("&Grafico"), and of the button's tip.
    virtual std::string_view MenuText(ViewKind kind) const = 0;
    virtual std::string_view TipText(ViewKind kind) const = 0;
    // What the right-button menu offers to pick one of; empty when there is nothing to pick.
    virtual std::vector<std::string> CurveNames(ViewKind kind) const = 0;
    // Draws within `area` in the canvas's current font; an area without width or height gets
    // nothing.
    virtual void Draw(ViewKind kind, Canvas& canvas, const Rect& area,
                      const DrawingStyle& style) const = 0;
    // One line that names the case ("HTLAN, 35 anni, 90 dBA, ..."); where `kind` shows nothing of
    // it, the reason first.
    virtual std::string StatusText(ViewKind kind) const = 0;
    // The table for the clipboard and for .csv files, lines ended by CR LF.
    virtual std::string TableText(std::string_view list_separator) const = 0;
};

}  // namespace tonvale
