#include "report/report_printing_win.h"

#include <memory>
#include <optional>

#include "dialogs/printer_win.h"
#include "report/rich_edit/picture_win.h"
#include "report/rtf/rich_text_printer.h"
#include "report/rtf/rtf_reader.h"
#include "report/rtf/twips.h"

namespace tonvale {

namespace {

UserMessage NotWhole() {
    return {"Stampa", "Il documento contiene un oggetto che non può essere stampato.",
            MessageIcon::kStop};
}

// Lays out and draws the text without the control.
std::optional<UserMessage> PrintByHand(Printer& printer, const RichEdit& edit,
                                       const RichEditGaps& gaps, const std::string& name) {
    const CHARRANGE selection = edit.Selection();
    const std::optional<std::string> rtf =
        WriteReportRtf(edit, gaps, selection.cpMin != selection.cpMax);
    if (!rtf || !IsWholeRtf(*rtf)) return NotWhole();
    HDC dc = DeviceContextOf(printer);
    PrintRichText(printer, ReadReport(*rtf), name,
                  [dc](const RichPicture& picture, const Rect& place) {
                      if (!dc) return;
                      DrawPicture(dc, picture, {place.left, place.top, place.right, place.bottom});
                  });
    return std::nullopt;
}

// One page after the other, drawn by the control. False when a page cannot be printed.
bool PrintPages(Printer& printer, const RichEdit& edit, FORMATRANGE& range, LONG end) {
    while (range.chrg.cpMin < end) {
        if (!printer.StartPage()) return false;
        const auto next =
            static_cast<LONG>(edit.Send(EM_FORMATRANGE, TRUE, reinterpret_cast<LPARAM>(&range)));
        if (!printer.EndPage()) return false;
        if (next <= range.chrg.cpMin) break;
        range.chrg.cpMin = next;
        range.chrg.cpMax = end;
    }
    return true;
}

void PrintByControl(Printer& printer, HDC dc, const RichEdit& edit, const std::string& name) {
    const Rect area = PrintedAreaTwips(printer.PageSize(), printer.Resolution());
    if (area.Width() <= 0 || !printer.StartDocument(name)) return;
    CHARRANGE selection = edit.Selection();
    if (selection.cpMin == selection.cpMax) selection = {0, edit.TextLength()};
    const LONG margin = kTwipsPerInch;
    FORMATRANGE range{dc,
                      dc,
                      {area.left, area.top, area.right, area.bottom},
                      {0, 0, area.right + margin, area.bottom + margin},
                      selection};
    const bool printed = PrintPages(printer, edit, range, selection.cpMax);
    edit.Send(EM_FORMATRANGE, FALSE, 0);  // what it keeps of the device
    if (printed) {
        printer.EndDocument();
    } else {
        printer.AbortDocument();
    }
}

}  // namespace

std::optional<UserMessage> PrintReportDocument(AppContext& app, RichEdit& edit,
                                               const RichEditGaps& gaps, const std::string& name) {
    const std::unique_ptr<Printer> printer = app.open_printer();
    if (!printer) return std::nullopt;
    HDC dc = DeviceContextOf(*printer);
    if (gaps.cannot_format_pages || !dc) return PrintByHand(*printer, edit, gaps, name);
    PrintByControl(*printer, dc, edit, name);
    return std::nullopt;
}

}  // namespace tonvale
