#include <windows.h>

#include <shellapi.h>
#include <shlwapi.h>

#include <memory>
#include <string>

#include "app/application_win.h"
#include "common/unicode_win.h"

namespace {

// The file that the command line names: its first argument, or all of it when that is a file, with
// blanks in its name and without quotes. Empty when there is none.
std::string FileArgument() {
    const wchar_t* all = PathGetArgsW(GetCommandLineW());
    if (PathFileExistsW(all)) return tonvale::Narrow(all);
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> arguments(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    return arguments && count > 1 ? tonvale::Narrow(arguments.get()[1]) : std::string();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
    // A library that lies beside the program or in the current folder is none of the system's.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    return tonvale::RunApplication(instance, FileArgument(), show);
}
