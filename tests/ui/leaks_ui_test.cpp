// Dialogs and windows opened and closed many times leave nothing behind: no window, menu, icon,
// drawing object or handle of the system.
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "app/application_win.h"
#include "common/handles_win.h"
#include "exposure/daily_exposure.h"
#include "exposure/daily_exposure_dialog.h"
#include "resources/resource.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kDailyExposureTitle[] = "Calcolo Lep,d";

// What this process holds of the system. Where the system does not count its objects (Wine does
// not), they are counted one by one: a handle without its upper half names its place in the table.
struct HeldObjects {
    int windows = 0;
    int menus = 0;
    int icons = 0;
    int accelerator_tables = 0;
    int gdi_objects = 0;
    int kernel_handles = 0;
    int counted_by_system = 0;  // GDI and USER objects; 0 where it does not count

    bool operator==(const HeldObjects&) const = default;
};

std::ostream& operator<<(std::ostream& out, const HeldObjects& held) {
    return out << "windows " << held.windows << ", menus " << held.menus << ", icons " << held.icons
               << ", accelerator tables " << held.accelerator_tables << ", GDI objects "
               << held.gdi_objects << ", kernel handles " << held.kernel_handles
               << ", by the system's count " << held.counted_by_system;
}

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

bool IsHeldMenu(HMENU menu) {
    return IsMenu(menu) != FALSE;
}

bool IsIcon(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) return false;
    const UniqueBitmap mask(info.hbmMask);
    const UniqueBitmap color(info.hbmColor);
    return true;
}

bool IsAcceleratorTable(HACCEL table) {
    return CopyAcceleratorTableW(table, nullptr, 0) > 0;
}

bool IsGdiObject(HGDIOBJ object) {
    return GetObjectType(object) != 0;
}

bool IsKernelHandle(HANDLE handle) {
    DWORD flags = 0;
    return GetHandleInformation(handle, &flags) != FALSE;
}

HeldObjects CountHeld() {
    constexpr unsigned kFirstUser = 0x20, kLastUser = 0xfffe;
    HeldObjects held;
    held.windows = CountHandles<HWND>(kFirstUser, kLastUser, 2, IsOwnWindow);
    held.menus = CountHandles<HMENU>(kFirstUser, kLastUser, 2, IsHeldMenu);
    held.icons = CountHandles<HICON>(kFirstUser, kLastUser, 2, IsIcon);
    held.accelerator_tables = CountHandles<HACCEL>(kFirstUser, kLastUser, 2, IsAcceleratorTable);
    held.gdi_objects = CountHandles<HGDIOBJ>(1, 0xffff, 1, IsGdiObject);
    held.kernel_handles = CountHandles<HANDLE>(4, 0x4000, 4, IsKernelHandle);
    held.counted_by_system = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS) +
                                              GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
    return held;
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

// The counting sees one object of each kind.
TEST(LeaksTest, CountsEveryKindOfObject) {
    const HeldObjects before = CountHeld();
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const HeldObjects with_window = CountHeld();
    const BYTE bits[128] = {};
    HICON icon = CreateIcon(nullptr, 32, 32, 1, 1, bits, bits);
    ACCEL key{FVIRTKEY, 'A', 1};
    HACCEL table = CreateAcceleratorTableW(&key, 1);
    HMENU menu = CreateMenu();
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const HeldObjects with_all_but_gdi = CountHeld();
    {
        const UniqueBrush brush(CreateSolidBrush(RGB(1, 2, 3)));
        const UniqueDc dc(CreateCompatibleDC(nullptr));
        EXPECT_GE(CountHeld().gdi_objects, with_all_but_gdi.gdi_objects + 2);
    }
    EXPECT_EQ(with_window.windows, before.windows + 1);
    EXPECT_EQ(with_all_but_gdi.icons, before.icons + 1);
    EXPECT_EQ(with_all_but_gdi.accelerator_tables, before.accelerator_tables + 1);
    EXPECT_EQ(with_all_but_gdi.menus, before.menus + 1);
    EXPECT_EQ(with_all_but_gdi.kernel_handles, with_window.kernel_handles + 1);
    CloseHandle(event);
    DestroyMenu(menu);
    DestroyAcceleratorTable(table);
    DestroyIcon(icon);
    DestroyWindow(window);
    EXPECT_EQ(CountHeld(), before);
}

class DialogLeaksTest : public DialogTest {};

TEST_F(DialogLeaksTest, DailyExposureWithItsItemDialog) {
    ExpectNothingLeft(200, [this] {
        DailyExposureState state;
        UiDriver ui;
        ui.OnWindow(kDailyExposureTitle,
                    [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDC_ADD, 0); });
        ui.OnWindow("Aggiungi", [](HWND dialog) {
            SetDlgItemTextW(dialog, IDC_LEVEL_EDIT, L"85");
            SetDlgItemTextW(dialog, IDC_TIME_EDIT, L"28800");
            PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
        ui.OnWindow(kDailyExposureTitle, [](HWND dialog) {
            EXPECT_EQ(TextOf(dialog, IDC_DAILY_LEVEL), "85.0");
            PostMessageW(dialog, WM_COMMAND, CMD_FILE_CLOSE, 0);
        });
        OpenDailyExposure(app_, state, owner_, {});
        ui.Finish();
    });
}

TEST(MainWindowLeaksTest, StartAndEnd) {
    ExpectNothingLeft(10, [] {
        UiDriver ui;
        ui.OnWindowOfClass("Tonvale_Class").Command(CMD_EXIT);
        RunApplication(GetModuleHandleW(nullptr), {}, SW_SHOWNORMAL);
        ui.Finish();
    });
}

}  // namespace
}  // namespace tonvale
