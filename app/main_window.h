// The one main window: menu PRIMO, status bar, and the routing of commands and files.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "app/app_state.h"
#include "app/no_help_win.h"
#include "common/app_context_win.h"
#include "common/dialog_tips_win.h"
#include "common/handles_win.h"

namespace tonvale {

inline constexpr wchar_t kMainWindowClass[] = L"Tonvale_Class";

class MainWindow {
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
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    bool Create();  // still hidden
    void Close();

    // Opens a file with the calculator of its extension, once the message loop comes to it. An
    // empty path or an unknown extension does nothing.
    void OpenFileByExtension(const std::string& path);
    // Lets the user choose a file and the calculator that opens it.
    void OpenAnyFile();

    HWND window() const { return window_; }
    AppContext& context() { return context_; }
    AppState& state() { return state_; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam);
    void OnCreate();
    void OnDestroy();
    void OnCommand(WPARAM wparam, LPARAM lparam);
    void OnDropFiles(HDROP drop);
    void OnDpiChanged(const RECT& suggested);
    void OnMenuOpening(HMENU menu) const;
    void RunCommand(int id, const std::string& path);
    void SetFonts();
    void Layout();

    AppContext context_;
    AppState state_;
    NoHelp help_;
    std::unique_ptr<DialogTips> tips_;
    HWND window_ = nullptr;
    HWND status_bar_ = nullptr;
    UniqueFont status_font_;
    std::string document_path_;
    // The file of a command posted by OpenFileByExtension; its address marks that command.
    std::string routed_path_;
};

}  // namespace tonvale
