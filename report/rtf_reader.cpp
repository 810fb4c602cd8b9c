#include "report/rtf_reader.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

#include "common/text.h"
#include "report/rtf_groups.h"
#include "report/rtf_tokens.h"

namespace tonvale {

namespace {

using Kind = RtfToken::Kind;

constexpr int kTwipsPerHalfPoint = 10;
constexpr int kMaxTwips = 31680;          // 22 inches, the most that the format is made for
constexpr std::size_t kMaxGroups = 1000;  // deeper ones are no document's

// What a group keeps to itself.
struct GroupState {
    CharacterStyle style;
    RichParagraph paragraph;  // without its runs
    int stand_ins = 1;        // characters to skip behind a \u
};

int Limited(int twips) {
    return std::clamp(twips, -kMaxTwips, kMaxTwips);
}

class RtfReader {
  public:
    explicit RtfReader(std::string_view rtf) : tokens_(rtf) {}

    RichText Run();

  private:
    using Handler = void (RtfReader::*)(const RtfToken& word);
    struct WordHandler {
        std::string_view name;
        Handler handler;
    };
    static const std::map<std::string_view, Handler>& Handlers();

    GroupState& state() { return states_.back(); }
    void FollowGroups(const RtfToken& token);
    void TakeBody(const RtfToken& token);
    void TakeFontTable(const RtfToken& token);
    void TakeColorTable(const RtfToken& token);
    void TakePicture(const RtfToken& token);

    // Bytes are collected until something else comes.
    void AddByte(char byte);
    void AddText(std::string_view utf8);
    void FlushBytes();
    void EndParagraph();

    void SetPlain(const RtfToken& word);
    void SetFont(const RtfToken& word);
    void SetSize(const RtfToken& word);
    void SetBold(const RtfToken& word) { state().style.bold = IsOn(word); }
    void SetItalic(const RtfToken& word) { state().style.italic = IsOn(word); }
    void SetUnderline(const RtfToken& word) { state().style.underline = IsOn(word); }
    void ClearUnderline(const RtfToken&) { state().style.underline = false; }
    void SetStrikeout(const RtfToken& word) { state().style.strikeout = IsOn(word); }
    void SetColor(const RtfToken& word);
    void SetRaised(const RtfToken& word);
    void SetLowered(const RtfToken& word);
    void SetSuperscript(const RtfToken&);
    void SetSubscript(const RtfToken&);
    void ClearOffset(const RtfToken&) { state().style.offset_twips = 0; }
    void ResetParagraph(const RtfToken&) { state().paragraph = RichParagraph(); }
    void AlignLeft(const RtfToken&) { Align(HorizontalAlignment::kLeft); }
    void AlignCenter(const RtfToken&) { Align(HorizontalAlignment::kCenter); }
    void AlignRight(const RtfToken&) { Align(HorizontalAlignment::kRight); }
    void Align(HorizontalAlignment alignment) { state().paragraph.alignment = alignment; }
    void SetLeft(const RtfToken& word) { state().paragraph.left_twips = Limited(word.parameter); }
    void SetFirstLine(const RtfToken& word) {
        state().paragraph.first_line_twips = Limited(word.parameter);
    }
    void SetRight(const RtfToken& word) { state().paragraph.right_twips = Limited(word.parameter); }
    void AddTab(const RtfToken& word);
    void TakeParagraphEnd(const RtfToken&) { EndParagraph(); }
    void TakeTab(const RtfToken&) { AddText("\t"); }
    void TakeLine(const RtfToken&) { AddText("\n"); }
    void TakeCharacter(const RtfToken& word);
    void TakeUnicode(const RtfToken& word);
    void SetStandIns(const RtfToken& word) { state().stand_ins = std::clamp(word.parameter, 0, 9); }
    void StartRow(const RtfToken&) { cell_ends_.clear(); }
    void TakeCellEnd(const RtfToken& word) { cell_ends_.push_back(Limited(word.parameter)); }
    void TakeRow(const RtfToken&);

    static bool IsOn(const RtfToken& word) { return !word.has_parameter || word.parameter != 0; }

    RtfTokenizer tokens_;
    RtfGroups groups_;
    std::vector<GroupState> states_ = std::vector<GroupState>(1);
    std::map<int, std::string> fonts_;  // their names
    int table_font_ = 0;
    std::vector<std::optional<Color>> colors_;
    std::optional<Color> table_color_;
    std::optional<RichPicture> picture_;
    std::size_t picture_depth_ = 0;
    int hex_digit_ = -1;  // the first of a pair, already read
    std::string bytes_;
    char16_t high_surrogate_ = 0;
    int to_skip_ = 0;
    std::vector<int> cell_ends_;
    std::vector<RichRun> runs_;
    RichText text_;
};

const std::map<std::string_view, RtfReader::Handler>& RtfReader::Handlers() {
    static const std::map<std::string_view, Handler> handlers = {
        {"plain", &RtfReader::SetPlain},
        {"f", &RtfReader::SetFont},
        {"fs", &RtfReader::SetSize},
        {"b", &RtfReader::SetBold},
        {"i", &RtfReader::SetItalic},
        {"ul", &RtfReader::SetUnderline},
        {"ulnone", &RtfReader::ClearUnderline},
        {"strike", &RtfReader::SetStrikeout},
        {"cf", &RtfReader::SetColor},
        {"up", &RtfReader::SetRaised},
        {"dn", &RtfReader::SetLowered},
        {"super", &RtfReader::SetSuperscript},
        {"sub", &RtfReader::SetSubscript},
        {"nosupersub", &RtfReader::ClearOffset},
        {"pard", &RtfReader::ResetParagraph},
        {"ql", &RtfReader::AlignLeft},
        {"qj", &RtfReader::AlignLeft},
        {"qc", &RtfReader::AlignCenter},
        {"qr", &RtfReader::AlignRight},
        {"li", &RtfReader::SetLeft},
        {"fi", &RtfReader::SetFirstLine},
        {"ri", &RtfReader::SetRight},
        {"tx", &RtfReader::AddTab},
        {"par", &RtfReader::TakeParagraphEnd},
        {"sect", &RtfReader::TakeParagraphEnd},
        {"page", &RtfReader::TakeParagraphEnd},
        {"tab", &RtfReader::TakeTab},
        {"cell", &RtfReader::TakeTab},
        {"line", &RtfReader::TakeLine},
        {"row", &RtfReader::TakeRow},
        {"trowd", &RtfReader::StartRow},
        {"cellx", &RtfReader::TakeCellEnd},
        {"u", &RtfReader::TakeUnicode},
        {"uc", &RtfReader::SetStandIns},
        {"~", &RtfReader::TakeCharacter},
        {"_", &RtfReader::TakeCharacter},
        {"bullet", &RtfReader::TakeCharacter},
        {"lquote", &RtfReader::TakeCharacter},
        {"rquote", &RtfReader::TakeCharacter},
        {"ldblquote", &RtfReader::TakeCharacter},
        {"rdblquote", &RtfReader::TakeCharacter},
        {"emdash", &RtfReader::TakeCharacter},
        {"endash", &RtfReader::TakeCharacter},
    };
    return handlers;
}

RichText RtfReader::Run() {
    for (RtfToken token = tokens_.Next(); token.kind != Kind::kEnd; token = tokens_.Next()) {
        FollowGroups(token);
        if (groups_.depth() == 0) continue;
        switch (groups_.destination()) {
            case RtfDestination::kBody:
                TakeBody(token);
                break;
            case RtfDestination::kFontTable:
                TakeFontTable(token);
                break;
            case RtfDestination::kColorTable:
                TakeColorTable(token);
                break;
            case RtfDestination::kPicture:
                TakePicture(token);
                break;
            case RtfDestination::kNumbering:
                if (token.name == "pnlvlblt") states_.back().paragraph.has_bullet = true;
                break;
            case RtfDestination::kBulletText:
            case RtfDestination::kIgnored:
                break;
        }
    }
    FlushBytes();
    if (!runs_.empty()) EndParagraph();
    return std::move(text_);
}

void RtfReader::FollowGroups(const RtfToken& token) {
    if (token.kind == Kind::kOpen || token.kind == Kind::kClose) {
        FlushBytes();
        to_skip_ = 0;
    }
    const RtfDestination before = groups_.destination();
    groups_.Follow(token);
    const std::size_t wanted = std::min(groups_.depth() + 1, kMaxGroups);
    if (token.kind == Kind::kClose && before == RtfDestination::kNumbering &&
        groups_.destination() == RtfDestination::kBody && states_.size() > wanted) {
        // The numbering is that of the paragraph around its group.
        states_[wanted - 1].paragraph.has_bullet = state().paragraph.has_bullet;
    }
    // The last paragraph may do without an end of its own.
    if (groups_.depth() == 0 && !runs_.empty()) EndParagraph();
    if (states_.size() < wanted) states_.push_back(states_.back());
    if (states_.size() > wanted) states_.resize(wanted);
    if (picture_ && groups_.depth() < picture_depth_) {
        runs_.push_back({{}, state().style, std::move(picture_)});
        picture_.reset();
    }
}

void RtfReader::TakeBody(const RtfToken& token) {
    if (token.kind == Kind::kByte) AddByte(static_cast<char>(token.parameter));
    if (token.kind == Kind::kText) {
        for (const char byte : token.text) AddByte(byte);
    }
    if (token.kind != Kind::kWord) return;
    to_skip_ = 0;
    const auto handler = Handlers().find(token.name);
    if (handler == Handlers().end()) return;
    FlushBytes();
    (this->*handler->second)(token);
}

void RtfReader::TakeFontTable(const RtfToken& token) {
    if (token.kind == Kind::kWord && token.name == "f") table_font_ = token.parameter;
    if (token.kind != Kind::kText) return;
    fonts_[table_font_] += Windows1252ToUtf8(token.text.substr(0, token.text.find(';')));
}

void RtfReader::TakeColorTable(const RtfToken& token) {
    if (token.kind == Kind::kText) {
        const auto ends = std::count(token.text.begin(), token.text.end(), ';');
        for (auto i = ends; i > 0; --i) {
            colors_.push_back(table_color_);
            table_color_.reset();
        }
    }
    if (token.kind != Kind::kWord) return;
    const auto value = static_cast<std::uint8_t>(std::clamp(token.parameter, 0, 255));
    Color color = table_color_.value_or(kBlack);
    if (token.name == "red") color.red = value;
    if (token.name == "green") color.green = value;
    if (token.name == "blue") color.blue = value;
    if (token.name == "red" || token.name == "green" || token.name == "blue") table_color_ = color;
}

void RtfReader::TakePicture(const RtfToken& token) {
    if (!picture_) {
        picture_.emplace();
        picture_depth_ = groups_.depth();
        hex_digit_ = -1;
    }
    RichPicture& picture = *picture_;
    if (token.kind == Kind::kBinary) picture.bytes += token.text;
    if (token.kind == Kind::kText && groups_.depth() == picture_depth_) {
        for (const char digit : token.text) {
            const auto value = static_cast<int>(
                std::string_view("0123456789abcdef")
                    .find(static_cast<char>(digit >= 'A' && digit <= 'F' ? digit - 'A' + 'a'
                                                                         : digit)));
            if (value < 0) continue;
            if (hex_digit_ >= 0) picture.bytes += static_cast<char>(16 * hex_digit_ + value);
            hex_digit_ = hex_digit_ >= 0 ? -1 : value;
        }
    }
    if (token.kind != Kind::kWord) return;
    if (token.name == "wmetafile") picture.format = RichPicture::Format::kWindowsMetafile;
    if (token.name == "pngblip") picture.format = RichPicture::Format::kPng;
    if (token.name == "jpegblip") picture.format = RichPicture::Format::kJpeg;
    if (token.name == "picwgoal") picture.width_twips = Limited(token.parameter);
    if (token.name == "pichgoal") picture.height_twips = Limited(token.parameter);
}

void RtfReader::AddByte(char byte) {
    if (to_skip_ > 0) {
        --to_skip_;
        return;
    }
    bytes_ += byte;
}

void RtfReader::FlushBytes() {
    if (bytes_.empty()) return;
    const std::string text = Windows1252ToUtf8(bytes_);
    bytes_.clear();
    AddText(text);
}

void RtfReader::AddText(std::string_view utf8) {
    if (runs_.empty() || runs_.back().picture || !(runs_.back().style == state().style)) {
        runs_.push_back({{}, state().style, {}});
    }
    runs_.back().text += utf8;
}

void RtfReader::EndParagraph() {
    RichParagraph paragraph = state().paragraph;
    paragraph.runs = std::exchange(runs_, {});
    // The style of the line end gives an empty paragraph its height.
    if (paragraph.runs.empty()) paragraph.runs.push_back({{}, state().style, {}});
    text_.push_back(std::move(paragraph));
}

void RtfReader::TakeRow(const RtfToken&) {
    RichParagraph& paragraph = state().paragraph;
    paragraph.tabs_twips = cell_ends_;
    std::sort(paragraph.tabs_twips.begin(), paragraph.tabs_twips.end());
    EndParagraph();
    paragraph.tabs_twips.clear();
}

void RtfReader::SetPlain(const RtfToken&) {
    CharacterStyle plain;
    plain.face = state().style.face;
    state().style = plain;
}

void RtfReader::SetFont(const RtfToken& word) {
    const auto font = fonts_.find(word.parameter);
    if (font != fonts_.end()) state().style.face = font->second;
}

void RtfReader::SetSize(const RtfToken& word) {
    state().style.size_twips = std::clamp(word.parameter, 1, kMaxTwips / 10) * kTwipsPerHalfPoint;
}

void RtfReader::SetColor(const RtfToken& word) {
    const auto index = static_cast<std::size_t>(std::max(word.parameter, 0));
    state().style.color = index < colors_.size() ? colors_[index] : std::nullopt;
}

void RtfReader::SetRaised(const RtfToken& word) {
    const int half_points = word.has_parameter ? word.parameter : 6;
    state().style.offset_twips = std::clamp(half_points, -127, 127) * kTwipsPerHalfPoint;
}

void RtfReader::SetLowered(const RtfToken& word) {
    SetRaised(word);
    state().style.offset_twips *= -1;
}

// By a third of the size, as text processors show it.
void RtfReader::SetSuperscript(const RtfToken&) {
    state().style.offset_twips = state().style.size_twips / 3;
}

void RtfReader::SetSubscript(const RtfToken&) {
    state().style.offset_twips = -state().style.size_twips / 3;
}

void RtfReader::AddTab(const RtfToken& word) {
    constexpr std::size_t kMaxTabs = 64;
    std::vector<int>& tabs = state().paragraph.tabs_twips;
    if (tabs.size() >= kMaxTabs) return;
    const int place = Limited(word.parameter);
    tabs.insert(std::upper_bound(tabs.begin(), tabs.end(), place), place);
}

void RtfReader::TakeCharacter(const RtfToken& word) {
    static const std::map<std::string_view, std::string_view> characters = {
        {"~", "\u00A0"},         {"_", "\u2011"},      {"bullet", "\u2022"},
        {"lquote", "\u2018"},    {"rquote", "\u2019"}, {"ldblquote", "\u201C"},
        {"rdblquote", "\u201D"}, {"emdash", "\u2014"}, {"endash", "\u2013"},
    };
    AddText(characters.at(word.name));
}

void RtfReader::TakeUnicode(const RtfToken& word) {
    to_skip_ = state().stand_ins;
    const auto unit = static_cast<char16_t>(word.parameter & 0xFFFF);
    const bool is_high = unit >= 0xD800 && unit < 0xDC00;
    const bool is_low = unit >= 0xDC00 && unit < 0xE000;
    std::string units;
    const auto add = [&units](char16_t value) {
        units += static_cast<char>(value & 0xFF);
        units += static_cast<char>(value >> 8);
    };
    if (is_low && high_surrogate_ != 0) add(high_surrogate_);
    high_surrogate_ = is_high ? unit : char16_t{0};
    if (is_high) return;
    add(unit);
    AddText(Utf16LeToUtf8(units));
}

}  // namespace

RichText ReadRichText(std::string_view rtf) {
    return RtfReader(rtf).Run();
}

std::string PlainTextOf(const RichText& text) {
    std::string plain;
    for (const RichParagraph& paragraph : text) {
        for (const RichRun& run : paragraph.runs) plain += run.text;
        plain += '\n';
    }
    return plain;
}

}  // namespace tonvale
