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
#include "report/rich_edit/com_pointer_win.h"
#include "report/rich_edit/rich_edit_objects_win.h"
#include "report/rtf/rtf_reader.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

constexpr char kPasteCaption[] = "Impossibile incollare gli appunti";

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
        PutCsvText(host_.window(), app_.clipboard.csv, "Durata;Perché;Lep,d\r\n8,00;sì;85,0\r\n"));
    document_.Paste();
    EXPECT_EQ(Text(), "Durata\tPerché\tLep,d\r\n8,00\tsì\t85,0\r\n");
    Send(EM_UNDO);
    EXPECT_EQ(Text(), "");

    PutAlone(CF_UNICODETEXT, WideBytes("a;b €"));
    EXPECT_TRUE(document_.CanPaste());
    document_.Paste();
    EXPECT_EQ(Text(), "a;b €");
    PutAlone(RegisterClipboardFormatW(L"Tonvale test"), "x");
    EXPECT_FALSE(document_.CanPaste());
    UiDriver ui;
    ui.AnswerMessage(kPasteCaption,
                     "Il formato dei dati presenti nella Clipboard non è supportato da Tonvale",
                     IDOK);
    document_.Paste();
    ui.Finish();
}

TEST_F(ReportTest, CopiesFormatsWithTheText) {
    Type("dB alto");
    Select(3, 7);
    Command(CMD_SUPERSCRIPT);
    Command(CMD_BOLD);
    SelectAll();
    ASSERT_TRUE(document_.Copy());
    Select(7, 7);
    Type("\r");  // raised too: what is pasted is not
    const auto start = static_cast<LONG>(Widen(Text()).size());
    document_.Paste();
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
}

TEST_F(ReportTest, CopiesWithoutMovingAnything) {
    for (int i = 0; i < 60; ++i) Type("riga\r");
    SelectAll();
    Send(EM_LINESCROLL, 0, -1000);
    ASSERT_TRUE(document_.Copy());
    EXPECT_EQ(Send(EM_GETFIRSTVISIBLELINE), 0);
    EXPECT_TRUE(document_.CanCut());
    EXPECT_EQ(ClipboardBytes(CF_UNICODETEXT).size(), 2 * (60 * std::strlen("riga\r\n") + 1));
}

TEST_F(ReportTest, PasteKeysFollowTheSameRules) {
    UiDriver ui;
    const auto expect = [&](WORD key, const std::string& text) {
        ui.Press({VK_CONTROL, key}).WaitUntil("\"" + text + "\"", [=, this] {
            return Text() == text;
        });
    };
    ui.Do([] {
        const OpenedClipboard empty(nullptr);
        EmptyClipboard();
    });
    expect('V', "");
    ui.Do([this] { ASSERT_TRUE(PutCsvText(host_.window(), app_.clipboard.csv, "a;b")); });
    expect('V', "a\tb");
    ui.Press({VK_CONTROL, 'A'});
    expect('X', "");
    expect('Z', "a\tb");
    expect('Y', "");
    ui.Run();
}

TEST_F(ReportTest, PastedBitmapSurvivesSaveAndReopen) {
    PutAlone(CF_DIB, MakeDib(40, 20));
    Type("prima ");
    document_.Paste();
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
        ASSERT_TRUE(document_.Open(Path(name)));
    }
    UpdateWindow(Editor());
    SaveScreenshot(host_.window(), "report_bitmap");
    EXPECT_EQ(DotAt(6, 20, 10), RGB(255, 0, 0));  // in the middle of the picture

    // One that is higher than the window is opened at its top.
    Select(0, 0);
    PutAlone(CF_DIB, MakeDib(1, 900));
    document_.Paste();
    SavedAs("alta.tnv");
    ASSERT_TRUE(document_.Open(Path("alta.tnv")));
    POINT scrolled{};
    Send(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled));
    EXPECT_EQ(scrolled.y, 0);
}

TEST_F(ReportTest, NothingIsPastedPastTheLimit) {
    constexpr char kTooLong[] =
        "Il testo non entra nel documento, che può contenere al massimo 1048575 caratteri.";
    const UINT csv = app_.clipboard.csv;
    std::string lines;
    while (lines.size() < 1048570) lines += "85.0;8.00;la stessa riga\r\n";
    Type("resta");
    Select(0, 0);
    UiDriver ui;
    const auto expect_refused = [&](UINT format, const std::string& bytes, const char* message) {
        PutAlone(format, bytes);
        ui.AnswerMessage(kPasteCaption, message, IDOK);
        document_.Paste();
    };
    expect_refused(CF_UNICODETEXT, WideBytes(std::string(5 << 20, 'x')), kTooLong);
    expect_refused(csv, lines.substr(0, 1048571) + '\0', kTooLong);
    // Nor would it open again.
    expect_refused(csv, std::string(300001, 'x') + '\0',
                   "Una riga del testo è troppo lunga per il documento.");
    EXPECT_EQ(Text(), "resta");
    PutAlone(csv, lines.substr(0, 1048570) + '\0');
    document_.Paste();
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 1048575);
    // In place of all of it there is room for as much again, and no more.
    SelectAll();
    expect_refused(csv, lines + "xxxxxx" + '\0', kTooLong);
    ui.Finish();
}

// The callback that an editor of the document is given.
ComPointer<IRichEditOleCallback> CallbackFor(HWND frame) {
    ComPointer<IRichEditOleCallback> callback;
    HWND editor = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                  nullptr, nullptr);
    const SUBCLASSPROC take = [](HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                 DWORD_PTR taken) -> LRESULT {
        if (message != EM_SETOLECALLBACK) return DefSubclassProc(window, message, wparam, lparam);
        auto* given = reinterpret_cast<IRichEditOleCallback*>(lparam);
        given->AddRef();
        reinterpret_cast<ComPointer<IRichEditOleCallback>*>(taken)->reset(given);
        return TRUE;
    };
    SetWindowSubclass(editor, take, 1, reinterpret_cast<DWORD_PTR>(&callback));
    EXPECT_TRUE(ServeObjects(editor, frame, CreatePopupMenu));
    DestroyWindow(editor);
    return callback;
}

// The answer to what is dropped, as the system's own data object for the clipboard holds it.
HRESULT AnswerToDrop(IRichEditOleCallback& callback, BOOL is_final) {
    IDataObject* dropped = nullptr;
    OleGetClipboard(&dropped);
    const ComPointer<IDataObject> owner(dropped);
    return callback.QueryAcceptData(dropped, nullptr, RECO_DROP, is_final, nullptr);
}

TEST_F(ReportTest, ServesObjectsOfOtherPrograms) {
    const ComPointer<IRichEditOleCallback> callback = CallbackFor(host_.window());
    ASSERT_TRUE(callback);
    for (const wchar_t* name : {L"BREOBJ0", L"BREOBJ1"}) {
        IStorage* storage = nullptr;
        ASSERT_EQ(callback->GetNewStorage(&storage), S_OK);
        const ComPointer<IStorage> owner(storage);
        STATSTG description{};
        ASSERT_EQ(storage->Stat(&description, STATFLAG_DEFAULT), S_OK);
        EXPECT_STREQ(description.pwcsName, name);
        CoTaskMemFree(description.pwcsName);
    }
    // Files that are dropped go to the main window; whatever else comes is the control's.
    const UniqueDrop files(MakeDrop({Path("uno.lep")}));
    PutAlone(CF_HDROP,
             {static_cast<const char*>(GlobalLock(files.get())), GlobalSize(files.get())});
    GlobalUnlock(files.get());
    for (const BOOL is_final : {FALSE, TRUE}) {
        EXPECT_EQ(AnswerToDrop(*callback, is_final), S_FALSE);
        MSG message{};
        EXPECT_EQ(PeekMessageW(&message, host_.window(), WM_DROPFILES, WM_DROPFILES, PM_REMOVE),
                  is_final);
        const UniqueDrop forwarded(reinterpret_cast<HDROP>(message.wParam));
    }
    PutAlone(CF_UNICODETEXT, WideBytes("testo"));
    EXPECT_EQ(AnswerToDrop(*callback, TRUE), S_OK);
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
    const std::string path = WriteFile("vecchio.tnv", "{\\rtf1 vecchio}");
    UiDriver ui;
    ui.AnswerMessage("Attenzione:", "Impossibile copiare negli appunti!", IDOK);
    document_.Cut();
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 12);
    ui.AnswerMessage("Stampa", "Il documento contiene un oggetto che non può essere stampato.",
                     IDOK);
    document_.Print();
    EXPECT_TRUE(printer_.pages.empty());
    ui.AnswerMessage(path,
                     "Il documento contiene un oggetto che non può essere scritto. Impossibile "
                     "salvare!\r\nIl file resta com'era: eliminare l'oggetto e salvare di nuovo.",
                     IDOK);
    EXPECT_FALSE(document_.SaveTo(path));
    EXPECT_EQ(ReadFile("vecchio.tnv"), "{\\rtf1 vecchio}");
    ui.Finish();
}

}  // namespace
}  // namespace tonvale
