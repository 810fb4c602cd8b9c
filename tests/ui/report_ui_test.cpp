// The report document in a window of its own: everything that its commands do to text, files, the
// clipboard and the printer.
#include "report/report_document_win.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include <richedit.h>

#include <richole.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/clipboard_win.h"
#include "common/handles_win.h"
#include "common/text.h"
#include "report/rich_edit/com_pointer_win.h"
#include "report/rich_edit/rich_edit_objects_win.h"
#include "report/rich_edit/rich_edit_win.h"
#include "report/rtf/rtf_reader.h"
#include "report/rtf/rtf_repair.h"
#include "resources/resource.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kModifiedQuestion[] = "Il documento è stato modificato. Salvare le modifiche?";

// A main window with nothing but the document in it.
class HostWindow {
  public:
    explicit HostWindow(AppContext& app) : document(app) {
        WNDCLASSW description{};
        description.lpfnWndProc = Procedure;
        description.hInstance = app.instance;
        description.lpszClassName = L"ReportHost";
        RegisterClassW(&description);
        CreateWindowExW(0, L"ReportHost", L"Documento", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0,
                        640, 420, nullptr, nullptr, app.instance, this);
        app.main_window = window;
        created = document.Create(window);
        RECT area{};
        GetClientRect(window, &area);
        document.Layout(area);
        ShowWindow(window, SW_SHOW);
        document.SetFocus();
    }
    ~HostWindow() {
        closing_ = true;
        DestroyWindow(window);
        UnregisterClassW(L"ReportHost", GetModuleHandleW(nullptr));
    }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND editor() const { return GetDlgItem(window, IDC_REPORT_EDITOR); }
    HWND toolbar() const { return GetDlgItem(window, IDC_FORMAT_TOOLBAR); }

    ReportDocument document;
    HWND window = nullptr;
    bool created = false;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
        if (message == WM_NCCREATE) {
            auto* self = static_cast<HostWindow*>(
                reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
            self->window = window;
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        }
        auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self && self->created && !self->closing_) {
            LRESULT result = 0;
            if (message == WM_COMMAND && self->document.OnCommand(LOWORD(wparam))) {
                return 0;
            }
            if (message == WM_NOTIFY &&
                self->document.OnNotify(*reinterpret_cast<const NMHDR*>(lparam), result)) {
                return result;
            }
        }
        return DefWindowProcW(window, message, wparam, lparam);
    }

    bool closing_ = false;
};

class ReportTest : public DialogTest {
  protected:
    ReportTest() {
        app_.clipboard.rich_text = RegisterClipboardFormatW(L"Rich Text Format");
        app_.clipboard.rich_text_objects = RegisterClipboardFormatW(L"RichEdit Text and Objects");
        app_.clipboard.embedded_object = RegisterClipboardFormatW(L"Embedded Object");
        app_.open_printer = [this] { return std::make_unique<BorrowedPrinter>(printer_); };
        host_ = std::make_unique<HostWindow>(app_);
    }

    void Command(int id) { SendMessageW(host_->window, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
        return SendMessageW(host_->editor(), message, wparam, lparam);
    }
    void Type(const std::string& text) const {
        for (const wchar_t unit : Widen(text)) Send(WM_CHAR, unit, 1);
    }
    void Select(LONG first, LONG last) const {
        CHARRANGE range{first, last};
        Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    }
    void SelectAll() const { Select(0, -1); }
    CHARFORMAT2W Format(LONG first, LONG last) const {
        Select(first, last);
        CHARFORMAT2W format{};
        format.cbSize = sizeof(format);
        Send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        return format;
    }
    PARAFORMAT ParagraphFormat(LONG position) const {
        Select(position, position);
        PARAFORMAT format{};
        format.cbSize = sizeof(format);
        Send(EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
        return format;
    }
    std::string Text() const {
        GETTEXTLENGTHEX length{GTL_USECRLF | GTL_NUMCHARS | GTL_PRECISE, 1200};
        std::wstring text(
            static_cast<std::size_t>(Send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length))) +
                1,
            L'\0');
        GETTEXTEX options{static_cast<DWORD>(2 * text.size()), GT_USECRLF, 1200, nullptr, nullptr};
        Send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&options),
             reinterpret_cast<LPARAM>(text.data()));
        return Narrow(text.c_str());
    }
    bool IsChecked(int command) const {
        return SendMessageW(host_->toolbar(), TB_ISBUTTONCHECKED, static_cast<WPARAM>(command),
                            0) != 0;
    }
    bool IsEnabled(int command) const {
        return SendMessageW(host_->toolbar(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command),
                            0) != 0;
    }
    std::string SavedAs(const std::string& name) {
        UiDriver ui;
        SaveNewFile(ui, Path(name));
        EXPECT_TRUE(host_->document.SaveAs());
        ui.Finish();
        return ReadFile(name);
    }

    FakePrinter printer_;
    std::unique_ptr<HostWindow> host_;
};

TEST_F(ReportTest, StartsEmptyWithItsOwnFormats) {
    ASSERT_TRUE(host_->created);
    EXPECT_EQ(host_->document.path(), "");
    EXPECT_FALSE(host_->document.IsModified());
    EXPECT_EQ(Send(EM_GETLIMITTEXT), 1048575);
    const CHARFORMAT2W format = Format(0, 0);
    EXPECT_EQ(Narrow(format.szFaceName), "Arial");
    EXPECT_EQ(format.yHeight, 200);
    EXPECT_NE(format.dwEffects & CFE_AUTOCOLOR, 0U);
    const PARAFORMAT paragraph = ParagraphFormat(0);
    ASSERT_EQ(paragraph.cTabCount, 8);
    EXPECT_EQ(paragraph.rgxTabs[0], 0);
    EXPECT_EQ(paragraph.rgxTabs[7], 7000);
    EXPECT_TRUE(IsChecked(CMD_WORD_WRAP));
    EXPECT_TRUE(IsChecked(CMD_ALIGN_LEFT));
    EXPECT_FALSE(IsChecked(CMD_BOLD));
    // Setting the colour gives the one before.
    EXPECT_EQ(static_cast<COLORREF>(Send(EM_SETBKGNDCOLOR, 0, RGB(255, 255, 210))),
              RGB(255, 255, 210));
}

TEST_F(ReportTest, TogglesEffectsAndShowsThem) {
    Type("uno due tre");
    Select(0, 3);
    Command(CMD_BOLD);
    EXPECT_TRUE(IsChecked(CMD_BOLD));
    EXPECT_TRUE(host_->document.IsModified());
    Select(4, 7);
    EXPECT_FALSE(IsChecked(CMD_BOLD));
    SelectAll();
    Command(CMD_BOLD);  // mixed: all of it becomes bold
    EXPECT_NE(Format(0, 11).dwMask & CFM_BOLD, 0U);
    EXPECT_NE(Format(0, 11).dwEffects & CFE_BOLD, 0U);
    Command(CMD_BOLD);
    EXPECT_EQ(Format(0, 11).dwEffects & CFE_BOLD, 0U);
    Command(CMD_ITALIC);
    Command(CMD_UNDERLINE);
    EXPECT_EQ(Format(0, 11).dwEffects & (CFE_BOLD | CFE_ITALIC | CFE_UNDERLINE),
              static_cast<DWORD>(CFE_ITALIC | CFE_UNDERLINE));
    EXPECT_TRUE(IsChecked(CMD_ITALIC));
    EXPECT_TRUE(IsChecked(CMD_UNDERLINE));
}

TEST_F(ReportTest, EveryEditIsOneToBeSaved) {
    Type("uno due");
    const std::pair<const char*, std::function<void()>> edits[] = {
        {"bold", [this] { Command(CMD_BOLD); }},
        {"subscript", [this] { Command(CMD_SUBSCRIPT); }},
        {"color", [this] { Command(CMD_COLOR_FIRST); }},
        {"bullets", [this] { Command(CMD_BULLETS); }},
        {"alignment", [this] { Command(CMD_ALIGN_CENTER); }},
        {"cut", [this] { host_->document.Cut(); }},
        {"undo", [this] { host_->document.Undo(); }},
        {"redo", [this] { host_->document.Redo(); }},
        {"paste", [this] { host_->document.Paste(); }},
    };
    for (const auto& [name, edit] : edits) {
        SelectAll();
        Send(EM_SETMODIFY, FALSE);
        edit();
        EXPECT_TRUE(host_->document.IsModified()) << name;
    }
    // What changes nothing does not.
    Select(0, 0);
    Send(EM_EMPTYUNDOBUFFER);
    Send(EM_SETMODIFY, FALSE);
    host_->document.Copy();
    host_->document.Cut();
    host_->document.Undo();
    host_->document.Redo();
    Command(CMD_WORD_WRAP);
    EXPECT_FALSE(host_->document.IsModified());
}

TEST_F(ReportTest, RaisesAndLowersText) {
    Type("H2O");
    Select(1, 2);
    Command(CMD_SUBSCRIPT);
    EXPECT_EQ(Format(1, 2).yOffset, -50);
    EXPECT_EQ(Format(1, 2).yHeight, 150);
    EXPECT_TRUE(IsChecked(CMD_SUBSCRIPT));
    Command(CMD_SUPERSCRIPT);
    EXPECT_EQ(Format(1, 2).yOffset, 50);
    EXPECT_EQ(Format(1, 2).yHeight, 150);
    EXPECT_TRUE(IsChecked(CMD_SUPERSCRIPT));
    EXPECT_FALSE(IsChecked(CMD_SUBSCRIPT));
    Command(CMD_SUPERSCRIPT);
    EXPECT_EQ(Format(1, 2).yOffset, 0);
    EXPECT_EQ(Format(1, 2).yHeight, 200);
    EXPECT_FALSE(IsChecked(CMD_SUPERSCRIPT));
}

TEST_F(ReportTest, SetsColorsAsTheyAreListed) {
    constexpr COLORREF kColors[] = {
        RGB(0, 0, 0),       RGB(128, 0, 0),   RGB(0, 255, 0),    RGB(128, 128, 0),
        RGB(0, 0, 128),     RGB(128, 0, 128), RGB(64, 128, 128), RGB(128, 128, 128),
        RGB(192, 192, 192), RGB(255, 0, 0),   RGB(128, 255, 0),  RGB(255, 255, 0),
        RGB(0, 0, 255),     RGB(255, 0, 128), RGB(0, 128, 255),  RGB(255, 255, 255)};
    Type("x");
    for (int i = 0; i < 16; ++i) {
        SelectAll();
        Command(32782 + i);
        EXPECT_EQ(Format(0, 1).crTextColor, kColors[i]) << i;
        EXPECT_EQ(Format(0, 1).dwEffects & CFE_AUTOCOLOR, 0U);
    }
    Command(CMD_COLOR_AUTOMATIC);
    EXPECT_NE(Format(0, 1).dwEffects & CFE_AUTOCOLOR, 0U);
}

TEST_F(ReportTest, FormatsParagraphsWhileTheyAreWrapped) {
    Type("riga");
    Command(CMD_ALIGN_CENTER);
    EXPECT_EQ(ParagraphFormat(0).wAlignment, PFA_CENTER);
    EXPECT_TRUE(IsChecked(CMD_ALIGN_CENTER));
    EXPECT_FALSE(IsChecked(CMD_ALIGN_LEFT));
    Command(CMD_BULLETS);
    EXPECT_EQ(ParagraphFormat(0).wNumbering, PFN_BULLET);
    EXPECT_TRUE(IsChecked(CMD_BULLETS));
    Command(CMD_BULLETS);
    EXPECT_EQ(ParagraphFormat(0).wNumbering, 0);
    Command(CMD_BULLETS);
    Type("\raltra");
    Command(CMD_ALIGN_LEFT);
    Command(CMD_BULLETS);
    SelectAll();  // mixed: neither is set
    for (int command : {CMD_BULLETS, CMD_ALIGN_LEFT, CMD_ALIGN_CENTER}) {
        EXPECT_FALSE(IsChecked(command)) << command;
    }
    Command(CMD_BULLETS);
    EXPECT_TRUE(IsChecked(CMD_BULLETS));
    Command(CMD_BULLETS);
    Command(CMD_ALIGN_CENTER);

    Command(CMD_WORD_WRAP);
    EXPECT_FALSE(IsChecked(CMD_WORD_WRAP));
    for (int command : {CMD_ALIGN_LEFT, CMD_ALIGN_CENTER, CMD_ALIGN_RIGHT}) {
        EXPECT_FALSE(IsEnabled(command));
    }
    Command(CMD_ALIGN_RIGHT);
    EXPECT_EQ(ParagraphFormat(0).wAlignment, PFA_CENTER);
    SelectAll();
    for (int i = 0; i < 100; ++i) Type("parola ");
    EXPECT_EQ(Send(EM_GETLINECOUNT), 1);
    Command(CMD_WORD_WRAP);
    EXPECT_TRUE(IsEnabled(CMD_ALIGN_RIGHT));
    EXPECT_GT(Send(EM_GETLINECOUNT), 3);
}

TEST_F(ReportTest, RaisedTextAndIndentsComeBack) {
    Type("Lep,d = 85.0 dB\rrientro");
    Select(1, 5);
    Command(CMD_SUBSCRIPT);
    Select(13, 15);
    Command(CMD_SUPERSCRIPT);
    Command(CMD_ITALIC);
    Select(18, 18);
    PARAFORMAT hanging{};
    hanging.cbSize = sizeof(hanging);
    hanging.dwMask = PFM_STARTINDENT | PFM_OFFSET;
    hanging.dxStartIndent = 360;
    hanging.dxOffset = 300;
    Send(EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&hanging));
    const std::string rtf = SavedAs("apice.tnv");
    EXPECT_NE(rtf.find("\\dn5"), std::string::npos) << rtf;
    EXPECT_NE(rtf.find("\\up5"), std::string::npos);
    EXPECT_EQ(rtf.find("\\up50"), std::string::npos);
    EXPECT_NE(rtf.find("\\li660\\fi-300"), std::string::npos) << rtf;
    EXPECT_FALSE(host_->document.IsModified());
    const std::string text = Text();
    SaveScreenshot(host_->window, "report_raised");

    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(host_->document.Open(Path("apice.tnv")));
        EXPECT_EQ(Text(), text);
        EXPECT_EQ(Format(1, 5).yOffset, -50);
        EXPECT_EQ(Format(1, 5).yHeight, 150);
        EXPECT_EQ(Format(13, 15).yOffset, 50);
        EXPECT_NE(Format(13, 15).dwEffects & CFE_ITALIC, 0U);
        EXPECT_EQ(Format(6, 12).yOffset, 0);
        EXPECT_EQ(ParagraphFormat(0).cTabCount, 8);
        const PARAFORMAT read = ParagraphFormat(18);
        EXPECT_EQ(read.dxStartIndent, 360);
        EXPECT_EQ(read.dxOffset, 300);
        EXPECT_FALSE(host_->document.IsModified());
        ASSERT_TRUE(host_->document.Save());
        EXPECT_EQ(ReadFile("apice.tnv"), rtf) << round;
    }
}

// Puts bytes on the clipboard in one format, alone.
void PutAlone(UINT format, std::string_view bytes) {
    OpenedClipboard clipboard(nullptr);
    ASSERT_TRUE(clipboard.Put(format, bytes));
}

std::string WideBytes(const std::string& text) {
    return Utf8ToUtf16Le(text) + std::string(2, '\0');
}

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
    EXPECT_EQ(host_->document.CanCut(), true);
    EXPECT_EQ(ClipboardBytes(CF_UNICODETEXT).size(), 2 * (60 * std::strlen("riga\r\n") + 1));
    Send(EM_SETMODIFY, FALSE);
    ASSERT_TRUE(host_->document.New());
    SelectAll();
    EXPECT_FALSE(host_->document.CanCut()) << "there is nothing";
}

TEST_F(ReportTest, PasteKeysFollowTheSameRules) {
    UiDriver ui;
    ui.Do([] {
        const OpenedClipboard empty(nullptr);
        EmptyClipboard();
    });
    ui.Press({VK_CONTROL, 'V'}).Do([this] {
        ASSERT_TRUE(PutCsvText(host_->window, app_.clipboard.csv, "a;b"));
    });
    ui.Press({VK_CONTROL, 'V'}).WaitUntil("text", [this] { return Text() == "a\tb"; });
    ui.Press({VK_CONTROL, 'A'}).Press({VK_CONTROL, 'X'});
    ui.WaitUntil("no text", [this] { return Text().empty(); });
    ui.Press({VK_CONTROL, 'Z'}).WaitUntil("cut undone", [this] { return Text() == "a\tb"; });
    ui.Press({VK_CONTROL, 'Y'}).WaitUntil("no text", [this] { return Text().empty(); });
    ui.Press({VK_CONTROL, 'V'}).WaitUntil("text", [this] { return Text() == "a\tb"; });
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

TEST_F(ReportTest, AsksBeforeADocumentIsLost) {
    Type("importante");
    UiDriver ui;
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDCANCEL);
    EXPECT_FALSE(host_->document.New());
    EXPECT_EQ(Text(), "importante");

    WriteFile("altro.tnv", "{\\rtf1 altro}");
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDCANCEL);
    EXPECT_FALSE(host_->document.Open(Path("altro.tnv")));
    EXPECT_EQ(Text(), "importante");

    // Yes, but then no name is given: still modified, so still here.
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDYES);
    ui.OnWindow(kSaveTitle).Command(IDCANCEL);
    EXPECT_FALSE(host_->document.MayDiscard());
    EXPECT_TRUE(host_->document.IsModified());

    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDYES);
    SaveNewFile(ui, Path("salvato.tnv"));
    EXPECT_TRUE(host_->document.New());
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(host_->document.path(), "");
    EXPECT_EQ(PlainTextOf(ReadRichText(ReadFile("salvato.tnv"))), "importante\n");

    Type("niente");
    ui.AnswerMessage("Attenzione", kModifiedQuestion, IDNO);
    EXPECT_TRUE(host_->document.Open(Path("altro.tnv")));
    EXPECT_EQ(Text(), "altro");
    EXPECT_EQ(host_->document.path(), Path("altro.tnv"));
    ui.Finish();
}

// Another program's hold on a file.
class HeldFile {
  public:
    HeldFile(const std::string& path, DWORD access, DWORD sharing)
        : file_(CreateFileW(Widen(path).c_str(), access, sharing, nullptr, OPEN_EXISTING, 0,
                            nullptr)) {}
    ~HeldFile() { CloseHandle(file_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

  private:
    HANDLE file_;
};

TEST_F(ReportTest, TellsOfAFileInUse) {
    WriteFile("occupato.tnv", "{\\rtf1 vecchio}");
    const std::string path = Path("occupato.tnv");
    Type("nuovo");
    Send(EM_SETMODIFY, FALSE);
    UiDriver ui;
    {
        const HeldFile held(path, GENERIC_READ, FILE_SHARE_READ);
        ui.AnswerMessage(path, "File bloccato da un'altra applicazione. Impossibile aprire!", IDOK);
        EXPECT_FALSE(host_->document.Open(path));
        EXPECT_EQ(Text(), "nuovo");
    }
    ASSERT_TRUE(host_->document.Open(path));
    Select(0, 0);
    Type("molto ");
    for (const DWORD more_sharing : {DWORD{0}, DWORD{FILE_SHARE_DELETE}}) {
        const HeldFile held(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | more_sharing);
        ui.AnswerMessage(path, "File bloccato da un'altra applicazione. Impossibile salvare!",
                         IDOK);
        EXPECT_FALSE(host_->document.Save());
    }
    EXPECT_TRUE(host_->document.IsModified());
    EXPECT_EQ(ReadFile("occupato.tnv"), "{\\rtf1 vecchio}");

    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY);
    ui.AnswerMessage(path, "File bloccato da un'altra applicazione. Impossibile salvare!", IDOK);
    EXPECT_FALSE(host_->document.Save());
    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_NORMAL);

    disk_.refuses_writing = true;  // as a full disk does
    ui.AnswerMessage(path, "Impossibile salvare il file!", IDOK);
    EXPECT_FALSE(host_->document.Save());
    EXPECT_EQ(ReadFile("occupato.tnv"), "{\\rtf1 vecchio}");
    EXPECT_TRUE(host_->document.IsModified());
    disk_.refuses_writing = false;
    EXPECT_TRUE(host_->document.Save());
    ui.AnswerMessage(Path("manca.tnv"),
                     "File bloccato da un'altra applicazione. Impossibile aprire!", IDOK);
    EXPECT_FALSE(host_->document.Open(Path("manca.tnv")));
    ui.Finish();
}

TEST_F(ReportTest, RefusesWhatIsNoDocument) {
    Type("resta");
    Send(EM_SETMODIFY, FALSE);
    UiDriver ui;
    ui.AnswerMessage(WriteFile("programma.tnv", std::string("MZ\0\1\2{\\rtf1", 11)),
                     "Il file non è un documento di Tonvale. Impossibile aprire!", IDOK);
    EXPECT_FALSE(host_->document.Open(Path("programma.tnv")));
    ui.AnswerMessage(WriteFile("lungo.tnv", "{\\rtf1 " + std::string(100 << 20, 'x') + "}"),
                     "Il testo del file è troppo lungo per il documento. Impossibile aprire!",
                     IDOK);
    EXPECT_FALSE(host_->document.Open(Path("lungo.tnv")));
    // So long a paragraph takes some controls minutes.
    ui.AnswerMessage(WriteFile("paragrafo.tnv", "{\\rtf1 " + std::string(1 << 20, 'x') + "}"),
                     "Il testo del file è troppo lungo per il documento. Impossibile aprire!",
                     IDOK);
    EXPECT_FALSE(host_->document.Open(Path("paragrafo.tnv")));
    EXPECT_EQ(Text(), "resta");
    EXPECT_EQ(host_->document.path(), "");

    // Of a torn file, what is there is shown; the file is not written over unasked.
    ui.AnswerMessage(WriteFile("tronco.tnv", "{\\rtf1 uno\\par {\\b due"),
                     "Il file è incompleto o danneggiato: viene aperto ciò che si può leggere, "
                     "come documento senza titolo. Il file resta com'è.",
                     IDOK);
    EXPECT_TRUE(host_->document.Open(Path("tronco.tnv")));
    EXPECT_EQ(Text(), "uno\r\ndue");
    EXPECT_EQ(host_->document.path(), "");
    EXPECT_TRUE(host_->document.IsModified());
    ui.Finish();
    Send(EM_SETMODIFY, FALSE);
    EXPECT_TRUE(host_->document.Open(WriteFile("vuoto.tnv", "")));
    EXPECT_EQ(Text(), "");
}

// Documents at which controls are known to crash or to hang, and such as cannot be shown whole: of
// these the file is not written over unasked.
TEST_F(ReportTest, ReadsWhatItCanOfAnyDocument) {
    const auto repeated = [](const char* text, int count) {
        std::string result;
        for (int i = 0; i < count; ++i) result += text;
        return result;
    };
    const struct {
        std::string rtf;
        std::string text;
        bool is_whole;
    } documents[] = {
        {repeated("{", 1000) + "a" + repeated("}", 1000), "a", true},
        {"\\trowd" + repeated("\\cellx-1073741824", 500) + "\\intbl a\\cell b\\cell\\row", "a\tb",
         true},
        {repeated("\\tx-1073741824", 500) + " a\\f-1\\fs-9\\cf99999 b", "ab", true},
        {"{\\pict\\emfblip 00}{\\pict\\pngblip\\bin4 \x89PNG}{\\pict\\wbitmap0 00}a", "a", false},
        {"{\\pict\\pngblip 89504e470d0a1a0a0c008ce30d49444154}a", "a", false},
        {"{\\object\\objemb{\\*\\objdata }{\\result a}}b", "ab", true},
        {"{\\object\\objemb{\\*\\objdata 0105}{\\result a}}b", "ab", false},
        {"{\\header\\pard\\par }a{\\*\\footnote }", "a", true},
        {"{\\header\\pard x\\par }a", "a", false},
        {"a{\\*\\footnote nota}", "a", false},
        {repeated("\\up6 a\\dn6 b", 500), repeated("ab", 500), true},
        {repeated("\\up6 a\\dn6 b", 900), repeated("ab", 900), false},
    };
    UiDriver ui;
    for (const auto& document : documents) {
        const std::string path = WriteFile("strano.tnv", "{\\rtf1" + document.rtf + "}");
        if (!document.is_whole) {
            ui.AnswerMessage(path,
                             "Il file contiene elementi che qui non si possono mostrare tutti "
                             "(oggetti, note, intestazioni, immagini, apici e pedici): il resto "
                             "viene aperto come documento senza titolo. Il file resta com'è.",
                             IDOK);
        }
        ASSERT_TRUE(host_->document.Open(path));
        EXPECT_EQ(Text(), document.text);
        EXPECT_EQ(host_->document.path(), document.is_whole ? path : "") << document.rtf;
        EXPECT_EQ(host_->document.IsModified(), !document.is_whole);
        EXPECT_TRUE(!document.is_whole || host_->document.Save());
        if (document.is_whole) {  // no message has taken the focus to the window
            EXPECT_EQ(GetFocus(), host_->editor());
        }
        Send(EM_SETMODIFY, FALSE);
        host_->document.SetFocus();
    }
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

TEST_F(ReportTest, SavesOnlyUnderItsOwnExtension) {
    Type("x");
    UiDriver ui;
    SaveNewFile(ui, Path("foglio.csv"));  // the dialog opens again
    SaveNewFile(ui, Path("Documento.TNV"));
    EXPECT_TRUE(host_->document.SaveAs());
    ui.Finish();
    EXPECT_EQ(host_->document.path(), Path("Documento.TNV"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "foglio.csv"));
}

TEST_F(ReportTest, ShowsMenus) {
    Type("testo");
    SelectAll();
    Command(CMD_BOLD);
    UiDriver ui;
    const auto menu = [](HWND window) {
        return reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
    };
    ui.Do([this] {
        PostMessageW(host_->editor(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(20, 10));
        PostMessageW(host_->editor(), WM_RBUTTONUP, 0, MAKELPARAM(20, 10));
    });
    ui.OnWindowOfClass("#32768", [menu](HWND window) {
        HMENU format = menu(window);
        EXPECT_EQ(GetMenuState(format, CMD_BOLD, MF_BYCOMMAND) & MF_CHECKED, UINT{MF_CHECKED});
        EXPECT_EQ(GetMenuState(format, CMD_ITALIC, MF_BYCOMMAND) & MF_CHECKED, 0U);
        EXPECT_EQ(GetMenuState(format, CMD_WORD_WRAP, MF_BYCOMMAND) & MF_CHECKED, UINT{MF_CHECKED});
    });
    ui.Screenshot("report_menu_format").Press({'E'});  // "&Elenco puntato"
    ui.WaitUntil("bullets", [this] { return IsChecked(CMD_BULLETS); });
    ui.Do([this] { PostMessageW(host_->window, WM_COMMAND, CMD_COLOR_MENU, 0); });
    ui.OnWindowOfClass("#32768", [menu](HWND window) {
        HMENU colors = menu(window);
        wchar_t text[32] = {};
        GetMenuStringW(colors, 32788, text, 32, MF_BYCOMMAND);
        EXPECT_EQ(Narrow(text), "Verde acqua");
        GetMenuStringW(colors, 32797, text, 32, MF_BYCOMMAND);
        EXPECT_EQ(Narrow(text), "Bianco");
    });
    ui.Screenshot("report_menu_colors").Press({VK_DOWN}).Press({VK_DOWN}).Press({VK_RETURN});
    ui.WaitUntil("color", [this] { return Format(0, 5).crTextColor == RGB(128, 0, 0); });
    ui.Run();
}

TEST_F(ReportTest, ChoosesFontOnItsOwnScale) {
    Type("testo misto");
    Select(0, 5);
    Command(CMD_ITALIC);
    UiDriver ui;
    constexpr int kFace = 0x470;
    constexpr int kSize = 0x472;
    ui.Do([this] { PostMessageW(host_->window, WM_COMMAND, CMD_FONT, 0); });
    ui.OnWindowOfClass("#32770", [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, kFace), "Arial");
        EXPECT_EQ(TextOf(dialog, kSize), "15");  // 20 pixels at 96 dpi
    });
    ui.Screenshot("report_font_dialog").Command(IDOK);
    ui.WaitUntil("closed", [] { return !FindWindowW(L"#32770", nullptr); });
    ui.Do([this] {
        const CHARFORMAT2W format = Format(0, 5);
        EXPECT_EQ(format.yHeight, 200);
        EXPECT_NE(format.dwEffects & CFE_ITALIC, 0U);
        EXPECT_EQ(format.dwEffects & CFE_AUTOCOLOR, 0U);
        Command(CMD_SUPERSCRIPT);
        SelectAll();
        PostMessageW(host_->window, WM_COMMAND, CMD_FONT, 0);
    });
    ui.OnWindowOfClass("#32770", [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, kSize), "");  // mixed
        EXPECT_EQ(TextOf(dialog, kFace), "Arial");
    });
    ui.Command(IDOK).WaitUntil("closed", [] { return !FindWindowW(L"#32770", nullptr); });
    ui.Run();
    // What was mixed still is.
    EXPECT_EQ(Format(0, 5).yHeight, 150);
    EXPECT_EQ(Format(6, 11).yHeight, 200);
    EXPECT_NE(Format(0, 5).dwEffects & CFE_ITALIC, 0U);
    EXPECT_EQ(Format(6, 11).dwEffects & CFE_ITALIC, 0U);
}

TEST_F(ReportTest, PrintsTheSelectionOrAll) {
    printer_.page = {5100, 6600};  // 8.5 by 11 inches at 600 dpi
    Type("primo\rsecondo");
    host_->document.Print();
    EXPECT_EQ(printer_.document, "Senza titolo");
    ASSERT_EQ(printer_.pages.size(), 1U);
    ASSERT_EQ(printer_.pages[0].size(), 2U);
    EXPECT_EQ(printer_.pages[0][0].text, "primo");
    EXPECT_EQ(printer_.pages[0][0].rect.left, 600);
    EXPECT_EQ(printer_.pages[0][0].rect.top, 600);
    EXPECT_EQ(printer_.pages[0][0].font.face, "Arial");
    EXPECT_EQ(printer_.pages[0][0].font.character_height, 83);  // 10 pt
    EXPECT_TRUE(printer_.ended);

    SavedAs("stampa.tnv");
    Select(7, 9);
    Command(CMD_ALIGN_RIGHT);
    host_->document.Print();
    EXPECT_EQ(printer_.document, Path("stampa.tnv"));
    ASSERT_EQ(printer_.pages.size(), 2U);
    ASSERT_EQ(printer_.pages[1].size(), 1U);
    EXPECT_EQ(printer_.pages[1][0].text, "se");
    app_.open_printer = [] { return nullptr; };
    host_->document.Print();
    EXPECT_EQ(printer_.pages.size(), 2U);
}

TEST_F(ReportTest, TipsAndResolution) {
    NMTTDISPINFOW request{};
    request.hdr.code = TTN_GETDISPINFOW;
    request.hdr.idFrom = 32808;
    LRESULT result = 0;
    EXPECT_TRUE(host_->document.OnNotify(request.hdr, result));
    ASSERT_NE(request.lpszText, nullptr);
    EXPECT_EQ(Narrow(request.lpszText), "Apice  (CTRL+U)");
    request.hdr.idFrom = CMD_OPEN;
    EXPECT_FALSE(host_->document.OnNotify(request.hdr, result));
    Type("x");
    SelectAll();
    Command(CMD_BOLD);
    host_->document.OnDpiChanged();
    EXPECT_TRUE(IsChecked(CMD_BOLD));
    EXPECT_EQ(SendMessageW(host_->toolbar(), TB_BUTTONCOUNT, 0, 0), 16);
    host_->document.Show(false);
    EXPECT_FALSE(IsWindowVisible(host_->editor()));
    EXPECT_FALSE(IsWindowVisible(host_->toolbar()));
}

struct OtherDocument {
    const wchar_t* name;
    std::vector<std::string> texts;
};

// Documents saved by a text processor: nothing of their text is lost on the way in and out.
TEST_F(ReportTest, KeepsTheTextOfOtherPrograms) {
    const OtherDocument documents[] = {
        {L"testo.rtf",
         {"Relazione fonometrica del reparto presse", "Leq = 10-12 W/m², 87,3 dB(A)",
          "Accenti: àèéìòù ÀÈÌ €; greco: αβγ Δ; cirillico: Шум; simboli: ≥ ≤ → ½", "primo punto",
          "secondo punto", "Colonne:\tuna\tdue"}},
        {L"tabella.rtf",
         {"Prima della tabella\nMansione\tDurata (h)\tLep,d\nAddetto pressa\t6,50\t91,2\n"
          "Manutentore\t1,25\t84,0\nDopo la tabella"}},
        {L"immagine.rtf", {"Prima ", " dopo l'immagine"}}};
    for (const OtherDocument& document : documents) {
        const std::filesystem::path copy =
            folder_ / std::filesystem::path(document.name).replace_extension(L".tnv");
        std::filesystem::copy_file(std::filesystem::path(TONVALE_FIXTURE_FOLDER) / document.name,
                                   copy);
        const std::string path = Narrow(copy.wstring());
        ASSERT_TRUE(host_->document.Open(path)) << path;
        EXPECT_EQ(host_->document.path(), path);
        EXPECT_EQ(Format(0, 1).yHeight, 240);
        const std::string text = Text();
        ASSERT_TRUE(host_->document.Save());
        const std::string written =
            PlainTextOf(ReadRichText(ReadFile(Narrow(copy.filename().wstring()))));
        ASSERT_TRUE(host_->document.Open(path));
        EXPECT_EQ(Text(), text);
        for (const std::string& part : document.texts) {
            EXPECT_NE(written.find(part), std::string::npos) << part << " in\n" << written;
        }
        UpdateWindow(host_->editor());
        SaveScreenshot(host_->window, "report_" + Narrow(copy.stem().wstring()));
    }
    EXPECT_NE(ReadFile("immagine.tnv").find("\\emfblip"), std::string::npos);
}

}  // namespace
}  // namespace tonvale
