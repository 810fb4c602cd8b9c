// A printer that writes down what is printed on it, and can be told to fail.
#pragma once

#include <string>
#include <vector>

#include "common/printer.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {

class FakePrinter final : public Printer {
  public:
    Size page{4000, 6600};
    FontMetrics metrics{60, 10, 0};
    int colors = 256;
    std::size_t fail_at_page = 0;  // StartPage of this page fails; 0: none

    std::string document;
    std::vector<std::vector<RecordingCanvas::DrawnText>> pages;
    std::vector<RecordingCanvas> canvases;  // of the pages: all that is drawn
    bool ended = false;
    bool aborted = false;

    Size PageSize() const override { return page; }
    Size Resolution() const override { return {600, 600}; }
    FontMetrics DefaultFontMetrics() const override { return metrics; }
    int ColorCount() const override { return colors; }
    bool StartDocument(const std::string& name) override {
        document = name;
        return true;
    }
    bool StartPage() override {
        canvas_ = RecordingCanvas();
        return pages.size() + 1 != fail_at_page;
    }
    bool EndPage() override {
        pages.push_back(canvas_.texts);
        canvases.push_back(canvas_);
        return true;
    }
    bool EndDocument() override {
        ended = true;
        return true;
    }
    void AbortDocument() override { aborted = true; }
    Canvas& canvas() override { return canvas_; }

  private:
    RecordingCanvas canvas_;
};

}  // namespace tonvale
