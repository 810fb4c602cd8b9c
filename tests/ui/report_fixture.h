// The report document in a window of its own, and what its tests share.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "common/text.h"
#include "dialogs/clipboard_win.h"
#include "dialogs/window_win.h"
#include "report/report_document_win.h"
#include "resources/resource.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {

inline constexpr wchar_t kHostClass[] = L"ReportHost";

// A main window with nothing but the document in it.
class HostWindow final : public Window {
  public:
    explicit HostWindow(AppContext& app) : document(app) {
        RegisterWindowClass(app.instance, kHostClass, Procedure, 0, IDC_ARROW);
        CreateWindowExW(0, kHostClass, L"Documento", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0, 0,
                        0, nullptr, nullptr, app.instance, CreationParameter());
        app.main_window = window();
        EXPECT_TRUE(document.Create(window()));
        MoveWindow(window(), 0, 0, 640, 420, FALSE);
        ShowWindow(window(), SW_SHOW);
        document.SetFocus();
    }
    ~HostWindow() override { DestroyWindow(window()); }

    ReportDocument document;

  private:
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam) override {
        LRESULT result = 0;
        if (message == WM_COMMAND && document.OnCommand(LOWORD(wparam))) return 0;
        if (message == WM_NOTIFY &&
            document.OnNotify(*reinterpret_cast<const NMHDR*>(lparam), result)) {
            return result;
        }
        if (message == WM_SIZE) document.Layout({0, 0, LOWORD(lparam), HIWORD(lparam)});
        return std::nullopt;
    }
};

class ReportTest : public DialogTest {
  protected:
    ReportTest() {
        app_.clipboard.rich_text = RegisterClipboardFormatW(L"Rich Text Format");
        app_.open_printer = [this] { return std::make_unique<BorrowedPrinter>(printer_); };
    }

    HWND Editor() const { return GetDlgItem(host_.window(), IDC_REPORT_EDITOR); }
    HWND Toolbar() const { return GetDlgItem(host_.window(), IDC_FORMAT_TOOLBAR); }
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
        return SendMessageW(Editor(), message, wparam, lparam);
    }
    void Command(int id) const {
        SendMessageW(host_.window(), WM_COMMAND, static_cast<WPARAM>(id), 0);
    }
    bool IsChecked(int command) const {
        return SendMessageW(Toolbar(), TB_ISBUTTONCHECKED, static_cast<WPARAM>(command), 0) != 0;
    }
    bool IsEnabled(int command) const {
        return SendMessageW(Toolbar(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0;
    }

    void Type(const std::string& text) const {
        for (const wchar_t unit : Widen(text)) Send(WM_CHAR, unit, 1);
    }
    void Select(LONG first, LONG last) const {
        CHARRANGE range{first, last};
        Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    }
    void SelectAll() const { Select(0, -1); }
    std::string Text() const { return WindowText(Editor()); }
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
    // A dot of the editor, right and below of where a character stands.
    COLORREF DotAt(LONG position, int right, int below) const {
        POINTL place{};
        Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), position);
        const WindowDc dc(Editor());
        return GetPixel(dc.get(), place.x + right, place.y + below);
    }
    std::string SavedAs(const std::string& name) {
        UiDriver ui;
        SaveNewFile(ui, Path(name));
        EXPECT_TRUE(document_.SaveAs());
        ui.Finish();
        return ReadFile(name);
    }

    FakePrinter printer_;
    HostWindow host_{app_};
    ReportDocument& document_ = host_.document;
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
