#include "report/rich_edit/rich_edit_gaps_win.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "common/text.h"
#include "dialogs/handles_win.h"
#include "report/rich_edit/code_pages_win.h"
#include "report/rich_edit/picture_win.h"
#include "report/rich_edit/rich_edit_feet_win.h"
#include "report/rich_edit/rich_edit_pictures_win.h"
#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_writer.h"
#include "report/rtf/twips.h"

namespace tonvale {

namespace {

constexpr WPARAM kUndoSteps = 100;  // the control's own number
constexpr char kDefaultFace[] = "Arial";
constexpr LONG kLineEndLength = 2;  // CR LF

// An edit control for trying out.
class Specimen {
  public:
    Specimen(HINSTANCE instance, HWND parent) {
        created_ = edit_.Create(instance, parent, 0, WS_CHILD, 0);
    }
    ~Specimen() {
        if (created_) DestroyWindow(edit_.window());
    }
    Specimen(const Specimen&) = delete;
    Specimen& operator=(const Specimen&) = delete;
    explicit operator bool() const { return created_; }
    RichEdit& edit() { return edit_; }

  private:
    RichEdit edit_;
    bool created_ = false;
};

// What is written of a Greek letter raised by 60 twips in a paragraph with hanging lines.
RtfWriterFaults FindWriterFaults(RichEdit& edit) {
    edit.InsertText(L"\u03B2");
    edit.Select({0, 1});
    CHARFORMAT2W raised{};
    raised.dwMask = CFM_OFFSET;
    raised.yOffset = 60;
    edit.SetCharacterFormat(raised);
    PARAFORMAT hanging{};
    hanging.dwMask = PFM_STARTINDENT | PFM_OFFSET;
    hanging.dxStartIndent = 100;
    hanging.dxOffset = 300;
    edit.SetParagraphFormat(hanging);
    const std::string rtf = edit.WriteRtf(false, false).value_or("");
    const auto writes = [&rtf](const char* words) { return rtf.find(words) != std::string::npos; };
    return {.offsets_in_twips = writes("\\up60"),
            .indents_swapped = writes("\\li300\\fi100"),
            .negative_line_spacing = writes("\\sl-240\\slmult1"),
            .confuses_characters = writes("\\'df")};
}

// What is done while this lives cannot be undone, and takes less time; the steps before it can.
class NoUndo {
  public:
    explicit NoUndo(RichEdit& edit) : edit_(edit) { edit_.Send(EM_SETUNDOLIMIT, 0); }
    ~NoUndo() { edit_.Send(EM_SETUNDOLIMIT, kUndoSteps); }
    NoUndo(const NoUndo&) = delete;
    NoUndo& operator=(const NoUndo&) = delete;

  private:
    RichEdit& edit_;
};

void SetOffset(RichEdit& edit, int twips) {
    CHARFORMAT2W format{};
    format.dwMask = CFM_OFFSET;
    format.yOffset = twips;
    edit.SetCharacterFormat(format);
}

bool ReadsPoorly(RichEdit& edit) {
    edit.ReadRtf("{\\rtf1 \\up6 x}", false);
    edit.Select({0, 1});
    return edit.CharacterFormat().yOffset != 6 * kTwipsPerHalfPoint;
}

bool LeavesMetafilesBlank(RichEdit& edit) {
    BITMAPINFOHEADER header{sizeof(header), 1, 1, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::string pixel(reinterpret_cast<const char*>(&header), sizeof(header));
    pixel.resize(pixel.size() + sizeof(RGBQUAD));
    const std::optional<RichPicture> metafile = PictureOfBitmap(pixel);
    edit.ReadRtf(metafile ? PictureAsRtf(*metafile) : "", false);
    return LeavesPicturesBlank(edit.window());
}

bool CannotFormatPages(RichEdit& edit) {
    edit.Clear();
    edit.InsertText(L"x");
    const WindowDc screen(nullptr);
    const RECT page{0, 0, 12000, 12000};
    FORMATRANGE range{screen.get(), screen.get(), page, page, {0, -1}};
    const LRESULT end = edit.Send(EM_FORMATRANGE, FALSE, reinterpret_cast<LPARAM>(&range));
    edit.Send(EM_FORMATRANGE, FALSE, 0);
    return end <= 0;
}

// Every picture becomes a metafile that the system can read. Those that cannot go: then false.
bool ConvertPictures(RichText& text) {
    const auto convert = [](RichRun& run) {
        if (!run.picture) return false;
        run.picture = AsMetafile(*run.picture);
        return !run.picture;
    };
    std::size_t gone = 0;
    for (RichParagraph& paragraph : text) gone += std::erase_if(paragraph.runs, convert);
    return gone == 0;
}

struct OffsetRange {
    CHARRANGE range;
    int twips;
};

// Where the text of a paragraph, which the control holds from `position` on, is raised or lowered.
// `position` is that of the next paragraph afterwards.
std::vector<OffsetRange> OffsetsOf(const RichParagraph& paragraph, LONG& position) {
    std::vector<OffsetRange> offsets;
    for (const RichRun& run : paragraph.runs) {
        const LONG first = position;
        position += run.picture ? 1 : static_cast<LONG>(Utf8ToUtf16Le(run.text).size() / 2);
        const int twips = run.style.offset_twips;
        if (twips != 0 && position > first) offsets.push_back({{first, position}, twips});
    }
    position += kLineEndLength;
    return offsets;
}

// Sets the offsets of `text`, which the control holds from `start` on; false when they are too many
// for all of them.
bool SetOffsets(RichEdit& edit, const RichEditGaps& gaps, const RichText& text, LONG start) {
    const QuietEdit quiet(edit);
    const NoUndo no_undo(edit);
    LONG position = start;
    std::size_t left = gaps.max_offsets;
    std::size_t characters_left = gaps.max_offset_characters;
    for (const RichParagraph& paragraph : text) {
        const LONG first = position;
        const std::vector<OffsetRange> offsets = OffsetsOf(paragraph, position);
        const auto length = static_cast<std::size_t>(position - first);
        for (const OffsetRange& offset : offsets) {
            if (left == 0 || characters_left < length) return false;
            --left;
            characters_left -= length;
            edit.Select(offset.range);
            SetOffset(edit, offset.twips);
        }
    }
    return true;
}

// Puts `text` in place of the document.
ReadOutcome ReadDocument(RichEdit& edit, const RichEditGaps& gaps, RichText text) {
    // The control would take the format of an open paragraph from the one before.
    if (!text.empty()) text.back().is_open = false;
    const bool whole = edit.ReadRtf(WriteRichText(text), false);
    const bool set = SetOffsets(edit, gaps, text, 0);
    edit.Select({0, 0});
    if (!whole) return ReadOutcome::kDamaged;
    return set ? ReadOutcome::kWhole : ReadOutcome::kLeftOut;
}

// Puts `text` in place of the selection, in one step for who undoes it.
ReadOutcome ReadSelection(RichEdit& edit, const RichEditGaps& gaps, const RichText& text) {
    const CHARRANGE before = edit.Selection();
    const LONG kept = edit.TextLength() - (before.cpMax - before.cpMin);
    const bool whole = edit.ReadRtf(WriteRichText(text), true);
    const CHARRANGE after = edit.Selection();
    {
        // What was read has taken over the offset of the text before it.
        const NoUndo no_undo(edit);
        edit.Select({before.cpMin, before.cpMin + edit.TextLength() - kept});
        SetOffset(edit, 0);
    }
    const bool set = SetOffsets(edit, gaps, text, before.cpMin);
    edit.Select(after);
    if (!whole) return ReadOutcome::kDamaged;
    return set ? ReadOutcome::kWhole : ReadOutcome::kLeftOut;
}

}  // namespace

RichEditGaps FindRichEditGaps(HINSTANCE instance, HWND parent) {
    Specimen specimen(instance, parent);
    RichEditGaps gaps;
    if (!specimen) return gaps;
    gaps.writer = FindWriterFaults(specimen.edit());
    gaps.reads_poorly = ReadsPoorly(specimen.edit());
    gaps.blank_pictures = LeavesMetafilesBlank(specimen.edit());
    gaps.cuts_lowered_text = CutsLoweredText(specimen.edit());
    gaps.cannot_format_pages = CannotFormatPages(specimen.edit());
    return gaps;
}

std::optional<std::string> WriteReportRtf(const RichEdit& edit, const RichEditGaps& gaps,
                                          bool selection_only) {
    const std::optional<std::string> rtf =
        edit.WriteRtf(selection_only, gaps.writer.confuses_characters);
    if (!rtf) return std::nullopt;
    return RepairWrittenRtf(*rtf, gaps.writer);
}

RichText ReadReport(std::string_view rtf) {
    return ReadRichText(rtf, {.decode = DecodeCodePage,
                              .default_face = kDefaultFace,
                              .max_characters = kMaxReportCharacters});
}

std::size_t MaxParagraphCharacters(const RichEditGaps& gaps) {
    return gaps.reads_poorly ? 300'000 : kMaxReportCharacters;
}

bool IsTooLong(const RichText& text, const RichEditGaps& gaps) {
    std::size_t total = 0;
    std::size_t longest = 0;
    for (const RichParagraph& paragraph : text) {
        std::size_t characters = 0;
        for (const RichRun& run : paragraph.runs) {
            characters += run.picture ? 1 : CharacterCount(run.text);
        }
        longest = std::max(longest, characters);
        total += characters + (paragraph.is_open ? 0 : kLineEndLength);
    }
    return total > kMaxReportCharacters || longest > MaxParagraphCharacters(gaps);
}

ReadOutcome ReadReportRtf(RichEdit& edit, const RichEditGaps& gaps, std::string_view rtf,
                          RichText text, bool selection_only) {
    if (!gaps.reads_poorly) {
        return edit.ReadRtf(rtf, selection_only) ? ReadOutcome::kWhole : ReadOutcome::kDamaged;
    }
    const bool is_all = ConvertPictures(text) && !LeavesOut(rtf);
    const ReadOutcome outcome = selection_only ? ReadSelection(edit, gaps, text)
                                               : ReadDocument(edit, gaps, std::move(text));
    return outcome == ReadOutcome::kWhole && !is_all ? ReadOutcome::kLeftOut : outcome;
}

std::string PictureAsRtf(const RichPicture& picture) {
    std::string rtf = "{\\rtf1";
    AppendRtfPicture(rtf, picture);
    return rtf + '}';
}

}  // namespace tonvale
