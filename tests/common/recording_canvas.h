// A canvas that writes down what is drawn on it. Every character is as wide as half its font's
// height, and a wrapped text takes one font height a line.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "common/canvas.h"
#include "common/result_view.h"
#include "common/text.h"

namespace tonvale {

class RecordingCanvas final : public Canvas {
  public:
    struct DrawnText {
        Rect rect;  // for a text at a point: empty, at the point
        std::string text;
        TextLayout layout;
        Font font;
        Color color;
    };
    struct DrawnLine {
        Point from;
        Point to;
        Pen pen;
        bool operator==(const DrawnLine&) const = default;
    };

    struct DrawnShape {
        std::vector<Point> corners;  // two of an ellipse: those of the rectangle around it
        Color fill;
    };

    std::vector<DrawnText> texts;
    std::vector<DrawnLine> lines;
    std::vector<DrawnShape> shapes;
    std::vector<Rect> fills;

    int resolution = 96;

    int Resolution() const override { return resolution; }
    void DrawPolyline(std::span<const Point> points, const Pen& pen) override {
        for (std::size_t i = 1; i < points.size(); ++i) {
            lines.push_back({points[i - 1], points[i], pen});
        }
    }
    void DrawPolygon(std::span<const Point> corners, Color fill, const Pen&) override {
        shapes.push_back({{corners.begin(), corners.end()}, fill});
    }
    void DrawEllipse(const Rect& rect, Color fill, const Pen&) override {
        shapes.push_back({{{rect.left, rect.top}, {rect.right, rect.bottom}}, fill});
    }
    void FillRectangle(const Rect& rect, Color) override { fills.push_back(rect); }
    void FrameRectangle(const Rect& rect, const Pen& pen) override {
        DrawLine({rect.left, rect.top}, {rect.right, rect.top}, pen);
        DrawLine({rect.right, rect.top}, {rect.right, rect.bottom}, pen);
        DrawLine({rect.right, rect.bottom}, {rect.left, rect.bottom}, pen);
        DrawLine({rect.left, rect.bottom}, {rect.left, rect.top}, pen);
    }
    void SetFont(const Font& font) override { font_ = font; }
    const Font& CurrentFont() const override { return font_; }
    void SetTextColor(Color color) override { color_ = color; }
    void DrawTextAt(Point at, std::string_view text) override {
        texts.push_back({{at.x, at.y, at.x, at.y}, std::string(text), {}, font_, color_});
    }
    void DrawTextIn(const Rect& rect, std::string_view text, TextLayout layout) override {
        texts.push_back({rect, std::string(text), layout, font_, color_});
    }
    Size MeasureText(std::string_view text) override {
        return {static_cast<int>(CharacterCount(text)) * LineHeight() / 2, LineHeight()};
    }
    int MeasureWrappedText(int width, std::string_view text) override {
        int rows = 0;
        for (const std::string_view line : SplitLines(text)) {
            rows += 1 + (width > 0 ? MeasureText(line).width / width : 0);
        }
        return rows * LineHeight();
    }

  private:
    int LineHeight() const { return font_.character_height; }

    Font font_{.face = "Arial", .character_height = 12};
    Color color_ = kBlack;
};

inline RecordingCanvas DrawnBy(const ResultView& view, ViewKind kind, const Rect& area,
                               const DrawingStyle& style = {}) {
    RecordingCanvas canvas;
    view.Page(kind)->draw(canvas, area, style);
    return canvas;
}

}  // namespace tonvale
