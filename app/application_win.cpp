#include "app/application_win.h"

#include <commctrl.h>
#include <ole2.h>

#include "app/main_window.h"
#include "app/program_file_win.h"
#include "app/version_info_win.h"
#include "common/unicode_win.h"
#include "dialogs/dialog_tips_win.h"
#include "dialogs/dialog_win.h"
#include "dialogs/handles_win.h"
#include "dialogs/numeric_fields_win.h"

namespace tonvale {
namespace {

constexpr wchar_t kAcceleratorsName[] = L"PRIMO";

// What the windows and dialogs need of the system, released in the reverse order.
class SystemLibraries {
  public:
    SystemLibraries() : com_(OleInitialize(nullptr)), rich_edit_(LoadLibraryW(L"RICHED32.DLL")) {
        const INITCOMMONCONTROLSEX classes{sizeof classes,
                                           ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&classes);
    }
    ~SystemLibraries() {
        if (rich_edit_) FreeLibrary(rich_edit_);
        if (SUCCEEDED(com_)) OleUninitialize();
    }
    SystemLibraries(const SystemLibraries&) = delete;
    SystemLibraries& operator=(const SystemLibraries&) = delete;

  private:
    HRESULT com_;
    HMODULE rich_edit_;
};

void ShowRunningInstance(HWND first) {
    if (IsIconic(first)) ShowWindow(first, SW_RESTORE);
    SetForegroundWindow(GetLastActivePopup(first));
    ShowMessageBox(nullptr, {"Tonvale è già in esecuzione",
                             "Usare il drag & drop per caricare il file nella finestra di dialogo",
                             MessageIcon::kExclamation});
}

int FailToStart(const char* text) {
    ShowMessageBox(nullptr, {"Tonvale", text, MessageIcon::kStop});
    return 1;
}

// The keys of the main window are not those of the other windows without a loop of their own.
bool IsOfWindow(HWND window, HWND receiver) {
    return receiver == window || IsChild(window, receiver);
}

int RunMessageLoop(const MainWindow& main, HACCEL accelerators) {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (IsOfWindow(main.window(), message.hwnd) &&
            TranslateAcceleratorW(main.window(), accelerators, &message)) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

}  // namespace

int RunApplication(HINSTANCE instance, const std::string& path, int show) {
    if (HWND first = FindWindowW(kMainWindowClass, nullptr)) {
        ShowRunningInstance(first);
        return 0;
    }
    const MainWindow::WindowClass window_class(instance);
    if (!window_class.registered()) return FailToStart("RegisterClass failed");
    const SystemLibraries libraries;
    MainWindow main(instance);
    if (!main.Create()) return FailToStart("CreateWindow failure");

    main.ShowSplash();
    SetWindowTextUtf8(main.window(), VersionText("FileDescription"));
    const NumericKeystrokeFilter keystroke_filter;
    ShowWindow(main.window(), show);
    UpdateWindow(main.window());
    if (!path.empty()) main.OpenFileByExtension(AbsolutePath(path));
    const UniqueAccelerators accelerators(LoadAcceleratorsW(instance, kAcceleratorsName));
    return RunMessageLoop(main, accelerators.get());
}

}  // namespace tonvale
