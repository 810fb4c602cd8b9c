#include "report/rich_edit/rich_edit_objects_win.h"

#include <ole2.h>

#include <richedit.h>

#include <richole.h>

#include <cstring>
#include <string>
#include <utility>

#include "common/numbers.h"
#include "common/unicode_win.h"
#include "dialogs/handles_win.h"
#include "report/rich_edit/com_pointer_win.h"

namespace tonvale {

namespace {

constexpr char kStorageName[] = "BREOBJ";

// A component object of one interface. It counts its references; the last one deletes it.
template <typename Interface>
class CountedObject : public Interface {
  public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool is_known = Has(id);
        *object = is_known ? this : nullptr;
        if (is_known) AddRef();
        return is_known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

  protected:
    virtual ~CountedObject() = default;

  private:
    // Of the interface and those that it extends.
    virtual bool Has(REFIID id) const = 0;

    ULONG references_ = 1;
};

// The main window, as an object edited in place sees it. It gives its menu and its borders to none.
class InPlaceFrame final : public CountedObject<IOleInPlaceFrame> {
  public:
    explicit InPlaceFrame(HWND frame) : frame_(frame) {}

    STDMETHODIMP GetWindow(HWND* window) override {
        *window = frame_;
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  private:
    bool Has(REFIID id) const override {
        return id == IID_IUnknown || id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow ||
               id == IID_IOleInPlaceFrame;
    }

    HWND frame_;
};

class ObjectCallback final : public CountedObject<IRichEditOleCallback> {
  public:
    ObjectCallback(HWND frame, std::function<HMENU()> make_menu)
        : frame_(frame), make_menu_(std::move(make_menu)) {}

    STDMETHODIMP GetNewStorage(LPSTORAGE* storage) override;
    STDMETHODIMP GetInPlaceContext(LPOLEINPLACEFRAME* frame, LPOLEINPLACEUIWINDOW* document,
                                   LPOLEINPLACEFRAMEINFO info) override;
    STDMETHODIMP ShowContainerUI(BOOL) override { return S_OK; }
    STDMETHODIMP QueryInsertObject(LPCLSID, LPSTORAGE, LONG) override { return S_OK; }
    STDMETHODIMP DeleteObject(LPOLEOBJECT) override { return S_OK; }
    STDMETHODIMP QueryAcceptData(LPDATAOBJECT data, CLIPFORMAT* format, DWORD operation,
                                 BOOL is_final, HGLOBAL picture) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    // The control makes a data object of its own.
    STDMETHODIMP GetClipboardData(CHARRANGE*, DWORD, LPDATAOBJECT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDragDropEffect(BOOL, DWORD, LPDWORD) override { return E_NOTIMPL; }
    STDMETHODIMP GetContextMenu(WORD, LPOLEOBJECT, CHARRANGE*, HMENU* menu) override {
        *menu = make_menu_();
        return *menu ? S_OK : E_FAIL;
    }

  private:
    bool Has(REFIID id) const override {
        return id == IID_IUnknown || id == IID_IRichEditOleCallback;
    }

    HWND frame_;
    std::function<HMENU()> make_menu_;
    ComPointer<IStorage> file_;
    long objects_ = 0;
};

STDMETHODIMP ObjectCallback::GetNewStorage(LPSTORAGE* storage) {
    *storage = nullptr;
    constexpr DWORD kAccess = STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_CREATE;
    if (!file_) {
        // Without a name: in the folder of temporary files.
        IStorage* file = nullptr;
        const HRESULT result = StgCreateDocfile(nullptr, kAccess | STGM_DELETEONRELEASE, 0, &file);
        if (FAILED(result)) return result;
        file_.reset(file);
    }
    const std::wstring name = Widen(kStorageName + FormatInteger(objects_++));
    return file_->CreateStorage(name.c_str(), kAccess, 0, 0, storage);
}

// Everything is the control's to take, but for files: it would embed them.
STDMETHODIMP ObjectCallback::QueryAcceptData(LPDATAOBJECT data, CLIPFORMAT* /*format*/,
                                             DWORD operation, BOOL is_final, HGLOBAL /*picture*/) {
    FORMATETC files{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    if (operation != RECO_DROP || data->QueryGetData(&files) != S_OK) return S_OK;
    STGMEDIUM medium{};
    if (is_final && data->GetData(&files, &medium) == S_OK) {
        ForwardDrop(frame_, medium.hGlobal);
        ReleaseStgMedium(&medium);
    }
    return S_FALSE;  // accepted, and nothing is left for the control to do
}

STDMETHODIMP ObjectCallback::GetInPlaceContext(LPOLEINPLACEFRAME* frame,
                                               LPOLEINPLACEUIWINDOW* document,
                                               LPOLEINPLACEFRAMEINFO info) {
    *frame = new InPlaceFrame(frame_);
    *document = nullptr;
    info->fMDIApp = FALSE;
    info->hwndFrame = frame_;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

}  // namespace

bool ServeObjects(HWND editor, HWND frame, std::function<HMENU()> make_menu) {
    const ComPointer<ObjectCallback> callback(new ObjectCallback(frame, std::move(make_menu)));
    return SendMessageW(editor, EM_SETOLECALLBACK, 0, reinterpret_cast<LPARAM>(callback.get())) !=
           0;
}

void ForwardDrop(HWND frame, HGLOBAL drop) {
    const SIZE_T size = GlobalSize(drop);
    UniqueGlobal copy(GlobalAlloc(GMEM_MOVEABLE, size));
    const void* from = copy ? GlobalLock(drop) : nullptr;
    if (!from) return;
    std::memcpy(GlobalLock(copy.get()), from, size);
    GlobalUnlock(copy.get());
    GlobalUnlock(drop);
    PostMessageW(frame, WM_DROPFILES, reinterpret_cast<WPARAM>(copy.release()), 0);
}

}  // namespace tonvale
