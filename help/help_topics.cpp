#include "help/help_topics.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kDigits = "0123456789";
constexpr std::size_t kMaxLinkBytes = 200;
constexpr std::size_t kMaxQueryCharacters = 100;

bool IsHighByte(char c) {
    return static_cast<unsigned char>(c) >= 0x80;
}

bool IsAsciiAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The digits that `text` begins with; `text` goes on behind them.
std::optional<unsigned long> TakeContext(std::string_view& text) {
    const std::size_t length = std::min(text.find_first_not_of(kDigits), text.size());
    if (length == 0) return std::nullopt;
    const int number = ParseInteger(text.substr(0, length));
    text.remove_prefix(length);
    return static_cast<unsigned long>(number);
}

// --- Inline marks --------------------------------------------------------------------------------

// Cuts one text into spans. A mark that nothing closes is a plain character.
class InlineParser {
  public:
    explicit InlineParser(std::string_view text)
        : text_(text), last_bold_end_(LastEnd('*')), last_italic_end_(LastEnd('_')) {}

    HelpText Parse();

  private:
    bool CanOpen(std::size_t i) const;
    bool CanClose(std::size_t i) const;
    std::size_t LastEnd(char mark) const;  // 0: none
    bool Toggle(bool& look, std::size_t last_end);
    bool TakeMark();
    bool TakeLink();
    void EndSpan();

    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t last_bold_end_;
    std::size_t last_italic_end_;
    HelpSpan span_;
    HelpText spans_;
};

bool InlineParser::CanOpen(std::size_t i) const {
    if (i > 0 && IsAsciiAlphanumeric(text_[i - 1])) return false;
    if (i + 1 == text_.size()) return false;
    const char next = text_[i + 1];
    return IsAsciiAlphanumeric(next) || IsHighByte(next) || next == '[';
}

bool InlineParser::CanClose(std::size_t i) const {
    if (i == 0 || text_[i - 1] == ' ' || text_[i - 1] == '\\') return false;
    return i + 1 == text_.size() || !IsAsciiAlphanumeric(text_[i + 1]);
}

std::size_t InlineParser::LastEnd(char mark) const {
    for (std::size_t i = text_.size(); i-- > 1;) {
        if (text_[i] == mark && CanClose(i)) return i;
    }
    return 0;
}

HelpText InlineParser::Parse() {
    while (position_ < text_.size()) {
        if (TakeMark()) continue;
        span_.text += text_[position_];
        ++position_;
    }
    EndSpan();
    return std::move(spans_);
}

bool InlineParser::TakeMark() {
    switch (text_[position_]) {
        case '\\':
            if (position_ + 1 == text_.size() || IsHighByte(text_[position_ + 1]) ||
                IsAsciiAlphanumeric(text_[position_ + 1])) {
                return false;
            }
            span_.text += text_[position_ + 1];
            position_ += 2;
            return true;
        case '*':
            return Toggle(span_.bold, last_bold_end_);
        case '_':
            return Toggle(span_.italic, last_italic_end_);
        case '[':
            return TakeLink();
        default:
            return false;
    }
}

bool InlineParser::Toggle(bool& look, std::size_t last_end) {
    const bool ends = look && CanClose(position_);
    const bool begins = !look && CanOpen(position_) && last_end > position_;
    if (!ends && !begins) return false;
    EndSpan();
    look = begins;
    ++position_;
    return true;
}

bool InlineParser::TakeLink() {
    constexpr std::string_view kOpen = "[[";
    constexpr std::string_view kClose = "]]";
    // The bound keeps a text full of openings from being searched again and again.
    std::string_view rest = text_.substr(position_, kMaxLinkBytes);
    if (rest.substr(0, kOpen.size()) != kOpen) return false;
    const std::size_t close = rest.find(kClose);
    if (close == std::string_view::npos) return false;
    std::string_view inside = rest.substr(kOpen.size(), close - kOpen.size());
    const auto context = TakeContext(inside);
    if (!context || inside.size() < 2 || inside[0] != '|') return false;
    EndSpan();
    spans_.push_back({std::string(inside.substr(1)), span_.bold, span_.italic, context});
    position_ += close + kClose.size();
    return true;
}

void InlineParser::EndSpan() {
    if (!span_.text.empty()) spans_.push_back(span_);
    span_.text.clear();
}

// --- Lines ---------------------------------------------------------------------------------------

// Builds topics from lines.
class BookParser {
  public:
    void AddLine(std::string_view line);
    std::vector<HelpTopic> Take();

  private:
    bool TakeDirective(std::string_view line);
    bool TakeTopic(std::string_view rest, int level);
    void AddTextLine(std::string_view line);
    void AddRow(std::string_view line);
    void AddPreformatted(std::string_view line);
    void Open(HelpBlockKind kind, std::string_view text);
    void EndBlock();

    std::vector<HelpTopic> topics_;
    std::optional<HelpBlockKind> open_;  // the block whose lines are still coming
    std::string open_text_;
};

bool IsTableRule(std::string_view line) {
    return line.find('-') != std::string_view::npos &&
           line.find_first_not_of("|-: ") == std::string_view::npos;
}

// `rest` is what follows `start` in `line`.
bool TakeStart(std::string_view line, std::string_view start, std::string_view& rest) {
    if (line.substr(0, start.size()) != start) return false;
    rest = line.substr(start.size());
    return true;
}

void BookParser::AddLine(std::string_view line) {
    if (TakeDirective(line) || topics_.empty()) return;
    std::string_view rest;
    if (TrimBlanks(line).empty()) {
        EndBlock();
    } else if (TakeStart(line, "# ", rest)) {
        Open(HelpBlockKind::kHeading, rest);
        EndBlock();
    } else if (TakeStart(line, "## ", rest)) {
        Open(HelpBlockKind::kSubheading, rest);
        EndBlock();
    } else if (TakeStart(line, "- ", rest)) {
        Open(HelpBlockKind::kBullet, rest);
    } else if (TakeStart(line, "    ", rest)) {
        AddPreformatted(rest);
    } else if (line[0] == '|') {
        AddRow(line);
    } else {
        AddTextLine(line);
    }
}

bool BookParser::TakeDirective(std::string_view line) {
    std::string_view rest;
    if (TakeStart(line, "@topic ", rest)) return TakeTopic(rest, 0);
    if (TakeStart(line, "@subtopic ", rest)) return TakeTopic(rest, 1);
    if (topics_.empty() || !TakeStart(line, "@context ", rest)) return false;
    const auto context = TakeContext(rest);
    if (!context || !TrimBlanks(rest).empty()) return false;
    EndBlock();
    topics_.back().anchors.push_back({*context, topics_.back().blocks.size()});
    return true;
}

bool BookParser::TakeTopic(std::string_view rest, int level) {
    const auto context = TakeContext(rest);
    if (!context || TrimBlanks(rest).empty()) return false;
    EndBlock();
    topics_.push_back({*context, level, std::string(TrimBlanks(rest)), {}, {}});
    return true;
}

void BookParser::AddTextLine(std::string_view line) {
    if (!open_) return Open(HelpBlockKind::kParagraph, line);
    open_text_ += ' ';
    open_text_ += TrimBlanks(line);
}

void BookParser::AddRow(std::string_view line) {
    EndBlock();
    std::vector<HelpBlock>& blocks = topics_.back().blocks;
    if (IsTableRule(line) && !blocks.empty() && blocks.back().kind == HelpBlockKind::kTableRow) {
        blocks.back().kind = HelpBlockKind::kTableHeader;
        return;
    }
    line = TrimBlanks(line);
    line.remove_prefix(1);
    HelpBlock block{HelpBlockKind::kTableRow, {}};
    // "\|" and the "|" of a link part no cells.
    std::size_t start = 0;
    bool in_link = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line.substr(i, 2) == "[[") in_link = true;
        if (line.substr(i, 2) == "]]") in_link = false;
        if (line[i] != '|' || in_link || (i > 0 && line[i - 1] == '\\')) continue;
        block.cells.push_back(InlineParser(TrimBlanks(line.substr(start, i - start))).Parse());
        start = i + 1;
    }
    if (start < line.size()) {
        block.cells.push_back(InlineParser(TrimBlanks(line.substr(start))).Parse());
    }
    if (!block.cells.empty()) blocks.push_back(std::move(block));
}

void BookParser::AddPreformatted(std::string_view line) {
    EndBlock();
    topics_.back().blocks.push_back(
        {HelpBlockKind::kPreformatted, {{{std::string(line), false, false, std::nullopt}}}});
}

void BookParser::Open(HelpBlockKind kind, std::string_view text) {
    EndBlock();
    open_ = kind;
    open_text_ = TrimBlanks(text);
}

void BookParser::EndBlock() {
    if (open_) topics_.back().blocks.push_back({*open_, {InlineParser(open_text_).Parse()}});
    open_.reset();
}

std::vector<HelpTopic> BookParser::Take() {
    EndBlock();
    return std::move(topics_);
}

// --- Search --------------------------------------------------------------------------------------

// The letters of the codes U+00C0 to U+00FF without accent and in lower case.
constexpr std::u16string_view kBaseLetters =
    u"aaaaaa\u00E6ceeeeiiii\u00F0nooooo\u00D7ouuuuy\u00FE\u00DF"
    u"aaaaaa\u00E6ceeeeiiii\u00F0nooooo\u00F7ouuuuy\u00FEy";
static_assert(kBaseLetters.size() == 64);

char16_t FoldUnit(char16_t unit) {
    constexpr char16_t kFirst = 0xC0;
    if (unit >= u'A' && unit <= u'Z') return static_cast<char16_t>(unit - u'A' + u'a');
    if (unit >= kFirst && unit < kFirst + kBaseLetters.size()) return kBaseLetters[unit - kFirst];
    if (unit == 0x2018 || unit == 0x2019) return u'\'';
    return unit == 0xA0 ? u' ' : unit;
}

bool IsCombiningAccent(char16_t unit) {
    return unit >= 0x300 && unit <= 0x36F;
}

// `text` as it is compared: lower case, no accents (of the western European letters).
std::u16string Fold(std::string_view text) {
    const std::string bytes = Utf8ToUtf16Le(text);
    std::u16string folded;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<std::uint8_t>(bytes[i]);
        const auto high = static_cast<std::uint8_t>(bytes[i + 1]);
        const auto unit = static_cast<char16_t>(low | (high << 8));
        if (!IsCombiningAccent(unit)) folded += FoldUnit(unit);
    }
    return folded;
}

bool IsWordUnit(char16_t folded) {
    return (folded >= u'0' && folded <= u'9') || (folded >= u'a' && folded <= u'z') ||
           folded >= 0xC0;
}

bool HoldsWord(std::u16string_view folded, std::u16string_view word) {
    for (std::size_t i = folded.find(word); i != std::u16string_view::npos;
         i = folded.find(word, i + 1)) {
        if (i == 0 || !IsWordUnit(folded[i - 1]) || !IsWordUnit(word[0])) return true;
    }
    return false;
}

std::vector<std::u16string> QueryWords(std::string_view query) {
    const std::u16string folded =
        Fold(CutToCharacters(ValidUtf8(query), kMaxQueryCharacters)) + u' ';
    std::vector<std::u16string> words;
    std::u16string word;
    for (const char16_t unit : folded) {
        if (unit > u' ') {
            word += unit;
        } else if (!word.empty()) {
            words.push_back(std::exchange(word, {}));
        }
    }
    return words;
}

// How well a topic answers a query.
struct Match {
    bool holds_all = false;
    bool title_holds_all = false;
    std::optional<std::size_t> best_block;
};

Match MatchTopic(const HelpTopic& topic, const std::vector<std::u16string>& words) {
    std::vector<bool> found(words.size());
    const auto count_words = [&](std::string_view text) {
        const std::u16string folded = Fold(text);
        std::size_t count = 0;
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (!HoldsWord(folded, words[i])) continue;
            found[i] = true;
            ++count;
        }
        return count;
    };
    Match match;
    match.title_holds_all = count_words(topic.title) == words.size();
    std::size_t most = 0;
    for (std::size_t i = 0; i < topic.blocks.size(); ++i) {
        const std::size_t count = count_words(PlainText(topic.blocks[i]));
        if (count <= most) continue;
        most = count;
        match.best_block = i;
    }
    if (match.title_holds_all) match.best_block.reset();
    match.holds_all = std::find(found.begin(), found.end(), false) == found.end();
    return match;
}

}  // namespace

HelpBook HelpBook::Parse(std::string_view bytes) {
    if (bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark) bytes.remove_prefix(kUtf8Mark.size());
    const std::string text = ValidUtf8(bytes);
    BookParser parser;
    for (std::string_view rest = text; !rest.empty();) parser.AddLine(TakeLine(rest));

    HelpBook book;
    book.topics_ = parser.Take();
    for (std::size_t i = 0; i < book.topics_.size(); ++i) {
        const HelpTopic& topic = book.topics_[i];
        book.places_.try_emplace(topic.context, HelpPlace{i, std::nullopt});
        for (const HelpAnchor& anchor : topic.anchors) {
            book.places_.try_emplace(anchor.context, HelpPlace{i, anchor.block});
        }
    }
    return book;
}

std::optional<HelpPlace> HelpBook::Find(unsigned long context) const {
    const auto place = places_.find(context);
    if (place == places_.end()) return std::nullopt;
    return place->second;
}

std::vector<HelpPlace> HelpBook::Search(std::string_view query) const {
    const std::vector<std::u16string> words = QueryWords(query);
    if (words.empty()) return {};
    std::vector<HelpPlace> by_title;
    std::vector<HelpPlace> by_text;
    for (std::size_t i = 0; i < topics_.size(); ++i) {
        const Match match = MatchTopic(topics_[i], words);
        if (!match.holds_all) continue;
        (match.title_holds_all ? by_title : by_text).push_back({i, match.best_block});
    }
    by_title.insert(by_title.end(), by_text.begin(), by_text.end());
    return by_title;
}

std::string PlainText(const HelpBlock& block) {
    std::string text;
    for (const HelpText& cell : block.cells) {
        if (!text.empty()) text += ' ';
        for (const HelpSpan& span : cell) text += span.text;
    }
    return text;
}

}  // namespace tonvale
