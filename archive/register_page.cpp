#include "archive/register_page.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "archive/content_hash.h"
#include "archive/file_section.h"
#include "archive/level_chart.h"
#include "common/calendar.h"
#include "page_assets.h"

namespace tonvale {

namespace {

constexpr Markup kStart =
    "<!DOCTYPE html>\n<html lang=\"it\">\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta name=\"generator\" content=\"Tonvale\">\n";

void WriteHead(const Register& archive, HtmlWriter& html) {
    html.Raw(kStart);
    html.Raw(
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src '");
    html.Text(ContentHash(kPageStyle)).Raw("'; script-src '").Text(ContentHash(kPageScript));
    html.Raw(
        "'; base-uri 'none'; form-action 'none'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>");
    html.Text(archive.title).Raw("</title>\n<style>").Raw(kPageStyle);
    html.Raw("</style>\n</head>\n<body>\n");
}

// --- Summary -------------------------------------------------------------------------------------

void WriteTile(Markup tile_class, std::size_t count, std::string_view label, HtmlWriter& html) {
    html.Raw("<li class=\"").Raw(tile_class).Raw("\"><b>").Integer(count).Raw("</b><span>");
    html.Text(label).Raw("</span></li>\n");
}

template <typename Predicate>
std::size_t Count(const Register& archive, Predicate predicate) {
    return static_cast<std::size_t>(
        std::count_if(archive.rows.begin(), archive.rows.end(), predicate));
}

void WriteSummary(const Register& archive, HtmlWriter& html) {
    html.Raw("<header>\n<h1>").Text(archive.title).Raw("</h1>\n<p class=\"soft\">Registro del ");
    html.Text(ItalianDate(archive.date)).Raw("</p>\n<ul class=\"tiles\">\n");
    WriteTile("all", archive.rows.size(), "file di dati", html);
    for (std::size_t i = 0; i < kExposureBandCount; ++i) {
        const auto band = static_cast<ExposureBand>(i);
        const std::size_t count =
            Count(archive, [band](const RegisterRow& row) { return row.band == band; });
        WriteTile(BandClass(band), count, std::string(BandName(band)) + " dBA", html);
    }
    const std::size_t inconsistent =
        Count(archive, [](const RegisterRow& row) { return row.consistent == false; });
    const std::size_t unread = Count(
        archive, [](const RegisterRow& row) { return !row.consistent && !row.message.empty(); });
    WriteTile(inconsistent > 0 ? Markup("wrong") : Markup("all"), inconsistent, "non coerenti",
              html);
    if (unread > 0) WriteTile("wrong", unread, "non letti", html);
    html.Raw("</ul>\n</header>\n");
}

// --- Table ---------------------------------------------------------------------------------------

constexpr Markup kTableStart =
    "<section>\n<h2>Registro</h2>\n<table id=\"registro\">\n<thead><tr>"
    "<th scope=\"col\">Cartella</th><th scope=\"col\">File</th><th scope=\"col\">Tipo</th>"
    "<th scope=\"col\">Note</th><th scope=\"col\">Data</th>"
    "<th scope=\"col\" data-numeric>Risultato</th><th scope=\"col\" data-numeric>Fascia (dBA)</th>"
    "<th scope=\"col\">Coerente</th></tr></thead>\n<tbody>\n";

// A unit that results share is told once, behind the last of them.
void WriteResults(const RegisterRow& row, HtmlWriter& html) {
    for (std::size_t i = 0; i < row.main_results.size(); ++i) {
        const MainResult& result = row.main_results[i];
        const bool is_last = i + 1 == row.main_results.size();
        html.Text(result.label).Raw("&nbsp;<b>").Text(result.text).Raw("</b>");
        if (is_last || row.main_results[i + 1].unit != result.unit) {
            html.Raw("&nbsp;").Text(result.unit);
        }
        if (!result.total_error.empty()) {
            html.Raw(", errore totale ").Text(result.total_error).Raw("&nbsp;").Text(result.unit);
        }
        if (!is_last) html.Raw(" · ");
    }
    if (!row.rating.empty()) html.Raw(" · ").Text(row.rating);
}

void WriteConsistency(const RegisterRow& row, HtmlWriter& html) {
    if (row.consistent == true) {
        html.Raw(row.message.empty() ? Markup("<td>sì</td>") : Markup("<td>sì, con riserva</td>"));
    } else if (row.consistent == false) {
        html.Raw("<td class=\"wrong\">no</td>");
    } else {
        html.Raw(row.message.empty() ? Markup("<td>–</td>")
                                     : Markup("<td class=\"wrong\">non letto</td>"));
    }
}

// A date and a band are sorted by other values than those shown.
void WriteRow(std::size_t number, const RegisterRow& row, HtmlWriter& html) {
    html.Raw("<tr><td>").Text(row.folder).Raw("</td><td><a href=\"#");
    WriteAnchor(number, html);
    html.Raw("\">").Text(row.file).Raw("</a></td><td>").Text(KindName(row));
    html.Raw("</td><td>").Text(row.note).Raw("</td><td data-v=\"").Text(row.date).Raw("\">");
    html.Text(ItalianDate(row.date)).Raw("</td><td data-v=\"");
    if (!row.main_results.empty()) html.Text(row.main_results.front().text);
    html.Raw("\">");
    WriteResults(row, html);
    html.Raw("</td><td data-v=\"");
    if (row.band) html.Text(FormatShortest(*row.exposure_level_dba));
    html.Raw("\">");
    if (row.band) WriteBand(*row.band, html);
    html.Raw("</td>");
    WriteConsistency(row, html);
    html.Raw("</tr>\n");
}

void WriteTable(const Register& archive, HtmlWriter& html) {
    html.Raw(kTableStart);
    for (std::size_t i = 0; i < archive.rows.size(); ++i) WriteRow(i, archive.rows[i], html);
    html.Raw("</tbody>\n</table>\n</section>\n");
}

constexpr Markup kFoot =
    "<footer>\n<p>Fasce secondo la direttiva 2003/10/CE (D.Lgs. 81/2008, articolo 189): 80 dBA\n"
    "valore inferiore di azione, 85 dBA valore superiore di azione, 87 dBA valore limite di\n"
    "esposizione. Un valore di confine appartiene alla fascia superiore. I valori di azione si\n"
    "confrontano con l'esposizione senza protettori; il valore limite con l'esposizione\n"
    "all'orecchio, tenuto conto dei protettori indossati.</p>\n<p>Coerente: i risultati salvati\n"
    "nel file sono quelli che seguono dai suoi dati. I risultati mostrati sono ricalcolati.</p>\n"
    "</footer>\n";

// So that the page, which may be long, is not copied while it grows.
std::size_t ExpectedSize(const std::vector<Html>& sections) {
    constexpr std::size_t kWithoutRows = std::size_t{32} << 10;
    constexpr std::size_t kRow = 700;
    std::size_t bytes = kWithoutRows;
    for (const Html& section : sections) bytes += section.text().size() + kRow;
    return bytes;
}

}  // namespace

std::string_view RegisterPageStart() {
    return kStart.text();
}

std::string RegisterPage(const Register& archive, std::vector<Html> sections) {
    HtmlWriter html;
    html.Reserve(ExpectedSize(sections));
    WriteHead(archive, html);
    WriteSummary(archive, html);
    html.Piece(LevelChart(archive));
    WriteTable(archive, html);
    html.Raw("<section>\n<h2>File per file</h2>\n");
    for (Html& section : sections) html.Piece(std::exchange(section, {}));
    html.Raw("</section>\n").Raw(kFoot);
    html.Raw("<script>").Raw(kPageScript).Raw("</script>\n</body>\n</html>\n");
    return html.Take().TakeText();
}

}  // namespace tonvale
