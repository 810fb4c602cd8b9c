#include "protectors/protector_selection_wizard_win.h"

#include <functional>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "tests/exposure/example_file.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/control_layout.h"

namespace tonvale {
namespace {

constexpr char kQuestions[] = "Rispondere alle domande";
constexpr char kChoice[] = "Scelta del metodo di calcolo";
constexpr char kSnrPage[] = "Metodo SNR";
constexpr char kOctavePage[] = "Metodo banda d'ottava";
constexpr char kResults[] = "Risultati del calcolo";

// Those of the controls first to last for which `is` is true, by the last digit of their numbers.
std::string Which(HWND sheet, int first, int last, const std::function<bool(HWND)>& is) {
    std::string digits;
    for (int control = first; control <= last; ++control) {
        if (is(ControlOf(sheet, control))) digits += static_cast<char>('0' + control % 10);
    }
    return digits;
}

// The recommended kinds of protectors.
std::string Kinds(HWND sheet) {
    return Which(sheet, IDC_KIND_FIRST, IDC_KIND_FIRST + 3, IsChecked);
}

// The methods that can be chosen, and the one that is.
std::string Methods(HWND sheet) {
    return Which(sheet, 1002, 1006, IsWindowEnabled) + "|" + Which(sheet, 1002, 1006, IsChecked);
}

// Presses one key after the other: digits, blanks, tabs, "\r" for Enter, "v" for the arrow down.
void PressAll(UiDriver& ui, std::string_view keys) {
    for (const char key : keys) {
        ui.Press({key == 'v' ? WORD{VK_DOWN} : static_cast<WORD>(key)});
    }
}

class ProtectorSelectionUiTest : public OneCalculatorTest<SelectionState, OpenProtectorSelection> {
  protected:
    // Goes to the page of the method SNR.
    UiDriver& GoToSnr(UiDriver& ui) {
        state_.has_answers = true;
        state_.information.has_spectrum = true;
        state_.method = static_cast<int>(CheckMethod::kSnr);
        ui.OnWindow(kQuestions).Click(kNext).OnWindow(kChoice).Click(kNext);
        return ui.OnWindow(kSnrPage);
    }
};

TEST_F(ProtectorSelectionUiTest, TheKeyboardLeadsFromTheQuestionsToEachResult) {
    const std::string bands = "95\t95\t95\t95\t95\t95\t95\t\t20\t20\t20\t20\t20\t20\t20";
    const struct {
        const char* page;
        std::string choice;  // from the first method down
        std::string data;    // field by field, past the buttons between noise and protector
        double level_dba;
    } walks[] = {
        {kOctavePage, " ", bands, 82},
        {"Metodo HML", "v", "90\t92\t\t30\t25\t20", 65},
        {"Controllo HML", "vv", "100\t\tv\t20\t10\t12", 88},
        {kSnrPage, "vvv", "100\t\t25", 75},
        {"Metodo SNR corretto", "vvvv", "95\t\t20", 82},
    };
    for (const auto& walk : walks) {
        state_ = {};
        UiDriver ui;
        ui.OnWindow(kQuestions)
            .Expect(Kinds, "9")
            .ExpectEach({kBack, kNext}, IsWindowEnabled, false);
        PressAll(ui, "v\t v");  // no; yes, and no
        ui.Do([] {}).OnWindow(kQuestions).Expect(Kinds, "801");
        PressAll(ui, "\r");
        ui.OnWindow(kChoice).Expect(Methods, "|").ExpectEach({kNext}, IsWindowEnabled, false);
        PressAll(ui, " \t\t\t" + walk.choice + "\r");
        ui.OnWindow(walk.page);
        PressAll(ui, walk.data + "\r");
        ui.OnWindow(kResults).ExpectText(IDC_RESULT_TEXT, ResultText(walk.level_dba, 85));
        PressAll(ui, "\r");
        Open();
        EXPECT_FALSE(state_.unfavourable_conditions || state_.repetitive_short_noises);
        EXPECT_EQ(state_.effective_level_dba, walk.level_dba) << walk.page;
    }
}

TEST_F(ProtectorSelectionUiTest, TheInformationEnablesTheMethods) {
    state_.has_answers = true;
    UiDriver ui;
    ui.OnWindow(kQuestions).Click(kNext).OnWindow(kChoice);
    const auto expect = [&ui](int clicked, const std::string& methods) {
        ui.Click(clicked).Expect(Methods, methods);
        ui.ExpectEach({kNext}, IsWindowEnabled, !methods.ends_with("|"));
    };
    expect(IDC_HAS_A_LEVEL, "46|");
    expect(IDC_METHOD_CORRECTED_SNR, "46|6");
    expect(IDC_HAS_C_LEVEL, "3456|6");
    expect(IDC_METHOD_HML, "3456|3");
    expect(IDC_HAS_A_LEVEL, "5|");
    expect(IDC_HAS_C_LEVEL, "|");
    expect(IDC_HAS_SPECTRUM, "23456|");
    ui.Click(IDC_ACTION_LEVEL_90).Press({VK_ESCAPE});
    Open();
    EXPECT_EQ(state_.action_level_dba, 90);
}

TEST_F(ProtectorSelectionUiTest, ARefusedFieldIsCutAndTakesTheFocus) {
    constexpr char kTyping[] = "Errore nell'inserimento dei dati!";
    constexpr char kBadCharacter[] =
        "Inserire solo numeri, utilizzando il punto come separatore decimale.";
    UiDriver ui;
    GoToSnr(ui).SetText(IDC_NOISE_C_LEVEL, "1OO").SetText(IDC_RATING_SNR, "25,4").Click(kNext);
    ui.AnswerMessage(kTyping, kBadCharacter, IDOK).AnswerMessage(kTyping, kBadCharacter, IDOK);
    ui.AnswerMessage(
        kTyping, "Attenzione: non tutte le caselle di testo contengono un valore numerico.", IDOK);
    // Typing goes on behind what is left; the filter of keystrokes works within a sheet.
    ui.ExpectFocus(IDC_RATING_SNR).Type(IDC_RATING_SNR, "a-.");
    ui.ExpectTexts({IDC_NOISE_C_LEVEL, IDC_RATING_SNR}, "1|25.");
    ui.SetText(IDC_NOISE_C_LEVEL, " 0.0").Click(kNext);
    ui.AnswerMessage("Errore", "Inserire valori numerici!", IDOK);
    ui.SetText(IDC_NOISE_C_LEVEL, "99.50001").Click(kNext);
    ui.OnWindow(kResults).ExpectText(IDC_RESULT_TEXT, ResultText(75, 85)).Click(kBack);
    ui.OnWindow(kSnrPage).ExpectText(IDC_NOISE_C_LEVEL, "99.50001").Press({VK_ESCAPE});
    Open();
}

TEST_F(ProtectorSelectionUiTest, AFileOfAnotherMethodTurnsToItsPage) {
    const std::string octave = WriteFile("ottava.dpi",
                                         "[TONVALE]\r\nTipo=DPI\r\n[SETTINGS]\r\nLACT=80.0\r\n"
                                         "METODO=5\r\n[NOISE]\r\n125=84\r\n");
    const std::string empty = WriteFile("vuoto.dpi", "[TONVALE]\r\nTipo=DPI\r\n");
    UiDriver ui;
    GoToSnr(ui).Click(CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, octave);
    ui.AnswerMessage(
        "Attenzione: il metodo verrà cambiato.",
        "Il file aperto fa riferimento ad un metodo di calcolo diverso dal Metodo SNR.", IDOK);
    ui.OnWindow(kOctavePage);
    ui.ExpectTexts({IDC_BAND_FIRST, IDC_PROTECTOR_BAND_LAST}, " 84.0| 0.0");
    // One without a method fills the page.
    ui.Click(CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, empty);
    ui.ExpectText(IDC_BAND_FIRST, "  0.0").Click(kBack);
    ui.OnWindow(kChoice).ExpectEach({kNext}, IsWindowEnabled, false);
    ui.ExpectEach({IDC_ACTION_LEVEL_80, IDC_ACTION_LEVEL_85, IDC_ACTION_LEVEL_90}, IsChecked,
                  false);
    // The Tab key reaches them all the same.
    const auto is_tab_stop = [](HWND button) {
        return (GetWindowLongW(button, GWL_STYLE) & WS_TABSTOP) != 0;
    };
    ui.ExpectEach({IDC_ACTION_LEVEL_80}, is_tab_stop).Press({VK_ESCAPE});
    Open();
}

TEST_F(ProtectorSelectionUiTest, ImportedDataServeEveryMethod) {
    const std::string noise = WriteFile("rumore.spr", ExampleBytes("sega_circolare.spr"));
    const std::string protector = WriteFile("cuffia.spi", ExampleBytes("cuffia_leggera.spi"));
    UiDriver ui;
    GoToSnr(ui).SetText(IDC_RATING_SNR, "12").Click(IDC_IMPORT_NOISE);
    ChooseFile(ui, kOpenTitle, noise);
    ui.ExpectTexts({IDC_NOISE_C_LEVEL, IDC_RATING_SNR}, " 99.4|12").Click(IDC_IMPORT_PROTECTOR);
    ChooseFile(ui, kOpenTitle, protector);
    ui.ExpectText(IDC_RATING_SNR, "24.0");
    ui.Click(kBack).OnWindow(kChoice).Click(IDC_METHOD_OCTAVE_BAND).Click(kNext);
    ui.OnWindow(kOctavePage).ExpectText(IDC_BAND_LAST, " 87.0").Click(kNext).OnWindow(kResults);
    ui.ExpectText(IDC_RESULT_TEXT, ResultText(75, 85)).SetText(IDC_NOTES_EDIT, "sega");
    // A failure inside a page leaves it in front.
    app_.open_printer = []() -> std::unique_ptr<Printer> { throw std::bad_alloc(); };
    ui.Click(IDC_WIZARD_PRINT).AnswerMessage("Errore", "Memoria insufficiente.", IDOK);
    ui.OnWindow(kResults).Press({VK_ESCAPE});
    Open();
    EXPECT_EQ(state_.inputs.values[CheckField::kSnr], 0);  // its method was not run
    EXPECT_EQ(state_.notes, "sega");
}

}  // namespace
}  // namespace tonvale
