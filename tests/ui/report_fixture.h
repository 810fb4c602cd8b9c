// The report document in a window of its own, and what its tests share.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <memory>
#include <string>
#include <string_view>

#include "common/text.h"
#include "dialogs/clipboard_win.h"
#include "report/report_document_win.h"
#include "resources/resource.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {

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

// Puts bytes on the clipboard in one format, alone.
inline void PutAlone(UINT format, std::string_view bytes) {
    OpenedClipboard clipboard(nullptr);
    ASSERT_TRUE(clipboard.Put(format, bytes));
}

inline std::string WideBytes(const std::string& text) {
    return Utf8ToUtf16Le(text) + std::string(2, '\0');
}

}  // namespace tonvale
