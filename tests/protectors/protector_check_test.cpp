#include "protectors/protector_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "common/numbers.h"
#include "protectors/protector_ranking.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;

TEST(RoundHalvesUp, GoesUpFromHalvesAboveZeroAndTruncatesBelow) {
    const std::vector<double> rounded{-3, -2, -2, -1, -1, 0, 0, 1, 1, 2, 2, 3, 3};
    for (int i = 0; i <= 12; ++i) {
        const double value = -3 + 0.5 * i;
        const double result = RoundHalvesUp(value);
        EXPECT_EQ(result, rounded[static_cast<std::size_t>(i)]) << value;
        EXPECT_FALSE(result == 0 && std::signbit(result)) << value;
    }
    EXPECT_EQ(RoundHalvesUp(84.5), 85);
    EXPECT_EQ(RoundHalvesUp(84.49), 84);
    EXPECT_EQ(RoundHalvesUp(-2.9), -2);
}

TEST(ProtectorCheck, TheMethodsComputeTheLevelAtTheEar) {
    EXPECT_EQ(SnrLevel(100, 25), 75);
    EXPECT_EQ(SnrLevel(100.5, 25), 76);
    EXPECT_EQ(CorrectedSnrLevel(95, 20), 82);
    EXPECT_EQ(HmlLevel(90, 92, 30, 25, 20), 65);
    EXPECT_EQ(HmlLevel(90, 96, 30, 25, 20), 70);
    EXPECT_EQ(HmlLevel(90.3, 90.3, 30, 25, 20), 90.3 - 28);  // the reduction of 27.5 is rounded
    EXPECT_EQ(HmlLevel(90, 92.5, 30, 24, 8), 90 - 23);       // 22.625: the slope is (H - L) / 8
    const auto check = [](double laeq, double h, double m, double l, bool is_class_l) {
        const HmlCheckLevel level = CheckHml(laeq, h, m, l, is_class_l);
        return std::pair(level.level_dba, level.is_decided);
    };
    EXPECT_EQ(check(100, 20, 10, 12, false), std::pair(80.0, false));
    EXPECT_EQ(check(100, 20, 15, 12, false), std::pair(85.0, true));
    EXPECT_EQ(check(100, 14, 10, 12, false), std::pair(86.0, true));
    EXPECT_EQ(check(100, 15, 10, 12, false), std::pair(85.0, false));
    EXPECT_EQ(check(100, 20, 10, 12, true), std::pair(88.0, true));
}

// Thirty pairs against the sum of sound energies let through, each band as a share of its own.
TEST(ProtectorCheck, TheOctaveBandMethodSumsWhatThirtyProtectorsLetThrough) {
    constexpr double kNoises[5][7] = {{84, 86.5, 90, 93.5, 95, 92.5, 87},
                                      {101, 99.2, 96, 93, 90, 87, 81.5},
                                      {70, 75, 82, 90, 98, 104, 101},
                                      {95, 95, 95, 95, 95, 95, 95},
                                      {110.5, 88, 79, 77, 70, 65, 60}};
    constexpr double kProtectors[6][7] = {
        {9.5, 12, 18.5, 24, 27.5, 30, 29},    {16, 21.5, 29, 34.5, 33, 36, 35.5},
        {22.5, 24, 26.5, 27, 31.5, 36.5, 38}, {12.5, 11.5, 12, 15.5, 22, 25.5, 26},
        {20, 20, 20, 20, 20, 20, 20},         {5.1, 8.8, 13.7, 21.4, 25.9, 33.3, 31.2}};
    constexpr double kAWeighting[7] = {-16.1, -8.6, -3.2, 0, 1.2, 1, -1.1};
    for (const auto& noise : kNoises) {
        for (const auto& protector : kProtectors) {
            CheckInputs inputs;
            long double energy = 0;
            for (std::size_t i = 0; i < 7; ++i) {
                inputs.values[BandField(CheckField::kNoiseBands, i)] = noise[i];
                inputs.values[BandField(CheckField::kProtectorBands, i)] = protector[i];
                energy += std::pow(10.0L, noise[i] / 10.0L) *
                          std::pow(10.0L, kAWeighting[i] / 10.0L) /
                          std::pow(10.0L, protector[i] / 10.0L);
            }
            const double expected = std::floor(static_cast<double>(10 * std::log10(energy)) + 0.5);
            EXPECT_EQ(RunCheck(InfoOf(CheckMethod::kOctaveBand), inputs).level_dba, expected);
        }
    }
}

TEST(ProtectorCheck, AnInputOfZeroIsNotGiven) {
    for (const CheckMethodInfo& method : CheckMethods()) {
        EXPECT_EQ(FindCheckMethod(static_cast<int>(method.method)), &method);
        CheckInputs inputs;
        for (std::size_t i = 0; i < kCheckFieldCount; ++i) {
            inputs.values[static_cast<CheckField>(i)] = 90;
        }
        EXPECT_TRUE(RunCheck(method, inputs).level_dba) << method.name;
        for (const CheckField field : method.fields) {
            inputs.values[field] = 0;
            const CheckOutcome outcome = RunCheck(method, inputs);
            EXPECT_FALSE(outcome.level_dba);
            EXPECT_EQ(outcome.refusal->caption + outcome.refusal->text,
                      "ErroreInserire valori numerici!");
            inputs.values[field] = 90;
        }
    }
    for (const int none : {-1, 0, 6, 99}) EXPECT_EQ(FindCheckMethod(none), nullptr);
}

TEST(ProtectorCheck, RatesTheLevelAgainstTheActionLevel) {
    for (const double action : kActionLevels) {
        const auto label = [&](double below) {
            return std::string(RatingLabel(RateProtection(action - below, action)));
        };
        EXPECT_EQ(label(-0.1), "INSUFFICIENTE.");
        EXPECT_EQ(label(0) + label(4.9), "ACCETTABILE.ACCETTABILE.");
        EXPECT_EQ(label(5) + label(9.9), "BUONA.BUONA.");
        EXPECT_EQ(label(10) + label(14.9), "ACCETTABILE.ACCETTABILE.");
        EXPECT_EQ(label(15), "TROPPO ALTA (IPERPROTEZIONE).");
    }
    EXPECT_EQ(RateProtection(std::numeric_limits<double>::quiet_NaN(), 85),
              ProtectionBand::kInsufficient);
    EXPECT_EQ(
        ResultText(75, 85),
        "Con l'otoprotettore scelto, il livello di pressione sonora equivalente risultante "
        "all'orecchio del lavoratore è pari a 75.0 dBA.\r\nIl livello d'azione è 85.0 dBA.\r\n"
        "La protezione offerta dal DPI è da ritenersi ACCETTABILE.");
}

TEST(ProtectorCheck, TheAnswersTellTheKinds) {
    EXPECT_THAT(RecommendedKinds(true, true), ElementsAre(false, true, false, false));
    EXPECT_THAT(RecommendedKinds(true, false), ElementsAre(false, true, false, true));
    EXPECT_THAT(RecommendedKinds(false, true), ElementsAre(true, false, true, false));
    EXPECT_THAT(RecommendedKinds(false, false), ElementsAre(true, false, true, true));
}

PerCheckField<double> ProtectorOf(double h, double m, double l, double snr) {
    PerCheckField<double> values;
    values[CheckField::kH] = h;
    values[CheckField::kM] = m;
    values[CheckField::kL] = l;
    values[CheckField::kSnr] = snr;
    return values;
}

TEST(ProtectorRanking, PutsTheBestFirst) {
    RankingTask task;
    task.deciding_method = CheckMethod::kSnr;
    task.noise.values[CheckField::kLceq] = 100;
    std::vector<RankedProtector> protectors;
    // At 85 dBA: 78 and 77 are nearest to the middle of the good band, alike.
    for (const double snr : {14.0, 40.0, 27.0, 16.0, 30.0, 15.0, 22.0, 20.0, 0.0, 23.0, 24.0}) {
        protectors.push_back(CheckForRanking(task, "z" + FormatFixed(snr, 0, 0) + ".spi",
                                             ProtectorOf(0, 0, 0, snr)));
    }
    protectors.push_back(CheckForRanking(task, "cartella/a22.spi", ProtectorOf(0, 0, 0, 22)));
    protectors.push_back(CheckForRanking(task, "a.spi", ProtectorOf(30, 25, 20, 0)));
    SortBestFirst(task, protectors);
    std::string order;
    for (const RankedProtector& protector : protectors) order += protector.file + " ";
    EXPECT_EQ(order,
              "cartella/a22.spi z22.spi z23.spi z24.spi z20.spi z16.spi z15.spi z27.spi z30.spi "
              "z40.spi z14.spi a.spi z0.spi ");
    EXPECT_EQ(MostExactMethod({}), std::nullopt);
    EXPECT_EQ(MostExactMethod({.has_laeq = true}), CheckMethod::kCorrectedSnr);
    EXPECT_EQ(MostExactMethod({.has_lceq = true}), CheckMethod::kSnr);
    EXPECT_EQ(MostExactMethod({.has_lceq = true, .has_laeq = true}), CheckMethod::kHml);
    EXPECT_EQ(MostExactMethod({.has_spectrum = true}), CheckMethod::kOctaveBand);
}

}  // namespace
}  // namespace tonvale
