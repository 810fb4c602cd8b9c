// A canvas that writes a picture as SVG. One device unit is one unit of the picture.
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

    void DrawLine(Point from, Point to, const Pen& pen) override;
    void FillRectangle(const Rect& rect, Color color) override;
    void FrameRectangle(const Rect& rect, const Pen& pen) override;
    void SetFont(const Font& font) override;
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
    // A line that goes on where the last one ended, with the same pen, becomes part of it.
    void EndPath();

    Size size_;
    Font font_;
    Color text_color_ = kBlack;
    std::string body_;
    std::vector<Point> path_;  // lines not yet written
    Pen path_pen_;
};

}  // namespace tonvale
