#include <string>
#include <vector>

#include "calc/companion.h"
#include "calc/system_console.h"

int main(int argc, char** argv) {
    tonvale::SystemConsole console;
    return console.Finish(
        tonvale::RunCompanion({argv + 1, argv + argc}, tonvale::SystemFiles(), console));
}
