#include "common/svg_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "common/markup.h"
#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

// In shares of the character height; those of Arial, which others come close to.
constexpr double kLineHeight = 1.15;
constexpr double kAscent = 0.905;
constexpr double kCapitalHeight = 0.716;
constexpr double kDescent = 0.212;
constexpr double kFixedPitchWidth = 0.6;
constexpr double kProportionalWidth = 0.5;

std::string Attribute(std::string_view name, std::string_view value) {
    std::string text = " ";
    text.append(name).append("=\"").append(value).append("\"");
    return text;
}

std::string Attribute(std::string_view name, double value) {
    return Attribute(name, FormatHundredths(value));
}

std::string HexColor(Color color) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned part : {color.red, color.green, color.blue}) {
        text += kHexDigits[part >> 4];
        text += kHexDigits[part & 0xF];
    }
    return text;
}

bool IsFixedPitch(const Font& font) {
    return LowerCase(font.face).find("courier") != std::string::npos;
}

std::string FontFamily(const Font& font) {
    return font.face + (IsFixedPitch(font) ? ", monospace" : ", Helvetica, sans-serif");
}

// A device unit is a pixel: its middle is where a line runs.
double PixelMiddle(int position) {
    return position + 0.5;
}

double Middle(int from, int to) {
    return PixelMiddle(from) + (to - from) / 2.0;
}

std::string PointList(std::span<const Point> points) {
    std::string list;
    for (const Point& point : points) {
        if (!list.empty()) list += ' ';
        list +=
            FormatHundredths(PixelMiddle(point.x)) + ',' + FormatHundredths(PixelMiddle(point.y));
    }
    return list;
}

// Horizontal and vertical strokes stay sharp.
std::string Stroke(const Pen& pen, bool is_sharp) {
    std::string text =
        Attribute("stroke", HexColor(pen.color)) + Attribute("stroke-width", pen.width);
    text += is_sharp ? Attribute("shape-rendering", "crispEdges")
                     : Attribute("stroke-linejoin", "round") + Attribute("stroke-linecap", "round");
    return text;
}

double AnchorX(const Rect& rect, HorizontalAlignment alignment) {
    if (alignment == HorizontalAlignment::kLeft) return rect.left;
    if (alignment == HorizontalAlignment::kRight) return rect.right;
    return (rect.left + rect.right) / 2.0;
}

std::string_view AnchorName(HorizontalAlignment alignment) {
    constexpr std::array<std::string_view, 3> kNames{"start", "middle", "end"};
    return kNames[static_cast<std::size_t>(alignment)];
}

double BaselineY(const Rect& rect, VerticalAlignment alignment, int character_height) {
    if (alignment == VerticalAlignment::kTop) return rect.top + kAscent * character_height;
    if (alignment == VerticalAlignment::kBottom) return rect.bottom - kDescent * character_height;
    return (rect.top + rect.bottom + kCapitalHeight * character_height) / 2.0;
}

}  // namespace

SvgCanvas::SvgCanvas(Size size) : size_(size), font_{"Arial", 14} {}

void SvgCanvas::DrawPolyline(std::span<const Point> points, const Pen& pen) {
    bool is_sharp = true;
    for (std::size_t i = 1; i < points.size(); ++i) {
        is_sharp = is_sharp && (points[i].x == points[i - 1].x || points[i].y == points[i - 1].y);
    }
    body_ += "<polyline" + Attribute("points", PointList(points)) + Attribute("fill", "none") +
             Stroke(pen, is_sharp) + "/>\n";
}

void SvgCanvas::DrawPolygon(std::span<const Point> corners, Color fill, const Pen& outline) {
    body_ += "<polygon" + Attribute("points", PointList(corners)) +
             Attribute("fill", HexColor(fill)) + Stroke(outline, false) + "/>\n";
}

void SvgCanvas::DrawEllipse(const Rect& rect, Color fill, const Pen& outline) {
    body_ += "<ellipse" + Attribute("cx", Middle(rect.left, rect.right)) +
             Attribute("cy", Middle(rect.top, rect.bottom)) + Attribute("rx", rect.Width() / 2.0) +
             Attribute("ry", rect.Height() / 2.0) + Attribute("fill", HexColor(fill)) +
             Stroke(outline, false) + "/>\n";
}

void SvgCanvas::AddRectangle(const Rect& rect, std::string_view paint) {
    body_ += "<rect" + Attribute("x", rect.left) + Attribute("y", rect.top) +
             Attribute("width", std::max(rect.Width(), 0)) +
             Attribute("height", std::max(rect.Height(), 0));
    body_ += paint;
    body_ += "/>\n";
}

void SvgCanvas::FillRectangle(const Rect& rect, Color color) {
    AddRectangle(rect, Attribute("fill", HexColor(color)));
}

void SvgCanvas::FrameRectangle(const Rect& rect, const Pen& pen) {
    AddRectangle(rect, Attribute("fill", "none") + Stroke(pen, true));
}

void SvgCanvas::SetFont(const Font& font) {
    font_ = font;
}

void SvgCanvas::SetTextColor(Color color) {
    text_color_ = color;
}

void SvgCanvas::AddText(double x, double baseline, std::string_view anchor, std::string_view text) {
    body_ += "<text" + Attribute("x", x) + Attribute("y", baseline) +
             Attribute("text-anchor", anchor) + Attribute("fill", HexColor(text_color_)) +
             Attribute("font-family", EscapeMarkup(FontFamily(font_))) +
             Attribute("font-size", font_.character_height);
    if (font_.weight != 400) body_ += Attribute("font-weight", font_.weight);
    if (font_.italic) body_ += Attribute("font-style", "italic");
    body_ += ">" + EscapeMarkup(text) + "</text>\n";
}

void SvgCanvas::DrawTextAt(Point at, std::string_view text) {
    AddText(at.x, at.y + kAscent * font_.character_height, "start", text);
}

void SvgCanvas::DrawTextIn(const Rect& rect, std::string_view text, TextLayout layout) {
    const double x = AnchorX(rect, layout.horizontal);
    const std::string_view anchor = AnchorName(layout.horizontal);
    if (!layout.word_wrap) {
        return AddText(x, BaselineY(rect, layout.vertical, font_.character_height), anchor, text);
    }
    double baseline = rect.top + kAscent * font_.character_height;
    for (const std::string& line : WrapText(rect.Width(), text)) {
        AddText(x, baseline, anchor, line);
        baseline += LineHeight();
    }
}

int SvgCanvas::LineHeight() const {
    return static_cast<int>(std::ceil(kLineHeight * font_.character_height));
}

Size SvgCanvas::MeasureText(std::string_view text) {
    const double width = IsFixedPitch(font_) ? kFixedPitchWidth : kProportionalWidth;
    const double length = static_cast<double>(CharacterCount(text));
    return {static_cast<int>(std::lround(length * width * font_.character_height)), LineHeight()};
}

std::vector<std::string> SvgCanvas::WrapText(int width, std::string_view text) {
    std::vector<std::string> wrapped;
    for (std::string_view line : SplitLines(text)) {
        std::string row;
        while (!line.empty()) {
            // A word with the blanks before it.
            const std::size_t begin = std::min(line.find_first_not_of(' '), line.size());
            const std::string_view word = line.substr(0, line.find(' ', begin));
            if (!row.empty() && MeasureText(row + std::string(word)).width > width) {
                wrapped.push_back(std::move(row));
                row = TrimBlanks(word);
            } else {
                row += word;
            }
            line.remove_prefix(word.size());
        }
        wrapped.push_back(std::move(row));
    }
    return wrapped;
}

int SvgCanvas::MeasureWrappedText(int width, std::string_view text) {
    return static_cast<int>(WrapText(width, text).size()) * LineHeight();
}

std::string SvgCanvas::Document() const {
    const std::string width = FormatInteger(size_.width);
    const std::string height = FormatInteger(size_.height);
    return "<svg" + Attribute("xmlns", "http://www.w3.org/2000/svg") + Attribute("width", width) +
           Attribute("height", height) + Attribute("viewBox", "0 0 " + width + " " + height) +
           Attribute("xml:space", "preserve") + ">\n<rect width=\"100%\" height=\"100%\"" +
           Attribute("fill", "#ffffff") + "/>\n" + body_ + "</svg>\n";
}

}  // namespace tonvale
