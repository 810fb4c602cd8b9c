// Keeps a Wine session alive: as long as this program has its window, Wine's server and desktop
// stay, and every other program starts in a fraction of the time. `wineserver -k` ends it.
#include <windows.h>

int main() {
    HWND window = CreateWindowW(L"STATIC", L"Tonvale keeper", WS_POPUP, 0, 0, 1, 1, nullptr,
                                nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!window) return 1;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}
