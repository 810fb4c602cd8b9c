// What the rich-text control of this system cannot do, and how it is done instead. A control that
// does something itself is left to do it: each gap is found by trying the control out.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "report/rich_edit/rich_edit_win.h"
#include "report/rtf/rich_text.h"
#include "report/rtf/rtf_repair.h"

namespace tonvale {

struct RichEditGaps {
    RtfWriterFaults writer;
    // \up and \dn are not read, nor are PNG and JPEG pictures; the cells of tables run into each
    // other, and the control may crash at malformed text. It is given nothing but what this program
    // has read and written anew.
    bool reads_poorly = false;
    bool blank_pictures = false;       // metafiles are read, but not drawn
    bool cuts_lowered_text = false;    // where it reaches below its line
    bool cannot_format_pages = false;  // EM_FORMATRANGE does nothing
    // Where it reads poorly: to set an offset, the control takes time for each paragraph of the
    // text and each character of the paragraph. What is beyond these stays on its line.
    std::size_t max_offsets = 30'000;               // of a text
    std::size_t max_offset_characters = 3'000'000;  // paragraphs' offsets times characters
};

// Tries out a control of its own, which nobody sees; no gaps when there is none to be had.
RichEditGaps FindRichEditGaps(HINSTANCE instance, HWND parent);

// The document, or the selection, in Rich Text Format as other programs read it; cut short, which
// IsWholeRtf tells, where the control cannot write all of it. nullopt when it fails.
std::optional<std::string> WriteReportRtf(const RichEdit& edit, const RichEditGaps& gaps,
                                          bool selection_only);

// What this program understands of a document: of one that is too long, a part that is too long.
RichText ReadReport(std::string_view rtf);

// The most of a paragraph: the control would be at a longer one for minutes.
std::size_t MaxParagraphCharacters(const RichEditGaps& gaps);

// True when the document, or a paragraph of it, is longer than may be.
bool IsTooLong(const RichText& text, const RichEditGaps& gaps);

enum class ReadOutcome {
    kWhole,
    kLeftOut,  // what neither this program nor the control can show is not there
    kDamaged,  // the control could not make sense of all of it
};

// Puts `rtf`, of which ReadReport has made `text`, in place of the document or the selection.
ReadOutcome ReadReportRtf(RichEdit& edit, const RichEditGaps& gaps, std::string_view rtf,
                          RichText text, bool selection_only);

// `picture`, an enhanced metafile, as a document of its own in Rich Text Format.
std::string PictureAsRtf(const RichPicture& picture);

}  // namespace tonvale
