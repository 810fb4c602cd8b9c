#include "calc/data_files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "archive/stored_results.h"
#include "calc/given_files.h"
#include "calc/options.h"
#include "calc/picture.h"
#include "common/json_writer.h"
#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

// Opens every file in turn and hands it on; the others get a line on standard error. False when
// there was one of those, or when the user has interrupted it.
bool ForEachDataFile(std::span<const FoundFile> found, FileSystem& files, Console& console,
                     const std::function<void(const OpenedFile&)>& use) {
    bool all_opened = true;
    for (const FoundFile& file : found) {
        if (console.IsInterrupted()) return false;
        const OpenedFile opened = OpenDataFile(file, files);
        if (opened.problem.empty()) {
            use(opened);
            continue;
        }
        all_opened = false;
        ReportFile(console, file.path, opened.problem);
    }
    return all_opened;
}

// --- calcola -------------------------------------------------------------------------------------

struct OutputSettings {
    std::string separator = ";";
    bool one_of_many = false;
    bool with_details = false;
};

// Each writes one file's assessment.
using AssessmentWriter = void (*)(const OpenedFile&, const Assessment&, const OutputSettings&,
                                  Console&);

void WriteRefusal(const OpenedFile& opened, const Assessment& assessment, Console& console) {
    ReportFile(console, opened.found.path, assessment.message->text);
}

// What each part of the inputs contributes, a line each.
void WriteContributions(const std::vector<Contribution>& contributions, Console& console) {
    if (contributions.empty()) return;
    console.Write("\nQuote dell'esposizione al rumore:\n");
    for (const Contribution& contribution : contributions) {
        console.Write(contribution.part + ": " + FormatFixed(contribution.percent, 0, 1) + " %\n");
    }
}

void WriteText(const OpenedFile& opened, const Assessment& assessment,
               const OutputSettings& settings, Console& console) {
    if (assessment.message) return WriteRefusal(opened, assessment, console);
    if (settings.one_of_many) console.Write("== " + SingleLine(opened.found.path) + " ==\n");
    console.Write(PrintoutAsText(assessment.printout));
    if (settings.with_details) WriteContributions(assessment.contributions, console);
    if (settings.one_of_many) console.Write("\n");
}

void WriteCsv(const OpenedFile& opened, const Assessment& assessment,
              const OutputSettings& settings, Console& console) {
    if (assessment.message) return WriteRefusal(opened, assessment, console);
    console.Write(assessment.summarize(settings.separator));
}

// Writes `key` with an object of one member a result, or null when there are none to show.
void WriteResults(JsonWriter& json, std::string_view key, const Assessment& assessment,
                  const std::function<void(const AssessedResult&)>& write_value) {
    json.Key(key);
    if (!assessment.computed) return json.Null();
    json.BeginObject();
    for (const AssessedResult& result : assessment.results) {
        json.Key(result.key);
        write_value(result);
    }
    json.EndObject();
}

void WriteMessage(JsonWriter& json, const std::optional<UserMessage>& message) {
    json.Key("message");
    if (!message) return json.Null();
    json.BeginObject();
    json.Key("caption");
    json.String(message->caption);
    json.Key("text");
    json.String(message->text);
    json.EndObject();
}

void WriteStored(JsonWriter& json, const Assessment& assessment, const ProfileFile& file) {
    json.Key("stored");
    json.BeginObject();
    for (const AssessedResult& result : assessment.results) {
        const auto stored = StoredResult(file, result);
        if (!stored) continue;
        json.Key(result.key);
        json.String(*stored);
    }
    json.EndObject();
}

// Writes a value of `details`; one call operator for each type that it can have.
struct DetailWriter {
    JsonWriter& json;

    void operator()(std::nullptr_t) const { json.Null(); }
    void operator()(double number) const { json.Number(number); }
    void operator()(const std::string& text) const { json.String(text); }
    template <typename Item>
    void operator()(const std::vector<Item>& items) const {
        json.BeginArray();
        for (const Item& item : items) (*this)(item);
        json.EndArray();
    }
};

void WriteDetails(JsonWriter& json, const Assessment& assessment) {
    const std::vector<Contribution>& contributions = assessment.contributions;
    const bool is_empty = assessment.details.empty() && assessment.warnings.empty();
    if (is_empty && contributions.empty()) return;
    json.Key("details");
    json.BeginObject();
    const DetailWriter write{json};
    for (const Detail& detail : assessment.details) {
        json.Key(detail.key);
        std::visit(write, detail.value);
    }
    if (!contributions.empty()) {
        std::vector<double> shares;
        shares.reserve(contributions.size());
        for (const Contribution& contribution : contributions) {
            shares.push_back(contribution.percent);
        }
        json.Key("shares");
        write(shares);
    }
    if (!assessment.warnings.empty()) {
        json.Key("warnings");
        write(assessment.warnings);
    }
    json.EndObject();
}

void WriteJson(const OpenedFile& opened, const Assessment& assessment,
               const OutputSettings& /*settings*/, Console& console) {
    JsonWriter json;
    json.BeginObject();
    json.Key("file");
    json.String(DistinctUtf8(opened.found.path));
    json.Key("kind");
    json.String(InfoOf(opened.kind->kind).tag);
    WriteResults(json, "shown", assessment, [&](const auto& result) { json.String(result.shown); });
    WriteResults(json, "values", assessment,
                 [&](const auto& result) { json.Number(result.value); });
    WriteStored(json, assessment, opened.file);
    json.Key("consistent");
    json.Boolean(IsConsistent(assessment, opened.file));
    WriteMessage(json, assessment.message);
    WriteDetails(json, assessment);
    json.EndObject();
    console.Write(json.text() + "\n");
}

struct OutputFormat {
    std::string_view name;
    AssessmentWriter write;
};

constexpr std::array<OutputFormat, 3> kOutputFormats{{
    {"testo", WriteText},
    {"csv", WriteCsv},
    {"json", WriteJson},
}};

constexpr std::string_view kNoFiles = "nessun file indicato";

}  // namespace

int RunCalcola(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    AssessmentWriter write = WriteText;
    OutputSettings settings;
    const std::array<Option, 3> options{{
        {"--formato",
         [&](const std::string& value) -> std::optional<std::string> {
             const auto* format =
                 std::find_if(kOutputFormats.begin(), kOutputFormats.end(),
                              [&](const OutputFormat& row) { return row.name == value; });
             if (format == kOutputFormats.end()) return "formato sconosciuto: " + value;
             write = format->write;
             return std::nullopt;
         }},
        TextOption("--separatore", settings.separator),
        FlagOption("--dettagli", settings.with_details),
    }};
    const ParsedArguments parsed = ParseOptions(arguments, options);
    if (parsed.error) return WrongCommandLine(console, *parsed.error);
    if (parsed.rest.empty()) return WrongCommandLine(console, kNoFiles);

    const GivenFiles given = FindGivenFiles(parsed.rest, files, console);
    settings.one_of_many = given.files.size() > 1;
    bool refused = false;
    const auto write_file = [&](const OpenedFile& opened) {
        const Assessment assessment = opened.kind->assess(opened.file);
        refused = refused || assessment.message;
        write(opened, assessment, settings, console);
    };
    const bool all_opened = ForEachDataFile(given.files, files, console, write_file);
    if (console.IsInterrupted()) return Interrupted(console);
    if (!all_opened || !given.all_found) return kExitFailure;
    return refused ? kExitFindings : kExitSuccess;
}

int RunVerifica(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    const ParsedArguments parsed = ParseOptions(arguments, {});
    if (parsed.error) return WrongCommandLine(console, *parsed.error);
    if (parsed.rest.empty()) return WrongCommandLine(console, kNoFiles);

    const GivenFiles given = FindGivenFiles(parsed.rest, files, console);
    long long checked = 0;
    long long inconsistent = 0;
    const auto check_file = [&](const OpenedFile& opened) {
        const Assessment assessment = opened.kind->assess(opened.file);
        ++checked;
        if (!IsConsistent(assessment, opened.file)) ++inconsistent;
        const std::string findings = DescribeFindings(assessment, opened.file);
        if (findings.empty()) return;
        console.Write(SingleLine(opened.found.path) + ": " + findings + "\n");
    };
    const bool all_opened = ForEachDataFile(given.files, files, console, check_file);
    if (console.IsInterrupted()) return Interrupted(console);
    console.Write("File verificati: " + FormatInteger(checked) +
                  ", non coerenti: " + FormatInteger(inconsistent) + "\n");
    if (!all_opened || !given.all_found) return kExitFailure;
    return inconsistent > 0 ? kExitFindings : kExitSuccess;
}

int RunGrafico(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    std::string svg_path;
    const std::array<Option, 1> options{TextOption("--svg", svg_path)};
    const ParsedArguments parsed = ParseOptions(arguments, options);
    if (parsed.error) return WrongCommandLine(console, *parsed.error);
    if (parsed.rest.empty()) return WrongCommandLine(console, kNoFiles);
    if (parsed.rest.size() > 1) return WrongCommandLine(console, "un solo file alla volta");

    int status = kExitSuccess;
    const auto draw_file = [&](const OpenedFile& opened) {
        const Assessment assessment = opened.kind->assess(opened.file);
        if (!assessment.printout.drawing) {
            ReportFile(console, opened.found.path, "questo file non ha un grafico");
            status = kExitFailure;
            return;
        }
        const SvgCanvas picture = DrawingAsPicture(*assessment.printout.drawing, kPictureSize);
        if (svg_path.empty()) return console.Write(picture.Document());
        status = SavePicture(picture, svg_path, files, console);
    };
    const std::array<FoundFile, 1> found{{{.path = parsed.rest.front()}}};
    return ForEachDataFile(found, files, console, draw_file) ? status : kExitFailure;
}

}  // namespace tonvale
