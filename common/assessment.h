// A data file recomputed from its inputs, as the command-line companion shows and checks it.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "common/file_kinds.h"
#include "common/printout.h"
#include "common/user_message.h"

namespace tonvale {

struct AssessedResult {
    std::string_view key;
    std::string shown = {};  // as the calculator shows it
    double value = 0;        // before it was rounded
    // Where the file keeps the text shown; nullopt: it stores no such result.
    std::optional<std::string_view> section = kHeaderSection;
};

// What a kind tells besides its results: a member of the JSON object `details`.
using DetailValue = std::variant<std::nullptr_t, double, std::string, std::vector<double>,
                                 std::vector<std::string>>;
struct Detail {
    std::string_view key;
    DetailValue value;
};

// How much one part of the inputs adds to the result.
struct Contribution {
    std::string part;    // "92.5 dBA, 120 minuti"
    double percent = 0;  // of the whole
};

struct Assessment {
    // Why the calculator refuses to compute.
    std::optional<UserMessage> message = {};
    // True when the results have been computed: their texts and values stand for nothing otherwise.
    bool computed = true;
    std::vector<AssessedResult> results = {};  // in the file's order
    std::vector<Detail> details = {};
    // In the order of the inputs; as `shares`, in per cent, one of the details. Empty when the kind
    // has no such parts or the whole is nothing.
    std::vector<Contribution> contributions = {};
    // What the calculator tells and yet computes; the last of the details.
    std::vector<std::string> warnings = {};
    // What makes a stored file doubtful although its results follow from its inputs; `verifica`
    // tells it.
    std::vector<std::string> findings = {};
    Printout printout = {};
    // The summary for the clipboard, its cells parted by the separator given.
    std::function<std::string(std::string_view list_separator)> summarize = {};
};

// An assessment that the calculator refuses: `results` have their keys only.
inline Assessment RefusedAssessment(UserMessage message, std::vector<AssessedResult> results) {
    return {.message = std::move(message), .computed = false, .results = std::move(results)};
}

// Adds the printout and the summary of a computed form to its assessment.
template <typename Form>
void AddTexts(Assessment& assessment, const Form& form) {
    assessment.printout = MakePrintout(form);
    assessment.summarize = [form](std::string_view list_separator) {
        return Summary(form, list_separator);
    };
}

}  // namespace tonvale
