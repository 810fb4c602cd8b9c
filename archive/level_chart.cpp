#include "archive/level_chart.h"

#include <algorithm>
#include <array>
#include <vector>

namespace tonvale {

namespace {

constexpr double kLowestDba = 60;
constexpr double kHighestDba = 110;
constexpr std::size_t kMaxColumns = 1000;

struct Level {
    double level_dba;
    ExposureBand band;
    std::size_t row;
};

// The highest first; equal ones in the order of the register.
std::vector<Level> LevelsOf(const Register& archive) {
    std::vector<Level> levels;
    for (std::size_t i = 0; i < archive.rows.size(); ++i) {
        const RegisterRow& row = archive.rows[i];
        if (row.band) levels.push_back({*row.exposure_level_dba, *row.band, i});
    }
    std::stable_sort(levels.begin(), levels.end(),
                     [](const Level& a, const Level& b) { return a.level_dba > b.level_dba; });
    return levels;
}

double AboveLowest(double level_dba) {
    return std::clamp(level_dba, kLowestDba, kHighestDba) - kLowestDba;
}

double Percent(double level_dba) {
    return 100 * AboveLowest(level_dba) / (kHighestDba - kLowestDba);
}

// The lines, as parts of the whole width: no text is stretched when that changes.
constexpr Markup kNamedLines =
    R"(<svg class="lines" aria-hidden="true">)"
    R"(<line x1="40%" x2="40%" y1="18" y2="100%"/><text x="40%" y="13" text-anchor="middle">80</text>)"
    R"(<line x1="50%" x2="50%" y1="18" y2="100%"/><text x="50%" y="13" text-anchor="end">85</text>)"
    R"(<line x1="54%" x2="54%" y1="18" y2="100%"/><text x="54%" y="13">87 dBA</text></svg>)";

constexpr Markup kManyLines =
    R"(<svg class="lines" aria-hidden="true">)"
    R"(<line x2="100%" y1="60%" y2="60%"/><text y="60%" dy="12">80</text>)"
    R"(<line x2="100%" y1="50%" y2="50%"/><text y="50%" dy="12">85</text>)"
    R"(<line x2="100%" y1="46%" y2="46%"/><text y="46%" dy="-3">87 dBA</text></svg>)";

void WriteNamedLevels(const Register& archive, const std::vector<Level>& levels, HtmlWriter& html) {
    html.Raw("<div class=\"levels\">").Raw(kNamedLines).Raw("<ol>\n");
    for (const Level& level : levels) {
        html.Raw("<li><a href=\"#");
        WriteAnchor(level.row, html);
        html.Raw("\">").Text(archive.rows[level.row].file);
        html.Raw("</a><svg class=\"bar ").Raw(BandClass(level.band));
        html.Raw("\" aria-hidden=\"true\"><rect width=\"").Fixed(Percent(level.level_dba), 1);
        html.Raw("%\" height=\"100%\"/></svg><span>").Fixed(level.level_dba, 1);
        html.Raw("</span></li>\n");
    }
    html.Raw("</ol></div>\n");
}

// One level a column; where there are more levels than columns, the highest of those that share
// one.
std::vector<Level> Columns(const std::vector<Level>& levels) {
    const std::size_t count = std::min(levels.size(), kMaxColumns);
    std::vector<Level> columns;
    columns.reserve(count);
    for (std::size_t i = 0; i < count; ++i) columns.push_back(levels[i * levels.size() / count]);
    return columns;
}

void WriteManyLevels(const std::vector<Level>& levels, HtmlWriter& html) {
    const std::vector<Level> columns = Columns(levels);
    html.Raw("<div class=\"levels many\">").Raw(kManyLines);
    html.Raw("<svg class=\"skyline\" preserveAspectRatio=\"none\" aria-hidden=\"true\"");
    html.Raw(" viewBox=\"0 0 ").Integer(columns.size()).Raw(" 50\">\n");
    for (std::size_t i = 0; i < columns.size();) {
        const ExposureBand band = columns[i].band;
        html.Raw("<path class=\"").Raw(BandClass(band)).Raw("\" d=\"M").Integer(i).Raw(" 50");
        for (; i < columns.size() && columns[i].band == band; ++i) {
            html.Raw("V").Fixed(50 - AboveLowest(columns[i].level_dba), 1);
            html.Raw("H").Integer(i + 1);
        }
        html.Raw("V50Z\"/>\n");
    }
    html.Raw("</svg></div>\n");
}

}  // namespace

Markup BandClass(ExposureBand band) {
    static constexpr std::array<Markup, kExposureBandCount> kClasses{"b0", "b1", "b2", "b3"};
    return kClasses[static_cast<std::size_t>(band)];
}

void WriteAnchor(std::size_t row, HtmlWriter& html) {
    html.Raw("f").Integer(row + 1);
}

Html LevelChart(const Register& archive) {
    HtmlWriter html;
    const std::vector<Level> levels = LevelsOf(archive);
    if (levels.empty()) return html.Take();
    html.Raw("<section>\n<h2>Livelli di esposizione</h2>\n<p class=\"soft\">");
    html.Raw("Livelli Lep,d e Lep,w (").Integer(levels.size());
    html.Raw(
        "), dal più alto. Le linee sono i valori di azione (80 e 85 dBA) e il valore limite (87 "
        "dBA, all'orecchio).</p>\n");
    if (levels.size() <= kMaxNamedLevels) {
        WriteNamedLevels(archive, levels, html);
    } else {
        WriteManyLevels(levels, html);
    }
    html.Raw("</section>\n");
    return html.Take();
}

}  // namespace tonvale
