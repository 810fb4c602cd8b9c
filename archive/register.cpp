#include "archive/register.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <variant>

#include "archive/stored_results.h"
#include "common/notes.h"
#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

struct BandRow {
    std::string_view name;
    double first_dba;
};

constexpr std::array<BandRow, kExposureBandCount> kBands{
    {{"<80", 0}, {"80-85", 80}, {"85-87", 85}, {">87", 87}}};

constexpr std::string_view kDailyLevelKey = "LEPD";
constexpr std::string_view kWeeklyLevelKey = "LEPW";

// The key under which the register tells the rating of a protector.
constexpr std::string_view kRatingKey = "GIUDIZIO";
constexpr std::string_view kRatingDetail = "rating";

struct MainResultRow {
    FileKind kind;
    std::string_view key;
    std::string_view label;
    std::string_view unit;
    std::string_view total_error_key = {};
};

// In the order in which they are told. Of results with an error only the first is: it is what the
// others lead to.
constexpr std::array<MainResultRow, 14> kMainResults{{
    {FileKind::kLepd, kDailyLevelKey, "Lep,d", "dBA"},
    {FileKind::kLepw, kWeeklyLevelKey, "Lep,w", "dBA"},
    {FileKind::kLeg, "LEQGROUP", "Leq", "dBA"},
    {FileKind::kIlg, "ILG", "Danno", "%"},
    {FileKind::kSpr, "LAEQ", "LAeq", "dBA"},
    {FileKind::kSpr, "LCEQ", "LCeq", "dBC"},
    {FileKind::kSpi, "H", "H", "dB"},
    {FileKind::kSpi, "M", "M", "dB"},
    {FileKind::kSpi, "L", "L", "dB"},
    {FileKind::kSpi, "SNR", "SNR", "dB"},
    {FileKind::kDpi, "LIVEFF", "L'Aeq", "dBA"},
    {FileKind::kErr, kWeeklyLevelKey, "Lep,w", "dBA", "LEPW_UTOT"},
    {FileKind::kErr, kDailyLevelKey, "Lep,d", "dBA", "LEPD_UTOT"},
    {FileKind::kErr, "LEQ", "Leq", "dBA", "LEQ_UTOT"},
}};

const RegisterResult* FindResult(const RegisterRow& row, std::string_view key) {
    const auto found =
        std::find_if(row.results.begin(), row.results.end(),
                     [&](const RegisterResult& result) { return result.key == key; });
    return found == row.results.end() || found->text.empty() ? nullptr : &*found;
}

// Where a daily or weekly level that is not 0 belongs; no exposure at all is no level.
void TakeExposureLevel(const RegisterResult& result, RegisterRow& row) {
    if (result.key != kDailyLevelKey && result.key != kWeeklyLevelKey) return;
    const double level_dba = ParseNumber(result.text);
    if (level_dba == 0) return;
    row.exposure_level_dba = level_dba;
    row.band = BandOf(level_dba);
}

void TakeMainResults(RegisterRow& row) {
    for (const MainResultRow& main : kMainResults) {
        const RegisterResult* result = main.kind == row.kind ? FindResult(row, main.key) : nullptr;
        if (result == nullptr) continue;
        row.main_results.push_back({main.label, result->text, main.unit});
        TakeExposureLevel(*result, row);
        if (main.total_error_key.empty()) continue;
        const RegisterResult* error = FindResult(row, main.total_error_key);
        if (error != nullptr) row.main_results.back().total_error = error->text;
        return;
    }
}

// The label without its point and without what stands in brackets.
std::string RatingOf(const Assessment& assessment) {
    for (const Detail& detail : assessment.details) {
        const auto* label = std::get_if<std::string>(&detail.value);
        if (detail.key != kRatingDetail || label == nullptr) continue;
        return label->substr(0, std::min(label->find(" ("), label->find('.')));
    }
    return {};
}

void TakeResults(const Assessment& assessment, RegisterRow& row) {
    if (!assessment.computed) return;
    for (const AssessedResult& result : assessment.results) {
        row.results.push_back({result.key, std::string(TrimBlanks(result.shown))});
    }
    row.rating = RatingOf(assessment);
    if (!row.rating.empty()) row.results.push_back({kRatingKey, row.rating});
    TakeMainResults(row);
}

RegisterRow NamedRow(const FoundFile& found, std::optional<FileKind> kind) {
    RegisterRow row;
    row.folder = SingleLine(DistinctUtf8(found.folder));
    row.file = SingleLine(DistinctUtf8(found.name));
    row.kind = kind;
    return row;
}

}  // namespace

std::string_view BandName(ExposureBand band) {
    return kBands[static_cast<std::size_t>(band)].name;
}

ExposureBand BandOf(double level_dba) {
    std::size_t band = 0;
    while (band + 1 < kBands.size() && level_dba >= kBands[band + 1].first_dba) ++band;
    return static_cast<ExposureBand>(band);
}

RegisterRow MakeRegisterRow(const FoundFile& found, FileKind kind, const ProfileFile& file,
                            const Assessment& assessment) {
    RegisterRow row = NamedRow(found, kind);
    const std::string notes = ReadNotes(file);
    std::string_view rest = notes;
    row.note = SingleLine(TakeLine(rest));
    TakeResults(assessment, row);
    row.consistent = Consistency(assessment, file);
    // A file that keeps no results says so in a finding: the missing answer tells it already.
    if (row.consistent) row.message = SingleLine(DescribeFindings(assessment, file));
    return row;
}

RegisterRow MakeUnreadableRow(const FoundFile& found, std::string_view problem) {
    const FileKindInfo* info = FileKindOfPath(found.name);
    const bool is_data_file = info != nullptr && !info->tag.empty();
    RegisterRow row = NamedRow(found, is_data_file ? std::optional(info->kind) : std::nullopt);
    row.message = problem;
    return row;
}

std::string_view KindTag(const RegisterRow& row) {
    return row.kind ? InfoOf(*row.kind).tag : "";
}

std::string_view KindName(const RegisterRow& row) {
    if (!row.kind) return {};
    const std::string_view filter = InfoOf(*row.kind).filter_text;
    return filter.substr(0, filter.find(" ("));
}

}  // namespace tonvale
