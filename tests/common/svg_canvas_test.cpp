#include "common/svg_canvas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace tonvale {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr Pen kRedPen{{255, 0, 16}, 2};

TEST(SvgCanvas, DrawsLinesAndShapesInTheirOrder) {
    SvgCanvas canvas({100, 100});
    const std::array<Point, 3> points{{{0, 0}, {10, 5}, {20, 0}}};
    canvas.DrawPolyline(points, kRedPen);
    canvas.DrawLine({20, 0}, {30, 0}, {kGrey, 1});
    canvas.DrawTextAt({1, 2}, "dopo");
    canvas.DrawPolygon(points, kGrey, kRedPen);
    canvas.DrawEllipse({10, 20, 19, 30}, kBlack, kRedPen);
    canvas.FrameRectangle({10, 20, 5, 70}, kRedPen);
    const std::string picture = canvas.Document();
    EXPECT_THAT(picture, HasSubstr("<polyline points=\"0.5,0.5 10.5,5.5 20.5,0.5\""));
    EXPECT_THAT(picture, HasSubstr("stroke=\"#808080\" stroke-width=\"1\" "
                                   "shape-rendering=\"crispEdges\"/>\n<text"));
    EXPECT_THAT(picture, HasSubstr(">dopo</text>\n<polygon points=\"0.5,0.5 10.5,5.5 20.5,0.5\" "
                                   "fill=\"#808080\" stroke=\"#ff0010\""));
    EXPECT_THAT(picture, HasSubstr("<rect x=\"10\" y=\"20\" width=\"0\" height=\"50\" "));
    EXPECT_THAT(picture, HasSubstr("<ellipse cx=\"15\" cy=\"25.5\" rx=\"4.5\" ry=\"5\" "));
}

TEST(SvgCanvas, EscapesAndPlacesTexts) {
    SvgCanvas canvas({100, 100});
    canvas.SetFont({"Arial \"X\"", 10, 700, true});
    canvas.SetTextColor(kGrey);
    canvas.DrawTextIn({0, 0, 100, 50}, "a<b & \"è\"\x01\xFF",
                      {HorizontalAlignment::kCenter, VerticalAlignment::kCenter});
    canvas.DrawTextIn({0, 0, 100, 50}, "r",
                      {HorizontalAlignment::kRight, VerticalAlignment::kBottom});
    EXPECT_THAT(canvas.Document(),
                AllOf(HasSubstr("<text x=\"50\" y=\"28.58\" text-anchor=\"middle\" "
                                "fill=\"#808080\" font-family=\"Arial &quot;X&quot;, Helvetica, "
                                "sans-serif\" font-size=\"10\" font-weight=\"700\" "
                                "font-style=\"italic\">a&lt;b &amp; &quot;è&quot; \uFFFD</text>"),
                      HasSubstr("<text x=\"100\" y=\"47.88\" text-anchor=\"end\"")));
}

TEST(SvgCanvas, MeasuresAndWrapsByTheMeanWidthOfTheFace) {
    SvgCanvas canvas({100, 100});
    canvas.SetFont({"Courier New", 10});
    EXPECT_EQ(canvas.MeasureText("perché"), (Size{36, 12}));
    EXPECT_EQ(canvas.MeasureWrappedText(60, "uno due tre\nquattro"), 3 * 12);
    EXPECT_EQ(canvas.MeasureWrappedText(1, "lunghissimo"), 12);
    canvas.DrawTextIn({0, 0, 60, 99}, "uno due tre", {.word_wrap = true});
    EXPECT_THAT(canvas.Document(), AllOf(HasSubstr(">uno due</text>"), HasSubstr(">tre</text>"),
                                         Not(HasSubstr("> tre<"))));
}

}  // namespace
}  // namespace tonvale
