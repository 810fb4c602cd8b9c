// tonvale_monkey SEED EVENTS [FOLDER]
//
// Uses the program at random until EVENTS are done, starting it again when it has been closed.
// FOLDER holds files to drop on it. Prints what it does as it does it. The exit status is 0 when
// all went well, 3 when the program stopped answering or a window could not be closed.
#include <windows.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "app/application_win.h"
#include "tests/monkey/monkey_win.h"

namespace tonvale {
namespace {

constexpr UINT kTickMs = 10;
constexpr ULONGLONG kDeadlineMs = 60000;
constexpr int kStuck = 3;

Monkey* monkey = nullptr;
std::atomic<ULONGLONG> last_tick{0};

[[noreturn]] void EndStuck(const char* why) {
    std::printf("%s\n", why);
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), kStuck);
    std::abort();
}

void WatchOver(const std::atomic<bool>& done) {
    constexpr DWORD kLookEveryMs = 200;
    while (!done) {
        Sleep(kLookEveryMs);
        if (GetTickCount64() - last_tick > kDeadlineMs) EndStuck("no answer");
    }
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    last_tick = GetTickCount64();
    monkey->Tick();
    if (monkey->is_trapped()) EndStuck("no way out, or no window");
}

std::vector<std::wstring> FilesIn(const std::filesystem::path& folder) {
    std::vector<std::wstring> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(std::filesystem::absolute(entry.path()).wstring());
    }
    return files;
}

int Run(unsigned seed, int events, const std::vector<std::wstring>& files) {
    Monkey player(seed, events, files);
    monkey = &player;
    last_tick = GetTickCount64();
    std::atomic<bool> done{false};
    std::thread watch([&done] { WatchOver(done); });
    const UINT_PTR timer = SetTimer(nullptr, 0, kTickMs, OnTimer);
    int starts = 0;
    for (; player.events_left() > 0; ++starts) {
        RunApplication(GetModuleHandleW(nullptr), {}, SW_SHOWNORMAL);
    }
    KillTimer(nullptr, timer);
    done = true;
    watch.join();
    monkey = nullptr;
    std::printf("seed %u: %d events, %d starts, all well\n", seed, events, starts);
    return 0;
}

}  // namespace
}  // namespace tonvale

int main(int argc, char** argv) {
    if (argc < 3) {
        std::printf("Usage: %s SEED EVENTS [FOLDER]\n", argv[0]);
        return 2;
    }
    const auto seed = static_cast<unsigned>(std::strtoul(argv[1], nullptr, 10));
    const int events = std::atoi(argv[2]);
    return tonvale::Run(seed, events,
                        argc > 3 ? tonvale::FilesIn(argv[3]) : std::vector<std::wstring>());
}
