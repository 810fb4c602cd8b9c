// What every dialog needs of the running program, made at start-up and handed down by reference.
#pragma once

#include <windows.h>

#include <string>

#include "common/file_system.h"
#include "common/printer.h"

namespace tonvale {

class DialogTips;
class HelpViewer;

struct ClipboardFormats {
    UINT csv = 0;
    UINT rich_text = 0;
    UINT rich_text_objects = 0;
    UINT embedded_object = 0;
};

struct AppContext {
    HINSTANCE instance = nullptr;
    HWND main_window = nullptr;
    std::string program_folder;  // UTF-8; a bare drive ends with "\"
    ClipboardFormats clipboard;
    FileSystem* files = nullptr;
    PrinterOpener open_printer;
    DialogTips* tips = nullptr;  // the one tool-tip window
    HelpViewer* help = nullptr;  // never null
};

}  // namespace tonvale
