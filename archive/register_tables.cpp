#include "archive/register_tables.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <vector>

#include "common/csv_cell.h"
#include "common/json_writer.h"
#include "common/text.h"

namespace tonvale {

namespace {

// Every key of the results, in the order in which they come, and its column among them.
class ResultColumns {
  public:
    explicit ResultColumns(const std::vector<RegisterRow>& rows) {
        for (const RegisterRow& row : rows) {
            for (const RegisterResult& result : row.results) {
                if (columns_.try_emplace(result.key, keys_.size()).second) {
                    keys_.push_back(result.key);
                }
            }
        }
    }

    const std::vector<std::string_view>& keys() const { return keys_; }
    std::vector<std::string> CellsOf(const RegisterRow& row) const {
        std::vector<std::string> cells(keys_.size());
        for (const RegisterResult& result : row.results) {
            cells[columns_.at(result.key)] = WithDecimalComma(result.text);
        }
        return cells;
    }

  private:
    std::vector<std::string_view> keys_;
    std::unordered_map<std::string_view, std::size_t> columns_;
};

// Spreadsheets compute what begins like this.
std::string PlainText(const std::string& text) {
    constexpr std::string_view kFormulaStarts = "=+-@\t";
    const bool is_formula =
        !text.empty() && kFormulaStarts.find(text.front()) != std::string_view::npos;
    return is_formula ? "'" + text : text;
}

std::string_view YesOrNo(std::optional<bool> value) {
    return !value ? "" : *value ? "sì" : "no";
}

void AddLine(const std::vector<std::string>& cells, std::string_view separator, std::string& csv) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) csv += separator;
        AppendCsvCell(cells[i], separator, csv);
    }
    csv += kLineEnd;
}

template <typename Texts>
void Append(const Texts& texts, std::vector<std::string>& cells) {
    cells.insert(cells.end(), texts.begin(), texts.end());
}

void WriteResults(JsonWriter& json, const RegisterRow& row) {
    json.Key("results");
    json.BeginObject();
    for (const RegisterResult& result : row.results) {
        json.Key(result.key);
        json.String(result.text);
    }
    json.EndObject();
}

void WriteText(JsonWriter& json, std::string_view key, std::string_view text) {
    json.Key(key);
    json.String(text);
}

void WriteRow(JsonWriter& json, const RegisterRow& row) {
    json.BeginObject();
    WriteText(json, "folder", row.folder);
    WriteText(json, "file", row.file);
    WriteText(json, "kind", KindTag(row));
    WriteText(json, "note", row.note);
    WriteText(json, "date", row.date);
    WriteResults(json, row);
    json.Key("band");
    row.band ? json.String(BandName(*row.band)) : json.Null();
    json.Key("consistent");
    row.consistent ? json.Boolean(*row.consistent) : json.Null();
    json.Key("message");
    row.message.empty() ? json.Null() : json.String(row.message);
    json.EndObject();
}

}  // namespace

std::string RegisterAsCsv(const Register& archive, std::string_view separator) {
    const ResultColumns results(archive.rows);
    std::vector<std::string> cells{"Cartella", "File", "Tipo", "Note", "Data"};
    Append(results.keys(), cells);
    Append(std::vector<std::string>{"Fascia", "Coerente", "Messaggio"}, cells);
    std::string csv;
    AddLine(cells, separator, csv);
    for (const RegisterRow& row : archive.rows) {
        cells = {PlainText(row.folder), PlainText(row.file), std::string(KindTag(row)),
                 PlainText(row.note), row.date};
        Append(results.CellsOf(row), cells);
        cells.emplace_back(row.band ? BandName(*row.band) : "");
        cells.emplace_back(YesOrNo(row.consistent));
        cells.push_back(PlainText(row.message));
        AddLine(cells, separator, csv);
    }
    return csv;
}

std::string RegisterAsJson(const Register& archive) {
    JsonWriter json;
    json.BeginObject();
    WriteText(json, "title", archive.title);
    json.Key("rows");
    json.BeginArray();
    for (const RegisterRow& row : archive.rows) WriteRow(json, row);
    json.EndArray();
    json.EndObject();
    return json.text() + "\n";
}

}  // namespace tonvale
