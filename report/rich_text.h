// A text with its formats, as far as the report document has them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/canvas.h"

namespace tonvale {

struct CharacterStyle {
    std::string face;
    int size_twips = 240;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeout = false;
    std::optional<Color> color = std::nullopt;  // none: automatic
    int offset_twips = 0;                       // above the line; below it when negative
    bool operator==(const CharacterStyle&) const = default;
};

// A picture in a format of the system's, the bytes of its file.
struct RichPicture {
    enum class Format { kEnhancedMetafile, kWindowsMetafile, kPng, kJpeg };
    Format format = Format::kEnhancedMetafile;
    std::string bytes;
    int width_twips = 0;
    int height_twips = 0;
};

// Text of one style, or a picture. In the text "\t" is a tab and "\n" ends the line within the
// paragraph.
struct RichRun {
    std::string text;
    CharacterStyle style;
    std::optional<RichPicture> picture;
};

struct RichParagraph {
    HorizontalAlignment alignment = HorizontalAlignment::kLeft;
    bool has_bullet = false;
    int left_twips = 0;        // indent of all lines but the first
    int first_line_twips = 0;  // indent of the first one to that
    int right_twips = 0;
    std::vector<int> tabs_twips;  // ascending, from the left margin
    std::vector<RichRun> runs;
};

// A text that ends with a line end has no empty paragraph behind it.
using RichText = std::vector<RichParagraph>;

}  // namespace tonvale
