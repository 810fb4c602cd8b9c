// The one main window: menu PRIMO, toolbar, report document or results, status bar, and the routing
// of commands and files.
#pragma once

#include <windows.h>

#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "app/app_state.h"
#include "app/main_toolbar_win.h"
#include "app/result_view_window.h"
#include "app/splash_window.h"
#include "app/view_switch_win.h"
#include "common/file_kinds.h"
#include "common/result_view.h"
#include "dialogs/app_context_win.h"
#include "dialogs/dialog_tips_win.h"
#include "dialogs/handles_win.h"
#include "dialogs/window_win.h"
#include "help/help_window.h"
#include "report/report_document_win.h"

namespace tonvale {

inline constexpr wchar_t kMainWindowClass[] = L"Tonvale_Class";

class MainWindow final : public Window {
  public:
    // Makes known, for as long as it lives, the class of the main window.
    class WindowClass {
      public:
        explicit WindowClass(HINSTANCE instance);
        ~WindowClass();
        WindowClass(const WindowClass&) = delete;
        WindowClass& operator=(const WindowClass&) = delete;
        bool registered() const { return registered_; }

      private:
        HINSTANCE instance_;
        bool registered_;
    };

    explicit MainWindow(HINSTANCE instance);

    bool Create();  // still hidden
    void Close();

    // Shows the splash window for its time; the main window stays in use.
    void ShowSplash();
    // Tells what the program is, below the splash window, which goes with the box or before.
    void ShowAbout();

    // Opens a file with the calculator of its extension, once the message loop comes to it and
    // those asked for before are closed. An empty path or an unknown extension does nothing, nor
    // does any file while a dialog is open.
    void OpenFileByExtension(const std::string& path);
    // Lets the user choose a file and the calculator that opens it.
    void OpenAnyFile();

    // Shows the outcome of a hearing-damage dialog, its table first, over the whole screen.
    void ShowResult(ResultView result);

    AppContext& context() { return context_; }
    AppState& state() { return state_; }
    ReportDocument& document() { return document_; }
    const ReportDocument& document() const { return document_; }
    ViewSwitch& views() { return views_; }
    const ViewSwitch& views() const { return views_; }
    ResultViewWindow& results() { return results_; }
    const ResultViewWindow& results() const { return results_; }

  private:
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam) override;
    bool OnCreate();
    void OnClose();
    void OnDestroy();
    void OpenRoutedFile();
    void OpenWith(const FileKindInfo& kind, const std::string& path);
    void PostRoutedFile() const;
    LRESULT OnNotify(NMHDR& header);
    void OnDropFiles(HDROP drop);
    void OnDpiChanged(const RECT& suggested);
    void PlaceAboutBox() const;
    void OnMenuOpening(HMENU menu) const;
    void Run(int id, const std::string& path);
    void ShowTip(NMHDR& header) const;
    void UpdateButtons() const;
    void SetFonts();
    void Layout();
    std::string StatusText() const;
    void ShowStatus();
    void FocusOnContent();

    AppContext context_;
    AppState state_;
    HelpWindow help_;
    ReportDocument document_;
    MainToolbar toolbar_;
    ResultViewWindow results_;
    ViewSwitch views_;
    std::unique_ptr<DialogTips> tips_;
    std::unique_ptr<SplashWindow> splash_;
    HWND status_bar_ = nullptr;
    UniqueFont status_font_;
    std::string shown_status_;
    std::deque<std::string> routed_paths_;  // of OpenFileByExtension, not yet opened
};

}  // namespace tonvale
