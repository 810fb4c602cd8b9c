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

#include "calc/assessment_table.h"
#include "calc/json_writer.h"
#include "calc/options.h"
#include "calc/picture.h"
#include "common/numbers.h"
#include "common/text.h"

namespace tonvale {

namespace {

struct OpenedFile {
    const std::string& path;
    ProfileFile file;
    const AssessedKind& kind;
};

void ReportFailure(Console& console, std::string_view path, std::string_view reason) {
    console.WriteError(std::string(path) + ": " + std::string(reason) + "\n");
}

// Opens every file in turn and hands it on; the others get a line on standard error. False when
// there was one of those.
bool ForEachDataFile(std::span<const std::string> paths, FileSystem& files, Console& console,
                     const std::function<void(const OpenedFile&)>& use) {
    bool all_opened = true;
    for (const std::string& path : paths) {
        ProfileFile file;
        const FileError error = ProfileFile::Read(files, path, file);
        const AssessedKind* kind = AssessedKindOf(file);
        if (kind != nullptr) {
            use({path, std::move(file), *kind});
            continue;
        }
        all_opened = false;
        ReportFailure(console, path,
                      error != FileError::kNone ? Reason(error) : "tipo di file sconosciuto");
    }
    return all_opened;
}

std::optional<std::string> StoredResult(const ProfileFile& file, const AssessedResult& result) {
    if (!result.section) return std::nullopt;
    return file.Text(*result.section, result.key, kMaxValueCharacters);
}

// Blanks around a text are no difference: the platform's profile functions strip them. A result
// that is never stored cannot differ.
bool SameResult(const AssessedResult& result, const ProfileFile& file) {
    if (!result.section) return true;
    const auto stored = StoredResult(file, result);
    return stored && TrimBlanks(*stored) == TrimBlanks(result.shown);
}

bool IsConsistent(const Assessment& assessment, const ProfileFile& file) {
    if (!assessment.computed) return !assessment.message;
    return std::all_of(assessment.results.begin(), assessment.results.end(),
                       [&](const AssessedResult& result) { return SameResult(result, file); });
}

// --- calcola -------------------------------------------------------------------------------------

struct OutputSettings {
    std::string separator = ";";
    bool one_of_many = false;
};

// Each writes one file's assessment.
using AssessmentWriter = void (*)(const OpenedFile&, const Assessment&, const OutputSettings&,
                                  Console&);

void WriteRefusal(const OpenedFile& opened, const Assessment& assessment, Console& console) {
    ReportFailure(console, opened.path, assessment.message->text);
}

void WriteText(const OpenedFile& opened, const Assessment& assessment,
               const OutputSettings& settings, Console& console) {
    if (assessment.message) return WriteRefusal(opened, assessment, console);
    if (settings.one_of_many) console.Write("== " + opened.path + " ==\n");
    console.Write(PrintoutAsText(assessment.printout));
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
    if (assessment.details.empty() && assessment.warnings.empty()) return;
    json.Key("details");
    json.BeginObject();
    const DetailWriter write{json};
    for (const Detail& detail : assessment.details) {
        json.Key(detail.key);
        std::visit(write, detail.value);
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
    json.String(DistinctUtf8(opened.path));
    json.Key("kind");
    json.String(InfoOf(opened.kind.kind).tag);
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

// --- verifica ------------------------------------------------------------------------------------

std::string DescribeDifference(const AssessedResult& result, const ProfileFile& file) {
    const auto stored = StoredResult(file, result);
    return std::string(result.key) + (stored ? " salvato \"" + *stored + "\"" : " non salvato") +
           ", ricalcolato \"" + result.shown + "\"";
}

// What there is to tell of a file; empty when all is well.
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

// The drawing of a printout as a picture of its own, with room for what stands above and below it.
SvgCanvas DrawPicture(const PrintoutDrawing& drawing) {
    // Both scales divide this height without a remainder.
    constexpr Rect kArea{20, 30, kPictureSize.width - 20, 30 + 14 * 39};
    constexpr Rect kCaptions{kArea.left, kArea.bottom + 10, kArea.right, kPictureSize.height};
    SvgCanvas canvas(kPictureSize);
    drawing.draw(canvas, kArea, true);
    if (drawing.draw_captions) drawing.draw_captions(canvas, kCaptions);
    return canvas;
}

int NoFiles(Console& console) {
    console.WriteError("tonvale-calc: nessun file indicato (vedere --help)\n");
    return kExitFailure;
}

int WrongArguments(Console& console, const std::string& error) {
    console.WriteError("tonvale-calc: " + error + " (vedere --help)\n");
    return kExitFailure;
}

}  // namespace

int RunCalcola(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    AssessmentWriter write = WriteText;
    OutputSettings settings;
    const std::array<Option, 2> options{{
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
    }};
    const ParsedArguments parsed = ParseOptions(arguments, options);
    if (parsed.error) return WrongArguments(console, *parsed.error);
    if (parsed.rest.empty()) return NoFiles(console);

    settings.one_of_many = parsed.rest.size() > 1;
    bool refused = false;
    const auto write_file = [&](const OpenedFile& opened) {
        const Assessment assessment = opened.kind.assess(opened.file);
        refused = refused || assessment.message;
        write(opened, assessment, settings, console);
    };
    if (!ForEachDataFile(parsed.rest, files, console, write_file)) return kExitFailure;
    return refused ? kExitFindings : kExitSuccess;
}

int RunVerifica(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    const ParsedArguments parsed = ParseOptions(arguments, {});
    if (parsed.error) return WrongArguments(console, *parsed.error);
    if (parsed.rest.empty()) return NoFiles(console);

    long long checked = 0;
    long long inconsistent = 0;
    const auto check_file = [&](const OpenedFile& opened) {
        const Assessment assessment = opened.kind.assess(opened.file);
        ++checked;
        if (!IsConsistent(assessment, opened.file)) ++inconsistent;
        const std::string findings = DescribeFindings(assessment, opened.file);
        if (!findings.empty()) console.Write(opened.path + ": " + findings + "\n");
    };
    const bool all_opened = ForEachDataFile(parsed.rest, files, console, check_file);
    console.Write("File verificati: " + FormatInteger(checked) +
                  ", non coerenti: " + FormatInteger(inconsistent) + "\n");
    if (!all_opened) return kExitFailure;
    return inconsistent > 0 ? kExitFindings : kExitSuccess;
}

int RunGrafico(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    std::string svg_path;
    const std::array<Option, 1> options{TextOption("--svg", svg_path)};
    const ParsedArguments parsed = ParseOptions(arguments, options);
    if (parsed.error) return WrongArguments(console, *parsed.error);
    if (parsed.rest.empty()) return NoFiles(console);
    if (parsed.rest.size() > 1) return WrongArguments(console, "un solo file alla volta");

    int status = kExitSuccess;
    const auto draw_file = [&](const OpenedFile& opened) {
        const Assessment assessment = opened.kind.assess(opened.file);
        if (!assessment.printout.drawing) {
            ReportFailure(console, opened.path, "questo file non ha un grafico");
            status = kExitFailure;
            return;
        }
        const SvgCanvas picture = DrawPicture(*assessment.printout.drawing);
        if (svg_path.empty()) return console.Write(picture.Document());
        status = SavePicture(picture, svg_path, files, console);
    };
    return ForEachDataFile(parsed.rest, files, console, draw_file) ? status : kExitFailure;
}

}  // namespace tonvale
