#include "calc/system_console.h"

#include <atomic>
#include <csignal>
#include <cstdio>

namespace tonvale {

namespace {

std::atomic<bool> is_interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may set no other");

void OnInterrupt(int signal) {
    is_interrupted = true;
    std::signal(signal, SIG_DFL);
}

void Put(std::string_view text, std::FILE* stream) {
    std::fwrite(text.data(), 1, text.size(), stream);
}

}  // namespace

SystemConsole::SystemConsole() {
    std::signal(SIGINT, OnInterrupt);
}

void SystemConsole::Write(std::string_view text) {
    Put(text, stdout);
}

void SystemConsole::WriteError(std::string_view text) {
    Put(text, stderr);
}

bool SystemConsole::IsInterrupted() const {
    return is_interrupted;
}

int SystemConsole::Finish(int status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    WriteError("tonvale-calc: impossibile scrivere sullo standard output\n");
    return kExitFailure;
}

}  // namespace tonvale
