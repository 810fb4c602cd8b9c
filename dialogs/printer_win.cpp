#include "dialogs/printer_win.h"

#include <windows.h>

#include <array>
#include <utility>

#include "common/unicode_win.h"
#include "dialogs/gdi_canvas_win.h"
#include "dialogs/handles_win.h"

namespace tonvale {

namespace {

std::wstring_view SkipBlanks(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view() : text.substr(first);
}

// Takes what stands before the first "," off `rest`; the whole of it when there is none.
std::wstring TakePiece(std::wstring_view& rest) {
    const std::size_t comma = rest.find(L',');
    std::wstring piece(rest.substr(0, comma));
    rest = comma == std::wstring_view::npos ? std::wstring_view() : rest.substr(comma + 1);
    return piece;
}

// A document that is neither ended nor aborted is aborted with the printer.
class GdiPrinter : public Printer {
  public:
    explicit GdiPrinter(UniqueDc dc) : dc_(std::move(dc)), metrics_(ReadMetrics(dc_.get())) {
        canvas_ = std::make_unique<GdiCanvas>(dc_.get());
    }
    ~GdiPrinter() override { Abort(); }
    GdiPrinter(const GdiPrinter&) = delete;
    GdiPrinter& operator=(const GdiPrinter&) = delete;

    Size PageSize() const override { return {Capability(HORZRES), Capability(VERTRES)}; }
    Size Resolution() const override { return {Capability(LOGPIXELSX), Capability(LOGPIXELSY)}; }
    FontMetrics DefaultFontMetrics() const override { return metrics_; }
    int ColorCount() const override { return Capability(NUMCOLORS); }
    bool StartDocument(const std::string& name) override;
    bool StartPage() override { return ::StartPage(dc_.get()) > 0; }
    bool EndPage() override { return ::EndPage(dc_.get()) > 0; }
    bool EndDocument() override;
    void AbortDocument() override { Abort(); }
    Canvas& canvas() override { return *canvas_; }
    HDC dc() const { return dc_.get(); }

  private:
    int Capability(int index) const { return GetDeviceCaps(dc_.get(), index); }
    static FontMetrics ReadMetrics(HDC dc);
    void Abort();

    UniqueDc dc_;
    FontMetrics metrics_;
    std::unique_ptr<GdiCanvas> canvas_;  // goes before the device context
    bool has_document_ = false;
};

FontMetrics GdiPrinter::ReadMetrics(HDC dc) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return {static_cast<int>(metrics.tmHeight), static_cast<int>(metrics.tmInternalLeading),
            static_cast<int>(metrics.tmExternalLeading)};
}

bool GdiPrinter::StartDocument(const std::string& name) {
    const std::wstring wide_name = Widen(name);
    DOCINFOW document{};
    document.cbSize = sizeof(document);
    document.lpszDocName = wide_name.c_str();
    has_document_ = StartDocW(dc_.get(), &document) > 0;
    return has_document_;
}

bool GdiPrinter::EndDocument() {
    has_document_ = false;
    return EndDoc(dc_.get()) > 0;
}

void GdiPrinter::Abort() {
    if (has_document_) AbortDoc(dc_.get());
    has_document_ = false;
}

}  // namespace

std::optional<PrinterPlace> ParsePrinterPlace(std::wstring_view text) {
    PrinterPlace place;
    place.name = TakePiece(text);
    text = SkipBlanks(text);
    place.driver = TakePiece(text);
    place.port = std::wstring(SkipBlanks(text));
    if (place.name.empty() || place.driver.empty() || place.port.empty()) return std::nullopt;
    return place;
}

std::optional<PrinterPlace> DefaultPrinterPlace() {
    std::array<wchar_t, 1024> text{};
    GetProfileStringW(L"windows", L"device", L"", text.data(), static_cast<DWORD>(text.size()));
    return ParsePrinterPlace(text.data());
}

HDC DeviceContextOf(const Printer& printer) {
    const auto* opened_here = dynamic_cast<const GdiPrinter*>(&printer);
    return opened_here ? opened_here->dc() : nullptr;
}

std::unique_ptr<Printer> OpenDefaultPrinter() {
    const std::optional<PrinterPlace> place = DefaultPrinterPlace();
    if (!place) return nullptr;
    UniqueDc dc(
        CreateDCW(place->driver.c_str(), place->name.c_str(), place->port.c_str(), nullptr));
    if (!dc) return nullptr;
    return std::make_unique<GdiPrinter>(std::move(dc));
}

}  // namespace tonvale
