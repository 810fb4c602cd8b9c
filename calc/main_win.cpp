#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <string>
#include <vector>

#include "calc/companion.h"
#include "calc/system_console.h"
#include "common/unicode_win.h"

namespace {

// A console that was opened for this program goes with it: started by a folder dropped on its icon,
// the program waits until its complaints have been read.
void WaitUntilRead() {
    DWORD process = 0;
    if (GetConsoleProcessList(&process, 1) != 1 || _isatty(_fileno(stdin)) == 0) return;
    std::fputs("Premere Invio per chiudere.", stderr);
    std::getchar();
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    // A library that lies beside the program or in the current folder is none of the system's.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // The same bytes as on every other system: UTF-8, lines ended by LF.
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(tonvale::Narrow(argv[i]));
    tonvale::SystemConsole console;
    const int status =
        console.Finish(tonvale::RunCompanion(arguments, tonvale::SystemFiles(), console));
    if (status == tonvale::kExitFailure) WaitUntilRead();
    return status;
}
