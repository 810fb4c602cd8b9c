#include "protectors/protector_selection_wizard_win.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "resources/resource.h"
#include "tests/exposure/example_file.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr char kQuestions[] = "Rispondere alle domande";
constexpr char kChoice[] = "Scelta del metodo di calcolo";
constexpr char kSnrPage[] = "Metodo SNR";
constexpr char kOctavePage[] = "Metodo banda d'ottava";
constexpr char kResults[] = "Risultati del calcolo";

bool IsEnabled(HWND sheet, int control) {
    return IsWindowEnabled(ControlOf(sheet, control)) != FALSE;
}

bool IsChecked(HWND sheet, int control) {
    return SendMessageW(ControlOf(sheet, control), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

// Those of the controls first to last for which `is` is true, by the last digit of their numbers.
std::string Which(HWND sheet, int first, int last, bool (*is)(HWND, int)) {
    std::string digits;
    for (int control = first; control <= last; ++control) {
        if (is(sheet, control)) digits += static_cast<char>('0' + control % 10);
    }
    return digits;
}

// Presses one key after the other: digits, blanks, tabs, "\r" for Enter, "v" for the arrow down.
void PressAll(UiDriver& ui, std::string_view keys) {
    for (const char key : keys) {
        ui.Press({key == 'v' ? WORD{VK_DOWN} : static_cast<WORD>(key)});
    }
}

class ProtectorSelectionUiTest : public DialogTest {
  protected:
    void Run(const std::string& path = {}) { OpenProtectorSelection(app_, state_, owner_, path); }
    // Goes to the page of a method.
    void GoToMethod(UiDriver& ui, CheckMethod method, const char* page) {
        state_.has_answers = true;
        state_.information.has_spectrum = true;
        state_.method = static_cast<int>(method);
        ui.OnWindow(kQuestions).Click(kNext).OnWindow(kChoice).Click(kNext).OnWindow(page);
    }

    SelectionState state_;
};

TEST_F(ProtectorSelectionUiTest, TheKeyboardLeadsFromTheQuestionsToEachResult) {
    struct Walk {
        const char* page;
        std::string choice;  // from the first method down
        std::string data;    // field by field, past the buttons between noise and protector
        double level_dba;
    };
    std::string bands = "\t";
    for (int i = 0; i < 7; ++i) {
        bands.insert(0, "95\t");
        bands += i == 0 ? "20" : "\t20";
    }
    const Walk walks[] = {
        {kOctavePage, " ", bands, 82},
        {"Metodo HML", "v", "90\t92\t\t30\t25\t20", 65},
        {"Controllo HML", "vv", "100\t\tv\t20\t10\t12", 88},
        {kSnrPage, "vvv", "100\t\t25", 75},
        {"Metodo SNR corretto", "vvvv", "95\t\t20", 82},
    };
    for (const Walk& walk : walks) {
        state_ = {};
        UiDriver ui;
        ui.OnWindow(kQuestions, [](HWND sheet) {
            EXPECT_FALSE(IsEnabled(sheet, kBack) || IsEnabled(sheet, kNext));
            EXPECT_EQ(Which(sheet, 1008, 1011, IsChecked), "9");
        });
        PressAll(ui, "v\t v");  // no; yes, and no
        ui.Do([] {}).OnWindow(
            kQuestions, [](HWND sheet) { EXPECT_EQ(Which(sheet, 1008, 1011, IsChecked), "801"); });
        PressAll(ui, "\r");
        ui.OnWindow(kChoice, [](HWND sheet) {
            EXPECT_FALSE(IsEnabled(sheet, kNext));
            EXPECT_EQ(Which(sheet, 1002, 1006, IsEnabled), "");
        });
        PressAll(ui, " \t\t\t" + walk.choice + "\r");
        ui.OnWindow(walk.page);
        PressAll(ui, walk.data + "\r");
        ui.OnWindow(kResults).ExpectText(IDC_RESULT_TEXT, ResultText(walk.level_dba, 85));
        PressAll(ui, "\r");
        Run();
        ui.Finish();
        EXPECT_FALSE(state_.unfavourable_conditions || state_.repetitive_short_noises);
        EXPECT_EQ(state_.effective_level_dba, walk.level_dba) << walk.page;
    }
}

TEST_F(ProtectorSelectionUiTest, TheInformationEnablesTheMethods) {
    state_.has_answers = true;
    UiDriver ui;
    ui.OnWindow(kQuestions).Click(kNext).OnWindow(kChoice);
    const auto expect = [&](int clicked, const std::string& enabled, const std::string& checked) {
        ui.Click(clicked).OnWindow(kChoice, [=](HWND sheet) {
            EXPECT_EQ(Which(sheet, 1002, 1006, IsEnabled), enabled) << clicked;
            EXPECT_EQ(Which(sheet, 1002, 1006, IsChecked), checked) << clicked;
            EXPECT_EQ(IsEnabled(sheet, kNext), !checked.empty()) << clicked;
        });
    };
    expect(IDC_HAS_A_LEVEL, "46", "");
    expect(IDC_METHOD_CORRECTED_SNR, "46", "6");
    expect(IDC_HAS_C_LEVEL, "3456", "6");
    expect(IDC_METHOD_HML, "3456", "3");
    expect(IDC_HAS_A_LEVEL, "5", "");
    expect(IDC_HAS_C_LEVEL, "", "");
    expect(IDC_HAS_SPECTRUM, "23456", "");
    ui.Click(IDC_ACTION_LEVEL_90).Press({VK_ESCAPE});
    Run();
    ui.Finish();
    EXPECT_EQ(state_.action_level_dba, 90);
}

TEST_F(ProtectorSelectionUiTest, ARefusedFieldIsCutAndTakesTheFocus) {
    constexpr char kTyping[] = "Errore nell'inserimento dei dati!";
    constexpr char kBadCharacter[] =
        "Inserire solo numeri, utilizzando il punto come separatore decimale.";
    UiDriver ui;
    GoToMethod(ui, CheckMethod::kSnr, kSnrPage);
    ui.SetText(IDC_NOISE_C_LEVEL, "1OO").SetText(IDC_RATING_SNR, "25,4").Click(kNext);
    ui.AnswerMessage(kTyping, kBadCharacter, IDOK).AnswerMessage(kTyping, kBadCharacter, IDOK);
    ui.AnswerMessage(
        kTyping, "Attenzione: non tutte le caselle di testo contengono un valore numerico.", IDOK);
    ui.OnWindow(kSnrPage, [](HWND sheet) {
        EXPECT_EQ(TextOf(sheet, IDC_NOISE_C_LEVEL), "1");
        EXPECT_EQ(TextOf(sheet, IDC_RATING_SNR), "25");
        EXPECT_EQ(GetFocus(), ControlOf(sheet, IDC_RATING_SNR));
        EXPECT_EQ(SendMessageW(GetFocus(), EM_GETSEL, 0, 0), MAKELRESULT(2, 2));
    });
    // The filter of keystrokes works within a sheet.
    ui.SetText(IDC_RATING_SNR, "").Type(IDC_RATING_SNR, "2a-5.").ExpectText(IDC_RATING_SNR, "25.");
    ui.SetText(IDC_NOISE_C_LEVEL, " 0.0").Click(kNext);
    ui.AnswerMessage("Errore", "Inserire valori numerici!", IDOK).OnWindow(kSnrPage);
    ui.SetText(IDC_NOISE_C_LEVEL, "99.50001").Click(kNext);
    ui.OnWindow(kResults).ExpectText(IDC_RESULT_TEXT, ResultText(75, 85)).Click(kBack);
    ui.OnWindow(kSnrPage).ExpectText(IDC_NOISE_C_LEVEL, "99.50001").Press({VK_ESCAPE});
    Run();
    ui.Finish();
}

TEST_F(ProtectorSelectionUiTest, AFileOfAnotherMethodTurnsToItsPage) {
    const std::string octave = WriteFile("ottava.dpi",
                                         "[TONVALE]\r\nTipo=DPI\r\n[SETTINGS]\r\nLACT=80.0\r\n"
                                         "METODO=5\r\n[NOISE]\r\n125=84\r\n");
    const std::string empty = WriteFile("vuoto.dpi", "[TONVALE]\r\nTipo=DPI\r\n");
    const std::string other = WriteFile("altro.dpi", "[TONVALE]\r\nTipo=SPI\r\n");
    UiDriver ui;
    GoToMethod(ui, CheckMethod::kSnr, kSnrPage);
    ui.Click(CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, octave);
    ui.AnswerMessage(
        "Attenzione: il metodo verrà cambiato.",
        "Il file aperto fa riferimento ad un metodo di calcolo diverso dal Metodo SNR.", IDOK);
    ui.OnWindow(kOctavePage).ExpectText(IDC_BAND_FIRST, " 84.0");
    ui.ExpectText(IDC_PROTECTOR_BAND_LAST, " 0.0").ExpectText(IDC_WIZARD_FILE, octave);
    // One without a method fills the page; one of another kind does nothing.
    for (const std::string& path : {empty, other}) {
        ui.Click(CMD_FILE_OPEN);
        ChooseFile(ui, kOpenTitle, path);
        ui.WaitClosed(kOpenTitle).OnWindow(kOctavePage).ExpectText(IDC_BAND_FIRST, "  0.0");
        ui.ExpectText(IDC_WIZARD_FILE, empty);
    }
    ui.Click(kBack).OnWindow(kChoice, [](HWND sheet) {
        EXPECT_FALSE(IsEnabled(sheet, kNext));
        EXPECT_EQ(Which(sheet, 1026, 1028, IsChecked), "");
        // The Tab key reaches them all the same.
        EXPECT_TRUE(GetWindowLongW(ControlOf(sheet, IDC_ACTION_LEVEL_80), GWL_STYLE) & WS_TABSTOP);
    });
    ui.Press({VK_ESCAPE});
    Run();
    ui.Finish();
}

TEST_F(ProtectorSelectionUiTest, ImportedDataServeEveryMethod) {
    const std::string noise = WriteFile("rumore.spr", ExampleBytes("sega_circolare.spr"));
    const std::string protector = WriteFile("cuffia.spi", ExampleBytes("cuffia_leggera.spi"));
    UiDriver ui;
    GoToMethod(ui, CheckMethod::kSnr, kSnrPage);
    ui.SetText(IDC_RATING_SNR, "12").Click(IDC_IMPORT_NOISE);
    ChooseFile(ui, kOpenTitle, noise);
    ui.WaitClosed(kOpenTitle).OnWindow(kSnrPage).ExpectText(IDC_NOISE_C_LEVEL, " 99.4");
    for (const auto& [path, snr] : {std::pair{noise, "12"}, std::pair{protector, "24.0"}}) {
        ui.Click(IDC_IMPORT_PROTECTOR);
        ChooseFile(ui, kOpenTitle, path);
        ui.WaitClosed(kOpenTitle).OnWindow(kSnrPage).ExpectText(IDC_RATING_SNR, snr);
    }
    ui.Click(kBack).OnWindow(kChoice).Click(IDC_METHOD_OCTAVE_BAND).Click(kNext);
    ui.OnWindow(kOctavePage).ExpectText(IDC_BAND_LAST, " 87.0").Click(kNext).OnWindow(kResults);
    ui.ExpectText(IDC_RESULT_TEXT, ResultText(75, 85)).SetText(IDC_NOTES_EDIT, "sega");
    // A failure inside a page leaves it in front.
    app_.open_printer = []() -> std::unique_ptr<Printer> { throw std::bad_alloc(); };
    ui.Click(IDC_WIZARD_PRINT).AnswerMessage("Errore", "Memoria insufficiente.", IDOK);
    ui.OnWindow(kResults).Press({VK_ESCAPE});
    Run();
    ui.Finish();
    EXPECT_EQ(state_.inputs.values[CheckField::kSnr], 0);  // its method was not run
    EXPECT_EQ(state_.notes, "sega");
}

}  // namespace
}  // namespace tonvale
