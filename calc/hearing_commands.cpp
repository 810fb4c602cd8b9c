#include "calc/hearing_commands.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "calc/options.h"
#include "calc/picture.h"
#include "common/json_writer.h"
#include "common/numbers.h"
#include "common/text.h"
#include "hearing/damage_evolution.h"
#include "hearing/damage_risk.h"
#include "hearing/loss_comparison.h"
#include "hearing/loss_prediction.h"
#include "hearing/risk_grid.h"

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

// Risk and evolution have no audiogram.
constexpr std::array<Choice<ViewKind>, 2> kTwoViews{{
    {"grafico", ViewKind::kChart},
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

// The options of what the dialogs ask alike.
Option YearsOption(HearingFields& fields) {
    return TextOption("--anni", fields.years);
}
Option LevelOption(std::string& level_dba) {
    return TextOption("--livello", level_dba);
}
Option TableOption(HearingFields& fields) {
    return ChoiceOption("--tabella", kDamageTables, fields.table);
}
void AddAgeAndSex(std::vector<Option>& options, HearingFields& fields) {
    options.push_back(TextOption("--eta", fields.age));
    options.push_back(ChoiceOption("--sesso", kSexes, fields.sex));
}

// A command over one of the hearing-damage dialogs: it fills the dialog's form from its options,
// confirms it, and writes what comes out.
struct HearingCommand {
    std::vector<Option> options;  // beside those of the output
    std::function<std::optional<HearingRefusal>()> confirm;
    // Of what was confirmed:
    std::function<ResultTable()> table;
    std::function<void(JsonWriter& json, const ResultTable& table)> write_json;  // within an object
    std::function<ResultView()> view;
};

// What a command writes and where.
struct Output {
    TableFormat format = TableFormat::kText;
    std::string separator = ";";
    std::string svg_path;  // empty: no picture
    ViewKind view = ViewKind::kChart;
};

// False when the command line is wrong; standard error says why.
bool TakeArguments(std::span<const std::string> arguments, const std::vector<Option>& options,
                   Console& console) {
    ParsedArguments parsed = ParseOptions(arguments, options);
    if (!parsed.error && !parsed.rest.empty()) {
        parsed.error = "argomento inatteso: " + parsed.rest.front();
    }
    if (parsed.error) WrongCommandLine(console, *parsed.error);
    return !parsed.error;
}

// On one line: the caption goes without the full stop that it may end with.
int ReportRefusal(const UserMessage& message, Console& console) {
    std::string caption = message.caption;
    if (caption.ends_with('.')) caption.pop_back();
    console.WriteError(caption + ": " + message.text + "\n");
    return kExitFindings;
}

void WriteTable(const HearingCommand& command, const Output& output, Console& console) {
    const ResultTable table = command.table();
    switch (output.format) {
        case TableFormat::kText:
            return console.Write(ResultTableAsText(table));
        case TableFormat::kCells:
            return console.Write(ResultTableCells(table, output.separator));
        case TableFormat::kJson:
            break;
    }
    JsonWriter json;
    json.BeginObject();
    command.write_json(json, table);
    json.EndObject();
    console.Write(json.text() + "\n");
}

int WritePicture(const ResultView& view, const Output& output, FileSystem& files,
                 Console& console) {
    SvgCanvas canvas(kPictureSize);
    // A grid is a table alone.
    const ResultPage* page = view.Page(output.view);
    if (!page) page = view.Page(ViewKind::kTable);
    page->draw(canvas, {0, 0, kPictureSize.width, kPictureSize.height}, {});
    return SavePicture(canvas, output.svg_path, files, console);
}

// Runs one command line; `views` are the words of "--vista".
template <typename Views>
int Run(const HearingCommand& command, const Views& views, std::span<const std::string> arguments,
        FileSystem& files, Console& console) {
    Output output;
    std::vector<Option> options = command.options;
    options.push_back(ChoiceOption("--formato", kFormats, output.format));
    options.push_back(TextOption("--separatore", output.separator));
    options.push_back(TextOption("--svg", output.svg_path));
    options.push_back(ChoiceOption("--vista", views, output.view));
    if (!TakeArguments(arguments, options, console)) return kExitFailure;
    if (const auto refusal = command.confirm()) return ReportRefusal(refusal->message, console);
    WriteTable(command, output, console);
    if (output.svg_path.empty()) return kExitSuccess;
    return WritePicture(command.view(), output, files, console);
}

void WriteHeading(JsonWriter& json, const ResultTable& table) {
    json.Key("title");
    json.String(table.title);
    json.Key("parameters");
    json.String(TrimBlanks(ParameterLine(table.parameters)));
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

void WriteNiptsJson(JsonWriter& json, const LossPrediction& prediction) {
    json.Key("rows");
    json.BeginArray();
    for (const LossPredictionRow& row : ComputeRows(prediction)) WriteRow(json, row);
    json.EndArray();
}

void WritePrevisioniJson(JsonWriter& json, const LossComparisonState& state) {
    const auto levels = ComparedLevels(state);
    json.Key("levels");
    WriteNumbers(json, levels);
    json.Key("years");
    WriteNumbers(json, YearAxisValues());
    json.Key("values");
    json.BeginArray();
    for (const double years : YearAxisValues()) {
        std::array<double, kComparedLevels> row{};
        std::transform(levels.begin(), levels.end(), row.begin(),
                       [&](double level) { return ComparedLoss(state, years, level); });
        WriteNumbers(json, row);
    }
    json.EndArray();
}

// The numbers of "--criterio", in the order of the criteria.
const std::vector<std::string>& CriterionNumbers() {
    static const std::vector<std::string> numbers{"1", "2", "3", "4", "5", "6", "7", "8"};
    return numbers;
}

// The shares under the names that both their texts and their values have.
template <typename Write>
void WriteShares(JsonWriter& json, const RiskShares& shares, Write write) {
    json.BeginObject();
    json.Key("unexposed");
    write(shares.unexposed);
    json.Key("exposed");
    write(shares.exposed);
    json.Key("risk");
    write(shares.risk);
    json.EndObject();
}

void WriteRischioJson(JsonWriter& json, const DamageRisk& risk) {
    const RiskShares shares = ComputeRisk(risk);
    json.Key("shown");
    WriteShares(json, shares, [&](double share) { json.String(ShareText(share)); });
    json.Key("values");
    WriteShares(json, shares, [&](double share) { json.Number(share); });
}

void WriteGridJson(JsonWriter& json, const RiskGrid& grid) {
    json.Key("years");
    WriteNumbers(json, kGridYears);
    json.Key("levels");
    WriteNumbers(json, kGridLevelsDba);
    json.Key("values");
    json.BeginArray();
    for (const auto& row : grid.risks) {
        json.BeginArray();
        for (const std::optional<double>& risk : row) risk ? json.Number(*risk) : json.Null();
        json.EndArray();
    }
    json.EndArray();
}

void WriteEvoluzioneJson(JsonWriter& json, const DamageEvolution& evolution) {
    json.Key("fractiles");
    WriteNumbers(json, EvolutionFractiles(evolution));
    json.Key("rows");
    json.BeginArray();
    for (const DamageEvolutionRow& row : ComputeRows(evolution)) {
        json.BeginObject();
        json.Key("years");
        json.Number(row.years);
        json.Key("values");
        WriteNumbers(json, row.damages_percent);
        json.Key("shown");
        json.BeginArray();
        for (const double damage : row.damages_percent) json.String(DamageText(damage));
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace

int RunNipts(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    LossPredictionState state;
    LossPredictionForm form = FormFromState(state, state.confirmed.quantity);
    HearingCommand command{
        .options = {ChoiceOption("--quantita", kQuantities, form.quantity), YearsOption(form),
                    LevelOption(form.level_dba), TableOption(form)},
        .confirm = [&] { return Confirm(form, state); },
        .table = [&] { return MakeTable(state.confirmed); },
        .write_json =
            [&](JsonWriter& json, const ResultTable& table) {
                WriteHeading(json, table);
                WriteNiptsJson(json, state.confirmed);
            },
        .view = [&] { return MakeResultView(state.confirmed); }};
    AddAgeAndSex(command.options, form);
    return Run(command, kNiptsViews, arguments, files, console);
}

int RunPrevisioni(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    LossComparisonState state;
    LossComparisonForm form = FormFromState(state);
    const HearingCommand command{
        .options = {ListOption("--frequenza", ComparisonFrequencies(), form.frequency_position),
                    ListOption("--frattile", ComparisonFractiles(), form.fractile_position),
                    LevelOption(form.level_dba)},
        .confirm = [&] { return Confirm(form, state); },
        .table = [&] { return MakeTable(state); },
        .write_json = [&](JsonWriter& json,
                          const ResultTable&) { WritePrevisioniJson(json, state); },
        .view = [&] { return MakeResultView(state); }};
    return Run(command, kPrevisioniViews, arguments, files, console);
}

int RunRischio(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    DamageRisk risk;
    DamageRiskForm form = FormFromState(risk);
    bool wants_grid = false;
    HearingCommand command{
        .options = {YearsOption(form), LevelOption(form.level_dba),
                    ListOption("--criterio", CriterionNumbers(), form.criterion_position),
                    FlagOption("--griglia", wants_grid)},
        .confirm = [&] { return wants_grid ? ConfirmGrid(form, risk) : Confirm(form, risk); },
        .table = [&] { return wants_grid ? MakeTable(ComputeGrid(risk)) : MakeTable(risk); },
        .write_json =
            [&](JsonWriter& json, const ResultTable& table) {
                WriteHeading(json, table);
                wants_grid ? WriteGridJson(json, ComputeGrid(risk)) : WriteRischioJson(json, risk);
            },
        .view =
            [&] { return wants_grid ? MakeResultView(ComputeGrid(risk)) : MakeResultView(risk); }};
    AddAgeAndSex(command.options, form);
    return Run(command, kTwoViews, arguments, files, console);
}

int RunEvoluzione(std::span<const std::string> arguments, FileSystem& files, Console& console) {
    DamageEvolutionState state;
    DamageEvolutionForm form = FormFromState(state);
    HearingCommand command{
        .options = {LevelOption(form.level_dba), TableOption(form),
                    ListOption("--frattile", EvolutionFractileItems(), form.fractile_position)},
        .confirm = [&] { return Confirm(form, state); },
        .table = [&] { return MakeTable(state.confirmed); },
        .write_json =
            [&](JsonWriter& json, const ResultTable& table) {
                WriteHeading(json, table);
                WriteEvoluzioneJson(json, state.confirmed);
            },
        .view = [&] { return MakeResultView(state.confirmed); }};
    AddAgeAndSex(command.options, form);
    return Run(command, kTwoViews, arguments, files, console);
}

}  // namespace tonvale
