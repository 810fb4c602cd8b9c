#include "calc/ranking_command.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "calc/given_files.h"
#include "calc/options.h"
#include "common/csv_cell.h"
#include "common/json_writer.h"
#include "common/numbers.h"
#include "common/text.h"
#include "protectors/noise_spectrum.h"
#include "protectors/protector_ranking.h"
#include "protectors/protector_selection.h"

namespace tonvale {

namespace {

struct RankingOptions {
    std::string noise_path;
    std::string laeq;
    std::string lceq;
    double action_level_dba = 85;
    std::optional<CheckMethod> method = {};
    void (*write)(const RankingTask& task, const std::vector<RankedProtector>& protectors,
                  const RankingOptions& options, Console& console) = nullptr;
    std::string separator = ";";
    std::vector<std::string> paths = {};
};

// --- The table, as text and as cells -------------------------------------------------------------

using Cells = std::vector<std::string>;

std::string Dash() {
    return "-";
}

std::string NumberCell(double value) {
    return value == 0 ? Dash() : FormatFixed(value, 0, 1);
}

// The methods that the table shows: the deciding one, then the others that the noise allows.
std::vector<CheckMethod> ShownMethods(const RankingTask& task) {
    std::vector<CheckMethod> methods{task.deciding_method};
    for (const CheckMethodInfo& info : CheckMethods()) {
        if (info.method == task.deciding_method) continue;
        if (IsAvailable(info.method, InformationOf(task.noise))) methods.push_back(info.method);
    }
    return methods;
}

std::string JoinWarnings(const RankedProtector& protector) {
    std::string text;
    for (const std::string& warning : protector.warnings) {
        if (!text.empty()) text += "; ";
        text += warning;
    }
    return text;
}

const std::optional<RankedLevel>& LevelOf(const RankedProtector& protector, CheckMethod method) {
    return protector.levels[static_cast<std::size_t>(method) - 1];
}

Cells HeaderCells(const std::vector<CheckMethod>& methods) {
    Cells cells{"File", "H", "M", "L", "SNR"};
    for (const CheckMethod method : methods) {
        cells.emplace_back(InfoOf(method).name);
        cells.emplace_back("giudizio");
    }
    cells.emplace_back("Avvertenze");
    return cells;
}

Cells ProtectorCells(const RankedProtector& protector, const std::vector<CheckMethod>& methods) {
    Cells cells{protector.file};
    cells.reserve(6 + 2 * methods.size());
    for (const CheckField field :
         {CheckField::kH, CheckField::kM, CheckField::kL, CheckField::kSnr}) {
        cells.push_back(NumberCell(protector.values[field]));
    }
    for (const CheckMethod method : methods) {
        const auto& level = LevelOf(protector, method);
        cells.push_back(level ? FormatFixed(level->level_dba, 5, 1) : Dash());
        cells.emplace_back(level ? ShortLabel(level->band) : "");
    }
    cells.push_back(JoinWarnings(protector));
    return cells;
}

std::vector<Cells> MakeTable(const RankingTask& task,
                             const std::vector<RankedProtector>& protectors) {
    const std::vector<CheckMethod> methods = ShownMethods(task);
    std::vector<Cells> table{HeaderCells(methods)};
    for (const RankedProtector& protector : protectors) {
        table.push_back(ProtectorCells(protector, methods));
    }
    return table;
}

std::string DescribeTask(const RankingTask& task) {
    const auto& values = task.noise.values;
    const NoiseInformation information = InformationOf(task.noise);
    std::string text = "Rumore:";
    if (information.has_laeq) {
        text += " LAeq " + FormatFixed(values[CheckField::kLaeq], 0, 1) + " dBA,";
    }
    if (information.has_lceq) {
        text += " LCeq " + FormatFixed(values[CheckField::kLceq], 0, 1) + " dBC,";
    }
    if (information.has_spectrum) text += " spettro in banda d'ottava,";
    text += task.noise.is_class_l ? " classe L" : " classe HM";
    text += "\nLivello d'azione: " + FormatFixed(task.action_level_dba, 0, 0) +
            " dBA; decide il metodo: " + std::string(InfoOf(task.deciding_method).name) + "\n\n";
    return text;
}

void WriteRankingText(const RankingTask& task, const std::vector<RankedProtector>& protectors,
                      const RankingOptions& /*options*/, Console& console) {
    constexpr std::size_t kColumnGap = 2;
    const std::vector<Cells> table = MakeTable(task, protectors);
    std::vector<std::size_t> widths(table.front().size());
    for (const Cells& row : table) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], CharacterCount(row[i]));
        }
    }
    console.Write(DescribeTask(task));
    for (const Cells& row : table) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            line.append(widths[i] - CharacterCount(row[i]) + kColumnGap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        console.Write(line + "\n");
    }
}

void WriteRankingCells(const RankingTask& task, const std::vector<RankedProtector>& protectors,
                       const RankingOptions& options, Console& console) {
    for (const Cells& row : MakeTable(task, protectors)) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            // Neither the name nor the warnings are numbers.
            const bool is_number = i > 0 && i + 1 < row.size();
            if (i > 0) line += options.separator;
            AppendCsvCell(is_number ? WithDecimalComma(TrimBlanks(row[i])) : row[i],
                          options.separator, line);
        }
        console.Write(line + std::string(kLineEnd));
    }
}

// --- JSON ----------------------------------------------------------------------------------------

void WriteRatings(JsonWriter& json, const PerCheckField<double>& values) {
    constexpr std::array<std::pair<std::string_view, CheckField>, 4> kRatings{
        {{"H", CheckField::kH},
         {"M", CheckField::kM},
         {"L", CheckField::kL},
         {"SNR", CheckField::kSnr}}};
    json.BeginObject();
    for (const auto& [key, field] : kRatings) {
        json.Key(key);
        values[field] == 0 ? json.Null() : json.Number(values[field]);
    }
    json.EndObject();
}

void WriteLevel(JsonWriter& json, const std::optional<RankedLevel>& level) {
    if (!level) return json.Null();
    json.BeginObject();
    json.Key("level");
    const double level_dba = level->level_dba;
    // A fraction is told as it is shown: 70.3, not what is left of 95.3 - 25.
    const bool is_whole = level_dba == std::trunc(level_dba);
    json.Number(is_whole ? level_dba : ParseNumber(FormatFixed(level_dba, 0, 1)));
    json.Key("rating");
    json.String(RatingLabel(level->band));
    json.EndObject();
}

void WriteProtector(JsonWriter& json, const RankedProtector& protector) {
    json.BeginObject();
    json.Key("file");
    json.String(DistinctUtf8(protector.file));
    json.Key("ratings");
    WriteRatings(json, protector.values);
    json.Key("methods");
    json.BeginObject();
    for (const CheckMethodInfo& info : CheckMethods()) {
        json.Key(info.name);
        WriteLevel(json, LevelOf(protector, info.method));
    }
    json.EndObject();
    json.Key("warnings");
    json.BeginArray();
    for (const std::string& warning : protector.warnings) json.String(warning);
    json.EndArray();
    json.EndObject();
}

void WriteRankingJson(const RankingTask& /*task*/, const std::vector<RankedProtector>& protectors,
                      const RankingOptions& /*options*/, Console& console) {
    JsonWriter json;
    json.BeginArray();
    for (const RankedProtector& protector : protectors) WriteProtector(json, protector);
    json.EndArray();
    console.Write(json.text() + "\n");
}

// --- Options -------------------------------------------------------------------------------------

constexpr std::array<Choice<decltype(RankingOptions::write)>, 3> kFormats{{
    {"testo", WriteRankingText},
    {"csv", WriteRankingCells},
    {"json", WriteRankingJson},
}};

constexpr std::array<Choice<double>, 3> kActionLevelWords{{{"80", 80}, {"85", 85}, {"90", 90}}};

// "tutti" leaves the decision to the most exact method.
constexpr std::array<Choice<std::optional<CheckMethod>>, 1 + kCheckMethodCount> kMethodWords{{
    {"tutti", std::nullopt},
    {"snr-corretto", CheckMethod::kCorrectedSnr},
    {"snr", CheckMethod::kSnr},
    {"hml-controllo", CheckMethod::kHmlCheck},
    {"hml", CheckMethod::kHml},
    {"ottava", CheckMethod::kOctaveBand},
}};

// False when the command line is wrong; standard error says why.
bool TakeOptions(std::span<const std::string> arguments, RankingOptions& options,
                 Console& console) {
    options.write = WriteRankingText;
    const std::vector<Option> known{
        TextOption("--rumore", options.noise_path),
        TextOption("--laeq", options.laeq),
        TextOption("--lceq", options.lceq),
        ChoiceOption("--azione", kActionLevelWords, options.action_level_dba),
        ChoiceOption("--metodo", kMethodWords, options.method),
        ChoiceOption("--formato", kFormats, options.write),
        TextOption("--separatore", options.separator),
    };
    ParsedArguments parsed = ParseOptions(arguments, known);
    if (!parsed.error && options.noise_path.empty() == options.laeq.empty()) {
        parsed.error = "indicare --rumore oppure --laeq";
    }
    if (!parsed.error && !options.lceq.empty() && options.laeq.empty()) {
        parsed.error = "--lceq vale solo con --laeq";
    }
    if (!parsed.error && parsed.rest.empty()) parsed.error = "nessun file indicato";
    if (parsed.error) WrongCommandLine(console, *parsed.error);
    options.paths = std::move(parsed.rest);
    return !parsed.error;
}

// --- Noise and protectors ------------------------------------------------------------------------

std::optional<ProfileFile> OpenFile(const std::string& path, FileSystem& files, Console& console) {
    ProfileFile file;
    const FileError error = ProfileFile::Read(files, path, file);
    if (error == FileError::kNone) return file;
    ReportFile(console, path, Reason(error));
    return std::nullopt;
}

// Weighted levels that follow from the file's spectrum count more than stored ones.
void TakeWeightedLevels(const ProfileFile& file, CheckInputs& noise) {
    SpectrumForm form(NoiseSpectrumKind());
    LoadForm(file, form);
    CompleteLoad(form);
    const double laeq_dba = ParseNumber(form.results[kLaeqResult]);
    const double lceq_dbc = ParseNumber(form.results[kLceqResult]);
    if (laeq_dba == 0 || lceq_dbc == 0) return;
    noise.values[CheckField::kLaeq] = laeq_dba;
    noise.values[CheckField::kLceq] = lceq_dbc;
}

std::optional<CheckInputs> ReadNoise(const std::string& path, FileSystem& files, Console& console) {
    const auto file = OpenFile(path, files, console);
    if (!file) return std::nullopt;
    CheckInputs noise;
    if (!ImportNoise(*file, noise.values)) {
        ReportFile(console, path, "non è uno spettro di rumore");
        return std::nullopt;
    }
    TakeWeightedLevels(*file, noise);
    return noise;
}

// Digits and a point, and not 0; an empty text is a level that is not given.
bool TakeLevel(std::string_view option, const std::string& text, double& level, Console& console) {
    if (text.empty()) return true;
    level = ParseNumber(text);
    const bool is_level = text.find_first_not_of("0123456789.") == std::string::npos;
    if (is_level && level != 0 && std::isfinite(level)) return true;
    WrongCommandLine(console, UnknownValue(option, text));
    return false;
}

std::optional<CheckInputs> TakeNoise(const RankingOptions& options, FileSystem& files,
                                     Console& console) {
    if (!options.noise_path.empty()) return ReadNoise(options.noise_path, files, console);
    CheckInputs noise;
    if (!TakeLevel("--laeq", options.laeq, noise.values[CheckField::kLaeq], console) ||
        !TakeLevel("--lceq", options.lceq, noise.values[CheckField::kLceq], console)) {
        return std::nullopt;
    }
    return noise;
}

// The ranking asked for; nullopt, told on standard error, when the noise does not allow it.
std::optional<RankingTask> MakeTask(const RankingOptions& options, FileSystem& files,
                                    Console& console) {
    const auto noise = TakeNoise(options, files, console);
    if (!noise) return std::nullopt;
    const NoiseInformation information = InformationOf(*noise);
    const auto method = options.method ? options.method : MostExactMethod(information);
    if (!method || !IsAvailable(*method, information)) {
        WrongCommandLine(console, "del rumore non si sa quel che serve al metodo");
        return std::nullopt;
    }
    RankingTask task{*noise, options.action_level_dba, *method};
    task.noise.is_class_l = IsClassL(*noise);
    return task;
}

// Reads the protectors; false when one of the files is refused.
bool ReadProtectors(const RankingTask& task, const std::vector<FoundFile>& found, FileSystem& files,
                    Console& console, std::vector<RankedProtector>& protectors) {
    bool all_read = true;
    for (const FoundFile& protector : found) {
        if (console.IsInterrupted()) return false;
        const auto file = OpenFile(protector.path, files, console);
        PerCheckField<double> values;
        if (file && ImportProtector(*file, values)) {
            protectors.push_back(CheckForRanking(task, protector.path, values));
            continue;
        }
        if (file) ReportFile(console, protector.path, "non è uno spettro di attenuazione");
        all_read = false;
    }
    return all_read;
}

}  // namespace

int RunClassifica(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    RankingOptions options;
    if (!TakeOptions(arguments, options, console)) return kExitFailure;
    const auto task = MakeTask(options, files, console);
    if (!task) return kExitFailure;
    const GivenFiles given = FindGivenFiles(options.paths, files, console, FileKind::kSpi);
    std::vector<RankedProtector> protectors;
    const bool all_read = ReadProtectors(*task, given.files, files, console, protectors);
    if (console.IsInterrupted()) return Interrupted(console);
    SortBestFirst(*task, protectors);
    options.write(*task, protectors, options, console);
    return all_read && given.all_found ? kExitSuccess : kExitFailure;
}

}  // namespace tonvale
