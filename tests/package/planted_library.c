// A library that nobody should load: it leaves a file beside itself when somebody does. Compiled
// with CONTROL, a program that loads such libraries as programs do that take no care.
#include <windows.h>

#ifdef CONTROL
int main(void) {
    timeBeginPeriod(1);
    return LoadLibraryW(L"RICHED20.DLL") == NULL;
}
#else
BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID reserved) {
    static const wchar_t kMark[] = L".loaded";
    wchar_t name[MAX_PATH + sizeof kMark];
    (void)reserved;
    if (reason == DLL_PROCESS_ATTACH) {
        GetModuleFileNameW(library, name, MAX_PATH);
        lstrcatW(name, kMark);
        CloseHandle(CreateFileW(name, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
    }
    return TRUE;
}
#endif
