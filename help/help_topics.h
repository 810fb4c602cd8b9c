// The program's help: a text file of topics, each found by its context number.
//
// The file is UTF-8 text that reads well as it is. Lines before the first topic belong to nobody.
//   @topic 100110 Title      starts a topic; "@subtopic" starts one a level down in the index
//   @context 110111          the next block is what this number shows
//   # Heading                ## Smaller heading
//   - bullet                 goes on in the lines below it
//   | cell | cell |          row of a table; "|---|---|" below makes it the header. The "|" of a
//                            link parts no cells, nor does "\|"
//       formula              four blanks: kept as it is, in a fixed-pitch font
//   any other line           paragraph, up to an empty line or another kind of line
// Inside a text: *bold*, _italic_, [[100115|words that lead to this context]], \* for a plain "*".
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tonvale {

// A run of text in one look.
struct HelpSpan {
    std::string text;
    bool bold = false;
    bool italic = false;
    std::optional<unsigned long> link;  // the context that a click leads to
};

using HelpText = std::vector<HelpSpan>;

enum class HelpBlockKind {
    kHeading,
    kSubheading,
    kParagraph,
    kBullet,
    kTableHeader,
    kTableRow,
    kPreformatted,
};

struct HelpBlock {
    HelpBlockKind kind = HelpBlockKind::kParagraph;
    std::vector<HelpText> cells;  // those of a table row; every other block has one
};

// A context number inside a topic, and the block it shows.
struct HelpAnchor {
    unsigned long context = 0;
    std::size_t block = 0;  // equals the number of blocks when nothing follows it
};

struct HelpTopic {
    unsigned long context = 0;
    int level = 0;  // in the index: 0, or 1 for a subtopic
    std::string title;
    std::vector<HelpAnchor> anchors;
    std::vector<HelpBlock> blocks;
};

// A place in the help, as indices.
struct HelpPlace {
    std::size_t topic = 0;
    std::optional<std::size_t> block;  // none: the topic's beginning
};

class HelpBook {
  public:
    HelpBook() = default;

    // Any bytes give a book: a line that is not understood is text. Costs time in proportion to
    // the bytes.
    static HelpBook Parse(std::string_view bytes);

    // In the order of the file, which is that of the index.
    const std::vector<HelpTopic>& topics() const { return topics_; }

    // Where a context number leads; of two equal numbers to the first. nullopt: nowhere.
    std::optional<HelpPlace> Find(unsigned long context) const;

    // The topics that hold all words of `query` (its first 100 characters), each as the beginning
    // of a word, without regard to case and accents; those that hold them in the title come first.
    // `block` is the first that holds most of the words. An empty query finds nothing.
    std::vector<HelpPlace> Search(std::string_view query) const;

  private:
    std::vector<HelpTopic> topics_;
    std::unordered_map<unsigned long, HelpPlace> places_;
};

// The text of a block without its looks; cells are parted by blanks.
std::string PlainText(const HelpBlock& block);

}  // namespace tonvale
