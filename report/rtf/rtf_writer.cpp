#include "report/rtf/rtf_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "common/numbers.h"
#include "common/text.h"
#include "report/rtf/twips.h"

namespace tonvale {

namespace {

constexpr std::size_t kMaxTabs = 32;
constexpr std::size_t kMaxFaceCharacters = 31;
constexpr std::size_t kPictureBytesPerLine = 64;

std::string_view FormatWord(RichPicture::Format format) {
    switch (format) {
        case RichPicture::Format::kEnhancedMetafile:
            return "\\emfblip";
        case RichPicture::Format::kWindowsMetafile:
            return "\\wmetafile8";
        case RichPicture::Format::kPng:
            return "\\pngblip";
        case RichPicture::Format::kJpeg:
            return "\\jpegblip";
        case RichPicture::Format::kBitmap:
            return "\\dibitmap0";
        case RichPicture::Format::kUnknown:
            break;
    }
    return {};
}

std::string_view ScriptWord(Script script) {
    switch (script) {
        case Script::kNone:
            break;
        case Script::kSuper:
            return "super";
        case Script::kSub:
            return "sub";
    }
    return "nosupersub";
}

std::string_view AlignmentWord(HorizontalAlignment alignment) {
    switch (alignment) {
        case HorizontalAlignment::kLeft:
            break;
        case HorizontalAlignment::kCenter:
            return "qc";
        case HorizontalAlignment::kRight:
            return "qr";
    }
    return "ql";
}

void AppendAscii(std::string& rtf, char c) {
    if (c == '\t') {
        rtf += "\\tab ";
    } else if (c == '\n') {
        rtf += "\\line ";
    } else {
        if (c == '\\' || c == '{' || c == '}') rtf += '\\';
        rtf += c;
    }
}

// Each unit of UTF-16, with "?" for readers that do not know of these.
void AppendUnits(std::string& rtf, std::string_view utf8) {
    const std::string units = Utf8ToUtf16Le(utf8);
    for (std::size_t i = 0; i + 1 < units.size(); i += 2) {
        const int unit =
            static_cast<unsigned char>(units[i]) | static_cast<unsigned char>(units[i + 1]) << 8;
        rtf += "\\u" + FormatInteger(unit < 0x8000 ? unit : unit - 0x10000);
        rtf += '?';
    }
}

class RichTextWriter {
  public:
    std::string Run(const RichText& text) {
        for (const RichParagraph& paragraph : text) WriteParagraph(paragraph);
        const std::string language = FormatInteger(kItalian);
        return "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\\deflang" + language + FontTable() +
               ColorTable() + "\n\\plain\\lang" + language + ' ' + body_ + "}\n";
    }

  private:
    void Word(std::string_view name) {
        body_ += '\\';
        body_ += name;
    }
    void Word(std::string_view name, int parameter) {
        Word(name);
        body_ += FormatInteger(parameter);
    }
    void WordUnlessZero(std::string_view name, int parameter) {
        if (parameter != 0) Word(name, parameter);
    }

    void WriteSwitch(std::string_view name, bool on, bool was_on) {
        if (on != was_on) on ? Word(name) : Word(name, 0);
    }

    void WriteParagraph(const RichParagraph& paragraph);
    void WriteStyle(const CharacterStyle& style);

    int FontNumber(const CharacterStyle& style);
    int ColorNumber(std::optional<Color> color);
    std::string FontTable() const;
    std::string ColorTable() const;

    std::string body_;
    CharacterStyle style_;                              // of what stands last in the body
    int font_ = -1;                                     // its number
    int size_ = 0;                                      // in half points
    std::map<std::pair<std::string, int>, int> fonts_;  // face and charset
    std::map<int, int> colors_;                         // red, green and blue, a byte each
};

void RichTextWriter::WriteParagraph(const RichParagraph& paragraph) {
    Word("pard");
    if (paragraph.has_bullet) body_ += "{\\pntext\\'b7\\tab}{\\*\\pn\\pnlvlblt{\\pntxtb\\'b7}}";
    Word(AlignmentWord(paragraph.alignment));
    WordUnlessZero("li", paragraph.left_twips);
    WordUnlessZero("fi", paragraph.first_line_twips);
    WordUnlessZero("ri", paragraph.right_twips);
    WordUnlessZero("sb", paragraph.space_before_twips);
    WordUnlessZero("sa", paragraph.space_after_twips);
    const std::size_t tabs = std::min(paragraph.tabs_twips.size(), kMaxTabs);
    for (std::size_t i = 0; i < tabs; ++i) Word("tx", paragraph.tabs_twips[i]);
    body_ += ' ';
    for (const RichRun& run : paragraph.runs) {
        WriteStyle(run.style);
        if (run.picture) {
            AppendRtfPicture(body_, *run.picture);
        } else {
            // Plain characters would be taken for bytes of the symbol font.
            AppendRtfText(body_, run.text, run.style.charset == kSymbolCharset);
        }
    }
    if (!paragraph.is_open) body_ += "\\par\n";
}

// Only what differs from the style before: a \plain each time takes some controls ever longer.
void RichTextWriter::WriteStyle(const CharacterStyle& style) {
    const std::size_t before = body_.size();
    const CharacterStyle& old = style_;
    const int font = FontNumber(style);
    if (font != font_) Word("f", font);
    const int size = std::max(HalfPoints(style.size_twips), 1);
    if (size != size_) Word("fs", size);
    WriteSwitch("b", style.bold, old.bold);
    WriteSwitch("i", style.italic, old.italic);
    WriteSwitch("ul", style.underline, old.underline);
    WriteSwitch("strike", style.strikeout, old.strikeout);
    WriteSwitch("v", style.hidden, old.hidden);
    if (style.script != old.script) Word(ScriptWord(style.script));
    if (style.color != old.color) Word("cf", ColorNumber(style.color));
    if (style.background != old.background) Word("highlight", ColorNumber(style.background));
    if (style.language != old.language) Word("lang", style.language);
    if (style.offset_twips != old.offset_twips) {
        Word(style.offset_twips < 0 ? "dn" : "up", HalfPoints(std::abs(style.offset_twips)));
    }
    if (body_.size() != before) body_ += ' ';
    font_ = font;
    size_ = size;
    style_ = style;
}

int RichTextWriter::FontNumber(const CharacterStyle& style) {
    const int next = static_cast<int>(fonts_.size());
    return fonts_.try_emplace({style.face, style.charset}, next).first->second;
}

// 0, the first place of the table, is that of the automatic colour.
int RichTextWriter::ColorNumber(std::optional<Color> color) {
    if (!color) return 0;
    const int next = static_cast<int>(colors_.size()) + 1;
    const int key = color->red << 16 | color->green << 8 | color->blue;
    return colors_.try_emplace(key, next).first->second;
}

std::string RichTextWriter::FontTable() const {
    std::string table = "{\\fonttbl";
    for (const auto& [font, number] : fonts_) {
        std::string face(CutToCharacters(font.first, kMaxFaceCharacters));
        const std::string_view reserved = "\\{};";
        std::erase_if(face, [&](char c) { return reserved.find(c) != std::string_view::npos; });
        table += "{\\f" + FormatInteger(number);
        if (font.second != kDefaultCharset) table += "\\fcharset" + FormatInteger(font.second);
        table += ' ' + Utf8ToWindows1252Lossy(face) + ";}";
    }
    return table + '}';
}

std::string RichTextWriter::ColorTable() const {
    std::vector<int> keys(colors_.size());
    for (const auto& [key, number] : colors_) keys[static_cast<std::size_t>(number - 1)] = key;
    std::string table = "{\\colortbl;";
    for (const int key : keys) {
        table += "\\red" + FormatInteger(key >> 16);
        table += "\\green" + FormatInteger(key >> 8 & 0xFF);
        table += "\\blue" + FormatInteger(key & 0xFF) + ';';
    }
    return table + '}';
}

}  // namespace

std::string WriteRichText(const RichText& text) {
    return RichTextWriter().Run(text);
}

void AppendRtfText(std::string& rtf, std::string_view utf8, bool spell_out) {
    const auto is_plain = [spell_out](char c) {
        return spell_out ? c == '\t' || c == '\n' : static_cast<unsigned char>(c) < 0x80;
    };
    for (const auto* c = utf8.begin(); c != utf8.end();) {
        const auto* plain_end = std::find_if_not(c, utf8.end(), is_plain);
        for (; c != plain_end; ++c) AppendAscii(rtf, *c);
        c = std::find_if(plain_end, utf8.end(), is_plain);
        AppendUnits(rtf, {plain_end, static_cast<std::size_t>(c - plain_end)});
    }
}

void AppendRtfPicture(std::string& rtf, const RichPicture& picture) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    rtf += "{\\pict";
    rtf += FormatWord(picture.format);
    rtf += "\\picwgoal" + FormatInteger(picture.width_twips);
    rtf += "\\pichgoal" + FormatInteger(picture.height_twips);
    for (std::size_t i = 0; i < picture.bytes.size(); ++i) {
        if (i % kPictureBytesPerLine == 0) rtf += '\n';
        const auto byte = static_cast<unsigned char>(picture.bytes[i]);
        rtf += kDigits[byte >> 4];
        rtf += kDigits[byte & 15];
    }
    rtf += '}';
}

}  // namespace tonvale
