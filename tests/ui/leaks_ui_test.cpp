// Dialogs and windows opened and closed many times leave nothing behind: no window, menu, icon,
// drawing object or handle of the system.
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

#include "help/help_window.h"
#include "resources/resource.h"
#include "tests/ui/held_objects.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

using HeldObjects = std::map<std::string, int>;

// What `times` runs of `action` leave behind must be nothing, once the first runs have filled what
// the system keeps for later.
void ExpectNothingLeft(int times, const std::function<void()>& action) {
    constexpr int kWarmUp = 2;
    for (int i = 0; i < kWarmUp; ++i) action();
    const HeldObjects before = CountHeldObjects();
    for (int i = 0; i < times && !testing::Test::HasFailure(); ++i) action();
    EXPECT_EQ(CountHeldObjects(), before);
}

TEST(LeaksTest, CountsEveryKindOfObject) {
    HeldObjects before = CountHeldObjects();
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const BYTE bits[128] = {};
    HICON icon = CreateIcon(nullptr, 32, 32, 1, 1, bits, bits);
    ACCEL key{FVIRTKEY, 'A', 1};
    HACCEL table = CreateAcceleratorTableW(&key, 1);
    HMENU menu = CreateMenu();
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    for (const auto& [kind, count] : CountHeldObjects()) {
        EXPECT_TRUE(count > before[kind] || kind == kSystemsCount) << kind;
    }
    DeleteObject(brush);
    CloseHandle(event);
    DestroyMenu(menu);
    DestroyAcceleratorTable(table);
    DestroyIcon(icon);
    DestroyWindow(window);
    EXPECT_EQ(CountHeldObjects(), before);
}

class DialogLeaksTest : public DialogTest {};

TEST_F(DialogLeaksTest, HelpWindow) {
    WriteFile("tonvale.hlp",
              "@topic 0 Indice\n\nSi veda [[10|il primo]].\n@topic 10 Primo\n\nOra.\n");
    HelpWindow help(app_);
    ExpectNothingLeft(8, [&] {
        help.ShowTopic(owner_, 0);
        help.ShowTopic(owner_, 10);
        help.Close("Tonvale.hlp");
        EXPECT_EQ(help.window(), nullptr);
    });
}

TEST(MainWindowLeaksTest, StartAndEnd) {
    ExpectNothingLeft(5, [] {
        UiDriver ui;
        RunToEnd(ui);
    });
}

}  // namespace
}  // namespace tonvale
