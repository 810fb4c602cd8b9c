#include "app/page_setup_win.h"

#include <commdlg.h>
#include <winspool.h>

#include <cstddef>
#include <string>
#include <vector>

#include "dialogs/handles_win.h"

namespace tonvale {
namespace {

struct PrinterCloser {
    static void Close(HANDLE printer) noexcept { ClosePrinter(printer); }
};
using UniquePrinter = UniqueHandle<HANDLE, PrinterCloser>;

// Empty when there is no default printer.
std::wstring DefaultPrinterName(HWND owner) {
    PAGESETUPDLGW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.Flags = PSD_RETURNDEFAULT | PSD_NOWARNING;
    const BOOL found = PageSetupDlgW(&request);
    const UniqueGlobal settings(request.hDevMode);
    const UniqueGlobal names(request.hDevNames);
    const auto* text =
        found && names ? static_cast<const wchar_t*>(GlobalLock(names.get())) : nullptr;
    if (!text) return {};
    std::wstring name = text + reinterpret_cast<const DEVNAMES*>(text)->wDeviceOffset;
    GlobalUnlock(names.get());
    return name;
}

UniquePrinter OpenPrinterByName(std::wstring& name) {
    PRINTER_DEFAULTSW access{nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE printer = nullptr;
    return UniquePrinter(OpenPrinterW(name.data(), &printer, &access) ? printer : nullptr);
}

// A printer with its settings: one and the same call of the driver measures, asks and answers.
class PrinterSettings {
  public:
    PrinterSettings(HWND owner, HANDLE printer, std::wstring& name)
        : owner_(owner), printer_(printer), name_(name) {}

    // The size of all settings, the driver's own included; 0 or less on failure.
    LONG Size() const { return Call(nullptr, nullptr, 0); }

    // Shows the driver's dialog over settings that carry the printer's name alone; `chosen` has
    // room for all. IDOK, IDCANCEL, or a negative number on failure.
    LONG Ask(DEVMODEW* chosen) const {
        DEVMODEW start{};
        start.dmSize = sizeof start;
        start.dmSpecVersion = DM_SPECVERSION;
        lstrcpynW(start.dmDeviceName, name_.c_str(), CCHDEVICENAME);
        return Call(chosen, &start, DM_IN_BUFFER | DM_PROMPT | DM_OUT_BUFFER);
    }

    bool Store(DEVMODEW* chosen) const {
        PRINTER_INFO_9W defaults{chosen};
        return SetPrinterW(printer_, 9, reinterpret_cast<BYTE*>(&defaults), 0) != 0;
    }

  private:
    LONG Call(DEVMODEW* out, DEVMODEW* in, DWORD mode) const {
        return DocumentPropertiesW(owner_, printer_, name_.data(), out, in, mode);
    }

    HWND owner_;
    HANDLE printer_;
    std::wstring& name_;
};

}  // namespace

bool PageSetup(HWND owner) {
    std::wstring name = DefaultPrinterName(owner);
    if (name.empty()) return true;
    const UniquePrinter printer = OpenPrinterByName(name);
    if (!printer) return false;
    const PrinterSettings settings(owner, printer.get(), name);
    const LONG size = settings.Size();
    if (size < static_cast<LONG>(sizeof(DEVMODEW))) return false;
    std::vector<std::byte> buffer(static_cast<std::size_t>(size));
    auto* chosen = reinterpret_cast<DEVMODEW*>(buffer.data());
    const LONG answer = settings.Ask(chosen);
    if (answer < 0) return false;
    return answer != IDOK || settings.Store(chosen);
}

}  // namespace tonvale
