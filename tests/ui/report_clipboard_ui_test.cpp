// What goes between the report document and other programs: the clipboard and objects.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include <richedit.h>

#include <richole.h>

#include <cstring>
#include <string>

#include "dialogs/clipboard_win.h"
#include "dialogs/handles_win.h"
#include "report/rich_edit/com_pointer_win.h"
#include "report/rich_edit/rich_edit_objects_win.h"
#include "report/rtf/rtf_reader.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

// A red bitmap as the clipboard holds it.
std::string MakeDib(LONG width, LONG height) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof(header);
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    std::string dib(reinterpret_cast<const char*>(&header), sizeof(header));
    for (LONG i = 0; i < width * height; ++i) dib += std::string("\0\0\xff\0", 4);
    return dib;
}

TEST_F(ReportTest, PastesSummariesWithTabs) {
    EXPECT_TRUE(
        PutCsvText(host_->window, app_.clipboard.csv, "Durata;Perché;Lep,d\r\n8,00;sì;85,0\r\n"));
    EXPECT_TRUE(host_->document.CanPaste());
    host_->document.Paste();
    EXPECT_EQ(Text(), "Durata\tPerché\tLep,d\r\n8,00\tsì\t85,0\r\n");
    EXPECT_TRUE(host_->document.IsModified());
    Send(EM_UNDO);
    EXPECT_EQ(Text(), "");

    PutAlone(CF_UNICODETEXT, WideBytes("a;b €"));
    host_->document.Paste();
    EXPECT_EQ(Text(), "a;b €");
    EXPECT_TRUE(host_->document.CanPaste());
    PutAlone(RegisterClipboardFormatW(L"Tonvale test"), "x");
    EXPECT_FALSE(host_->document.CanPaste());
    UiDriver ui;
    ui.AnswerMessage("Impossibile incollare gli appunti",
                     "Il formato dei dati presenti nella Clipboard non è supportato da Tonvale",
                     IDOK);
    host_->document.Paste();
    ui.Finish();
}

TEST_F(ReportTest, CopiesFormatsWithTheText) {
    Type("dB alto");
    Select(3, 7);
    Command(CMD_SUPERSCRIPT);
    Command(CMD_BOLD);
    SelectAll();
    ASSERT_TRUE(host_->document.Copy());
    Select(7, 7);
    Type("\r");  // raised too: what is pasted is not
    const auto start = static_cast<LONG>(Widen(Text()).size());
    host_->document.Paste();
    Type("!");
    Send(EM_UNDO);
    const auto expect_pasted = [&] {
        EXPECT_EQ(Text(), "dB alto\r\ndB alto");
        EXPECT_EQ(Format(start + 3, start + 7).yOffset, 50);
        EXPECT_NE(Format(start + 3, start + 7).dwEffects & CFE_BOLD, 0U);
        EXPECT_EQ(Format(start, start + 2).yOffset, 0);
        EXPECT_EQ(Format(start, start + 2).dwEffects & CFE_BOLD, 0U);
    };
    expect_pasted();
    Send(EM_UNDO);
    EXPECT_EQ(Text(), "dB alto\r\n");
    Send(EM_REDO);
    expect_pasted();
    Select(0, 7);
    host_->document.Cut();
    EXPECT_EQ(Text(), "\r\ndB alto");
    EXPECT_FALSE(host_->document.CanCut());
}

TEST_F(ReportTest, CopiesWithoutMovingAnything) {
    for (int i = 0; i < 60; ++i) Type("riga\r");
    SelectAll();
    Send(EM_LINESCROLL, 0, -1000);
    ASSERT_TRUE(host_->document.Copy());
    EXPECT_EQ(Send(EM_GETFIRSTVISIBLELINE), 0);
    EXPECT_TRUE(host_->document.CanCut());
    EXPECT_EQ(ClipboardBytes(CF_UNICODETEXT).size(), 2 * (60 * std::strlen("riga\r\n") + 1));
}

TEST_F(ReportTest, PasteKeysFollowTheSameRules) {
    const auto expect = [this](UiDriver& ui, WORD key, const std::string& text) {
        ui.Press({VK_CONTROL, key}).WaitUntil("\"" + text + "\"", [=, this] {
            return Text() == text;
        });
    };
    UiDriver ui;
    ui.Do([] {
        const OpenedClipboard empty(nullptr);
        EmptyClipboard();
    });
    expect(ui, 'V', "");
    ui.Do([this] { ASSERT_TRUE(PutCsvText(host_->window, app_.clipboard.csv, "a;b")); });
    expect(ui, 'V', "a\tb");
    ui.Press({VK_CONTROL, 'A'});
    expect(ui, 'X', "");
    expect(ui, 'Z', "a\tb");
    expect(ui, 'Y', "");
    ui.Run();
}

TEST_F(ReportTest, PastedBitmapSurvivesSaveAndReopen) {
    PutAlone(CF_DIB, MakeDib(40, 20));
    Type("prima ");
    host_->document.Paste();
    Type(" dopo");
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 12);
    for (const char* name : {"immagine.tnv", "di nuovo.tnv"}) {
        const RichText text = ReadRichText(SavedAs(name));
        ASSERT_EQ(text.at(0).runs.size(), 3U) << name;
        const auto& picture = text.at(0).runs.at(1).picture;
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->format, RichPicture::Format::kEnhancedMetafile);
        EXPECT_NEAR(picture->width_twips, 600, 30);
        EXPECT_NEAR(picture->height_twips, 300, 30);
        ASSERT_TRUE(host_->document.Open(Path(name)));
    }
    UpdateWindow(host_->editor());
    SaveScreenshot(host_->window, "report_bitmap");
    // In the middle of the picture it is red.
    POINTL place{};
    Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), 6);
    const WindowDc dc(host_->editor());
    EXPECT_EQ(GetPixel(dc.get(), place.x + 20, place.y + 10), RGB(255, 0, 0));

    // One that is higher than the window is opened at its top.
    Select(0, 0);
    PutAlone(CF_DIB, MakeDib(1, 900));
    host_->document.Paste();
    SavedAs("alta.tnv");
    ASSERT_TRUE(host_->document.Open(Path("alta.tnv")));
    POINT scrolled{};
    Send(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled));
    EXPECT_EQ(scrolled.y, 0);
}

TEST_F(ReportTest, NothingIsPastedPastTheLimit) {
    Type("resta");
    Select(0, 0);
    UiDriver ui;
    const std::string text =
        "Il testo non entra nel documento, che può contenere al massimo 1048575 caratteri.";
    PutAlone(CF_UNICODETEXT, WideBytes(std::string(5 << 20, 'x')));
    ui.AnswerMessage("Impossibile incollare gli appunti", text, IDOK);
    host_->document.Paste();
    EXPECT_EQ(Text(), "resta");
    std::string lines;
    while (lines.size() < 1048570) lines += "85.0;8.00;la stessa riga\r\n";
    PutAlone(app_.clipboard.csv, lines.substr(0, 1048571) + '\0');
    ui.AnswerMessage("Impossibile incollare gli appunti", text, IDOK);
    host_->document.Paste();
    EXPECT_EQ(Text(), "resta");
    PutAlone(app_.clipboard.csv, std::string(300001, 'x') + '\0');  // nor would it open again
    ui.AnswerMessage("Impossibile incollare gli appunti",
                     "Una riga del testo è troppo lunga per il documento.", IDOK);
    host_->document.Paste();
    EXPECT_EQ(Text(), "resta");
    PutAlone(app_.clipboard.csv, lines.substr(0, 1048570) + '\0');
    host_->document.Paste();
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 1048575);
    // In place of all of it there is room for as much again, and no more.
    SelectAll();
    PutAlone(app_.clipboard.csv, lines + "xxxxxx" + '\0');
    ui.AnswerMessage("Impossibile incollare gli appunti", text, IDOK);
    host_->document.Paste();
    ui.Finish();
}

// Writes down what a rich-text control of its kind is given.
class CallbackRecorder {
  public:
    CallbackRecorder()
        : window_(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                  nullptr, nullptr)) {
        SetWindowSubclass(window_, Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~CallbackRecorder() { DestroyWindow(window_); }
    CallbackRecorder(const CallbackRecorder&) = delete;
    CallbackRecorder& operator=(const CallbackRecorder&) = delete;

    HWND window() const { return window_; }
    IRichEditOleCallback& callback() const { return *callback_; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR, DWORD_PTR self) {
        if (message != EM_SETOLECALLBACK) return DefSubclassProc(window, message, wparam, lparam);
        auto* callback = reinterpret_cast<IRichEditOleCallback*>(lparam);
        callback->AddRef();
        reinterpret_cast<CallbackRecorder*>(self)->callback_.reset(callback);
        return TRUE;
    }

    HWND window_;
    ComPointer<IRichEditOleCallback> callback_;
};

// What the system's own data object for the clipboard holds.
ComPointer<IDataObject> ClipboardObject() {
    IDataObject* object = nullptr;
    OleGetClipboard(&object);
    return ComPointer<IDataObject>(object);
}

TEST_F(ReportTest, ServesObjectsOfOtherPrograms) {
    const CallbackRecorder editor;
    ASSERT_TRUE(ServeObjects(editor.window(), host_->window, CreatePopupMenu));
    IRichEditOleCallback& callback = editor.callback();
    for (const wchar_t* name : {L"BREOBJ0", L"BREOBJ1"}) {
        IStorage* storage = nullptr;
        ASSERT_EQ(callback.GetNewStorage(&storage), S_OK);
        const ComPointer<IStorage> owner(storage);
        STATSTG description{};
        ASSERT_EQ(storage->Stat(&description, STATFLAG_DEFAULT), S_OK);
        EXPECT_STREQ(description.pwcsName, name);
        CoTaskMemFree(description.pwcsName);
    }
    IOleInPlaceFrame* frame = nullptr;
    IOleInPlaceUIWindow* document = nullptr;
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    ASSERT_EQ(callback.GetInPlaceContext(&frame, &document, &info), S_OK);
    HWND frame_window = nullptr;
    EXPECT_EQ(frame->GetWindow(&frame_window), S_OK);
    EXPECT_EQ(frame_window, host_->window);
    EXPECT_EQ(frame->Release(), 0U);
    HMENU menu = nullptr;
    EXPECT_EQ(callback.GetContextMenu(0, nullptr, nullptr, &menu), S_OK);
    EXPECT_TRUE(DestroyMenu(menu));

    // Files that are dropped go to the main window; whatever else comes is the control's.
    const HDROP files = MakeDrop({Path("uno.lep")});
    const auto* bytes = static_cast<const char*>(GlobalLock(files));
    PutAlone(CF_HDROP, {bytes, GlobalSize(files)});
    GlobalUnlock(files);
    GlobalFree(files);
    for (const BOOL is_final : {FALSE, TRUE}) {
        EXPECT_EQ(callback.QueryAcceptData(ClipboardObject().get(), nullptr, RECO_DROP, is_final,
                                           nullptr),
                  S_FALSE);
        MSG message;
        EXPECT_EQ(PeekMessageW(&message, host_->window, WM_DROPFILES, WM_DROPFILES, PM_REMOVE),
                  is_final);
        if (is_final) DragFinish(reinterpret_cast<HDROP>(message.wParam));
    }
    PutAlone(CF_UNICODETEXT, WideBytes("testo"));
    EXPECT_EQ(callback.QueryAcceptData(ClipboardObject().get(), nullptr, RECO_DROP, TRUE, nullptr),
              S_OK);
}

// Not every control can write every object: no part of the document is written then.
TEST_F(ReportTest, WritesNothingRatherThanAPart) {
    IUnknown* found = nullptr;
    Send(EM_GETOLEINTERFACE, 0, reinterpret_cast<LPARAM>(&found));
    const ComPointer<IUnknown> owner(found);
    const auto objects = QueryFor<IRichEditOle>(found, IID_IRichEditOle);
    ASSERT_TRUE(objects);
    void* empty = nullptr;
    ASSERT_EQ(OleCreateDefaultHandler(CLSID_NULL, nullptr, IID_IOleObject, &empty), S_OK);
    const ComPointer<IOleObject> object(static_cast<IOleObject*>(empty));
    REOBJECT description{};
    description.cbStruct = sizeof description;
    description.cp = REO_CP_SELECTION;
    description.poleobj = object.get();
    description.dvaspect = DVASPECT_CONTENT;
    Type("prima ");
    ASSERT_EQ(objects->InsertObject(&description), S_OK);
    Type(" dopo");
    SelectAll();
    UiDriver ui;
    ui.AnswerMessage("Attenzione:", "Impossibile copiare negli appunti!", IDOK);
    host_->document.Cut();
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 12);
    ui.AnswerMessage("Stampa", "Il documento contiene un oggetto che non può essere stampato.",
                     IDOK);
    host_->document.Print();
    EXPECT_TRUE(printer_.pages.empty());
    const std::string path = WriteFile("vecchio.tnv", "{\\rtf1 vecchio}");
    ui.AnswerMessage(path,
                     "Il documento contiene un oggetto che non può essere scritto. Impossibile "
                     "salvare!\r\nIl file resta com'era: eliminare l'oggetto e salvare di nuovo.",
                     IDOK);
    EXPECT_FALSE(host_->document.SaveTo(path));
    EXPECT_EQ(ReadFile("vecchio.tnv"), "{\\rtf1 vecchio}");
    ui.Finish();
}

}  // namespace
}  // namespace tonvale
