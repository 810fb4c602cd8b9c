// What is particular to the dialogs of the spectra: entries, results, loading, the chart.
#include <string>

#include "dialogs/handles_win.h"
#include "protectors/attenuation_spectrum.h"
#include "protectors/attenuation_spectrum_dialog.h"
#include "protectors/noise_spectrum.h"
#include "protectors/noise_spectrum_dialog.h"
#include "tests/ui/calculator_fixture.h"

namespace tonvale {
namespace {

constexpr char kNoiseTitle[] = "Spettro del rumore";
constexpr char kAttenuationTitle[] = "Spettro di attenuazione";
constexpr char kTooHigh[] = "Valore troppo elevato.";
constexpr int k1kHz = IDC_BAND_FIRST + 3;
constexpr int kBands = static_cast<int>(kOctaveBandCount);
constexpr auto kLevels = {IDC_A_WEIGHTED_LEVEL, IDC_C_WEIGHTED_LEVEL};
constexpr auto kRatings = {IDC_RATING_H, IDC_RATING_M, IDC_RATING_L, IDC_RATING_SNR};

std::string Bands(HWND dialog) {
    std::string bands;
    for (int i = 0; i < kBands; ++i) bands += "|" + TextOf(dialog, IDC_BAND_FIRST + i);
    return bands;
}

RECT ChartArea(HWND dialog) {
    RECT area{};
    GetWindowRect(GetDlgItem(dialog, IDC_DRAWING), &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

// At how many of three heights of the chart there is the bar at 1 kHz.
std::string Bar(HWND dialog) {
    UpdateWindow(dialog);
    const RECT area = ChartArea(dialog);
    const LONG plot = area.left + (area.right - area.left) / 10;
    const WindowDc dc(dialog);
    int heights = 0;
    for (int quarter = 1; quarter < 4; ++quarter) {
        const int y = static_cast<int>(area.top + (area.bottom - area.top) * quarter / 4);
        if (GetPixel(dc.get(), (plot + area.right) / 2, y) == RGB(255, 255, 255)) ++heights;
    }
    return std::to_string(heights);
}

// As a paste from the control's own menu, which no filter sees.
UiDriver& Paste(UiDriver& ui, int control, const wchar_t* text) {
    return ui.OnWindow(kNoiseTitle, [=](HWND dialog) {
        SendDlgItemMessageW(dialog, control, EM_SETSEL, 0, -1);
        SendDlgItemMessageW(dialog, control, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    });
}

class SpectrumUiTest : public DialogTest {
  protected:
    void OpenNoise(const std::string& path = {}) { OpenNoiseSpectrum(app_, noise_, owner_, path); }
    void OpenAttenuation() { OpenAttenuationSpectrum(app_, attenuation_, owner_, {}); }

    SpectrumState noise_{NoiseSpectrumKind()};
    SpectrumState attenuation_{AttenuationSpectrumKind()};
};

TEST_F(SpectrumUiTest, NoiseIsWeighedAtEveryCharacter) {
    UiDriver ui;
    ui.OnWindow(kNoiseTitle).ExpectFocus(IDC_NOTES_EDIT).Expect(Bar, "0");
    ui.SetText(k1kHz, "").Type(k1kHz, "9-0").ExpectTexts(kLevels, " 90.0| 90.0").Expect(Bar, "2");
    // The limit, and above it.
    ui.Type(k1kHz, "\b\b140.0").Expect(Bar, "3").Type(k1kHz, "1");
    ui.AnswerMessage("1 kHz", kTooHigh, IDOK).ExpectTexts(kLevels, "  0.0|  0.0");
    ui.ExpectFocus(k1kHz).Expect(Bar, "0");
    Paste(ui, IDC_BAND_FIRST, L"-5");
    Paste(ui, IDC_BAND_LAST, L"abcdefghij");
    ui.Expect(Bands, "|-5|  0.0|  0.0||  0.0|  0.0|abcdefgh").ExpectTexts(kLevels, "-21.1| -5.2");
    ui.Command(CMD_FILE_CLOSE);
    OpenNoise();
}

TEST_F(SpectrumUiTest, RatingsFollowACompleteSpectrumOrAreTyped) {
    UiDriver ui;
    ui.OnWindow(kAttenuationTitle).ExpectFocus(IDC_BAND_FIRST);
    ui.ExpectTexts(kRatings, " 0.0| 0.0| 0.0| 0.0");  // not the 2 dB of no attenuation
    ui.SetText(IDC_BAND_FIRST, "").SetText(IDC_RATING_H, "25").SetText(IDC_RATING_SNR, "60");
    ui.SetText(IDC_RATING_SNR, "61").AnswerMessage("61", kTooHigh, IDOK);
    ui.SetText(k1kHz, "60.5").AnswerMessage("60.5", kTooHigh, IDOK);
    ui.Expect(Bands, "|| 0.0| 0.0|| 0.0| 0.0| 0.0");
    ui.ExpectTexts(kRatings, "25| 0.0| 0.0|");
    const char* const levels[] = {"10", "15", "20", "25", "30", "35", "35"};
    for (int i = 0; i < kBands; ++i) ui.SetText(IDC_BAND_FIRST + i, levels[i]);
    ui.ExpectTexts(kRatings, "31.0|23.0|17.0|26.0").SetText(IDC_RATING_L, "16").Command(IDCANCEL);
    OpenAttenuation();
    ui.OnWindow(kAttenuationTitle).ExpectTexts(kRatings, "31.0|23.0|16.0|26.0").Command(IDCANCEL);
    OpenAttenuation();
}

// While the fields are filled nothing is taken for typed.
TEST_F(SpectrumUiTest, AFileIsShownThenCheckedThenComputed) {
    const std::string noise = WriteFile("rumore.spr",
                                        "[TONVALE]\nTipo=SPR\nLAEQ=11.1\n[SPECTRUM]\n125=141\n"
                                        "250=140\n500=1e400\n1000=12.345678901234\n2000=-5\n");
    UiDriver ui;
    ui.OnWindow("125 Hz", [](HWND message) {
        HWND dialog = GetWindow(message, GW_OWNER);
        EXPECT_EQ(Bands(dialog), "|141|140|1e400|12.345678901234|-5|0|0");
        EXPECT_EQ(TextOf(dialog, IDC_A_WEIGHTED_LEVEL), "11.1");  // as stored, until all is checked
    });
    ui.AnswerMessage("125 Hz", kTooHigh, IDOK).AnswerMessage("500 Hz", kTooHigh, IDOK);
    ui.OnWindow(kNoiseTitle).Expect(Bands, "||140||12.345678901234|-5|0|0");
    ui.ExpectTexts(kLevels, "131.4|140.0").Command(CMD_FILE_SAVE).Command(IDCANCEL);
    OpenNoise(noise);
    EXPECT_TRUE(ReadFile("rumore.spr").find("1000=12.345678901234\r\n") != std::string::npos);
}

TEST_F(SpectrumUiTest, TheChartIsNeverErased) {
    UiDriver ui;
    ui.OnWindow(kNoiseTitle).SetText(k1kHz, "140").OnWindow(kNoiseTitle, [](HWND dialog) {
        UpdateWindow(dialog);
        const RECT area = ChartArea(dialog);
        const WindowDc dc(dialog);
        const RECT everything{0, 0, 4000, 4000};
        FillRect(dc.get(), &everything, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        SendMessageW(dialog, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.get()), 0);
        EXPECT_EQ(GetPixel(dc.get(), area.left, area.top), RGB(0, 0, 0));
        EXPECT_EQ(GetPixel(dc.get(), area.right - 1, area.bottom - 1), RGB(0, 0, 0));
        EXPECT_EQ(GetPixel(dc.get(), area.left, area.top - 1), GetSysColor(COLOR_3DFACE));
        EXPECT_EQ(GetPixel(dc.get(), area.right, area.bottom), GetSysColor(COLOR_3DFACE));
    });
    ui.Command(IDCANCEL);
    OpenNoise();
}

}  // namespace

}  // namespace tonvale
