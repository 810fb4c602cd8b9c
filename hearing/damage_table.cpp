#include "hearing/damage_table.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>

namespace tonvale {

namespace {

constexpr std::array<int, 5> kFrequenciesHz{500, 1000, 2000, 3000, 4000};

struct DamageRow {
    double threshold_db;
    std::array<double, 5> contributions;  // per cent, one a frequency
};

// INAIL table of 1991; 3000 Hz does not count in it.
constexpr std::array<DamageRow, 10> kOldRows{{
    {20, {0, 0, 0, 0, 0}},
    {25, {2.77, 3.33, 4.44, 0, 0.55}},
    {30, {5.55, 6.66, 8.88, 0, 1.11}},
    {35, {8.33, 10.00, 13.33, 0, 1.66}},
    {40, {11.11, 13.33, 17.77, 0, 2.22}},
    {45, {13.88, 16.66, 22.22, 0, 2.77}},
    {50, {16.66, 20.00, 26.66, 0, 3.33}},
    {55, {19.44, 23.33, 31.11, 0, 3.88}},
    {60, {22.22, 26.66, 35.55, 0, 4.44}},
    {65, {25.00, 30.00, 40.00, 0, 5.00}},
}};

// INAIL table of 1994.
constexpr std::array<DamageRow, 10> kNewRows{{
    {25, {0, 0, 0, 0, 0}},
    {30, {1.25, 1.25, 1.75, 0.5, 0.25}},
    {35, {6.25, 6.25, 8.75, 1.5, 0.75}},
    {40, {11.25, 11.25, 15.75, 3.0, 1.5}},
    {45, {16.25, 16.25, 22.75, 5.5, 2.75}},
    {50, {18.75, 18.75, 26.25, 7.5, 3.75}},
    {55, {21.25, 21.25, 29.75, 8.5, 4.25}},
    {60, {22.5, 22.5, 31.5, 9.0, 4.5}},
    {65, {23.75, 23.75, 33.25, 9.5, 4.75}},
    {70, {25.0, 25.0, 35.0, 10.0, 5.0}},
}};

// Table of biological damage of 2000.
constexpr std::array<DamageRow, 14> kBiologicalRows{{
    {25, {0, 0, 0, 0, 0}},
    {30, {1.25, 1.5, 1.75, 0.4, 0.1}},
    {35, {2.5, 3.0, 3.5, 0.8, 0.2}},
    {40, {5.0, 6.0, 7.0, 1.6, 0.4}},
    {45, {7.5, 9.0, 10.5, 2.4, 0.6}},
    {50, {11.25, 13.5, 15.75, 3.6, 0.9}},
    {55, {15.0, 18.0, 21.0, 4.8, 1.2}},
    {60, {17.5, 21.0, 24.5, 5.6, 1.4}},
    {65, {18.75, 22.5, 26.25, 6.0, 1.5}},
    {70, {20.0, 24.0, 28.0, 6.4, 1.6}},
    {75, {21.25, 25.5, 29.75, 6.8, 1.7}},
    {80, {22.5, 27.0, 31.5, 7.2, 1.8}},
    {85, {23.75, 28.5, 33.25, 7.6, 1.9}},
    {90, {25.0, 30.0, 35.0, 8.0, 2.0}},
}};

struct TableInfo {
    DamageTable code;
    std::string_view name;
    std::span<const DamageRow> rows;
    double ear_factor;  // from the sum of the contributions to the percentage of one ear
    double compensable_percent;
};

constexpr std::array<TableInfo, 3> kTables{{
    {DamageTable::kNew, "Nuova", kNewRows, 0.6, 11},
    {DamageTable::kOld, "Vecchia", kOldRows, 0.6, 11},
    {DamageTable::kBiological, "Biologico", kBiologicalRows, 0.5, 6},
}};

constexpr TableInfo kNoTable{{}, {}, {}, 0, std::numeric_limits<double>::infinity()};

const TableInfo& InfoOf(DamageTable table) {
    const auto* found = std::find_if(kTables.begin(), kTables.end(),
                                     [&](const TableInfo& info) { return info.code == table; });
    return found == kTables.end() ? kNoTable : *found;
}

double RowValue(double loss_db, std::span<const DamageRow> rows, std::size_t column) {
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const DamageRow& candidate) {
        return candidate.threshold_db >= loss_db;
    });
    if (row == rows.begin()) return 0.0;
    const DamageRow& below = row[-1];
    const double from = below.contributions[column];
    if (row == rows.end()) return from;
    return (loss_db - below.threshold_db) * (row->contributions[column] - from) /
               (row->threshold_db - below.threshold_db) +
           from;
}

}  // namespace

EarLosses ScoredLosses(const AudiometricLosses& losses_db) {
    EarLosses scored{};
    std::copy_n(losses_db.begin(), scored.size(), scored.begin());
    return scored;
}

std::string_view DamageTableName(DamageTable table) {
    return InfoOf(table).name;
}

bool IsCompensable(double damage_percent, DamageTable table) {
    return damage_percent >= InfoOf(table).compensable_percent;
}

double DamageTableValue(double loss_db, int frequency_hz, DamageTable table) {
    const auto* frequency = std::find(kFrequenciesHz.begin(), kFrequenciesHz.end(), frequency_hz);
    if (frequency == kFrequenciesHz.end()) return 0.0;
    return RowValue(loss_db, InfoOf(table).rows,
                    static_cast<std::size_t>(frequency - kFrequenciesHz.begin()));
}

bool FallsSteeply(const EarLosses& losses_db, DamageTable table) {
    return table == DamageTable::kOld && losses_db[4] - losses_db[2] > 40;
}

double EarDamagePercent(const EarLosses& losses_db, DamageTable table) {
    double sum = 0;
    for (std::size_t i = 0; i < losses_db.size(); ++i) {
        if (table == DamageTable::kOld && kFrequenciesHz[i] == 3000) continue;
        sum += DamageTableValue(losses_db[i], kFrequenciesHz[i], table);
    }
    const double percent = sum * InfoOf(table).ear_factor;
    return FallsSteeply(losses_db, table) ? percent + kSteepFallPercent : percent;
}

}  // namespace tonvale
