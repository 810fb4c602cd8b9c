#include "help/help_rtf.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

constexpr std::string_view kProlog =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1"
    "{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\fmodern Courier New;}}"
    "{\\colortbl ;\\red0\\green51\\blue153;\\red0\\green64\\blue96;}\n";
constexpr std::string_view kLinkLook = "\\ul\\cf1 ";
constexpr std::string_view kTitleParagraph = "\\sa160 ";
constexpr std::string_view kTitleLook = "\\f0\\fs32\\b\\cf2 ";
constexpr std::string_view kPlainLook = "\\f0\\fs20 ";
constexpr char16_t kBullet = 0x2022;

// Widths in twips, for text of 10 points.
constexpr int kCharacterWidth = 115;
constexpr int kColumnGap = 240;
constexpr std::size_t kMaxColumnCharacters = 60;
constexpr std::size_t kMaxColumns = 32;  // as many tab stops as a rich-edit control takes

// How a kind of block looks: its paragraph and its characters.
struct BlockLook {
    std::string_view paragraph;
    std::string_view characters;
};

// In the order of HelpBlockKind.
constexpr std::array<BlockLook, 7> kLooks{{
    {"\\sb200\\sa80 ", "\\f0\\fs26\\b\\cf2 "},
    {"\\sb120\\sa60 ", "\\f0\\fs22\\b\\cf2 "},
    {"\\sb40\\sa80 ", kPlainLook},
    {"\\fi-240\\li360\\tx360\\sa60 ", kPlainLook},
    {"\\sb60\\sa40 ", "\\f0\\fs20\\b "},
    {"\\sa20 ", kPlainLook},
    {"\\li360\\sa40 ", "\\f1\\fs20 "},
}};

bool IsTableKind(HelpBlockKind kind) {
    return kind == HelpBlockKind::kTableHeader || kind == HelpBlockKind::kTableRow;
}

// Writes rich text and counts the characters that the control will hold.
class RtfWriter {
  public:
    RtfWriter() { result_.rtf = kProlog; }

    void BeginParagraph(std::string_view paragraph, std::string_view characters);
    void EndParagraph();
    void AddText(std::string_view text);
    void AddSpans(const HelpText& spans);
    void AddBullet();
    void AddTab();
    void MarkBlock() { result_.block_starts.push_back(position_); }
    HelpRtf Take();

  private:
    void AddSpan(const HelpSpan& span);
    void AddUnit(char16_t unit);

    std::size_t position_ = 0;
    HelpRtf result_;
};

void RtfWriter::BeginParagraph(std::string_view paragraph, std::string_view characters) {
    result_.rtf += "\\pard\\plain";
    result_.rtf += paragraph;
    result_.rtf += characters;
}

void RtfWriter::EndParagraph() {
    result_.rtf += "\\par\n";
    ++position_;
}

void RtfWriter::AddUnit(char16_t unit) {
    std::string& rtf = result_.rtf;
    ++position_;
    if (unit < u' ' || unit == 0x7F) {
        rtf += ' ';
    } else if (unit == u'\\' || unit == u'{' || unit == u'}') {
        rtf += '\\';
        rtf += static_cast<char>(unit);
    } else if (unit < 0x80) {
        rtf += static_cast<char>(unit);
    } else {
        rtf += "\\u" + FormatInteger(static_cast<std::int16_t>(unit)) + "?";
    }
}

void RtfWriter::AddText(std::string_view text) {
    const std::string bytes = Utf8ToUtf16Le(text);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<std::uint8_t>(bytes[i]);
        const auto high = static_cast<std::uint8_t>(bytes[i + 1]);
        AddUnit(static_cast<char16_t>(low | (high << 8)));
    }
}

void RtfWriter::AddSpan(const HelpSpan& span) {
    const std::size_t start = position_;
    result_.rtf += '{';
    if (span.bold) result_.rtf += "\\b ";
    if (span.italic) result_.rtf += "\\i ";
    if (span.link) result_.rtf += kLinkLook;
    AddText(span.text);
    result_.rtf += '}';
    if (span.link && position_ > start) result_.links.push_back({start, position_, *span.link});
}

void RtfWriter::AddSpans(const HelpText& spans) {
    for (const HelpSpan& span : spans) AddSpan(span);
}

void RtfWriter::AddBullet() {
    AddUnit(kBullet);
    AddTab();
}

void RtfWriter::AddTab() {
    result_.rtf += "\\tab ";
    ++position_;
}

HelpRtf RtfWriter::Take() {
    result_.rtf += "}";
    return std::move(result_);
}

std::size_t CellWidth(const HelpText& cell) {
    const std::size_t width = CharacterCount(PlainText({HelpBlockKind::kTableRow, {cell}}));
    return std::min(width, kMaxColumnCharacters);
}

// Where the columns behind the first begin, in twips, from the widest cell of each.
std::vector<int> ColumnStarts(const std::vector<HelpBlock>& blocks, std::size_t first,
                              std::size_t end) {
    std::vector<std::size_t> widths;
    for (std::size_t i = first; i < end; ++i) {
        const std::vector<HelpText>& cells = blocks[i].cells;
        const std::size_t columns = std::min(cells.size(), kMaxColumns);
        if (columns > widths.size()) widths.resize(columns);
        for (std::size_t column = 0; column < columns; ++column) {
            widths[column] = std::max(widths[column], CellWidth(cells[column]));
        }
    }
    std::vector<int> starts;
    int position = 0;
    for (std::size_t column = 0; column + 1 < widths.size(); ++column) {
        position += static_cast<int>(widths[column]) * kCharacterWidth + kColumnGap;
        starts.push_back(position);
    }
    return starts;
}

// Tab stops at the columns; a last cell that wraps goes on below itself.
std::string TableParagraph(const std::vector<int>& starts, std::string_view look) {
    std::string paragraph;
    if (!starts.empty()) {
        const std::string last = FormatInteger(starts.back());
        paragraph += "\\fi-" + last + "\\li" + last;
    }
    for (const int start : starts) paragraph += "\\tx" + FormatInteger(start);
    paragraph += look;
    return paragraph;
}

// Writes the table that begins with the block `first`; returns the index behind its last row.
std::size_t AddTable(RtfWriter& writer, const std::vector<HelpBlock>& blocks, std::size_t first) {
    std::size_t end = first;
    while (end < blocks.size() && IsTableKind(blocks[end].kind)) ++end;
    const std::vector<int> starts = ColumnStarts(blocks, first, end);
    for (std::size_t i = first; i < end; ++i) {
        const BlockLook& look = kLooks[static_cast<std::size_t>(blocks[i].kind)];
        writer.MarkBlock();
        writer.BeginParagraph(TableParagraph(starts, look.paragraph), look.characters);
        for (std::size_t column = 0; column < blocks[i].cells.size(); ++column) {
            if (column > 0) writer.AddTab();
            writer.AddSpans(blocks[i].cells[column]);
        }
        writer.EndParagraph();
    }
    return end;
}

void AddBlock(RtfWriter& writer, const HelpBlock& block) {
    const BlockLook& look = kLooks[static_cast<std::size_t>(block.kind)];
    writer.MarkBlock();
    writer.BeginParagraph(look.paragraph, look.characters);
    if (block.kind == HelpBlockKind::kBullet) writer.AddBullet();
    for (const HelpText& cell : block.cells) writer.AddSpans(cell);
    writer.EndParagraph();
}

}  // namespace

HelpRtf MakeHelpRtf(const HelpTopic& topic) {
    RtfWriter writer;
    writer.BeginParagraph(kTitleParagraph, kTitleLook);
    writer.AddText(topic.title);
    writer.EndParagraph();
    for (std::size_t i = 0; i < topic.blocks.size();) {
        if (IsTableKind(topic.blocks[i].kind)) {
            i = AddTable(writer, topic.blocks, i);
        } else {
            AddBlock(writer, topic.blocks[i]);
            ++i;
        }
    }
    return writer.Take();
}

std::optional<unsigned long> LinkAt(const HelpRtf& rtf, std::size_t position) {
    const auto link =
        std::find_if(rtf.links.begin(), rtf.links.end(), [&](const HelpLinkRange& range) {
            return position >= range.start && position < range.end;
        });
    if (link == rtf.links.end()) return std::nullopt;
    return link->context;
}

}  // namespace tonvale
