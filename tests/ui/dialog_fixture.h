// What a dialog needs of the running program, in a form that tests can look into.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "common/file_system.h"
#include "common/unicode_win.h"
#include "dialogs/app_context_win.h"
#include "dialogs/dialog_tips_win.h"
#include "dialogs/help_viewer_win.h"
#include "dialogs/numeric_fields_win.h"
#include "tests/common/fake_printer.h"
#include "tests/common/faulty_file_system.h"
#include "tests/common/folder_test.h"

namespace tonvale {

class RecordingHelp : public HelpViewer {
  public:
    std::vector<unsigned long> topics;
    std::vector<std::string> closed;

    void ShowTopic(HWND, unsigned long context) override { topics.push_back(context); }
    void Close(std::string_view help_file) override { closed.emplace_back(help_file); }
};

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

// What a dialog opens, uses and destroys, while the test keeps the printer itself.
class BorrowedPrinter : public Printer {
  public:
    explicit BorrowedPrinter(Printer& printer) : printer_(printer) {}
    Size PageSize() const override { return printer_.PageSize(); }
    Size Resolution() const override { return printer_.Resolution(); }
    FontMetrics DefaultFontMetrics() const override { return printer_.DefaultFontMetrics(); }
    int ColorCount() const override { return printer_.ColorCount(); }
    bool StartDocument(const std::string& name) override { return printer_.StartDocument(name); }
    bool StartPage() override { return printer_.StartPage(); }
    bool EndPage() override { return printer_.EndPage(); }
    bool EndDocument() override { return printer_.EndDocument(); }
    void AbortDocument() override { printer_.AbortDocument(); }
    Canvas& canvas() override { return printer_.canvas(); }

  private:
    Printer& printer_;
};

class DialogTest : public FolderTest {
  protected:
    DialogTest() {
        owner_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 600, 400, nullptr,
                                 nullptr, instance_, nullptr);
        tips_ = std::make_unique<DialogTips>(instance_, owner_);
        app_.instance = instance_;
        app_.main_window = owner_;
        app_.program_folder = Narrow(folder_.wstring());
        app_.clipboard.csv = RegisterClipboardFormatW(L"Csv");
        app_.files = &disk_;
        app_.open_printer = [] { return nullptr; };
        app_.tips = tips_.get();
        app_.help = &help_;
    }
    ~DialogTest() override {
        tips_.reset();
        DestroyWindow(owner_);
    }

    HINSTANCE instance_ = GetModuleHandleW(nullptr);
    HWND owner_ = nullptr;
    std::unique_ptr<DialogTips> tips_;
    NumericKeystrokeFilter filter_;
    RecordingHelp help_;
    FaultyFileSystem disk_{SystemFiles()};
    AppContext app_;
};

// A calculator's dialog, which keeps `state_` from one time to the next.
template <typename State, void (*kOpen)(AppContext&, State&, HWND, const std::string&)>
class OneCalculatorTest : public DialogTest {
  protected:
    void Open(const std::string& path = {}) { kOpen(app_, state_, owner_, path); }

    State state_;
};

}  // namespace tonvale
