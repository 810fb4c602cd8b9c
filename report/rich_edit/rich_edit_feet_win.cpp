#include "report/rich_edit/rich_edit_feet_win.h"

#include <commctrl.h>
#include <richedit.h>

#include <map>
#include <memory>
#include <vector>

#include "dialogs/handles_win.h"

namespace tonvale {

namespace {

struct MetafileCloser {
    static void Close(HENHMETAFILE metafile) noexcept { DeleteEnhMetaFile(metafile); }
};
using UniqueMetafile = UniqueHandle<HENHMETAFILE, MetafileCloser>;
using UniqueRegion = UniqueHandle<HRGN, GdiObjectCloser>;

// The most that text may reach below its line: nine points.
int FootHeight(HWND editor) {
    return static_cast<int>(GetDpiForWindow(editor)) / 8;
}

UniqueRegion UpdateRegion(HWND editor) {
    UniqueRegion region(CreateRectRgn(0, 0, 0, 0));
    GetUpdateRgn(editor, region.get(), FALSE);
    return region;
}

// What the control draws where `region` is and a foot's height above it.
UniqueMetafile RecordPainting(HWND editor, HDC dc, HRGN region) {
    HDC recorder = CreateEnhMetaFileW(dc, nullptr, nullptr, nullptr);
    if (!recorder) return nullptr;
    RECT bounds{};
    GetRgnBox(region, &bounds);
    IntersectClipRect(recorder, bounds.left, bounds.top - FootHeight(editor), bounds.right,
                      bounds.bottom);
    SendMessageW(editor, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(recorder), PRF_CLIENT);
    return UniqueMetafile(CloseEnhMetaFile(recorder));
}

// Draws of a control's recorded painting only the text that is below its line: the control fills
// the ground of each line before it writes the line's text.
class FootPainter {
  public:
    FootPainter(HDC dc, HRGN region, int foot_height)
        : dc_(dc), region_(region), foot_height_(foot_height) {
        SetBkMode(dc_, TRANSPARENT);
    }

    void Paint(HENHMETAFILE painting) {
        const ScopedSelection font(dc_, GetStockObject(SYSTEM_FONT));
        EnumEnhMetaFile(nullptr, painting, TakeRecord, this, nullptr);
    }

  private:
    static int CALLBACK TakeRecord(HDC, HANDLETABLE*, const ENHMETARECORD* record, int,
                                   LPARAM painter) {
        reinterpret_cast<FootPainter*>(painter)->Take(*record);
        return TRUE;
    }

    void Take(const ENHMETARECORD& record) {
        switch (record.iType) {
            case EMR_EXTCREATEFONTINDIRECTW:
                AddFont(reinterpret_cast<const EMREXTCREATEFONTINDIRECTW&>(record));
                break;
            case EMR_SELECTOBJECT:
                SelectFont(reinterpret_cast<const EMRSELECTOBJECT&>(record).ihObject);
                break;
            case EMR_SETTEXTCOLOR:
                SetTextColor(dc_, reinterpret_cast<const EMRSETTEXTCOLOR&>(record).crColor);
                break;
            case EMR_SETTEXTALIGN:
                SetTextAlign(dc_, reinterpret_cast<const EMRSETTEXTALIGN&>(record).iMode);
                break;
            case EMR_BITBLT:
                StartLine(reinterpret_cast<const EMRBITBLT&>(record));
                break;
            case EMR_EXTTEXTOUTW:
                Write(reinterpret_cast<const EMREXTTEXTOUTW&>(record));
                break;
            default:
                break;
        }
    }

    void AddFont(const EMREXTCREATEFONTINDIRECTW& record) {
        fonts_.emplace_back(CreateFontIndirectW(&record.elfw.elfLogFont));
        numbered_fonts_[record.ihFont] = fonts_.back().get();
    }

    void SelectFont(DWORD number) {
        const auto font = numbered_fonts_.find(number);
        if (font == numbered_fonts_.end()) return;
        SelectObject(dc_, font->second);
        TEXTMETRICW metrics{};
        GetTextMetricsW(dc_, &metrics);
        descent_ = metrics.tmDescent;
    }

    void StartLine(const EMRBITBLT& fill) {
        if (fill.dwRop != PATCOPY) return;
        line_ = {fill.xDest, fill.yDest, fill.xDest + fill.cxDest, fill.yDest + fill.cyDest};
    }

    void Write(const EMREXTTEXTOUTW& record) {
        if (record.emrtext.ptlReference.y + descent_ <= line_.bottom) return;
        SelectClipRgn(dc_, region_);
        IntersectClipRect(dc_, line_.left, line_.bottom, line_.right, line_.bottom + foot_height_);
        const auto* bytes = reinterpret_cast<const BYTE*>(&record);
        const EMRTEXT& text = record.emrtext;
        ExtTextOutW(dc_, text.ptlReference.x, text.ptlReference.y,
                    text.fOptions & (ETO_GLYPH_INDEX | ETO_PDY), nullptr,
                    reinterpret_cast<const wchar_t*>(bytes + text.offString), text.nChars,
                    reinterpret_cast<const INT*>(bytes + text.offDx));
    }

    HDC dc_;
    HRGN region_;
    int foot_height_;
    LONG descent_ = 0;  // of the font
    RECT line_{};
    std::vector<UniqueFont> fonts_;
    std::map<DWORD, HFONT> numbered_fonts_;  // of those that stand for a number now
};

LRESULT Paint(HWND editor, WPARAM wparam, LPARAM lparam) {
    // Feet that have stood below the lines that are to be painted.
    const UniqueRegion below = UpdateRegion(editor);
    OffsetRgn(below.get(), 0, FootHeight(editor));
    InvalidateRgn(editor, below.get(), FALSE);
    const UniqueRegion region = UpdateRegion(editor);
    const LRESULT result = DefSubclassProc(editor, WM_PAINT, wparam, lparam);
    RECT box{};
    if (GetRgnBox(region.get(), &box) == NULLREGION) return result;
    HideCaret(editor);
    {
        const WindowDc dc(editor);
        const UniqueMetafile painting = RecordPainting(editor, dc.get(), region.get());
        FootPainter(dc.get(), region.get(), FootHeight(editor)).Paint(painting.get());
    }
    ShowCaret(editor);
    return result;
}

bool Lowers(const CHARFORMATW& format) {
    return (format.dwMask & CFM_OFFSET) != 0 && format.yOffset < 0;
}

// As long as nothing is lowered in the editor, painting takes no longer. `data` owns the flag.
LRESULT CALLBACK PaintWithFeet(HWND editor, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                               DWORD_PTR data) {
    auto* has_lowered = reinterpret_cast<bool*>(data);
    if (message == WM_PAINT && *has_lowered) return Paint(editor, wparam, lparam);
    if (message == EM_SETCHARFORMAT && lparam != 0) {
        *has_lowered = *has_lowered || Lowers(*reinterpret_cast<const CHARFORMATW*>(lparam));
    }
    const LRESULT result = DefSubclassProc(editor, message, wparam, lparam);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(editor, PaintWithFeet, id);
        delete has_lowered;
    }
    return result;
}

LONG TopOfSecondLine(const RichEdit& edit) {
    POINTL place{};
    edit.Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), edit.Send(EM_LINEINDEX, 1));
    return place.y;
}

}  // namespace

bool CutsLoweredText(RichEdit& edit) {
    edit.Clear();
    edit.InsertText(L"x\r\nx");
    const LONG before = TopOfSecondLine(edit);
    edit.Select({0, 1});
    CHARFORMAT2W lowered{};
    lowered.dwMask = CFM_OFFSET;
    lowered.yOffset = -200;
    edit.SetCharacterFormat(lowered);
    return TopOfSecondLine(edit) == before;
}

void DrawFeetOf(HWND editor) {
    auto has_lowered = std::make_unique<bool>(false);
    if (SetWindowSubclass(editor, PaintWithFeet, 0,
                          reinterpret_cast<DWORD_PTR>(has_lowered.get()))) {
        static_cast<void>(has_lowered.release());  // the editor's, until it is destroyed
    }
}

}  // namespace tonvale
