#include "hearing/damage_risk.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "hearing/risk_grid.h"

namespace tonvale {
namespace {

DamageCriterion CriterionAt(std::size_t position) {
    return DamageCriteria()[position].code;
}

DamageRiskForm FormOf(std::string years, std::string level, std::string age, int position = 0) {
    return {{.years = std::move(years), .level_dba = std::move(level), .age = std::move(age)},
            position};
}

TEST(DamageRisk, CriteriaAreMetFromTheirBoundariesOn) {
    // Losses at which the measure is the limit itself, or just below it and just above it.
    struct Boundary {
        std::size_t criterion;
        AudiometricLosses not_met;
        AudiometricLosses met;
    };
    const Boundary boundaries[] = {
        {0, {99, 27, 27, 99, 27, 99}, {0, 27, 27, 0, 27.001, 0}},
        {1, {25, 25, 25, 99, 99, 99}, {25, 25, 25.001, 0, 0, 0}},
        // 0.6 (15.75 + 1.845238 1.4) = 11: no double gives it exactly.
        {2, {20, 20, 41.8452, 20, 20, 99}, {20, 20, 41.8453, 20, 20, 0}},
        // 7 and 4 for the steep fall: exactly 11. 3000 Hz does not count.
        {3, {23.0575210589650, 20, 25.6, 99, 70, 99}, {23.0575210589651, 20, 25.6, 20, 70, 0}},
        {4, {45, 37.49, 20, 20, 20, 99}, {45, 37.5, 20, 20, 20, 0}},  // 0.5 (7.5 + 4.5)
        {5, {27, 29.99, 20, 20, 20, 99}, {27, 30, 20, 20, 20, 0}},    // 0.5 (0.5 + 1.5)
        {6, {25, 25, 25, 25, 25, 99}, {25, 25, 25, 25, 25.001, 0}},
        {7, {25, 25, 25, 25, 25, 99}, {25, 25, 25, 25.001, 25, 0}},
    };
    for (const auto& [criterion, not_met, met] : boundaries) {
        EXPECT_EQ(TestCriterion(0.3, CriterionAt(criterion), not_met), 0) << criterion;
        EXPECT_EQ(TestCriterion(0.3, CriterionAt(criterion), met), 0.3) << criterion;
    }
    const AudiometricLosses eleven = boundaries[3].met;
    EXPECT_EQ(DamageCriteria()[3].measure(eleven), 11);
}

TEST(DamageRisk, GivesTheSharesOfAnIndependentComputation) {
    struct Case {
        PredictionCase person;
        std::array<const char*, 8> shares;  // unexposed, exposed and risk, of each criterion
    };
    const Case cases[] = {
        {{35, 90, 60, kMale},
         {" 21.0 35.0 14.0", "  5.0  8.0  3.0", "  0.0 13.0 13.0", "  5.0 10.0  5.0",
          "  0.0  7.0  7.0", " 15.0 34.0 19.0", " 57.0 79.0 22.0", " 22.0 36.0 14.0"}},
        {{40, 100, 58, kFemale},
         {"  6.0 68.0 62.0", "  0.0 37.0 37.0", "  0.0 45.0 45.0", "  0.0 40.0 40.0",
          "  0.0 35.0 35.0", "  0.0 69.0 69.0", " 22.0 94.0 72.0", "  8.0 70.0 62.0"}},
        {{5, 100, 30, kFemale},
         {"  0.0 13.0 13.0", "  0.0  0.0  0.0", "  0.0  0.0  0.0", "  0.0  0.0  0.0",
          "  0.0  0.0  0.0", "  0.0 13.0 13.0", "  0.0 48.0 48.0", "  0.0 15.0 15.0"}},
    };
    for (const auto& [person, shares] : cases) {
        for (std::size_t i = 0; i < shares.size(); ++i) {
            const RiskShares computed = ComputeRisk({person, CriterionAt(i)});
            EXPECT_EQ(ShareText(computed.unexposed) + ShareText(computed.exposed) +
                          ShareText(computed.risk),
                      shares.at(i))
                << person.years << " " << i;
        }
    }
}

TEST(DamageRisk, IsBoundByTheScanAndByTheNoise) {
    // Met everywhere, by an age that no one reaches.
    const DamageRisk everywhere{{1, 90, 500, kMale}, DamageCriterion::kBiologicalMinimum};
    EXPECT_EQ(ShareText(ComputeRisk(everywhere).unexposed), " 95.0");
    EXPECT_EQ(ComputeRisk(everywhere).risk, 0);
    // 75 dBA harm no frequency; at 18 nothing has been lost.
    for (const DamageCriterionInfo& info : DamageCriteria()) {
        const DamageRisk quiet{{40, 75, 70, kMale}, info.code};
        EXPECT_EQ(ComputeRisk(quiet).risk, 0);
        EXPECT_GT(ComputeRisk(quiet).exposed, 0);
        EXPECT_EQ(ComputeRisk({{40, 75, 18, kFemale}, info.code}).exposed, 0);
    }
}

TEST(DamageRisk, ARefusedFieldChangesNothing) {
    DamageRisk risk;
    for (const int no_criterion : {-1, 8}) {
        const auto refusal = Confirm(FormOf("40", "100", "60", no_criterion), risk);
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->message.caption, "Criterio di danno.");
    }
    EXPECT_TRUE(Confirm(FormOf("40", "100", "57.9", 6), risk));
    EXPECT_TRUE(ConfirmGrid(FormOf("", "", "22", 6), risk));
    EXPECT_EQ(risk.person.years + risk.person.level_dba + risk.person.age, 35 + 90 + 60);
    EXPECT_EQ(risk.criterion, DamageCriterion::kIso1990);
    ASSERT_FALSE(Confirm(FormOf("40", "99.5", "58", 6), risk));
    const DamageRiskForm form = FormFromState(risk);
    EXPECT_EQ(form.years + form.level_dba + form.age, " 40100 58");
    EXPECT_EQ(form.criterion_position, 6);
}

}  // namespace

}  // namespace tonvale
