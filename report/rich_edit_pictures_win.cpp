#include "report/rich_edit_pictures_win.h"

#include <commctrl.h>
#include <ole2.h>

#include <richedit.h>

#include <richole.h>

#include "common/handles_win.h"
#include "report/com_pointer_win.h"

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

void DrawVisiblePictures(HWND editor) {
    const ComPointer<IRichEditOle> objects = ObjectsOf(editor);
    const LONG count = objects ? objects->GetObjectCount() : 0;
    if (count == 0) return;
    RECT visible{};
    SendMessageW(editor, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&visible));
    const WindowDc dc(editor);
    IntersectClipRect(dc.get(), visible.left, visible.top, visible.right, visible.bottom);
    for (LONG i = 0; i < count; ++i) {
        const PlacedObject placed = ObjectAt(*objects, i);
        const RECT place = PlaceOf(editor, placed);
        RECT shown{};
        if (IntersectRect(&shown, &place, &visible)) {
            PlayMetafile(dc.get(), placed.object.get(), place);
        }
    }
}

LRESULT CALLBACK DrawAfterEditor(HWND editor, UINT message, WPARAM wparam, LPARAM lparam,
                                 UINT_PTR id, DWORD_PTR /*data*/) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(editor, DrawAfterEditor, id);
    const LRESULT result = DefSubclassProc(editor, message, wparam, lparam);
    if (message == WM_PAINT) DrawVisiblePictures(editor);
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
    SetWindowSubclass(editor, DrawAfterEditor, 0, 0);
}

}  // namespace tonvale
