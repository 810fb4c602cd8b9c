// What the tests of the main window share: starting the program, its menus, files to open.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/application_win.h"
#include "app/main_window.h"
#include "common/unicode_win.h"
#include "resources/resource.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {

inline constexpr char kMainClass[] = "Tonvale_Class";
inline constexpr char kDailyExposureTitle[] = "Calcolo Lep,d";
inline constexpr char kNoFile[] = "Nessun file selezionato";
// Controls of the common file dialog.
inline constexpr int kFileNameField = 0x047c;
inline constexpr int kFilterField = 0x0470;

inline int RunProgram(const std::string& path = {}) {
    return RunApplication(GetModuleHandleW(nullptr), path, SW_SHOWNORMAL);
}

// The object behind the main window.
inline MainWindow& TheProgram() {
    HWND window = FindWindowW(kMainWindowClass, nullptr);
    return static_cast<MainWindow&>(
        *reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA)));
}

struct MenuCommand {
    int id;
    std::string text;
    bool enabled;
    bool checked;
};

// The items of a popup, as they stand when the user opens it; separators are left out.
inline std::vector<MenuCommand> OpenPopup(HWND window, HMENU popup) {
    SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0);
    std::vector<MenuCommand> commands;
    for (int position = 0; position < GetMenuItemCount(popup); ++position) {
        wchar_t text[64] = {};
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID | MIIM_STRING | MIIM_STATE | MIIM_FTYPE;
        item.dwTypeData = text;
        item.cch = static_cast<UINT>(std::size(text));
        GetMenuItemInfoW(popup, static_cast<UINT>(position), TRUE, &item);
        if (item.fType & MFT_SEPARATOR) continue;
        commands.push_back({static_cast<int>(item.wID), Narrow(text), !(item.fState & MFS_GRAYED),
                            (item.fState & MFS_CHECKED) != 0});
    }
    return commands;
}

class MainWindowTest : public testing::Test {
  protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    // A data file of one exposure, 85 dBA for 8 hours.
    std::string MakeDailyFile(const std::string& name) const {
        const std::filesystem::path path = folder_ / std::filesystem::path(Widen(name));
        std::ofstream(path) << "[TONVALE]\nTipo=LEPD\nLAEQ= 85.0\nTOTTIME=8.00\nLEPD= 85.0\n"
                               "TFORM=2\nITEMS=1\n[LEQ]\n1=85.0\n[TIME]\n1=8.0\n";
        return Narrow(path.wstring());
    }

    // Waits for the Lep,d dialog, expects that it shows the file, and closes it.
    static void ExpectDailyExposure(UiDriver& ui, const std::string& file_name) {
        ui.OnWindow(kDailyExposureTitle, [file_name](HWND dialog) {
            const std::string shown = TextOf(dialog, IDC_STATUS_BAR);
            EXPECT_TRUE(shown.ends_with(file_name)) << shown;
        });
        ui.Command(CMD_FILE_CLOSE).WaitClosed(kDailyExposureTitle);
    }

    static void ExpectNoDialog(UiDriver& ui) {
        // The step before has run and its messages are done: the main window is still the active
        // one unless something has opened.
        ui.Do([] {
            HWND main = FindWindowW(kMainWindowClass, nullptr);
            EXPECT_TRUE(IsWindowEnabled(main));
            EXPECT_EQ(GetLastActivePopup(main), main);
        });
    }

    static void Drop(UiDriver& ui, const std::vector<std::string>& paths) {
        ui.OnWindowOfClass(kMainClass, [paths](HWND main) {
            PostMessageW(main, WM_DROPFILES, reinterpret_cast<WPARAM>(MakeDrop(paths)), 0);
        });
    }

    static void CloseProgram(UiDriver& ui) { ui.OnWindowOfClass(kMainClass).Command(CMD_EXIT); }

    const std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / L"tonvale-main-però";
};

}  // namespace tonvale
