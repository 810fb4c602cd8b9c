#include "report/rtf/rtf_reader.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "common/text.h"
#include "report/rtf/rtf_groups.h"
#include "report/rtf/rtf_tokens.h"
#include "report/rtf/twips.h"

namespace tonvale {

namespace {

using Kind = RtfToken::Kind;

constexpr int kMaxTwips = 31680;          // 22 inches, the most that the format is made for
constexpr std::size_t kMaxGroups = 1000;  // deeper ones are no document's
constexpr int kDefaultCodePage = 1252;

// What a group keeps to itself.
struct GroupState {
    CharacterStyle style;
    RichParagraph paragraph;  // without its runs
    int stand_ins = 1;        // characters to skip behind a \u
};

struct Font {
    std::string face;
    int charset = kDefaultCharset;
};

// A picture while it is read.
struct OpenPicture {
    struct Side {
        int goal_twips = 0;
        int natural = 0;  // pixels, or hundredths of a millimetre of a metafile
        int percent = 100;
    };
    RichPicture picture{RichPicture::Format::kUnknown, {}, 0, 0};
    Side width;
    Side height;
    int hex_digit = -1;  // the first of a pair, already read
    std::size_t depth = 0;
};

// The code page of a font's bytes; `document_page` for a font that does not tell.
int CodePageOf(int charset, int document_page) {
    static const std::map<int, int> pages = {
        {0, 1252},   {77, 10000}, {128, 932},  {129, 949},  {134, 936},  {136, 950},
        {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
        {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
    };
    const auto row = pages.find(charset);
    return row == pages.end() ? document_page : row->second;
}

// Bytes of a font of symbols.
std::string SymbolsToUtf8(std::string_view bytes) {
    std::string units;
    for (const char byte : bytes) {
        units += byte;
        units += byte == '\t' ? '\0' : '\xF0';
    }
    return Utf16LeToUtf8(units);
}

int Limited(int twips) {
    return std::clamp(twips, -kMaxTwips, kMaxTwips);
}

// Adds a tab stop to `stops`, which ascend; one left of the margin is none.
void AddStop(std::vector<int>& stops, int twips) {
    constexpr std::size_t kMaxStops = 64;
    if (stops.size() >= kMaxStops || twips < 0) return;
    const int place = Limited(twips);
    stops.insert(std::upper_bound(stops.begin(), stops.end(), place), place);
}

// Controls are not text, but for the tab and the line end.
bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n';
}

int SideTwips(const OpenPicture::Side& side, RichPicture::Format format) {
    constexpr int kHundredthsOfMmPerInch = 2540;
    const bool is_metafile = format == RichPicture::Format::kEnhancedMetafile ||
                             format == RichPicture::Format::kWindowsMetafile;
    long long twips = side.goal_twips;
    if (twips <= 0) {
        twips = is_metafile ? 1LL * side.natural * kTwipsPerInch / kHundredthsOfMmPerInch
                            : 1LL * side.natural * kTwipsPerPixel;
    }
    twips = twips * std::clamp(side.percent, 1, 10000) / 100;
    return static_cast<int>(std::clamp(twips, 0LL, static_cast<long long>(kMaxTwips)));
}

class RtfReader {
  public:
    RtfReader(std::string_view rtf, const RtfReading& reading) : tokens_(rtf), reading_(reading) {
        state().style.face = reading.default_face;
    }

    RichText Run();

  private:
    using Handler = void (RtfReader::*)(const RtfToken& word);
    static const std::pair<std::string_view, Handler> word_handlers[];

    GroupState& state() { return states_.back(); }
    void FollowGroups(const RtfToken& token);
    void TakeBody(const RtfToken& token);
    void TakeFontTable(const RtfToken& token);
    void TakeColorTable(const RtfToken& token);
    void TakePicture(const RtfToken& token);
    void TakePictureText(std::string_view text);
    void TakePictureWord(const RtfToken& word);
    void FinishPicture();
    void TakeLabel(const RtfToken& token);

    // Bytes are collected until something else comes.
    void AddByte(char byte);
    void AddText(std::string_view utf8);
    void FlushBytes();
    void AddRun(RichRun run);
    void StartCell();
    void EndParagraph(bool is_open = false);
    void EndOpenParagraph();
    void UseFont(int number);

    void SetPlain(const RtfToken& word);
    void SetFont(const RtfToken& word);
    void SetSize(const RtfToken& word);
    void SetBold(const RtfToken& word) { state().style.bold = IsOn(word); }
    void SetItalic(const RtfToken& word) { state().style.italic = IsOn(word); }
    void SetUnderline(const RtfToken& word) { state().style.underline = IsOn(word); }
    void SetHidden(const RtfToken& word) { state().style.hidden = IsOn(word); }
    void ClearUnderline(const RtfToken&) { state().style.underline = false; }
    void SetStrikeout(const RtfToken& word) { state().style.strikeout = IsOn(word); }
    void SetCodePage(const RtfToken& word) { code_page_ = word.parameter; }
    void SetDefaultFont(const RtfToken& word) { default_font_ = word.parameter; }
    std::optional<Color> ColorAt(int number) const;
    void SetColor(const RtfToken& word) { state().style.color = ColorAt(word.parameter); }
    void SetBackground(const RtfToken& word) { state().style.background = ColorAt(word.parameter); }
    void SetLanguage(const RtfToken& word) { state().style.language = word.parameter & 0xFFFF; }
    void SetDefaultLanguage(const RtfToken& word);
    void SetRaised(const RtfToken& word);
    void SetLowered(const RtfToken& word);
    void SetSuperscript(const RtfToken&) { state().style.script = Script::kSuper; }
    void SetSubscript(const RtfToken&) { state().style.script = Script::kSub; }
    void ClearScript(const RtfToken&) { state().style.script = Script::kNone; }
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
    void SetSpaceBefore(const RtfToken& word) {
        state().paragraph.space_before_twips = std::max(Limited(word.parameter), 0);
    }
    void SetSpaceAfter(const RtfToken& word) {
        state().paragraph.space_after_twips = std::max(Limited(word.parameter), 0);
    }
    void AddTab(const RtfToken& word) { AddStop(state().paragraph.tabs_twips, word.parameter); }
    void TakeParagraphEnd(const RtfToken&) { EndParagraph(); }
    void TakeTab(const RtfToken&) { AddText("\t"); }
    void TakeLine(const RtfToken&) { AddText("\n"); }
    void TakeCharacter(const RtfToken& word);
    void TakeUnicode(const RtfToken& word);
    void SetStandIns(const RtfToken& word) { state().stand_ins = std::clamp(word.parameter, 0, 9); }
    void StartRow(const RtfToken&) { cell_ends_.clear(); }
    void TakeCellEnd(const RtfToken& word) { AddStop(cell_ends_, word.parameter); }
    void TakeCell(const RtfToken&);
    void TakeRow(const RtfToken&);

    static bool IsOn(const RtfToken& word) { return !word.has_parameter || word.parameter != 0; }

    RtfTokenizer tokens_;
    const RtfReading& reading_;
    RtfGroups groups_;
    std::vector<GroupState> states_ = std::vector<GroupState>(1);
    std::map<int, Font> fonts_;
    int table_font_ = 0;
    int default_font_ = 0;
    int default_language_ = kItalian;
    int code_page_ = kDefaultCodePage;
    std::vector<std::optional<Color>> colors_;
    std::optional<Color> table_color_;
    std::optional<OpenPicture> picture_;
    std::string bytes_;
    std::string label_;  // the number or bullet of the paragraph as text
    char16_t high_surrogate_ = 0;
    int to_skip_ = 0;
    std::vector<int> cell_ends_;
    bool cell_ended_ = false;  // its tab waits for the next one: there is none behind the last
    std::size_t characters_ = 0;
    std::vector<RichRun> runs_;
    RichText text_;
};

const std::pair<std::string_view, RtfReader::Handler> RtfReader::word_handlers[] = {
    {"plain", &RtfReader::SetPlain},
    {"f", &RtfReader::SetFont},
    {"fs", &RtfReader::SetSize},
    {"b", &RtfReader::SetBold},
    {"i", &RtfReader::SetItalic},
    {"ul", &RtfReader::SetUnderline},
    {"uld", &RtfReader::SetUnderline},
    {"uldash", &RtfReader::SetUnderline},
    {"uldb", &RtfReader::SetUnderline},
    {"ulth", &RtfReader::SetUnderline},
    {"ulw", &RtfReader::SetUnderline},
    {"ulwave", &RtfReader::SetUnderline},
    {"ulnone", &RtfReader::ClearUnderline},
    {"strike", &RtfReader::SetStrikeout},
    {"v", &RtfReader::SetHidden},
    {"cf", &RtfReader::SetColor},
    {"highlight", &RtfReader::SetBackground},
    {"ansicpg", &RtfReader::SetCodePage},
    {"deff", &RtfReader::SetDefaultFont},
    {"lang", &RtfReader::SetLanguage},
    {"deflang", &RtfReader::SetDefaultLanguage},
    {"up", &RtfReader::SetRaised},
    {"dn", &RtfReader::SetLowered},
    {"super", &RtfReader::SetSuperscript},
    {"sub", &RtfReader::SetSubscript},
    {"nosupersub", &RtfReader::ClearScript},
    {"pard", &RtfReader::ResetParagraph},
    {"ql", &RtfReader::AlignLeft},
    {"qj", &RtfReader::AlignLeft},
    {"qc", &RtfReader::AlignCenter},
    {"qr", &RtfReader::AlignRight},
    {"li", &RtfReader::SetLeft},
    {"fi", &RtfReader::SetFirstLine},
    {"ri", &RtfReader::SetRight},
    {"sb", &RtfReader::SetSpaceBefore},
    {"sa", &RtfReader::SetSpaceAfter},
    {"tx", &RtfReader::AddTab},
    {"par", &RtfReader::TakeParagraphEnd},
    {"sect", &RtfReader::TakeParagraphEnd},
    {"page", &RtfReader::TakeParagraphEnd},
    {"tab", &RtfReader::TakeTab},
    {"cell", &RtfReader::TakeCell},
    {"nestcell", &RtfReader::TakeCell},
    {"line", &RtfReader::TakeLine},
    {"row", &RtfReader::TakeRow},
    {"nestrow", &RtfReader::TakeRow},
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
    {"emspace", &RtfReader::TakeCharacter},
    {"enspace", &RtfReader::TakeCharacter},
    {"qmspace", &RtfReader::TakeCharacter},
};

RichText RtfReader::Run() {
    for (RtfToken token = tokens_.Next(); token.kind != Kind::kEnd; token = tokens_.Next()) {
        if (characters_ > reading_.max_characters) break;
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
                TakeLabel(token);
                break;
            case RtfDestination::kLeftOut:
            case RtfDestination::kIgnored:
                break;
        }
    }
    FlushBytes();
    EndOpenParagraph();
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
    if (groups_.depth() == 0) EndOpenParagraph();
    if (states_.size() < wanted) states_.push_back(states_.back());
    if (states_.size() > wanted) states_.resize(wanted);
    if (before == RtfDestination::kFontTable && state().style.face == reading_.default_face) {
        UseFont(default_font_);
    }
    if (picture_ && groups_.depth() < picture_->depth) FinishPicture();
}

void RtfReader::TakeBody(const RtfToken& token) {
    if (token.kind == Kind::kByte) AddByte(static_cast<char>(token.parameter));
    if (token.kind == Kind::kText) {
        for (const char byte : token.text) AddByte(byte);
    }
    if (token.kind != Kind::kWord) return;
    to_skip_ = 0;
    static const std::map<std::string_view, Handler> handlers(std::begin(word_handlers),
                                                              std::end(word_handlers));
    const auto handler = handlers.find(token.name);
    if (handler == handlers.end()) return;
    FlushBytes();
    (this->*handler->second)(token);
}

void RtfReader::TakeFontTable(const RtfToken& token) {
    constexpr std::size_t kMaxFaceBytes = 100;
    if (token.kind == Kind::kWord && token.name == "f") {
        table_font_ = token.parameter;
        fonts_[table_font_] = {};
    }
    Font& font = fonts_[table_font_];
    if (token.kind == Kind::kWord && token.name == "fcharset") font.charset = token.parameter;
    if (token.kind != Kind::kText || font.face.size() > kMaxFaceBytes) return;
    font.face +=
        Windows1252ToUtf8(token.text.substr(0, token.text.find(';')).substr(0, kMaxFaceBytes));
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
        picture_->depth = groups_.depth();
    }
    if (token.kind == Kind::kBinary) picture_->picture.bytes += token.text;
    if (token.kind == Kind::kText && groups_.depth() == picture_->depth) {
        TakePictureText(token.text);
    }
    if (token.kind == Kind::kWord) TakePictureWord(token);
}

void RtfReader::TakePictureText(std::string_view text) {
    for (const char digit : text) {
        const int value = HexValue(digit);
        if (value < 0) continue;
        int& first = picture_->hex_digit;
        if (first >= 0) picture_->picture.bytes += static_cast<char>(16 * first + value);
        first = first >= 0 ? -1 : value;
    }
}

void RtfReader::TakePictureWord(const RtfToken& word) {
    static const std::map<std::string_view, RichPicture::Format> formats = {
        {"emfblip", RichPicture::Format::kEnhancedMetafile},
        {"wmetafile", RichPicture::Format::kWindowsMetafile},
        {"pngblip", RichPicture::Format::kPng},
        {"jpegblip", RichPicture::Format::kJpeg},
        {"dibitmap", RichPicture::Format::kBitmap},
    };
    const auto format = formats.find(word.name);
    if (format != formats.end()) picture_->picture.format = format->second;
    if (word.name == "picwgoal") picture_->width.goal_twips = word.parameter;
    if (word.name == "pichgoal") picture_->height.goal_twips = word.parameter;
    if (word.name == "picw") picture_->width.natural = word.parameter;
    if (word.name == "pich") picture_->height.natural = word.parameter;
    if (word.name == "picscalex") picture_->width.percent = word.parameter;
    if (word.name == "picscaley") picture_->height.percent = word.parameter;
}

void RtfReader::FinishPicture() {
    RichPicture picture = std::move(picture_->picture);
    picture.width_twips = SideTwips(picture_->width, picture.format);
    picture.height_twips = SideTwips(picture_->height, picture.format);
    picture_.reset();
    StartCell();
    ++characters_;
    AddRun({{}, state().style, std::move(picture)});
}

void RtfReader::TakeLabel(const RtfToken& token) {
    if (token.kind == Kind::kText) label_ += Windows1252ToUtf8(token.text);
    if (token.kind == Kind::kWord && token.name == "tab") label_ += '\t';
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
    const std::string bytes = std::exchange(bytes_, {});
    const int charset = state().style.charset;
    if (charset == kSymbolCharset) {
        AddText(SymbolsToUtf8(bytes));
    } else {
        AddText(reading_.decode(bytes, CodePageOf(charset, code_page_)));
    }
}

void RtfReader::AddText(std::string_view utf8) {
    std::string text(utf8);
    std::erase_if(text, IsControl);
    if (text.empty()) return;
    StartCell();
    characters_ += CharacterCount(text);
    AddRun({std::move(text), state().style, {}});
}

void RtfReader::AddRun(RichRun run) {
    const bool joins =
        !runs_.empty() && !runs_.back().picture && !run.picture && runs_.back().style == run.style;
    if (joins) {
        runs_.back().text += run.text;
    } else {
        runs_.push_back(std::move(run));
    }
}

void RtfReader::EndParagraph(bool is_open) {
    RichParagraph paragraph = state().paragraph;
    paragraph.runs = std::exchange(runs_, {});
    const CharacterStyle& style = state().style;
    if (paragraph.runs.empty() || (!is_open && paragraph.runs.back().style != style)) {
        paragraph.runs.push_back({{}, style, {}});
    }
    paragraph.is_open = is_open;
    const std::string label = std::exchange(label_, {});
    if (!label.empty() && !paragraph.has_bullet) {
        paragraph.runs.insert(paragraph.runs.begin(), {label, paragraph.runs.front().style, {}});
    }
    if (!text_.empty()) text_.back().is_open = false;
    text_.push_back(std::move(paragraph));
    cell_ended_ = false;
    ++characters_;
}

// The last paragraph may do without an end of its own.
void RtfReader::EndOpenParagraph() {
    if (runs_.empty()) return;
    EndParagraph(true);
}

void RtfReader::StartCell() {
    if (!std::exchange(cell_ended_, false)) return;
    ++characters_;
    AddRun({"\t", state().style, {}});
}

void RtfReader::TakeCell(const RtfToken&) {
    StartCell();
    cell_ended_ = true;
}

void RtfReader::TakeRow(const RtfToken&) {
    RichParagraph& paragraph = state().paragraph;
    paragraph.tabs_twips = cell_ends_;
    EndParagraph();
    paragraph.tabs_twips.clear();
}

void RtfReader::UseFont(int number) {
    const auto row = fonts_.find(number);
    if (row == fonts_.end()) return;
    const Font& font = row->second;
    state().style.face = font.face.empty() ? reading_.default_face : font.face;
    state().style.charset = font.charset;
}

void RtfReader::SetPlain(const RtfToken&) {
    state().style = {};
    state().style.face = reading_.default_face;
    state().style.language = default_language_;
    UseFont(default_font_);
}

void RtfReader::SetFont(const RtfToken& word) {
    UseFont(word.parameter);
}

void RtfReader::SetSize(const RtfToken& word) {
    state().style.size_twips = std::clamp(word.parameter, 1, kMaxTwips / 10) * kTwipsPerHalfPoint;
}

std::optional<Color> RtfReader::ColorAt(int number) const {
    const auto index = static_cast<std::size_t>(std::max(number, 0));
    return index < colors_.size() ? colors_[index] : std::nullopt;
}

void RtfReader::SetDefaultLanguage(const RtfToken& word) {
    SetLanguage(word);
    default_language_ = state().style.language;
}

void RtfReader::SetRaised(const RtfToken& word) {
    const int half_points = word.has_parameter ? word.parameter : 6;
    state().style.offset_twips = std::clamp(half_points, -127, 127) * kTwipsPerHalfPoint;
}

void RtfReader::SetLowered(const RtfToken& word) {
    SetRaised(word);
    state().style.offset_twips *= -1;
}

void RtfReader::TakeCharacter(const RtfToken& word) {
    static const std::map<std::string_view, std::string_view> characters = {
        {"~", "\u00A0"},         {"_", "\u2011"},       {"bullet", "\u2022"},
        {"lquote", "\u2018"},    {"rquote", "\u2019"},  {"ldblquote", "\u201C"},
        {"rdblquote", "\u201D"}, {"emdash", "\u2014"},  {"endash", "\u2013"},
        {"emspace", "\u2003"},   {"enspace", "\u2002"}, {"qmspace", "\u2005"},
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

RichText ReadRichText(std::string_view rtf, const RtfReading& reading) {
    return RtfReader(rtf, reading).Run();
}

bool LeavesOut(std::string_view rtf) {
    RtfTokenizer tokens(rtf);
    RtfGroups groups;
    for (RtfToken token = tokens.Next(); token.kind != Kind::kEnd; token = tokens.Next()) {
        groups.Follow(token);
        const bool is_text = token.kind == Kind::kByte || token.kind == Kind::kBinary ||
                             (token.kind == Kind::kText && !TrimBlanks(token.text).empty()) ||
                             token.name == "u" || token.name == "chpgn";
        if (is_text && groups.destination() == RtfDestination::kLeftOut) return true;
    }
    return false;
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
