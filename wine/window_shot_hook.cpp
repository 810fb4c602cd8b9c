// Runs inside the program whose windows are pictured.
#include <windows.h>

#include "wine/window_picture.h"
#include "wine/window_shot.h"

namespace {

void TakeShot() {
    wchar_t path[MAX_PATH] = {};
    if (GetEnvironmentVariableW(tonvale::shot::kFileVariable, path, MAX_PATH) == 0) return;
    if (!tonvale::SavePicture(tonvale::VisibleWindows(), path)) return;
    HANDLE done = OpenEventW(EVENT_MODIFY_STATE, FALSE, tonvale::shot::kDoneEvent);
    if (!done) return;
    SetEvent(done);
    CloseHandle(done);
}

}  // namespace

// A hook on the messages that the program's thread takes out of its queue, in whatever loop.
extern "C" __declspec(dllexport) LRESULT CALLBACK
    TakeShotHook(int code, WPARAM removed, LPARAM parameter) {
    static const UINT shot_message = RegisterWindowMessageW(tonvale::shot::kMessage);
    const auto* message = reinterpret_cast<const MSG*>(parameter);
    if (code == HC_ACTION && removed == PM_REMOVE && message->message == shot_message) TakeShot();
    return CallNextHookEx(nullptr, code, removed, parameter);
}
