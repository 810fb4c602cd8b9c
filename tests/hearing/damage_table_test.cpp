#include "hearing/damage_table.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace tonvale {
namespace {

constexpr std::array<DamageTable, 3> kAllTables{DamageTable::kNew, DamageTable::kOld,
                                                DamageTable::kBiological};

EarLosses Flat(double loss_db) {
    return {loss_db, loss_db, loss_db, loss_db, loss_db};
}

// Every row is compared with the tables of the guide.
TEST(DamageTable, ContributionsRunStraightBetweenTheRows) {
    struct Row {
        DamageTable table;
        int frequency_hz;
        double loss_db, value;
    };
    for (const Row& row : std::vector<Row>{
             {DamageTable::kOld, 1000, 22.5, 1.665},
             {DamageTable::kOld, 4000, 62.5, 4.72},
             {DamageTable::kOld, 2000, 65.1, 40},
             {DamageTable::kNew, 2000, 26, 0.35},
             {DamageTable::kNew, 3000, 42.5, 4.25},
             {DamageTable::kNew, 4000, 200, 5},
             {DamageTable::kNew, 500, std::numeric_limits<double>::infinity(), 25},
             {DamageTable::kNew, 500, -std::numeric_limits<double>::infinity(), 0},
             {DamageTable::kBiological, 1000, 47, 10.8},
             {DamageTable::kBiological, 500, 90.5, 25},
             {DamageTable::kBiological, 6000, 90, 0},
             {static_cast<DamageTable>(1130), 500, 90, 0},
         }) {
        EXPECT_NEAR(DamageTableValue(row.loss_db, row.frequency_hz, row.table), row.value, 1e-12)
            << row.frequency_hz << " Hz, " << row.loss_db << " dB";
    }
    // The interpolation lands on a row's value itself.
    EXPECT_EQ(DamageTableValue(45, 2000, DamageTable::kOld), 22.22);
}

TEST(DamageTable, AnEarIsScoredByItsTable) {
    for (const DamageTable table : kAllTables) EXPECT_EQ(EarDamagePercent(Flat(20), table), 0);
    EXPECT_DOUBLE_EQ(EarDamagePercent(Flat(100), DamageTable::kNew), 60);
    EXPECT_DOUBLE_EQ(EarDamagePercent(Flat(100), DamageTable::kOld), 60);
    EXPECT_DOUBLE_EQ(EarDamagePercent(Flat(100), DamageTable::kBiological), 50);
    EXPECT_EQ(EarDamagePercent(Flat(100), static_cast<DamageTable>(0)), 0);
    // Each frequency in its place: 1.25, 6.25, 15.75, 5.5 and 3.75.
    EXPECT_NEAR(EarDamagePercent({30, 35, 40, 45, 50}, DamageTable::kNew), 32.5 * 0.6, 1e-12);
    EXPECT_NEAR(EarDamagePercent({30, 35, 40, 45, 50}, DamageTable::kOld),
                (5.55 + 10 + 17.77 + 3.33) * 0.6, 1e-12);
    EXPECT_NEAR(EarDamagePercent({30, 35, 40, 45, 50}, DamageTable::kBiological),
                (1.25 + 3 + 7 + 2.4 + 0.9) * 0.5, 1e-12);
}

TEST(DamageTable, TheOldTableAddsFourForASteepFallOnly) {
    EXPECT_DOUBLE_EQ(EarDamagePercent({0, 0, 20, 0, 60}, DamageTable::kOld), 4.44 * 0.6);
    EXPECT_DOUBLE_EQ(EarDamagePercent({0, 0, 19.9, 0, 60}, DamageTable::kOld), 4.44 * 0.6 + 4);
    EXPECT_DOUBLE_EQ(EarDamagePercent({0, 0, 19.9, 0, 60}, DamageTable::kNew), 4.5 * 0.6);
    EXPECT_DOUBLE_EQ(EarDamagePercent({100, 100, 59, 100, 100}, DamageTable::kOld),
                     (25 + 30 + (35.55 - 4.44 / 5) + 5) * 0.6 + 4);
}

TEST(DamageTable, KnowsWhatIsCompensated) {
    for (const DamageTable table : {DamageTable::kNew, DamageTable::kOld}) {
        EXPECT_TRUE(IsCompensable(11.0, table));
        EXPECT_FALSE(IsCompensable(10.99, table));
    }
    EXPECT_TRUE(IsCompensable(6.0, DamageTable::kBiological));
    EXPECT_FALSE(IsCompensable(5.99, DamageTable::kBiological));
    EXPECT_FALSE(IsCompensable(100, static_cast<DamageTable>(0)));
}

}  // namespace
}  // namespace tonvale
