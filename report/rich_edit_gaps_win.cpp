#include "report/rich_edit_gaps_win.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "report/picture_win.h"
#include "report/rich_edit_pictures_win.h"
#include "report/rtf_pictures.h"
#include "report/rtf_tables.h"

namespace tonvale {

namespace {

constexpr int kTwipsPerHalfPoint = 10;
constexpr std::array<wchar_t, 2> kMarkText = {static_cast<wchar_t>(kOffsetMark), L'\0'};
constexpr int kMarkLength = 3;

// A picture of one pixel.
constexpr char kPixelRtf[] =
    "{\\rtf1{\\pict\\pngblip\\picwgoal15\\pichgoal15 "
    "89504e470d0a1a0a0000000d49484452000000010000000108060000001f15c4890000000d49444154789c6360"
    "6060f80f0001040100e221bc330000000049454e44ae426082}}";

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

bool ForgetsOffsets(RichEdit& edit) {
    edit.ReadRtf("{\\rtf1 \\up6 x}", false);
    edit.Select({0, 1});
    return edit.CharacterFormat().yOffset != 6 * kTwipsPerHalfPoint;
}

bool JoinsCells(RichEdit& edit) {
    edit.ReadRtf(
        "{\\rtf1\\trowd\\cellx900\\cellx1800\\pard\\intbl a\\cell\\pard\\intbl b\\cell\\row\\pard}",
        false);
    return edit.Find(L"ab", 0) >= 0;
}

bool DropsPictures(RichEdit& edit) {
    edit.ReadRtf(kPixelRtf, false);
    return edit.TextLength() == 0;
}

std::optional<std::string> MetafileRtf(const RichPicture& picture) {
    const std::optional<RichPicture> metafile = AsMetafile(picture);
    if (!metafile) return std::nullopt;
    return PictureGroup(*metafile);
}

bool LeavesMetafilesBlank(RichEdit& edit) {
    edit.ReadRtf(ReplacePictures(kPixelRtf, MetafileRtf), false);
    return LeavesPicturesBlank(edit.window());
}

bool CannotFormatPages(RichEdit& edit) {
    edit.Clear();
    edit.InsertText(L"x");
    const HDC screen = GetDC(nullptr);
    const RECT page{0, 0, 12000, 12000};
    FORMATRANGE range{screen, screen, page, page, {0, -1}};
    const LRESULT end = edit.Send(EM_FORMATRANGE, FALSE, reinterpret_cast<LPARAM>(&range));
    edit.Send(EM_FORMATRANGE, FALSE, 0);
    ReleaseDC(nullptr, screen);
    return end <= 0;
}

// Sets the offset of the text between two marks.
void RaiseText(RichEdit& edit, CHARRANGE range, int half_points) {
    if (half_points == 0 || range.cpMax <= range.cpMin) return;
    edit.Select(range);
    CHARFORMAT2W format{};
    format.dwMask = CFM_OFFSET;
    format.yOffset = half_points * kTwipsPerHalfPoint;
    edit.SetCharacterFormat(format);
}

// Takes the mark at `position` out and gives its offset.
int TakeMark(RichEdit& edit, int position) {
    edit.Select({position, position + kMarkLength});
    const std::wstring mark = edit.SelectedText();
    edit.Send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
    if (mark.size() != kMarkLength) return 0;
    return OffsetOfMark(static_cast<char16_t>(mark[1]), static_cast<char16_t>(mark[2])).value_or(0);
}

// Applies and removes the marks of MarkOffsets between `start` and the length from the end.
void ApplyMarks(RichEdit& edit, int start, int length_behind) {
    int offset = 0;
    int raised_from = start;
    for (int mark = edit.Find(kMarkText.data(), start); mark >= 0;
         mark = edit.Find(kMarkText.data(), mark)) {
        const int next = TakeMark(edit, mark);
        RaiseText(edit, {raised_from, mark}, offset);
        offset = next;
        raised_from = mark;
    }
    RaiseText(edit, {raised_from, edit.TextLength() - length_behind}, offset);
}

}  // namespace

RichEditGaps FindRichEditGaps(HINSTANCE instance, HWND parent) {
    Specimen specimen(instance, parent);
    RichEditGaps gaps;
    if (!specimen) return gaps;
    gaps.writer = FindWriterFaults(specimen.edit());
    gaps.forgets_offsets = ForgetsOffsets(specimen.edit());
    gaps.joins_cells = JoinsCells(specimen.edit());
    gaps.drops_pictures = DropsPictures(specimen.edit());
    gaps.blank_pictures = LeavesMetafilesBlank(specimen.edit());
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

bool ReadReportRtf(RichEdit& edit, const RichEditGaps& gaps, std::string_view rtf,
                   bool selection_only) {
    std::string readable(rtf);
    if (gaps.drops_pictures) readable = ReplacePictures(readable, MetafileRtf);
    if (gaps.joins_cells && rtf.find("\\cell") != std::string_view::npos) {
        readable = FlattenTables(readable);
    }
    const std::optional<std::string> marked =
        gaps.forgets_offsets ? MarkOffsets(readable) : std::nullopt;
    if (!marked) return edit.ReadRtf(readable, selection_only);

    const CHARRANGE before = selection_only ? edit.Selection() : CHARRANGE{0, edit.TextLength()};
    const int length_behind = edit.TextLength() - static_cast<int>(before.cpMax);
    const bool whole = edit.ReadRtf(*marked, selection_only);
    {
        QuietEdit quiet(edit);
        ApplyMarks(edit, static_cast<int>(before.cpMin), length_behind);
    }
    const LONG end = selection_only ? edit.TextLength() - length_behind : 0;
    edit.Select({end, end});
    // The way back would lead through the marks.
    edit.Send(EM_EMPTYUNDOBUFFER);
    return whole;
}

std::string PictureAsRtf(const RichPicture& picture) {
    return "{\\rtf1" + PictureGroup(picture) + "}";
}

}  // namespace tonvale
