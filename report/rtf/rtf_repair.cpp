#include "report/rtf/rtf_repair.h"

#include <algorithm>

#include "common/numbers.h"
#include "report/rtf/rtf_tokens.h"
#include "report/rtf/rtf_writer.h"
#include "report/rtf/twips.h"

namespace tonvale {

namespace {

using Kind = RtfToken::Kind;

std::string Word(std::string_view name, long long parameter) {
    std::string word = "\\";
    word += name;
    word += FormatInteger(parameter);
    return word;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
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
        if (faults_.confuses_characters && token.kind == Kind::kText && !IsAscii(token.text)) {
            AppendRtfText(result_, token.text);
        } else {
            result_ += token.source;
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
            Write(token.name, HalfPoints(token.parameter), token);
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

}  // namespace tonvale
