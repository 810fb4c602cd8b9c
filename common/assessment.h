// A data file recomputed from its inputs, as the command-line companion shows and checks it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/report_text.h"
#include "common/user_message.h"

namespace tonvale {

struct AssessedResult {
    std::string_view key;  // of the header section
    std::string shown;     // as the calculator shows it
    double value;          // before it was rounded
};

struct Assessment {
    // Why the calculator refuses to compute; then there are only the keys of the results.
    std::optional<UserMessage> message;
    std::vector<AssessedResult> results;  // in the file's order
    Report report;
    // The summary for the clipboard, its cells parted by the separator given.
    std::function<std::string(std::string_view list_separator)> summarize;
};

// Adds the report and the summary of a computed form to its assessment.
template <typename Form>
void AddTexts(Assessment& assessment, const Form& form) {
    assessment.report = MakeReport(form);
    assessment.summarize = [form](std::string_view list_separator) {
        return Summary(form, list_separator);
    };
}

}  // namespace tonvale
