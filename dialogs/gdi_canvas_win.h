// A Canvas on a device context: the screen, a bitmap or a printer.
#pragma once

#include <windows.h>

#include "common/canvas.h"
#include "dialogs/handles_win.h"

namespace tonvale {

// `dc` must outlive the canvas, which leaves it as it found it.
class GdiCanvas : public Canvas {
  public:
    explicit GdiCanvas(HDC dc);  // of the resolution that the device says it has
    GdiCanvas(HDC dc, int resolution);
    ~GdiCanvas() override;
    GdiCanvas(const GdiCanvas&) = delete;
    GdiCanvas& operator=(const GdiCanvas&) = delete;

    int Resolution() const override { return resolution_; }
    void DrawPolyline(std::span<const Point> points, const Pen& pen) override;
    void DrawPolygon(std::span<const Point> corners, Color fill, const Pen& outline) override;
    void DrawEllipse(const Rect& rect, Color fill, const Pen& outline) override;
    void FillRectangle(const Rect& rect, Color color) override;
    void FrameRectangle(const Rect& rect, const Pen& pen) override;
    void SetFont(const Font& font) override;
    const Font& CurrentFont() const override { return font_; }
    void SetTextColor(Color color) override;
    void DrawTextAt(Point at, std::string_view text) override;
    void DrawTextIn(const Rect& rect, std::string_view text, TextLayout layout) override;
    Size MeasureText(std::string_view text) override;
    int FontAscent() override;
    int MeasureWrappedText(int width, std::string_view text) override;

  private:
    HDC dc_;
    int resolution_;
    int saved_state_;
    Font font_;
    UniqueFont font_handle_;
};

}  // namespace tonvale
