#include "common/svg_canvas.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/common/golden.h"

namespace tonvale {
namespace {

TEST(SvgCanvas, DrawsLinesShapesAndTextsInTheirOrder) {
    constexpr Pen kRedPen{{255, 0, 16}, 2};
    constexpr std::array<Point, 3> kPoints{{{0, 0}, {10, 5}, {20, 0}}};
    SvgCanvas canvas({100, 100});
    canvas.DrawPolyline(kPoints, kRedPen);
    canvas.DrawLine({20, 0}, {30, 0}, {kGrey, 1});
    canvas.DrawTextAt({1, 2}, "dopo");
    canvas.DrawPolygon(kPoints, kGrey, kRedPen);
    canvas.DrawEllipse({10, 20, 19, 30}, kBlack, kRedPen);
    canvas.FrameRectangle({10, 20, 5, 70}, kRedPen);
    canvas.SetFont({"Arial \"X\"", 10, 700, true});
    canvas.SetTextColor(kGrey);
    canvas.DrawTextIn({0, 0, 100, 50}, "a<b & \"è\"\x01\xFF",
                      {HorizontalAlignment::kCenter, VerticalAlignment::kCenter});
    canvas.DrawTextIn({0, 0, 100, 50}, "r",
                      {HorizontalAlignment::kRight, VerticalAlignment::kBottom});
    // Measured and wrapped by the mean width of the face.
    canvas.SetFont({"Courier New", 10});
    canvas.DrawTextIn({0, 0, 60, 99}, "uno due tre", {.word_wrap = true});
    ExpectGolden("svg", canvas.Document());
    EXPECT_EQ(canvas.MeasureText("perché"), (Size{36, 12}));
    EXPECT_EQ(canvas.MeasureWrappedText(60, "uno due tre\nquattro"), 3 * 12);
    EXPECT_EQ(canvas.MeasureWrappedText(1, "lunghissimo"), 12);
}

}  // namespace

}  // namespace tonvale
