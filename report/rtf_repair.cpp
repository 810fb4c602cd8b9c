#include "report/rtf_repair.h"

#include <algorithm>
#include <array>
#include <vector>

#include "common/numbers.h"
#include "common/text.h"
#include "report/rtf_groups.h"
#include "report/rtf_tokens.h"

namespace tonvale {

namespace {

using Kind = RtfToken::Kind;

constexpr int kTwipsPerHalfPoint = 10;
constexpr int kMaxOffset = 127;  // half points
constexpr int kMarkZero = 128;

std::string Word(std::string_view name, long long parameter) {
    std::string word = "\\";
    word += name;
    word += FormatInteger(parameter);
    return word;
}

// A unit of UTF-16, with "?" for readers that do not know of these.
std::string UnicodeWord(unsigned unit) {
    return Word("u", unit < 0x8000 ? static_cast<int>(unit) : static_cast<int>(unit) - 0x10000) +
           "?";
}

// `value` in units of `unit`, rounded to the nearest.
long long InUnits(long long value, int unit) {
    return value >= 0 ? (value + unit / 2) / unit : -((unit / 2 - value) / unit);
}

// Takes over token by token, holding the words of a paragraph's indents back until it is clear
// what they are together.
class WrittenRtfRepair {
  public:
    WrittenRtfRepair(std::string_view rtf, const RtfWriterFaults& faults)
        : tokens_(rtf), faults_(faults) {
        result_.reserve(rtf.size());
    }

    std::string Run() {
        for (RtfToken token = tokens_.Next(); token.kind != Kind::kEnd; token = tokens_.Next()) {
            if (token.kind != Kind::kWord || !TakeWord(token)) Copy(token);
        }
        FlushIndents();
        return std::move(result_);
    }

  private:
    static bool EndsWithBlank(const RtfToken& token) { return token.source.back() == ' '; }

    void Copy(const RtfToken& token) {
        FlushIndents();
        if (faults_.confuses_characters && token.kind == Kind::kText) {
            CopyText(token);
        } else {
            result_ += token.source;
        }
    }

    void CopyText(const RtfToken& token) {
        const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
        if (std::all_of(token.text.begin(), token.text.end(), is_ascii)) {
            result_ += token.source;
            return;
        }
        const std::string units = Utf8ToUtf16Le(token.text);
        for (std::size_t i = 0; i + 1 < units.size(); i += 2) {
            const auto low = static_cast<unsigned char>(units[i]);
            const auto high = static_cast<unsigned char>(units[i + 1]);
            if (high == 0 && low < 0x80) {
                result_ += static_cast<char>(low);
            } else {
                result_ += UnicodeWord(static_cast<unsigned>(high << 8 | low));
            }
        }
    }

    void Write(std::string_view name, long long parameter, const RtfToken& token) {
        FlushIndents();
        result_ += Word(name, parameter);
        if (EndsWithBlank(token)) result_ += ' ';
    }

    // The paragraph's words follow one another; others may stand between them.
    void FlushIndents() {
        if (!has_indents_) return;
        const long long left = first_line_ + others_;
        result_ += Word("li", left);
        if (others_ != 0) result_ += Word("fi", -others_);
        if (indents_end_with_blank_) result_ += ' ';
        has_indents_ = false;
        first_line_ = others_ = 0;
    }

    bool TakeIndent(const RtfToken& token) {
        if (!faults_.indents_swapped || (token.name != "li" && token.name != "fi")) return false;
        (token.name == "li" ? others_ : first_line_) = token.parameter;
        has_indents_ = true;
        indents_end_with_blank_ = EndsWithBlank(token);
        return true;
    }

    bool TakeWord(const RtfToken& token) {
        if (TakeIndent(token)) return true;
        if (faults_.confuses_characters && token.name == "urtf") {
            result_ += "\\rtf1\\ansi\\ansicpg1252\\uc1";
            return true;
        }
        if (faults_.offsets_in_twips && (token.name == "up" || token.name == "dn")) {
            Write(token.name, InUnits(token.parameter, kTwipsPerHalfPoint), token);
            return true;
        }
        if (faults_.negative_line_spacing && token.name == "sl" && token.parameter < 0) {
            const RtfToken next = tokens_.Next();
            const bool is_multiple = next.name == "slmult" && next.parameter == 1;
            Write("sl", is_multiple ? -token.parameter : token.parameter, token);
            if (next.kind == Kind::kWord && TakeWord(next)) return true;
            if (next.kind != Kind::kEnd) Copy(next);
            return true;
        }
        return false;
    }

    RtfTokenizer tokens_;
    RtfWriterFaults faults_;
    std::string result_;
    bool has_indents_ = false;
    bool indents_end_with_blank_ = false;
    long long first_line_ = 0;
    long long others_ = 0;
};

// A mark, in a group of its own so that the number of \uc around it does not matter.
std::string Mark(int offset) {
    const auto value = static_cast<unsigned>(kMarkZero + offset);
    const std::array<unsigned, 3> units = {kOffsetMark, kOffsetDigit + value / 16,
                                           kOffsetDigit + value % 16};
    std::string mark = "{\\uc1";
    for (const unsigned unit : units) mark += UnicodeWord(unit);
    return mark + '}';
}

class OffsetMarker {
  public:
    explicit OffsetMarker(std::string_view rtf) : tokens_(rtf) { result_.reserve(rtf.size()); }

    std::optional<std::string> Run() {
        for (RtfToken token = tokens_.Next(); token.kind != Kind::kEnd; token = tokens_.Next()) {
            Follow(token);
            result_ += token.source;
        }
        if (!has_marks_) return std::nullopt;
        return std::move(result_);
    }

  private:
    void Follow(const RtfToken& token) {
        groups_.Follow(token);
        const std::size_t depth = std::max<std::size_t>(groups_.depth(), 1);
        offsets_.resize(depth, offsets_.back());
        if (token.kind == Kind::kWord) SetOffset(token);
        if (groups_.IsBodyText(token) && offsets_.back() != marked_) PutMark();
    }

    void SetOffset(const RtfToken& token) {
        if (token.name == "plain") offsets_.back() = 0;
        const int sign = token.name == "up" ? 1 : token.name == "dn" ? -1 : 0;
        if (sign == 0) return;
        // Without a number they stand for 3 points.
        const int distance = token.has_parameter ? token.parameter : 6;
        offsets_.back() = sign * std::clamp(distance, -kMaxOffset, kMaxOffset);
    }

    void PutMark() {
        marked_ = offsets_.back();
        has_marks_ = true;
        result_ += Mark(marked_);
    }

    RtfTokenizer tokens_;
    RtfGroups groups_;
    std::string result_;
    std::vector<int> offsets_ = {0};  // of the groups that are open
    int marked_ = 0;
    bool has_marks_ = false;
};

}  // namespace

std::string RepairWrittenRtf(std::string_view rtf, const RtfWriterFaults& faults) {
    return WrittenRtfRepair(rtf, faults).Run();
}

bool IsRtf(std::string_view bytes) {
    return bytes.starts_with("{\\rtf");
}

bool IsWholeRtf(std::string_view bytes) {
    if (!IsRtf(bytes)) return false;
    RtfTokenizer tokens(bytes);
    std::size_t depth = 0;
    std::size_t read = 0;
    do {
        const RtfToken token = tokens.Next();
        if (token.kind == Kind::kEnd) return false;
        if (token.kind == Kind::kOpen) ++depth;
        if (token.kind == Kind::kClose) --depth;
        read += token.source.size();
    } while (depth > 0);
    constexpr std::string_view kNothing("\0 \t\r\n", 5);
    return bytes.find_first_not_of(kNothing, read) == std::string_view::npos;
}

std::optional<std::string> MarkOffsets(std::string_view rtf) {
    return OffsetMarker(rtf).Run();
}

std::optional<int> OffsetOfMark(char16_t high, char16_t low) {
    const auto is_digit = [](char16_t c) { return c >= kOffsetDigit && c < kOffsetDigit + 16; };
    if (!is_digit(high) || !is_digit(low)) return std::nullopt;
    return 16 * (high - kOffsetDigit) + (low - kOffsetDigit) - kMarkZero;
}

}  // namespace tonvale
