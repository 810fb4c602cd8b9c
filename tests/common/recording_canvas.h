// A canvas that writes down what is drawn on it. Every character is as wide as half its font's
// height, and a wrapped text takes one font height a line.
#pragma once

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

    std::vector<DrawnText> texts;
    std::vector<DrawnLine> lines;

    void DrawLine(Point from, Point to, const Pen& pen) override {
        lines.push_back({from, to, pen});
    }
    void FillRectangle(const Rect&, Color) override {}
    void FrameRectangle(const Rect& rect, const Pen& pen) override {
        DrawLine({rect.left, rect.top}, {rect.right, rect.top}, pen);
        DrawLine({rect.right, rect.top}, {rect.right, rect.bottom}, pen);
        DrawLine({rect.right, rect.bottom}, {rect.left, rect.bottom}, pen);
        DrawLine({rect.left, rect.bottom}, {rect.left, rect.top}, pen);
    }
    void SetFont(const Font& font) override { font_ = font; }
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
    int LineHeight() const { return font_.character_height > 0 ? font_.character_height : 12; }

    Font font_;
    Color color_ = kBlack;
};

inline RecordingCanvas DrawnBy(const ResultView& view, ViewKind kind, const Rect& area,
                               const DrawingStyle& style = {}) {
    RecordingCanvas canvas;
    view.Draw(kind, canvas, area, style);
    return canvas;
}

}  // namespace tonvale
