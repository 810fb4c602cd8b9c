#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <string>
#include <vector>

#include "calc/companion.h"
#include "calc/stream_console.h"
#include "common/unicode_win.h"

int wmain(int argc, wchar_t** argv) {
    // A library that lies beside the program or in the current folder is none of the system's.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // The same bytes as on every other system: UTF-8, lines ended by LF.
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(tonvale::Narrow(argv[i]));
    tonvale::StreamConsole console;
    const int status = tonvale::RunCompanion(arguments, tonvale::SystemFiles(), console);
    return console.Flush() ? status : tonvale::kExitFailure;
}
