#include "calc/hearing_commands.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "calc/json_writer.h"
#include "calc/options.h"
#include "calc/picture.h"
#include "common/numbers.h"
#include "common/text.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"

namespace tonvale {

namespace {

enum class TableFormat { kText, kCells, kJson };

constexpr std::array<Choice<TableFormat>, 3> kFormats{{
    {"testo", TableFormat::kText},
    {"csv", TableFormat::kCells},
    {"json", TableFormat::kJson},
}};

constexpr std::array<Choice<QuantityKind>, 3> kQuantities{{
    {"NIPTS", QuantityKind::kNipts},
    {"HTLA", QuantityKind::kHtla},
    {"HTLAN", QuantityKind::kHtlan},
}};

constexpr std::array<Choice<int>, 2> kSexes{{{"M", kMale}, {"F", kFemale}}};

constexpr std::array<Choice<DamageTable>, 3> kDamageTables{{
    {"nuova", DamageTable::kNew},
    {"vecchia", DamageTable::kOld},
    {"biologico", DamageTable::kBiological},
}};

constexpr std::array<Choice<ViewKind>, 3> kNiptsViews{{
    {"grafico", ViewKind::kChart},
    {"audiogramma", ViewKind::kAudiogram},
    {"tabella", ViewKind::kTable},
}};

constexpr std::array<Choice<ViewKind>, 3> kPrevisioniViews{{
    {"tempo", ViewKind::kChart},
    {"livello", ViewKind::kAudiogram},
    {"tabella", ViewKind::kTable},
}};

// An option that takes an item of one of the dialog's lists.
Option ListOption(std::string_view name, const std::vector<std::string>& items, int& position) {
    return {name,
            [name, &items, &position](const std::string& value) -> std::optional<std::string> {
                const auto found = std::find(items.begin(), items.end(), value);
                if (found == items.end()) return UnknownValue(name, value);
                position = static_cast<int>(found - items.begin());
                return std::nullopt;
            }};
}

// What both commands write and where.
struct Output {
    TableFormat format = TableFormat::kText;
    std::string separator = ";";
    std::string svg_path;  // empty: no picture
    ViewKind view = ViewKind::kChart;
};

template <typename Views>
std::vector<Option> OutputOptions(Output& output, const Views& views) {
    return {ChoiceOption("--formato", kFormats, output.format),
            TextOption("--separatore", output.separator), TextOption("--svg", output.svg_path),
            ChoiceOption("--vista", views, output.view)};
}

// False when the command line is wrong; standard error says why.
bool TakeArguments(std::span<const std::string> arguments, const std::vector<Option>& options,
                   Console& console) {
    ParsedArguments parsed = ParseOptions(arguments, options);
    if (!parsed.error && !parsed.rest.empty()) {
        parsed.error = "argomento inatteso: " + parsed.rest.front();
    }
    if (parsed.error) {
        console.WriteError("tonvale-calc: " + *parsed.error + " (vedere --help)\n");
    }
    return !parsed.error;
}

// On one line: the caption goes without the full stop that it may end with.
int ReportRefusal(const UserMessage& message, Console& console) {
    std::string caption = message.caption;
    if (caption.ends_with('.')) caption.pop_back();
    console.WriteError(caption + ": " + message.text + "\n");
    return kExitFindings;
}

void WriteTable(const ResultTable& table, const Output& output,
                const std::function<std::string()>& make_json, Console& console) {
    switch (output.format) {
        case TableFormat::kText:
            return console.Write(ResultTableAsText(table));
        case TableFormat::kCells:
            return console.Write(ResultTableCells(table, output.separator));
        case TableFormat::kJson:
            return console.Write(make_json() + "\n");
    }
}

int WritePicture(const ResultView& view, const Output& output, FileSystem& files,
                 Console& console) {
    if (output.svg_path.empty()) return kExitSuccess;
    SvgCanvas canvas(kPictureSize);
    view.Page(output.view)->draw(canvas, {0, 0, kPictureSize.width, kPictureSize.height}, {});
    return SavePicture(canvas, output.svg_path, files, console);
}

template <typename Numbers>
void WriteNumbers(JsonWriter& json, const Numbers& numbers) {
    json.BeginArray();
    for (const double number : numbers) json.Number(number);
    json.EndArray();
}

void WriteRow(JsonWriter& json, const LossPredictionRow& row) {
    json.BeginObject();
    json.Key("q");
    json.String(FormatFixed(row.fractile * 100, 0, 0));
    json.Key("fractile");
    json.Number(row.fractile);
    json.Key("values");
    WriteNumbers(json, row.losses_db);
    json.Key("damage");
    row.damage_percent ? json.Number(*row.damage_percent) : json.Null();
    json.Key("flag");
    json.Boolean(row.is_compensable);
    json.EndObject();
}

std::string NiptsJson(const ResultTable& table, const LossPrediction& prediction) {
    JsonWriter json;
    json.BeginObject();
    json.Key("title");
    json.String(table.title);
    json.Key("parameters");
    json.String(TrimBlanks(table.parameter_line));
    json.Key("rows");
    json.BeginArray();
    for (const LossPredictionRow& row : ComputeRows(prediction)) WriteRow(json, row);
    json.EndArray();
    json.EndObject();
    return json.text();
}

std::string PrevisioniJson(const LossComparisonState& state) {
    const auto levels = ComparedLevels(state);
    JsonWriter json;
    json.BeginObject();
    json.Key("levels");
    WriteNumbers(json, levels);
    json.Key("years");
    WriteNumbers(json, ComparedYears());
    json.Key("values");
    json.BeginArray();
    for (const double years : ComparedYears()) {
        std::array<double, kComparedLevels> row{};
        std::transform(levels.begin(), levels.end(), row.begin(),
                       [&](double level) { return ComparedLoss(state, years, level); });
        WriteNumbers(json, row);
    }
    json.EndArray();
    json.EndObject();
    return json.text();
}

}  // namespace

int RunNipts(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    LossPredictionState state;
    LossPredictionForm form = FormFromState(state, state.confirmed.quantity);
    Output output;
    std::vector<Option> options = OutputOptions(output, kNiptsViews);
    options.push_back(ChoiceOption("--quantita", kQuantities, form.quantity));
    options.push_back(TextOption("--anni", form.years));
    options.push_back(TextOption("--livello", form.level_dba));
    options.push_back(TextOption("--eta", form.age));
    options.push_back(ChoiceOption("--sesso", kSexes, form.sex));
    options.push_back(ChoiceOption("--tabella", kDamageTables, form.table));
    if (!TakeArguments(arguments, options, console)) return kExitFailure;
    if (const auto refusal = Confirm(form, state)) return ReportRefusal(refusal->message, console);
    const ResultTable table = MakeTable(state.confirmed);
    WriteTable(
        table, output, [&] { return NiptsJson(table, state.confirmed); }, console);
    return WritePicture(MakeResultView(state.confirmed), output, files, console);
}

int RunPrevisioni(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    LossComparisonState state;
    LossComparisonForm form = FormFromState(state);
    Output output;
    std::vector<Option> options = OutputOptions(output, kPrevisioniViews);
    options.push_back(ListOption("--frequenza", ComparisonFrequencies(), form.frequency_position));
    options.push_back(ListOption("--frattile", ComparisonFractiles(), form.fractile_position));
    options.push_back(TextOption("--livello", form.level_dba));
    if (!TakeArguments(arguments, options, console)) return kExitFailure;
    if (const auto refusal = Confirm(form, state)) return ReportRefusal(refusal->message, console);
    WriteTable(
        MakeTable(state), output, [&] { return PrevisioniJson(state); }, console);
    return WritePicture(MakeResultView(state), output, files, console);
}

}  // namespace tonvale
