#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <string>

#include "app/application_win.h"
#include "common/unicode_win.h"

namespace {

// The first argument of the command line; empty when there is none.
std::string FirstArgument() {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> arguments(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    return arguments && count > 1 ? tonvale::Narrow(arguments.get()[1]) : std::string();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
    return tonvale::RunApplication(instance, FirstArgument(), show);
}
