// Both spectra: what they compute, refuse, draw, store and print.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "protectors/attenuation_spectrum.h"
#include "protectors/noise_spectrum.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Texts = std::array<std::string, kOctaveBandCount>;

SpectrumForm FormOf(const SpectrumKind& kind, const Texts& bands,
                    const std::array<std::string, 4>& results = {}) {
    SpectrumForm form(kind);
    form.bands = bands;
    form.results = results;
    return form;
}

std::array<std::string, 4> ResultsOf(SpectrumForm form) {
    Recompute(form);
    return form.results;
}

SpectrumForm LoadedForm(const SpectrumKind& kind, const std::string& file,
                        std::vector<std::string>* captions = nullptr) {
    SpectrumForm form(kind);
    EXPECT_TRUE(LoadForm(ProfileFile::Parse(file), form));
    for (const UserMessage& message : CompleteLoad(form)) {
        EXPECT_EQ(message.text, "Valore troppo elevato.");
        if (captions != nullptr) captions->push_back(message.caption);
    }
    return form;
}

// --- Arithmetic ----------------------------------------------------------------------------------

TEST(NoiseSpectrum, WeighsTheBandsThatCount) {
    const auto levels = [](const Texts& bands) {
        const auto results = ResultsOf(FormOf(NoiseSpectrumKind(), bands));
        return results[0] + "|" + results[1];
    };
    EXPECT_EQ(levels({}), "  0.0|  0.0");
    EXPECT_EQ(levels({"", "", "", "90"}), " 90.0| 90.0");
    EXPECT_EQ(levels({"20"}), "  3.9| 19.8");
    EXPECT_EQ(levels({"10"}), "  0.0|  9.8");
    EXPECT_EQ(levels({"16.1"}), "  0.0| 15.9");  // weighted 0 is not above 0
    EXPECT_EQ(levels({"-5"}), "-21.1| -5.2");
    // The pink noise of ISO 4869-2, by its bands from 125 Hz.
    EXPECT_EQ(levels({"91.5", "91.5", "91.5", "91.5", "91.5", "91.5", "91.5"}), " 98.5| 99.5");
    // Odd texts: no number, a comma, a number behind the eighth character, nothing but blanks.
    EXPECT_EQ(levels({"abc", "8O", "90,9", "     90", "        90", "   ", "1e400x"}).substr(0, 5),
              "  inf");
    EXPECT_EQ(levels({"abc", "x", "90,9", "       90", "        90", "   ", ".e9"}), " 86.8| 90.0");
}

// The reference noises of ISO 4869-2 band by band, each row one band of the noises 1 to 8.
constexpr double kNoisesByBand[kOctaveBandCount][8] = {
    {62.6, 68.9, 71.1, 77.2, 77.4, 82.0, 84.2, 88.0},
    {70.8, 78.3, 80.8, 84.5, 86.5, 89.4, 90.1, 93.4},
    {81.0, 84.3, 88.0, 89.8, 92.5, 93.5, 93.6, 93.8},
    {90.4, 92.8, 95.0, 95.5, 96.4, 95.6, 96.2, 94.2},
    {96.2, 96.3, 94.4, 94.3, 93.0, 93.0, 91.3, 91.4},
    {94.7, 94.0, 94.1, 92.5, 90.4, 90.1, 87.9, 87.9},
    {92.3, 90.0, 89.0, 88.8, 83.7, 83.0, 81.9, 79.9}};

constexpr double kConstants[8] = {-1.20, -0.49, 0.14, 1.56, -2.98, -1.01, 0.85, 3.14};

double Power(double level_db) {
    return std::exp(level_db * std::log(10) / 10);
}

// Derived otherwise: the sound energy let through, and one coefficient a noise; the SNR by a pink
// noise of 91.5 dB a band.
ProtectorRatings DerivedRatings(const OctaveSpectrum& protection) {
    ProtectorRatings ratings;
    for (int k = 0; k < 8; ++k) {
        double through = 0;
        double noise = 0;
        for (std::size_t i = 0; i < kOctaveBandCount; ++i) {
            noise += Power(kNoisesByBand[i][k]);
            through += Power(kNoisesByBand[i][k]) / Power(protection[i]);
        }
        EXPECT_NEAR(noise, 1e10, 2e8);  // 100 dBA
        const double reduction = -10 * std::log10(through / 1e10);
        if (k < 4) {
            ratings.h += (0.25 - 0.48 * kConstants[k]) * reduction;
        } else {
            ratings.m += (0.25 - 0.16 * kConstants[k]) * reduction;
            ratings.l += (0.25 + 0.23 * kConstants[k]) * reduction;
        }
    }
    OctaveSpectrum pink_at_ear;
    for (std::size_t i = 0; i < kOctaveBandCount; ++i) pink_at_ear[i] = 91.5 - protection[i];
    ratings.snr = 100 - WeightedLevel(pink_at_ear, Weighting::kA);
    return ratings;
}

TEST(AttenuationSpectrum, AgreesWithADerivationByAnotherRoute) {
    for (const OctaveSpectrum& protection : {OctaveSpectrum{10, 15, 20, 25, 30, 35, 35},
                                             {3.2, 6.1, 14.8, 27.7, 31.0, 38.4, 22.9},
                                             {28.5, 25.0, 21.3, 18.8, 24.6, 30.2, 41.0},
                                             {5, 30, 5, 30, 5, 30, 5},
                                             {16.4, 12.9, 25.5, 33.3, 19.1, 41.7, 44.8}}) {
        const ProtectorRatings expected = DerivedRatings(protection);
        const ComputedRatings computed = ComputeRatings(protection);
        EXPECT_NEAR(computed.exact.h, expected.h, 1e-9);
        EXPECT_NEAR(computed.exact.m, expected.m, 1e-9);
        EXPECT_NEAR(computed.exact.l, expected.l, 1e-9);
        EXPECT_NEAR(computed.exact.snr, expected.snr, 1e-9);
        EXPECT_EQ(computed.rounded.snr, std::floor(expected.snr + 0.5));
        EXPECT_EQ(computed.rounded.h, std::floor(expected.h + 0.5));
        EXPECT_EQ(computed.rounded.m, std::floor(expected.m + 0.5));
        EXPECT_EQ(computed.rounded.l, std::floor(expected.l + 0.5));
    }
}

TEST(AttenuationSpectrum, ShowsTheRatingsOfACompleteSpectrum) {
    const auto ratings = [](const Texts& bands) {
        return ResultsOf(FormOf(AttenuationSpectrumKind(), bands, {"h", "m", "l", "snr"}));
    };
    EXPECT_THAT(ratings({"20", "20", "20", "20", "20", "20", "20"}),
                ElementsAre("20.0", "20.0", "20.0", "22.0"));
    EXPECT_THAT(ratings({"10", "15", "20", "25", "30", "35", "35"}),
                ElementsAre("31.0", "23.0", "17.0", "26.0"));
    // A rating of 0 leaves its field; so does a missing band all of them. Blanks are a band of 0.
    EXPECT_THAT(ratings({"0", "0", " ", "x", "0", "0", "0"}), ElementsAre("h", "m", "l", " 2.0"));
    EXPECT_THAT(ratings({"20", "20", "20", "", "20", "20", "20"}),
                ElementsAre("h", "m", "l", "snr"));
    // LA' of 99 and more is no SNR; what is not finite is no rating.
    EXPECT_THAT(ratings({"-5", "-5", "-5", "-5", "-5", "-5", "-5"}),
                ElementsAre("-4.0", "-4.0", "-4.0", "snr"));
    EXPECT_THAT(ratings({"-1e999", "9", "9", "9", "9", "9", "9"}),
                ElementsAre("h", "m", "l", "snr"));
    // The program's own filling is no entry: no message above 60.
    SpectrumForm form =
        FormOf(AttenuationSpectrumKind(), {"60", "60", "60", "60", "60", "60", "60"});
    EXPECT_FALSE(EnterBand(form, 0));
    EXPECT_THAT(form.results, ElementsAre("60.0", "60.0", "60.0", "62.0"));
}

// --- Entries -------------------------------------------------------------------------------------

TEST(Spectra, EmptyAFieldAboveTheHighestValue) {
    SpectrumForm noise = FormOf(NoiseSpectrumKind(), {"", "", "", "90", "", "", "141"});
    const auto refusal = EnterBand(noise, 6);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->caption + refusal->text, "8 kHzValore troppo elevato.");
    EXPECT_EQ(noise.bands[6], "");
    EXPECT_EQ(noise.results[0], " 90.0");  // recomputed without it
    for (const char* accepted : {"140", "140.0", "-1e99", "abc999", "", "12345678"}) {
        noise.bands[0] = accepted;
        const bool refused = EnterBand(noise, 0).has_value();
        EXPECT_EQ(refused, noise.bands[0] != accepted);
        EXPECT_EQ(noise.bands[0] == accepted, std::string(accepted) != "12345678") << accepted;
    }
    SpectrumForm protector =
        FormOf(AttenuationSpectrumKind(), {"61"}, {"60", "", "60.01x78IX", ""});
    EXPECT_EQ(EnterBand(protector, 0)->caption, "61");
    EXPECT_FALSE(EnterResult(protector, 0));
    EXPECT_EQ(EnterResult(protector, 2)->caption, "60.01x78");
    EXPECT_THAT(protector.results, ElementsAre("60", "", "", ""));
}

TEST(Spectra, KeepNumbersOnly) {
    SpectrumForm form = FormOf(NoiseSpectrumKind(), {"abc", "85.25", "1e400"});
    form.notes = std::string(600, 'n');
    SpectrumState state(NoiseSpectrumKind());
    EXPECT_THAT(FormFromState(state).results, ElementsAre("  0.0", "  0.0", "  0.0", "  0.0"));
    KeepForm(form, state);
    EXPECT_EQ(state.notes.size(), 511U);
    EXPECT_EQ(FormFromState(state).bands[0], "  0.0");
    EXPECT_EQ(FormFromState(state).bands[1], " 85.3");
    state.levels_db = {0, 0, 0, 91};
    EXPECT_EQ(FormFromState(state).results[1], " 91.0");

    SpectrumState kept(AttenuationSpectrumKind());
    EXPECT_EQ(FormFromState(kept).results[3], " 0.0");  // not the 2 dB of no attenuation
    KeepForm(FormOf(AttenuationSpectrumKind(), {}, {"25", "", "", "30.5"}), kept);
    EXPECT_THAT(FormFromState(kept).results, ElementsAre("25.0", " 0.0", " 0.0", "30.5"));
    EXPECT_EQ(FormFromState(kept).bands[6], " 0.0");
}

// --- Files ---------------------------------------------------------------------------------------

TEST(Spectra, LoadAllFieldsThenCheckThenCompute) {
    std::vector<std::string> captions;
    SpectrumForm form = LoadedForm(AttenuationSpectrumKind(),
                                   "[TONVALE]\nTipo=spi\nH=31.0\nSNR=26.0\n[SPECTRUM]\n125=61\n"
                                   "250=15\n500=60\n1000=1e400\n2000=30\n4000=-5\n",
                                   &captions);
    EXPECT_THAT(captions, ElementsAre("61", "1e400"));
    EXPECT_THAT(form.bands, ElementsAre("", "15", "60", "", "30", "-5", "0"));
    EXPECT_THAT(form.results, ElementsAre("31.0", "", "", "26.0"));  // incomplete: as stored
    captions.clear();
    form = LoadedForm(NoiseSpectrumKind(),
                      "[TONVALE]\nTipo=SPR\nLAEQ=11.1\n[SPECTRUM]\n125=141\n250=140\n"
                      "1000=123456789012345678\n",
                      &captions);
    EXPECT_THAT(captions, ElementsAre("125 Hz", "1 kHz"));
    EXPECT_THAT(form.bands, ElementsAre("", "140", "0", "", "0", "0", "0"));
    EXPECT_THAT(form.results, ElementsAre("131.4", "140.0", "", ""));
    form.results[0] = "prima";
    for (const char* refused : {"", "[TONVALE]\nLAEQ=1\n", "[TONVALE]\nTipo=SPI\n"}) {
        EXPECT_FALSE(LoadForm(ProfileFile::Parse(refused), form));
    }
    EXPECT_EQ(form.results[0] + form.bands[1], "prima140");
}

TEST(AttenuationSpectrum, AuditsDeclaredRatings) {
    const OctaveSpectrum spectrum{10, 15, 20, 25, 30, 35, 35};  // 31, 23, 17, 26
    EXPECT_THAT(AuditRatings({30, 24, 18, 25}, spectrum), IsEmpty());
    EXPECT_THAT(AuditRatings({29.9, 24.1, 0, 0}, spectrum),
                ElementsAre("H 29.9 invece di 31.0", "M 24.1 invece di 23.0"));
    EXPECT_THAT(AuditRatings({20, 20, 20, 20}, {}), IsEmpty());
    const std::string bands = "[SPECTRUM]\n125=10\n250=15\n500=20\n1000=25\n2000=30\n4000=35\n";
    const auto findings = [&](const std::string& last_band) {
        const std::string header = "[TONVALE]\nTipo=SPI\nH=31\nM=23\nL=19.0\nSNR=26\n";
        return AssessAttenuationSpectrum(ProfileFile::Parse(header + bands + last_band)).findings;
    };
    EXPECT_THAT(findings("8000=35\n"),
                ElementsAre("valori dichiarati che distano più di 1 dB dallo spettro: "
                            "L 19.0 invece di 17.0"));
    EXPECT_THAT(findings("8000=\n"), IsEmpty());
    EXPECT_THAT(findings("8000=61\n"), ElementsAre("61: Valore troppo elevato."));
}

// --- Summary, paper, chart -----------------------------------------------------------------------

TEST(Spectra, PrintTheirChartBelowTheLines) {
    const Printout noise =
        MakePrintout(FormOf(NoiseSpectrumKind(), {"", "85.5"}, {" 77.0", " 85.5"}));
    EXPECT_EQ(noise.document_name, "Spettro rumore");
    EXPECT_EQ(noise.drawing->first_line, 16);
    EXPECT_EQ(noise.lines[10].column, SecondColumn::kTwoThirds);
    const Printout protector =
        MakePrintout(FormOf(AttenuationSpectrumKind(), {}, {"1", "2", "3", "4"}));
    EXPECT_EQ(protector.document_name, "Spettro DPI");
    EXPECT_EQ(protector.drawing->first_line, 18);

    RecordingCanvas captions;
    noise.drawing->draw_captions(captions, {0, 500, 1000, 524});
    ASSERT_THAT(captions.texts, SizeIs(kOctaveBandCount));
    EXPECT_EQ(captions.texts[6].text, "8000 Hz");
    EXPECT_EQ(captions.texts[6].rect, (Rect{102 + 6 * 128, 500, 102 + 7 * 128, 524}));
    EXPECT_EQ(captions.texts[6].layout.horizontal, HorizontalAlignment::kCenter);
}

TEST(OctaveChart, DrawsScaleAxesGridAndClippedBars) {
    RecordingCanvas canvas;
    // 141 px in 14 steps of 10; bars 139 px high from y = 159; plot from x = 20 to 110.
    DrawOctaveChart(canvas, {10, 20, 110, 161}, NoiseSpectrumKind().chart,
                    {140, 70, 0, -5, 1e9, 139.9, 1}, {1, 2, 3});
    ASSERT_THAT(canvas.texts, SizeIs(8));
    EXPECT_EQ(canvas.texts[0].text + canvas.texts[7].text, "0140");
    EXPECT_EQ(canvas.texts[7].rect.top, 161 - 140 - canvas.FontAscent());
    EXPECT_EQ(canvas.texts[7].rect.left, 10);
    const auto has_line = [&](Point from, Point to) {
        return std::find(canvas.lines.begin(), canvas.lines.end(),
                         RecordingCanvas::DrawnLine{from, to, {kBlack, 1}}) != canvas.lines.end();
    };
    EXPECT_TRUE(has_line({20, 161}, {110, 161}) && has_line({20, 21}, {110, 21}));
    EXPECT_TRUE(has_line({20, 160}, {110, 160}) && has_line({20, 20}, {20, 161}));
    EXPECT_TRUE(has_line({21, 20}, {21, 161}) && has_line({109, 20}, {109, 161}));
    // Seven bars 12 px wide from x = 22, those of 0 and below left out.
    EXPECT_THAT(canvas.fills,
                ElementsAre(Rect{10, 20, 110, 161}, Rect{22, 20, 34, 159}, Rect{34, 90, 46, 159},
                            Rect{70, 20, 82, 159}, Rect{82, 21, 94, 159}));
    EXPECT_TRUE(has_line({34, 90}, {46, 90}));  // framed

    RecordingCanvas attenuation;
    DrawOctaveChart(attenuation, {0, 0, 100, 120}, AttenuationSpectrumKind().chart, {30}, {});
    EXPECT_THAT(attenuation.texts, SizeIs(4));
    EXPECT_EQ(attenuation.fills[1], (Rect{12, 59, 24, 118}));
    RecordingCanvas nothing;
    for (const Rect& area : {Rect{0, 0, 0, 9}, Rect{9, 9, 4, 4}, Rect{0, 0, 3, 1}}) {
        DrawOctaveChart(nothing, area, NoiseSpectrumKind().chart, {90, 90}, {});
    }
    EXPECT_THAT(nothing.fills, SizeIs(1));  // the ground of the last, no bars
}

}  // namespace
}  // namespace tonvale
