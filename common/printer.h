// A printer that documents are drawn on, page after page.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "common/canvas.h"

namespace tonvale {

// Metrics of the device's default font, in device units.
struct FontMetrics {
    int height = 0;  // tmHeight: ascent and descent, internal leading included
    int internal_leading = 0;
    int external_leading = 0;
};

class Printer {
  public:
    virtual ~Printer() = default;
    virtual Size PageSize() const = 0;    // printable area, device pixels
    virtual Size Resolution() const = 0;  // dots per inch, across and down
    virtual FontMetrics DefaultFontMetrics() const = 0;
    virtual int ColorCount() const = 0;  // -1: more than the device can count
    virtual bool StartDocument(const std::string& name) = 0;
    virtual bool StartPage() = 0;
    virtual bool EndPage() = 0;
    virtual bool EndDocument() = 0;
    virtual void AbortDocument() = 0;
    virtual Canvas& canvas() = 0;  // valid between StartPage and EndPage
};

// Opens the default printer; nothing when there is none.
using PrinterOpener = std::function<std::unique_ptr<Printer>()>;

}  // namespace tonvale
