#include "report/rtf_tables.h"

#include <utility>

#include "common/numbers.h"
#include "report/rtf_groups.h"
#include "report/rtf_tokens.h"

namespace tonvale {

namespace {

using Kind = RtfToken::Kind;

constexpr std::string_view kNothing = "{}";

class TableFlattener {
  public:
    explicit TableFlattener(std::string_view rtf) : tokens_(rtf) { result_.reserve(rtf.size()); }

    std::string Run() {
        for (RtfToken token = tokens_.Next(); token.kind != Kind::kEnd; token = tokens_.Next()) {
            groups_.Follow(token);
            const bool is_body = groups_.destination() == RtfDestination::kBody;
            if (is_body && token.kind == Kind::kWord && TakeWord(token)) continue;
            // The tab behind a cell waits for the next one: none is left over at the row's end.
            if (groups_.IsBodyText(token)) StartCell();
            result_ += token.source;
        }
        return std::move(result_);
    }

  private:
    void StartCell() {
        if (cell_ended_) result_ += "\\tab ";
        cell_ended_ = false;
    }

    // What goes away leaves an empty group, so that the word before does not run into the text
    // behind.
    bool TakeWord(const RtfToken& token) {
        if (token.name == "cell") {
            StartCell();
            cell_ended_ = true;
            result_ += kNothing;
        } else if (token.name == "row") {
            cell_ended_ = false;
            result_ += "\\par ";
        } else if (token.name == "trowd") {
            stops_.clear();
            result_ += kNothing;
        } else if (token.name == "cellx") {
            stops_ += "\\tx" + FormatInteger(token.parameter);
            result_ += kNothing;
        } else if (token.name == "intbl") {
            result_ += stops_;
            result_ += kNothing;
        } else {
            return false;
        }
        return true;
    }

    RtfTokenizer tokens_;
    RtfGroups groups_;
    std::string result_;
    std::string stops_;
    bool cell_ended_ = false;
};

}  // namespace

std::string FlattenTables(std::string_view rtf) {
    return TableFlattener(rtf).Run();
}

}  // namespace tonvale
