// Dialogs and windows opened and closed many times leave nothing behind: no window, menu, icon,
// drawing object or handle of the system.
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

#include "dialogs/handles_win.h"
#include "exposure/daily_exposure.h"
#include "exposure/daily_exposure_dialog.h"
#include "help/help_window.h"
#include "resources/resource.h"
#include "tests/ui/main_window_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

// What this process holds of the system, by kind. Where the system does not count its objects (Wine
// does not: 0), they are counted one by one: a handle without its upper half names its place in the
// table.
constexpr char kSystemsCount[] = "GDI and USER objects by the system's count";
using HeldObjects = std::map<std::string, int>;

template <typename Handle>
int CountHandles(unsigned first, unsigned last, unsigned step, bool (*is_held)(Handle)) {
    int count = 0;
    for (unsigned place = first; place <= last; place += step) {
        if (is_held(reinterpret_cast<Handle>(static_cast<ULONG_PTR>(place)))) ++count;
    }
    return count;
}

bool IsOwnWindow(HWND window) {
    DWORD process = 0;
    return GetWindowThreadProcessId(window, &process) != 0 && process == GetCurrentProcessId();
}

bool IsIcon(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) return false;
    const UniqueBitmap mask(info.hbmMask);
    const UniqueBitmap color(info.hbmColor);
    return true;
}

HeldObjects CountHeld() {
    constexpr unsigned kFirst = 0x20, kLast = 0xfffe;
    const auto is_menu = [](HMENU menu) { return IsMenu(menu) != FALSE; };
    const auto is_table = [](HACCEL table) { return CopyAcceleratorTableW(table, nullptr, 0) > 0; };
    const auto is_gdi_object = [](HGDIOBJ object) { return GetObjectType(object) != 0; };
    const auto is_kernel_handle = [](HANDLE handle) {
        DWORD flags = 0;
        return GetHandleInformation(handle, &flags) != FALSE;
    };
    HANDLE process = GetCurrentProcess();
    return {
        {"windows", CountHandles<HWND>(kFirst, kLast, 2, IsOwnWindow)},
        {"menus", CountHandles<HMENU>(kFirst, kLast, 2, is_menu)},
        {"icons", CountHandles<HICON>(kFirst, kLast, 2, IsIcon)},
        {"accelerator tables", CountHandles<HACCEL>(kFirst, kLast, 2, is_table)},
        {"GDI objects", CountHandles<HGDIOBJ>(1, 0xffff, 1, is_gdi_object)},
        {"kernel handles", CountHandles<HANDLE>(4, 0x4000, 4, is_kernel_handle)},
        {kSystemsCount, static_cast<int>(GetGuiResources(process, GR_GDIOBJECTS) +
                                         GetGuiResources(process, GR_USEROBJECTS))},
    };
}

// What `times` runs of `action` leave behind must be nothing, once the first runs have filled what
// the system keeps for later.
void ExpectNothingLeft(int times, const std::function<void()>& action) {
    constexpr int kWarmUp = 3;
    for (int i = 0; i < kWarmUp; ++i) action();
    const HeldObjects before = CountHeld();
    for (int i = 0; i < times && !testing::Test::HasFailure(); ++i) action();
    EXPECT_EQ(CountHeld(), before);
}

TEST(LeaksTest, CountsEveryKindOfObject) {
    HeldObjects before = CountHeld();
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const BYTE bits[128] = {};
    HICON icon = CreateIcon(nullptr, 32, 32, 1, 1, bits, bits);
    ACCEL key{FVIRTKEY, 'A', 1};
    HACCEL table = CreateAcceleratorTableW(&key, 1);
    HMENU menu = CreateMenu();
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    for (const auto& [kind, count] : CountHeld()) {
        EXPECT_TRUE(count > before[kind] || kind == kSystemsCount) << kind;
    }
    DeleteObject(brush);
    CloseHandle(event);
    DestroyMenu(menu);
    DestroyAcceleratorTable(table);
    DestroyIcon(icon);
    DestroyWindow(window);
    EXPECT_EQ(CountHeld(), before);
}

class DialogLeaksTest : public DialogTest {};

TEST_F(DialogLeaksTest, DailyExposureWithItsItemDialog) {
    ExpectNothingLeft(50, [this] {
        DailyExposureState state;
        UiDriver ui;
        ui.OnWindow(kDailyExposureTitle).Click(IDC_ADD).OnWindow("Aggiungi");
        ui.SetText(IDC_LEVEL_EDIT, "85").SetText(IDC_TIME_EDIT, "28800").Click(IDOK);
        ui.WaitClosed("Aggiungi").OnWindow(kDailyExposureTitle, [](HWND dialog) {
            EXPECT_EQ(TextOf(dialog, IDC_DAILY_LEVEL), "85.0");
        });
        ui.Command(CMD_FILE_CLOSE);
        OpenDailyExposure(app_, state, owner_, {});
        ui.Finish();
    });
}

TEST_F(DialogLeaksTest, HelpWindow) {
    WriteFile("tonvale.hlp",
              "@topic 0 Indice\n\nSi veda [[10|il primo]].\n@topic 10 Primo\n\nOra.\n");
    HelpWindow help(app_);
    ExpectNothingLeft(50, [&] {
        help.ShowTopic(owner_, 0);
        help.ShowTopic(owner_, 10);
        help.Close("Tonvale.hlp");
        EXPECT_EQ(help.window(), nullptr);
    });
}

TEST(MainWindowLeaksTest, StartAndEnd) {
    ExpectNothingLeft(10, [] {
        UiDriver ui;
        RunToEnd(ui);
    });
}

}  // namespace
}  // namespace tonvale
