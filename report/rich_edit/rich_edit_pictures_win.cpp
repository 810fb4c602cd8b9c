#include "report/rich_edit/rich_edit_pictures_win.h"

#include <commctrl.h>
#include <ole2.h>

#include <richedit.h>

#include <richole.h>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "dialogs/handles_win.h"
#include "report/rich_edit/com_pointer_win.h"

namespace tonvale {

namespace {

constexpr int kHimetricPerInch = 2540;

ComPointer<IRichEditOle> ObjectsOf(HWND editor) {
    IRichEditOle* objects = nullptr;
    SendMessageW(editor, EM_GETOLEINTERFACE, 0, reinterpret_cast<LPARAM>(&objects));
    return ComPointer<IRichEditOle>(objects);
}

struct PlacedObject {
    ComPointer<IOleObject> object;
    LONG position = 0;
    SIZE himetric{};
};

PlacedObject ObjectAt(IRichEditOle& objects, LONG index) {
    REOBJECT description{};
    description.cbStruct = sizeof(description);
    if (FAILED(objects.GetObject(index, &description, REO_GETOBJ_POLEOBJ))) return {};
    return {ComPointer<IOleObject>(description.poleobj),
            description.cp,
            {description.sizel.cx, description.sizel.cy}};
}

// The place of an object in the client area: it stands on the line at its character.
RECT PlaceOf(HWND editor, const PlacedObject& placed) {
    const int dpi = static_cast<int>(GetDpiForWindow(editor));
    POINTL corner{};
    SendMessageW(editor, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&corner), placed.position);
    return {corner.x, corner.y, corner.x + MulDiv(placed.himetric.cx, dpi, kHimetricPerInch),
            corner.y + MulDiv(placed.himetric.cy, dpi, kHimetricPerInch)};
}

void PlayMetafile(HDC dc, IOleObject* object, const RECT& place) {
    const auto data = QueryFor<IDataObject>(object, IID_IDataObject);
    FORMATETC format{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
    STGMEDIUM medium{};
    if (!data || FAILED(data->GetData(&format, &medium))) return;
    PlayEnhMetaFile(dc, medium.hEnhMetaFile, &place);
    ReleaseStgMedium(&medium);
}

LONG CharacterAt(HWND editor, LONG x, LONG y) {
    POINTL place{x, y};
    return static_cast<LONG>(
        SendMessageW(editor, EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&place)));
}

// What of an editor's pictures is known between two paintings: to count them takes as long as the
// text is.
class PictureLayer {
  public:
    // To be called after each message that the editor has done its part of.
    void Follow(HWND editor, UINT message, WPARAM wparam) {
        if (message == WM_SETREDRAW) redraws_ = wparam != FALSE;
        if (message != WM_PAINT) {
            is_known_ = is_known_ && KeepsText(message);
        } else if (redraws_) {
            Draw(editor);
            is_known_ = true;  // whatever it had to ask the editor
        }
    }

  private:
    static bool KeepsText(UINT message) {
        constexpr std::array<UINT, 10> kMessages = {
            WM_VSCROLL,   WM_HSCROLL, WM_MOUSEWHEEL, WM_MOUSEMOVE,  WM_NCHITTEST,
            WM_SETCURSOR, WM_NCPAINT, WM_ERASEBKGND, EM_LINESCROLL, WM_PRINTCLIENT,
        };
        return std::find(kMessages.begin(), kMessages.end(), message) != kMessages.end();
    }

    void FindPictures(IRichEditOle& objects) {
        positions_.clear();
        const LONG count = objects.GetObjectCount();
        for (LONG i = 0; i < count; ++i) positions_.push_back(ObjectAt(objects, i).position);
    }

    void Draw(HWND editor) {
        const ComPointer<IRichEditOle> objects = ObjectsOf(editor);
        if (objects && !is_known_) FindPictures(*objects);
        if (!objects || positions_.empty()) return;
        RECT visible{};
        SendMessageW(editor, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&visible));
        const LONG first = CharacterAt(editor, visible.left, visible.top);
        const LONG last = CharacterAt(editor, visible.right, visible.bottom);
        const WindowDc dc(editor);
        IntersectClipRect(dc.get(), visible.left, visible.top, visible.right, visible.bottom);
        for (std::size_t i = 0; i < positions_.size(); ++i) {
            if (positions_[i] < first || positions_[i] > last) continue;
            const PlacedObject placed = ObjectAt(*objects, static_cast<LONG>(i));
            PlayMetafile(dc.get(), placed.object.get(), PlaceOf(editor, placed));
        }
    }

    bool redraws_ = true;
    bool is_known_ = false;
    std::vector<LONG> positions_;  // ascending
};

LRESULT CALLBACK DrawAfterEditor(HWND editor, UINT message, WPARAM wparam, LPARAM lparam,
                                 UINT_PTR id, DWORD_PTR data) {
    auto* layer = reinterpret_cast<PictureLayer*>(data);
    const LRESULT result = DefSubclassProc(editor, message, wparam, lparam);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(editor, DrawAfterEditor, id);
        delete layer;
    } else {
        layer->Follow(editor, message, wparam);
    }
    return result;
}

}  // namespace

bool LeavesPicturesBlank(HWND editor) {
    const ComPointer<IRichEditOle> objects = ObjectsOf(editor);
    if (!objects || objects->GetObjectCount() == 0) return false;
    const PlacedObject placed = ObjectAt(*objects, 0);
    const UniqueDc dc(CreateCompatibleDC(nullptr));
    const RECT place{0, 0, 1, 1};
    return placed.object &&
           FAILED(OleDraw(placed.object.get(), DVASPECT_CONTENT, dc.get(), &place));
}

void DrawPicturesOf(HWND editor) {
    auto layer = std::make_unique<PictureLayer>();
    if (SetWindowSubclass(editor, DrawAfterEditor, 0, reinterpret_cast<DWORD_PTR>(layer.get()))) {
        static_cast<void>(layer.release());  // the editor's, until it is destroyed
    }
}

}  // namespace tonvale
