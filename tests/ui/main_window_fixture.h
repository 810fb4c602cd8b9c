// What the tests of the main window share: starting the program, its menus, files to open.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "app/application_win.h"
#include "app/main_window.h"
#include "common/unicode_win.h"
#include "resources/resource.h"
#include "tests/exposure/example_file.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {

inline constexpr char kMainClass[] = "Tonvale_Class";
inline constexpr char kDailyExposureTitle[] = "Calcolo Lep,d";

inline HWND Main() {
    return FindWindowW(kMainWindowClass, nullptr);
}

// The object behind the main window.
inline MainWindow& TheProgram() {
    return static_cast<MainWindow&>(
        *reinterpret_cast<Window*>(GetWindowLongPtrW(Main(), GWLP_USERDATA)));
}

inline int RunProgram(const std::string& path = {}) {
    return RunApplication(GetModuleHandleW(nullptr), path, SW_SHOWNORMAL);
}

// Runs the program until the steps are done, then closes it.
inline void RunToEnd(UiDriver& ui, const std::string& path = {}) {
    ui.OnWindowOfClass(kMainClass).Command(CMD_EXIT);
    EXPECT_EQ(RunProgram(path), 0);
    ui.Finish();
}

struct MenuCommand {
    int id;  // of a submenu: -1
    std::string text;
    HMENU submenu;
    bool enabled;
    bool checked;
};

// The items of a menu, as they stand when the user of `window` opens it; separators are left out.
inline std::vector<MenuCommand> OpenPopup(HWND window, HMENU popup) {
    SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0);
    std::vector<MenuCommand> commands;
    for (int position = 0; position < GetMenuItemCount(popup); ++position) {
        wchar_t text[64] = {};
        const UINT place = static_cast<UINT>(position);
        GetMenuStringW(popup, place, text, static_cast<int>(std::size(text)), MF_BYPOSITION);
        if (!*text) continue;
        const UINT state = GetMenuState(popup, place, MF_BYPOSITION);
        commands.push_back({static_cast<int>(GetMenuItemID(popup, position)), Narrow(text),
                            GetSubMenu(popup, position), (state & MF_GRAYED) == 0,
                            (state & MF_CHECKED) != 0});
    }
    return commands;
}

class MainWindowTest : public FolderTest {
  protected:
    std::string MakeDailyFile(const std::string& name) const {
        return WriteFile(name, ExampleBytes("giornata.lep"));
    }

    // Waits for the Lep,d dialog, expects that it shows the file, and closes it.
    static void ExpectDailyExposure(UiDriver& ui, const std::string& file_name) {
        ui.OnWindow(kDailyExposureTitle,
                    [file_name](HWND dialog) { EXPECT_EQ(Status(dialog), file_name); });
        ui.Command(CMD_FILE_CLOSE).WaitClosed(kDailyExposureTitle);
    }

    static void ExpectNoDialog(UiDriver& ui) {
        // The step before has run and its messages are done: the main window is still the active
        // one unless something has opened.
        ui.Do([] {
            EXPECT_TRUE(IsWindowEnabled(Main()));
            EXPECT_EQ(GetLastActivePopup(Main()), Main());
        });
    }

    static void Drop(UiDriver& ui, const std::vector<std::string>& paths) {
        ui.OnWindowOfClass(kMainClass, [paths](HWND main) {
            PostMessageW(main, WM_DROPFILES, reinterpret_cast<WPARAM>(MakeDrop(paths)), 0);
        });
    }
};

}  // namespace tonvale
