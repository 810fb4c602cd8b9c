// What a console is on POSIX systems.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

#include "calc/system_console.h"

namespace tonvale {

namespace {

// The opener of the desktop ends at once where it fails; some stay as long as the browser does.
bool EndsWell(pid_t opener) {
    using namespace std::chrono_literals;
    for (int turn = 0; turn < 100; ++turn) {
        int status = 0;
        if (waitpid(opener, &status, WNOHANG) == opener) {
            return WIFEXITED(status) && WEXITSTATUS(status) == 0;
        }
        std::this_thread::sleep_for(20ms);
    }
    return true;
}

}  // namespace

bool SystemConsole::ShowsProgress() const {
    return isatty(STDERR_FILENO) != 0;
}

bool SystemConsole::OpenDocument(const std::string& path) {
    std::error_code error;
    std::string absolute = std::filesystem::absolute(path, error).string();
    std::string opener = "xdg-open";
    std::array<char*, 3> arguments{opener.data(), absolute.data(), nullptr};
    posix_spawn_file_actions_t actions;
    if (error || posix_spawn_file_actions_init(&actions) != 0) return false;
    // What a browser has to tell is not for this terminal.
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const bool started =
        posix_spawnp(&child, opener.c_str(), &actions, nullptr, arguments.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    return started && EndsWell(child);
}

}  // namespace tonvale
