#include "dialogs/gdi_canvas_win.h"

#include <vector>

#include "common/unicode_win.h"

namespace tonvale {

namespace {

constexpr UINT kTextFlags = DT_NOPREFIX | DT_NOCLIP | DT_EXPANDTABS;

COLORREF ColorRef(Color color) {
    return RGB(color.red, color.green, color.blue);
}

RECT ToRect(const Rect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

std::vector<POINT> ToPoints(std::span<const Point> points) {
    std::vector<POINT> converted;
    converted.reserve(points.size());
    for (const Point& point : points) converted.push_back({point.x, point.y});
    return converted;
}

Font SelectedFont(HDC dc) {
    LOGFONTW description{};
    GetObjectW(GetCurrentObject(dc, OBJ_FONT), sizeof description, &description);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return {.face = Narrow(description.lfFaceName),
            .character_height = static_cast<int>(metrics.tmHeight - metrics.tmInternalLeading),
            .weight = static_cast<int>(metrics.tmWeight),
            .italic = metrics.tmItalic != 0};
}

// The pen and the brush of a shape, for as long as this lives.
class ScopedShape {
  public:
    ScopedShape(HDC dc, Color fill, const Pen& outline)
        : pen_(CreatePen(PS_SOLID, outline.width, ColorRef(outline.color))),
          brush_(CreateSolidBrush(ColorRef(fill))),
          pen_selection_(dc, pen_.get()),
          brush_selection_(dc, brush_.get()) {}

  private:
    UniquePen pen_;
    UniqueBrush brush_;
    ScopedSelection pen_selection_;
    ScopedSelection brush_selection_;
};

UINT DrawTextFlags(TextLayout layout) {
    UINT flags = kTextFlags;
    if (layout.horizontal == HorizontalAlignment::kCenter) flags |= DT_CENTER;
    if (layout.horizontal == HorizontalAlignment::kRight) flags |= DT_RIGHT;
    if (layout.word_wrap) return flags | DT_WORDBREAK;
    if (layout.vertical == VerticalAlignment::kCenter) flags |= DT_VCENTER;
    if (layout.vertical == VerticalAlignment::kBottom) flags |= DT_BOTTOM;
    return flags | DT_SINGLELINE;
}

}  // namespace

GdiCanvas::GdiCanvas(HDC dc) : GdiCanvas(dc, GetDeviceCaps(dc, LOGPIXELSY)) {}

GdiCanvas::GdiCanvas(HDC dc, int resolution)
    : dc_(dc), resolution_(resolution), saved_state_(SaveDC(dc)), font_(SelectedFont(dc)) {
    SetBkMode(dc_, TRANSPARENT);
    SetTextAlign(dc_, TA_LEFT | TA_TOP | TA_NOUPDATECP);
    ::SetTextColor(dc_, ColorRef(kBlack));
}

GdiCanvas::~GdiCanvas() {
    RestoreDC(dc_, saved_state_);
}

// A pen wider than one unit has round ends and corners.
void GdiCanvas::DrawPolyline(std::span<const Point> points, const Pen& pen) {
    if (points.empty()) return;
    const UniquePen handle(CreatePen(PS_SOLID, pen.width, ColorRef(pen.color)));
    const ScopedSelection selection(dc_, handle.get());
    const std::vector<POINT> corners = ToPoints(points);
    Polyline(dc_, corners.data(), static_cast<int>(corners.size()));
    // A thin line stops short of its end.
    if (pen.width <= 1) SetPixelV(dc_, points.back().x, points.back().y, ColorRef(pen.color));
}

void GdiCanvas::DrawPolygon(std::span<const Point> corners, Color fill, const Pen& outline) {
    const ScopedShape shape(dc_, fill, outline);
    const std::vector<POINT> points = ToPoints(corners);
    Polygon(dc_, points.data(), static_cast<int>(points.size()));
}

void GdiCanvas::DrawEllipse(const Rect& rect, Color fill, const Pen& outline) {
    const ScopedShape shape(dc_, fill, outline);
    // The right and bottom edges of the system's are exclusive.
    Ellipse(dc_, rect.left, rect.top, rect.right + 1, rect.bottom + 1);
}

void GdiCanvas::FillRectangle(const Rect& rect, Color color) {
    const UniqueBrush brush(CreateSolidBrush(ColorRef(color)));
    const RECT area = ToRect(rect);
    FillRect(dc_, &area, brush.get());
}

void GdiCanvas::FrameRectangle(const Rect& rect, const Pen& pen) {
    const UniquePen handle(CreatePen(PS_INSIDEFRAME, pen.width, ColorRef(pen.color)));
    const ScopedSelection frame(dc_, handle.get());
    const ScopedSelection inside(dc_, GetStockObject(NULL_BRUSH));
    Rectangle(dc_, rect.left, rect.top, rect.right, rect.bottom);
}

void GdiCanvas::SetFont(const Font& font) {
    if (font_handle_ && font == font_) return;
    UniqueFont handle(CreateFontW(-font.character_height, 0, 0, 0, font.weight, font.italic, FALSE,
                                  FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                  DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE,
                                  Widen(font.face).c_str()));
    if (!handle) return;
    SelectObject(dc_, handle.get());
    // The old one goes only now that it is not selected any more.
    font_handle_ = std::move(handle);
    font_ = font;
}

void GdiCanvas::SetTextColor(Color color) {
    ::SetTextColor(dc_, ColorRef(color));
}

void GdiCanvas::DrawTextAt(Point at, std::string_view text) {
    const std::wstring wide = Widen(text);
    TextOutW(dc_, at.x, at.y, wide.data(), static_cast<int>(wide.size()));
}

void GdiCanvas::DrawTextIn(const Rect& rect, std::string_view text, TextLayout layout) {
    const std::wstring wide = Widen(text);
    RECT area = ToRect(rect);
    DrawTextW(dc_, wide.data(), static_cast<int>(wide.size()), &area, DrawTextFlags(layout));
}

Size GdiCanvas::MeasureText(std::string_view text) {
    const std::wstring wide = Widen(text);
    SIZE size{};
    GetTextExtentPoint32W(dc_, wide.data(), static_cast<int>(wide.size()), &size);
    return {static_cast<int>(size.cx), static_cast<int>(size.cy)};
}

int GdiCanvas::FontAscent() {
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc_, &metrics);
    return static_cast<int>(metrics.tmAscent);
}

int GdiCanvas::MeasureWrappedText(int width, std::string_view text) {
    const std::wstring wide = Widen(text);
    RECT area{0, 0, width, 0};
    const UINT flags = DrawTextFlags({.word_wrap = true}) | DT_CALCRECT;
    return DrawTextW(dc_, wide.data(), static_cast<int>(wide.size()), &area, flags);
}

}  // namespace tonvale
