#include "archive/stored_results.h"

#include <algorithm>

#include "common/text.h"

namespace tonvale {

namespace {

// Blanks around a text are no difference: the platform's profile functions strip them. A result
// that is never stored cannot differ.
bool SameResult(const AssessedResult& result, const ProfileFile& file) {
    if (!result.section) return true;
    const auto stored = StoredResult(file, result);
    return stored && TrimBlanks(*stored) == TrimBlanks(result.shown);
}

std::string DescribeDifference(const AssessedResult& result, const ProfileFile& file) {
    const auto stored = StoredResult(file, result);
    return std::string(result.key) + (stored ? " salvato \"" + *stored + "\"" : " non salvato") +
           ", ricalcolato \"" + result.shown + "\"";
}

}  // namespace

std::optional<std::string> StoredResult(const ProfileFile& file, const AssessedResult& result) {
    if (!result.section) return std::nullopt;
    return file.Text(*result.section, result.key, kMaxValueCharacters);
}

bool IsConsistent(const Assessment& assessment, const ProfileFile& file) {
    if (!assessment.computed) return !assessment.message;
    return std::all_of(assessment.results.begin(), assessment.results.end(),
                       [&](const AssessedResult& result) { return SameResult(result, file); });
}

std::optional<bool> Consistency(const Assessment& assessment, const ProfileFile& file) {
    const bool keeps_results =
        std::any_of(assessment.results.begin(), assessment.results.end(),
                    [](const AssessedResult& result) { return result.section.has_value(); });
    if (!assessment.message && (!assessment.computed || !keeps_results)) return std::nullopt;
    return IsConsistent(assessment, file);
}

std::string DescribeFindings(const Assessment& assessment, const ProfileFile& file) {
    if (assessment.message) return assessment.message->text;
    std::string text;
    const auto append = [&text](const std::string& finding) {
        if (!text.empty()) text += "; ";
        text += finding;
    };
    for (const AssessedResult& result : assessment.results) {
        if (assessment.computed && !SameResult(result, file)) {
            append(DescribeDifference(result, file));
        }
    }
    for (const std::string& finding : assessment.findings) append(finding);
    return text;
}

}  // namespace tonvale
