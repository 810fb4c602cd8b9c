// What charts, tables and printouts are drawn on, in integer device units (y grows downwards).
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tonvale {

struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool operator==(const Rect&) const = default;
};

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const Color&) const = default;
};

inline constexpr Color kBlack{0, 0, 0};
inline constexpr Color kGrey{128, 128, 128};

// A solid line `width` device units wide, its ends and corners round.
struct Pen {
    Color color;
    int width = 1;
    bool operator==(const Pen&) const = default;
};

struct Font {
    std::string face;
    int character_height = 0;  // device units, without internal leading
    int weight = 400;          // 400 regular, 700 bold
    bool italic = false;
    bool operator==(const Font&) const = default;
};

enum class HorizontalAlignment { kLeft, kCenter, kRight };
enum class VerticalAlignment { kTop, kCenter, kBottom };  // kTop whenever the text wraps

struct TextLayout {
    HorizontalAlignment horizontal = HorizontalAlignment::kLeft;
    VerticalAlignment vertical = VerticalAlignment::kTop;
    bool word_wrap = false;  // else a single line
    bool operator==(const TextLayout&) const = default;
};

// Text has a transparent background. Nothing is clipped but by the device.
class Canvas {
  public:
    virtual ~Canvas() = default;
    // Device units an inch.
    virtual int Resolution() const = 0;
    // As long on this device as `length` pixels on a screen of 96 dpi: the measure of line widths,
    // markers and gaps. At least 1.
    int Scaled(int length) const { return std::max(1, length * Resolution() / 96); }

    // Joins the points by lines, from the first to the last, both included.
    virtual void DrawPolyline(std::span<const Point> points, const Pen& pen) = 0;
    void DrawLine(Point from, Point to, const Pen& pen) {
        DrawPolyline(std::array<Point, 2>{from, to}, pen);
    }
    // Shapes filled and outlined: the polygon of these corners, the ellipse that touches the edges
    // of `rect`.
    virtual void DrawPolygon(std::span<const Point> corners, Color fill, const Pen& outline) = 0;
    virtual void DrawEllipse(const Rect& rect, Color fill, const Pen& outline) = 0;
    virtual void FillRectangle(const Rect& rect, Color color) = 0;
    virtual void FrameRectangle(const Rect& rect, const Pen& pen) = 0;
    virtual void SetFont(const Font& font) = 0;  // of the texts that follow
    virtual const Font& CurrentFont() const = 0;
    virtual void SetTextColor(Color color) = 0;  // black at first
    // One line of text whose upper left corner is `at`.
    virtual void DrawTextAt(Point at, std::string_view text) = 0;
    virtual void DrawTextIn(const Rect& rect, std::string_view text, TextLayout layout) = 0;
    // Size of one line of text in the current font.
    virtual Size MeasureText(std::string_view text) = 0;
    // From the top of a line of text to the line that its letters stand on, in the current font.
    virtual int FontAscent() { return MeasureText("x").height * 4 / 5; }
    // Height of `text` word-wrapped to `width`.
    virtual int MeasureWrappedText(int width, std::string_view text) = 0;
};

}  // namespace tonvale
