// Both spectra: what they compute, refuse, draw, store and print.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/svg_canvas.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/noise_spectrum.h"
#include "tests/common/golden.h"
#include "tests/common/recording_canvas.h"

namespace tonvale {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

TEST(Spectra, KeepWhatWasTypedAndCutNotes) {
    SpectrumForm form = FormOf(AttenuationSpectrumKind(), {}, {"25", "", "", "30.5"});
    form.notes = std::string(600, 'n');
    SpectrumState state(AttenuationSpectrumKind());
    EXPECT_EQ(FormFromState(state).results[3], " 0.0");  // not the 2 dB of no attenuation
    KeepForm(form, state);
    EXPECT_EQ(state.notes.size(), 511U);
    EXPECT_THAT(FormFromState(state).results, ElementsAre("25.0", " 0.0", " 0.0", "30.5"));
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

TEST(Spectra, PrintTheirChartBelowTheLines) {
    const Printout noise =
        MakePrintout(FormOf(NoiseSpectrumKind(), {"", "85.5"}, {" 77.0", " 85.5"}));
    EXPECT_EQ(noise.document_name, "Spettro rumore");
    EXPECT_EQ(noise.drawing->first_line, 16);
    const Printout protector =
        MakePrintout(FormOf(AttenuationSpectrumKind(), {}, {"1", "2", "3", "4"}));
    EXPECT_EQ(protector.document_name, "Spettro DPI");
    EXPECT_EQ(protector.drawing->first_line, 18);
    SvgCanvas captions({1000, 524});
    noise.drawing->draw_captions(captions, {0, 500, 1000, 524});
    ExpectGolden("spettro_didascalie", captions.Document());
}

// Bars from nothing to beyond the scale, and areas without room for them.
TEST(OctaveChart, ClipsItsBars) {
    const OctaveSpectrum levels_db{140, 70, 0, -5, 1e9, 139.9, 1};
    SvgCanvas canvas({110, 161});
    DrawOctaveChart(canvas, {10, 20, 110, 161}, NoiseSpectrumKind().chart, levels_db, kBlack);
    ExpectGolden("spettro", canvas.Document());
    for (const Rect& area : {Rect{0, 0, 0, 9}, Rect{9, 9, 4, 4}, Rect{0, 0, 3, 1}}) {
        RecordingCanvas nothing;
        DrawOctaveChart(nothing, area, NoiseSpectrumKind().chart, levels_db, {});
        EXPECT_LE(nothing.fills.size(), 1U) << "the ground, no bars";
    }
}

}  // namespace

}  // namespace tonvale
