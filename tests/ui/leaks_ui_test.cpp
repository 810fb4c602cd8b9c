// The program started and ended many times leaves nothing behind: no window, menu, icon, drawing
// object or handle of the system. The calculators are looked after in their own walk.
#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "dialogs/handles_win.h"
#include "tests/ui/held_objects.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

TEST(LeaksTest, CountsEveryKindOfObject) {
    std::map<std::string, int> before = CountHeldObjects();
    {
        HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr,
                                      nullptr, nullptr);
        const BYTE bits[128] = {};
        HICON icon = CreateIcon(nullptr, 32, 32, 1, 1, bits, bits);
        HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        ACCEL key{FVIRTKEY, 'A', 1};
        const UniqueAccelerators table(CreateAcceleratorTableW(&key, 1));
        const UniqueMenu menu(CreateMenu());
        const UniqueBrush brush(CreateSolidBrush(RGB(1, 2, 3)));
        for (const auto& [kind, count] : CountHeldObjects()) {
            EXPECT_GT(count, before[kind]) << kind;
        }
        CloseHandle(event);
        DestroyIcon(icon);
        DestroyWindow(window);
    }
    EXPECT_EQ(CountHeldObjects(), before);
}

// With a look at the help, and a new document.
TEST(MainWindowLeaksTest, StartAndEnd) {
    constexpr int kWarmUp = 2, kTimes = 5;  // first the system fills what it keeps for later
    std::map<std::string, int> before;
    for (int i = 0; i < kWarmUp + kTimes && !testing::Test::HasFailure(); ++i) {
        if (i == kWarmUp) before = CountHeldObjects();
        UiDriver ui;
        ui.OnWindowOfClass(kMainClass).Command(CMD_NEW_DOCUMENT).Press({VK_F1});
        ui.OnWindow("Guida di Tonvale").Press({VK_ESCAPE}).WaitClosed("Guida di Tonvale");
        RunToEnd(ui);
    }
    EXPECT_EQ(CountHeldObjects(), before);
}

}  // namespace
}  // namespace tonvale
