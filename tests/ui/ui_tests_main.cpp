#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <ole2.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    OleInitialize(nullptr);
    LoadLibraryW(L"RICHED32.DLL");
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}
