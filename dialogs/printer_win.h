// The default printer of the system.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "common/printer.h"

namespace tonvale {

// A printer as the system profile names it.
struct PrinterPlace {
    std::wstring name;
    std::wstring driver;
    std::wstring port;
    bool operator==(const PrinterPlace&) const = default;
};

// Takes "name,driver, port" apart; nullopt when a piece is missing.
std::optional<PrinterPlace> ParsePrinterPlace(std::wstring_view text);

// The place of the default printer; nullopt when there is none.
std::optional<PrinterPlace> DefaultPrinterPlace();

// The device context of a printer opened here; nullptr of any other.
HDC DeviceContextOf(const Printer& printer);

// Opens the default printer; nullptr when there is none or its driver fails.
std::unique_ptr<Printer> OpenDefaultPrinter();

}  // namespace tonvale
