// A canvas that writes a picture as SVG. One device unit is one unit of the picture, at 96 dpi.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/canvas.h"

namespace tonvale {

// Texts are measured by the mean character width of their face, as no fonts are at hand: exact for
// Courier, an approximation for proportional faces. Whoever shows the picture aligns them exactly.
class SvgCanvas final : public Canvas {
  public:
    // A white picture; Arial 14 until SetFont.
    explicit SvgCanvas(Size size);

    int Resolution() const override { return 96; }
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
    int MeasureWrappedText(int width, std::string_view text) override;

    // The whole document, UTF-8.
    std::string Document() const;

  private:
    int LineHeight() const;
    std::vector<std::string> WrapText(int width, std::string_view text);
    void AddText(double x, double baseline, std::string_view anchor, std::string_view text);
    void AddRectangle(const Rect& rect, std::string_view paint);

    Size size_;
    Font font_;
    Color text_color_ = kBlack;
    std::string body_;
};

}  // namespace tonvale
