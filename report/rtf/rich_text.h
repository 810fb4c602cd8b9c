// A text with its formats, as far as the report document has them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/canvas.h"

namespace tonvale {

// The most that a report may hold; a line end counts as two.
inline constexpr int kMaxReportCharacters = 0xFFFFF;

// Character sets of fonts, as Windows numbers them.
inline constexpr int kDefaultCharset = 1;
inline constexpr int kSymbolCharset = 2;  // its characters are U+F000 and their bytes

// Languages of text, as Windows numbers them.
inline constexpr int kItalian = 1040;

// Smaller text above or below the line, by as much as its size asks for.
enum class Script { kNone, kSuper, kSub };

struct CharacterStyle {
    std::string face = {};
    int charset = kDefaultCharset;
    int size_twips = 240;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeout = false;
    bool hidden = false;
    Script script = Script::kNone;
    std::optional<Color> color = std::nullopt;       // none: automatic
    std::optional<Color> background = std::nullopt;  // none: that of the paper
    int offset_twips = 0;                            // above the line; below it when negative
    int language = kItalian;
    bool operator==(const CharacterStyle&) const = default;
};

// A picture in a format of the system's, the bytes of its file; those of a bitmap are its header,
// colour table and pixel rows.
struct RichPicture {
    enum class Format { kEnhancedMetafile, kWindowsMetafile, kPng, kJpeg, kBitmap, kUnknown };
    Format format = Format::kEnhancedMetafile;
    std::string bytes;
    int width_twips = 0;
    int height_twips = 0;
    bool operator==(const RichPicture&) const = default;
};

// Text of one style, or a picture. An empty one at the end of a paragraph tells the style of its
// line end, which gives an empty paragraph its height. In the text "\t" is a tab and "\n" ends the
// line within the paragraph; other control characters are not in it.
struct RichRun {
    std::string text;
    CharacterStyle style;
    std::optional<RichPicture> picture;
    bool operator==(const RichRun&) const = default;
};

struct RichParagraph {
    HorizontalAlignment alignment = HorizontalAlignment::kLeft;
    bool has_bullet = false;
    int left_twips = 0;        // indent of all lines but the first
    int first_line_twips = 0;  // indent of the first one to that
    int right_twips = 0;
    int space_before_twips = 0;
    int space_after_twips = 0;
    std::vector<int> tabs_twips;  // ascending, from the left margin
    std::vector<RichRun> runs;
    bool is_open = false;  // the text ends within it, without a line end
    bool operator==(const RichParagraph&) const = default;
};

// A text that ends with a line end has no empty paragraph behind it. Only the last is ever open.
using RichText = std::vector<RichParagraph>;

}  // namespace tonvale
