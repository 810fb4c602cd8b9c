#include "report/rtf/rich_text_printer.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "common/text.h"
#include "report/rtf/twips.h"

namespace tonvale {

namespace {

constexpr int kMargin = kTwipsPerInch;
constexpr int kDefaultTabDistance = 720;         // twips, behind the last tab stop
constexpr int kBulletDistance = 200;             // twips, from the bullet to its text at least
constexpr std::size_t kMaxWordCharacters = 200;  // longer ones may be broken anywhere
constexpr std::string_view kBullet = "\u2022";

// Part of a line: text of one style without tabs, or a picture.
struct Piece {
    const CharacterStyle* style = nullptr;
    std::string text;
    const RichPicture* picture = nullptr;
    int x = 0;
    int width = 0;
    int ascent = 0;   // of the font or picture, above the line, its offset not counted
    int descent = 0;  // below it
    int offset = 0;
};

struct Line {
    std::vector<Piece> pieces;
    int width = 0;          // where the next piece begins
    int visible_width = 0;  // without the blanks at its end
};

// In twips, as text processors show it: by a third smaller, and by a third of its size off the
// line.
int DrawnSize(const CharacterStyle& style) {
    return style.script == Script::kNone ? style.size_twips : style.size_twips * 2 / 3;
}

int DrawnOffset(const CharacterStyle& style) {
    const int direction = style.script == Script::kSuper ? 1
                          : style.script == Script::kSub ? -1
                                                         : 0;
    return style.offset_twips + direction * style.size_twips / 3;
}

// A piece of text that is not broken where it fits on a line: a word with the blanks behind it, a
// tab or a line end.
std::string_view TakeWord(std::string_view& text) {
    std::size_t length = 1;
    if (text.front() != '\t' && text.front() != '\n') {
        length = std::min(text.find_first_of(" \t\n"), text.size());
        length = std::min(text.find_first_not_of(' ', length), text.size());
    }
    const std::string_view word = CutToCharacters(text.substr(0, length), kMaxWordCharacters);
    text.remove_prefix(word.size());
    return word;
}

std::string_view WithoutBlanksAtEnd(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

class RichTextPrinter {
  public:
    RichTextPrinter(Printer& printer, const PictureDrawer& draw_picture)
        : printer_(printer), draw_picture_(draw_picture), dpi_(printer.Resolution()) {
        const Rect twips = PrintedAreaTwips(printer.PageSize(), dpi_);
        area_ = {Across(twips.left), Down(twips.top), Across(twips.right), Down(twips.bottom)};
    }

    bool Run(const RichText& text, const std::string& name);

  private:
    int Across(int twips) const { return static_cast<int>(Scaled(twips, dpi_.width)); }
    int Down(int twips) const { return static_cast<int>(Scaled(twips, dpi_.height)); }
    static long long Scaled(int twips, int dpi) {
        return static_cast<long long>(twips) * dpi / kTwipsPerInch;
    }

    bool PrintPages(const RichText& text);
    bool PrintParagraph(const RichParagraph& paragraph);
    bool AddRun(const RichRun& run);
    bool AddWord(const CharacterStyle& style, std::string_view word);
    bool AddLongWord(const CharacterStyle& style, std::string_view word);
    bool AddPicture(const RichRun& run);
    bool AddTab(const CharacterStyle& style);
    void AddText(const CharacterStyle& style, std::string_view text, Size size);
    void AddBullet();
    void StartLine(bool is_first);
    bool FinishLine();
    bool DrawLine(int ascent, int descent);
    void DrawPiece(const Piece& piece, int baseline);
    int Room() const { return right_ - line_.width; }
    int AlignmentShift() const;

    void UseStyle(const CharacterStyle& style);
    Piece MakePiece(const CharacterStyle& style);

    Printer& printer_;
    const PictureDrawer& draw_picture_;
    Size dpi_;
    Rect area_;
    int y_ = 0;
    const RichParagraph* paragraph_ = nullptr;
    Line line_;
    int right_ = 0;  // edge of the paragraph's lines
};

bool RichTextPrinter::Run(const RichText& text, const std::string& name) {
    if (area_.Width() <= 0 || area_.Height() <= 0 || !printer_.StartDocument(name)) return false;
    y_ = area_.top;
    if (printer_.StartPage() && PrintPages(text) && printer_.EndPage()) {
        return printer_.EndDocument();
    }
    printer_.AbortDocument();
    return false;
}

bool RichTextPrinter::PrintPages(const RichText& text) {
    return std::all_of(text.begin(), text.end(), [this](const RichParagraph& paragraph) {
        return PrintParagraph(paragraph);
    });
}

bool RichTextPrinter::PrintParagraph(const RichParagraph& paragraph) {
    paragraph_ = &paragraph;
    right_ = area_.right - Across(paragraph.right_twips);
    y_ += Down(paragraph.space_before_twips);
    StartLine(true);
    if (paragraph.has_bullet) AddBullet();
    for (const RichRun& run : paragraph.runs) {
        if (!AddRun(run)) return false;
    }
    if (!FinishLine()) return false;
    y_ += Down(paragraph.space_after_twips);
    return true;
}

void RichTextPrinter::StartLine(bool is_first) {
    const int indent = paragraph_->left_twips + (is_first ? paragraph_->first_line_twips : 0);
    line_ = {};
    line_.width = area_.left + std::max(Across(indent), 0);
    line_.visible_width = line_.width;
}

void RichTextPrinter::UseStyle(const CharacterStyle& style) {
    printer_.canvas().SetFont({.face = style.face,
                               .character_height = std::max(Down(DrawnSize(style)), 1),
                               .weight = style.bold ? 700 : 400,
                               .italic = style.italic});
}

Piece RichTextPrinter::MakePiece(const CharacterStyle& style) {
    Piece piece;
    piece.style = &style;
    piece.x = line_.width;
    piece.ascent = printer_.canvas().FontAscent();
    piece.descent = printer_.canvas().MeasureText("x").height - piece.ascent;
    piece.offset = Down(DrawnOffset(style));
    return piece;
}

bool RichTextPrinter::AddRun(const RichRun& run) {
    if (run.style.hidden) return true;
    if (run.picture) return AddPicture(run);
    UseStyle(run.style);
    std::string_view rest = run.text;
    // An empty paragraph is as high as its style.
    if (rest.empty() && line_.pieces.empty()) line_.pieces.push_back(MakePiece(run.style));
    while (!rest.empty()) {
        if (!AddWord(run.style, TakeWord(rest))) return false;
    }
    return true;
}

bool RichTextPrinter::AddWord(const CharacterStyle& style, std::string_view word) {
    if (word == "\t") return AddTab(style);
    if (word == "\n") {
        AddText(style, {}, {});
        if (!FinishLine()) return false;
        StartLine(false);
        UseStyle(style);
        return true;
    }
    const std::string_view visible = WithoutBlanksAtEnd(word);
    const bool fits = printer_.canvas().MeasureText(visible).width <= Room();
    if (!fits && line_.pieces.empty()) return AddLongWord(style, word);
    if (!fits) {
        if (!FinishLine()) return false;
        StartLine(false);
        UseStyle(style);
        return AddWord(style, word);
    }
    AddText(style, word, printer_.canvas().MeasureText(word));
    if (!visible.empty()) {
        const std::string_view blanks = word.substr(visible.size());
        line_.visible_width = line_.width - printer_.canvas().MeasureText(blanks).width;
    }
    return true;
}

// A word longer than a line is broken where the line ends; at least one character goes on it.
bool RichTextPrinter::AddLongWord(const CharacterStyle& style, std::string_view word) {
    std::size_t low = 1;
    std::size_t high = CharacterCount(word);
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        const int width = printer_.canvas().MeasureText(CutToCharacters(word, middle)).width;
        (width <= Room() ? low : high) = width <= Room() ? middle : middle - 1;
    }
    const std::string_view part = CutToCharacters(word, low);
    AddText(style, part, printer_.canvas().MeasureText(part));
    line_.visible_width = line_.width;
    word.remove_prefix(part.size());
    return word.empty() || AddWord(style, word);
}

bool RichTextPrinter::AddPicture(const RichRun& run) {
    const int width = std::clamp(Across(run.picture->width_twips), 1, area_.Width());
    const int height = std::clamp(Down(run.picture->height_twips), 1, area_.Height());
    if (width > Room() && !line_.pieces.empty()) {
        if (!FinishLine()) return false;
        StartLine(false);
    }
    Piece piece;
    piece.style = &run.style;
    piece.picture = &*run.picture;
    piece.x = line_.width;
    piece.width = width;
    piece.ascent = height;
    line_.pieces.push_back(std::move(piece));
    line_.width += width;
    line_.visible_width = line_.width;
    return true;
}

bool RichTextPrinter::AddTab(const CharacterStyle& style) {
    const auto place = [this](int twips) { return area_.left + Across(twips); };
    const std::vector<int>& tabs = paragraph_->tabs_twips;
    const auto stop = std::find_if(tabs.begin(), tabs.end(),
                                   [&](int twips) { return place(twips) > line_.width; });
    int next = 0;
    if (stop != tabs.end()) {
        next = place(*stop);
    } else {
        const int distance = std::max(Across(kDefaultTabDistance), 1);
        next = area_.left + ((line_.width - area_.left) / distance + 1) * distance;
    }
    if (next > right_ && !line_.pieces.empty()) {
        if (!FinishLine()) return false;
        StartLine(false);
        UseStyle(style);
        return AddTab(style);
    }
    line_.pieces.push_back(MakePiece(style));
    line_.pieces.back().width = next - line_.width;
    line_.width = next;
    line_.visible_width = next;
    return true;
}

void RichTextPrinter::AddText(const CharacterStyle& style, std::string_view text, Size size) {
    const bool joins = !line_.pieces.empty() && line_.pieces.back().style == &style &&
                       !line_.pieces.back().text.empty();
    if (!joins) line_.pieces.push_back(MakePiece(style));
    Piece& piece = line_.pieces.back();
    piece.text += text;
    piece.width += size.width;
    line_.width += size.width;
}

void RichTextPrinter::AddBullet() {
    const CharacterStyle& style = paragraph_->runs.front().style;
    UseStyle(style);
    Piece bullet = MakePiece(style);
    bullet.text = kBullet;
    bullet.width = printer_.canvas().MeasureText(kBullet).width;
    line_.width += std::max(Across(kBulletDistance), bullet.width);
    line_.width = std::max(line_.width, area_.left + Across(paragraph_->left_twips));
    line_.visible_width = line_.width;
    line_.pieces.push_back(std::move(bullet));
    // What follows does not join it.
    line_.pieces.push_back(MakePiece(style));
}

bool RichTextPrinter::FinishLine() {
    int ascent = 0;
    int descent = 0;
    for (const Piece& piece : line_.pieces) {
        ascent = std::max(ascent, piece.ascent + piece.offset);
        descent = std::max(descent, piece.descent - piece.offset);
    }
    return DrawLine(ascent, descent);
}

bool RichTextPrinter::DrawLine(int ascent, int descent) {
    if (y_ + ascent + descent > area_.bottom && y_ > area_.top) {
        if (!printer_.EndPage() || !printer_.StartPage()) return false;
        y_ = area_.top;
    }
    for (Piece& piece : line_.pieces) {
        piece.x += AlignmentShift();
        DrawPiece(piece, y_ + ascent);
    }
    y_ += ascent + descent;
    return true;
}

int RichTextPrinter::AlignmentShift() const {
    const int free = std::max(right_ - line_.visible_width, 0);
    if (paragraph_->alignment == HorizontalAlignment::kCenter) return free / 2;
    return paragraph_->alignment == HorizontalAlignment::kRight ? free : 0;
}

void RichTextPrinter::DrawPiece(const Piece& piece, int baseline) {
    const int top = baseline - piece.offset - piece.ascent;
    if (piece.picture) {
        draw_picture_(*piece.picture, {piece.x, top, piece.x + piece.width, top + piece.ascent});
        return;
    }
    const CharacterStyle& style = *piece.style;
    const Color color = style.color.value_or(kBlack);
    Canvas& canvas = printer_.canvas();
    UseStyle(style);
    if (style.background) {
        canvas.FillRectangle(
            {piece.x, top, piece.x + piece.width, baseline - piece.offset + piece.descent},
            *style.background);
    }
    canvas.SetTextColor(color);
    if (!piece.text.empty()) canvas.DrawTextAt({piece.x, top}, piece.text);
    const Pen pen{color, std::max(Down(style.size_twips) / 14, 1)};
    const auto draw_line = [&](int y) {
        canvas.DrawLine({piece.x, y}, {piece.x + piece.width, y}, pen);
    };
    if (style.underline) draw_line(baseline - piece.offset + std::max(piece.descent / 2, 1));
    if (style.strikeout) draw_line(baseline - piece.offset - piece.ascent / 3);
}

}  // namespace

Rect PrintedAreaTwips(Size page_pixels, Size dots_per_inch) {
    if (dots_per_inch.width <= 0 || dots_per_inch.height <= 0) return {};
    const int width = page_pixels.width / dots_per_inch.width * kTwipsPerInch;
    const int height = page_pixels.height / dots_per_inch.height * kTwipsPerInch;
    if (width <= 2 * kMargin || height <= 2 * kMargin) return {};
    return {kMargin, kMargin, width - kMargin, height - kMargin};
}

bool PrintRichText(Printer& printer, const RichText& text, const std::string& name,
                   const PictureDrawer& draw_picture) {
    return RichTextPrinter(printer, draw_picture).Run(text, name);
}

}  // namespace tonvale
