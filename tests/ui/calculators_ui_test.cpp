// One walk over all calculators: how each is opened, works on its files, copies, prints, helps, is
// used by keys, and leaves nothing behind.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calc/assessment_table.h"
#include "common/print_frame.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/clipboard_win.h"
#include "tests/exposure/example_file.h"
#include "tests/ui/calculators.h"
#include "tests/ui/held_objects.h"
#include "tests/ui/live_dialog.h"
#include "tests/ui/main_window_fixture.h"

namespace tonvale {
namespace {

constexpr char kNotesTitle[] = "Un commento per la stampa?";
constexpr char kResultsTitle[] = "Risultati del calcolo";
constexpr char kUnknownSection[] = "[ALTRO]\r\nchiave=resta\r\n";

std::vector<Calculator> CalculatorsOf(std::initializer_list<CalculatorForm> forms) {
    std::vector<Calculator> chosen;
    std::copy_if(std::begin(kCalculators), std::end(kCalculators), std::back_inserter(chosen),
                 [&](const Calculator& calculator) {
                     return std::find(forms.begin(), forms.end(), calculator.form) != forms.end();
                 });
    return chosen;
}

class CalculatorTest : public MainWindowTest, public testing::WithParamInterface<Calculator> {
  protected:
    static const char* Title() { return GetParam().title; }
    static bool IsWizard() { return GetParam().form == CalculatorForm::kWizard; }

    // The example, with a section that the program does not know; empty without an example.
    static std::string Bytes() {
        return GetParam().example ? ExampleBytes(GetParam().example) + kUnknownSection
                                  : std::string();
    }
    std::string Example() const {
        return GetParam().example ? WriteFile(GetParam().example, Bytes()) : std::string();
    }
    static std::string Extension() { return std::string(FileExtension(GetParam().example)); }
    // A file whose content is of another kind than its extension.
    std::string WrongKind() const {
        const bool is_daily = Extension() == ".lep";
        return WriteFile("altro" + Extension(),
                         ExampleBytes(is_daily ? "settimana.lew" : "giornata.lep"));
    }

    // Opens the calculator from the menu or, when `path` is not empty, by the dropped file.
    static UiDriver& Open(UiDriver& ui, const std::string& path = {}) {
        if (path.empty()) {
            ui.OnWindowOfClass(kMainClass).Command(GetParam().command);
        } else {
            Drop(ui, {path});
        }
        return ui.OnWindow(Title());
    }
    // A command of the data file.
    static UiDriver& Run(UiDriver& ui, int command) {
        ui.OnWindow(Title());
        return IsWizard() ? ui.Click(command) : ui.Command(command);
    }
    static UiDriver& Print(UiDriver& ui) {
        return Run(ui, IsWizard() ? IDC_WIZARD_PRINT : CMD_FILE_PRINT);
    }
    static UiDriver& Close(UiDriver& ui) {
        return ui.OnWindow(Title(), LeaveByKey).WaitClosed(Title());
    }
    static UiDriver& ExpectFile(UiDriver& ui, const std::string& name) {
        return ui.OnWindow(Title(),
                           [name](HWND window) { EXPECT_EQ(CurrentFileName(window), name); });
    }
    // Presses a button of the wizard's sheet until the page with this title is there.
    static UiDriver& Lead(UiDriver& ui, int button, const std::string& title) {
        ui.WaitUntil("page \"" + title + "\"", [=] {
            HWND sheet = DialogInFront();
            if (WindowText(sheet) == title) return true;
            HWND control = GetDlgItem(sheet, button);
            if (IsWindowEnabled(control)) PostMessageW(control, BM_CLICK, 0, 0);
            return false;
        });
        return ui.OnWindow(title);
    }
    // The splash window would go while objects are counted.
    static void CloseSplash(UiDriver& ui) {
        const auto splash = [] { return FindWindowW(L"Tonvale_Splash", nullptr); };
        ui.OnWindowOfClass(kMainClass, [=](HWND) { PostMessageW(splash(), WM_LBUTTONDOWN, 0, 0); });
        ui.WaitUntil("splash closed", [=] { return !splash(); });
    }
    // Presses every button of the dialog or page.
    static UiDriver& PressAll(UiDriver& ui) {
        auto walk = std::make_shared<ButtonWalk>();
        return ui.OnWindow(Title()).WaitUntil("all buttons pressed", [walk, &ui] {
            HWND dialog = FindWindowW(L"#32770", Widen(Title()).c_str());
            ui.RestartDeadline();
            return walk->Step(dialog);
        });
    }
};

class DataFileTest : public CalculatorTest {};

TEST_P(DataFileTest, OpensFilesOfItsKindOnly) {
    const std::string right = Example();
    const std::string wrong_kind = WrongKind();
    const std::string wrong_name = WriteFile("giusto.txt", Bytes());
    std::vector<std::string> before, shown;
    const auto expect_nothing_new = [&](HWND window) {
        EXPECT_EQ(Shown(window), before);
        EXPECT_EQ(CurrentFileName(window), kNoFile);
    };
    UiDriver ui;
    Open(ui).OnWindow(Title(), [&](HWND window) {
        before = Shown(window);
        for (const std::string& path : {wrong_kind, wrong_name})
            tonvale::Drop(PageOf(window), {path});
        tonvale::Drop(PageOf(window), {right, right});
        expect_nothing_new(window);
    });
    Run(ui, CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, wrong_kind);
    ui.WaitClosed(kOpenTitle).OnWindow(Title(), expect_nothing_new);
    Run(ui, CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, right);
    ExpectFile(ui.WaitClosed(kOpenTitle), GetParam().example);
    ui.OnWindow(Title(), [&](HWND window) {
        shown = Shown(window);
        EXPECT_NE(shown, before);
    });
    ui.Screenshot(std::string("calculator_") + GetParam().name);
    Close(ui);
    // Dropped on the main window, and on the dialog itself.
    for (int round = 0; round < 2; ++round) {
        ExpectFile(Open(ui, right), GetParam().example).OnWindow(Title(), [&, right](HWND window) {
            EXPECT_EQ(Shown(window), shown);
            tonvale::Drop(PageOf(window), {right});
            EXPECT_EQ(Shown(window), shown);
        });
        Close(ui);
    }
    ExpectFile(Open(ui, wrong_kind), kNoFile);
    Close(ui);
    RunToEnd(ui);
}

TEST_P(DataFileTest, SavesWhatItShows) {
    const std::string path = Example();
    const std::string fresh = Path("nuovo" + Extension());
    const std::string full = "Impossibile salvare: il disco è pieno.";
    FaultyFileSystem disk(SystemFiles());
    std::vector<std::string> shown;
    std::optional<HeldFile> held;
    UiDriver ui;
    Open(ui, path).OnWindow(Title(), [&](HWND window) {
        TheProgram().context().files = &disk;
        shown = Shown(window);
    });
    Run(ui, CMD_FILE_SAVE);
    ui.OnWindow(Title(), [&](HWND) {
        EXPECT_EQ(ReadFile(GetParam().example), Bytes());
        disk.is_full = true;
    });
    Run(ui, CMD_FILE_SAVE).AnswerMessage(path, full, IDOK);
    Run(ui, CMD_FILE_SAVE_AS);
    SaveNewFile(ui, fresh);
    ui.AnswerMessage(fresh, full, IDOK);
    ExpectFile(ui, GetParam().example).Do([&] {
        EXPECT_EQ(FileCount(), 1);
        disk.is_full = false;
        held.emplace(path, GENERIC_READ, 0);
    });
    Run(ui, CMD_FILE_SAVE)
        .AnswerMessage(path, "Impossibile salvare: un'altra applicazione sta usando il file.",
                       IDOK);
    ui.OnWindow(Title(), [&](HWND) {
        held.reset();
        EXPECT_EQ(ReadFile(GetParam().example), Bytes());
    });
    Run(ui, CMD_FILE_SAVE_AS);
    SaveNewFile(ui, fresh);
    ExpectFile(ui.WaitClosed(kSaveTitle), "nuovo" + Extension());
    Close(ui);
    Open(ui, fresh).OnWindow(Title(), [&](HWND window) { EXPECT_EQ(Shown(window), shown); });
    Close(ui);
    RunToEnd(ui);
}

std::vector<std::string> PrintedTexts(const FakePrinter& printer) {
    std::vector<std::string> texts;
    for (const auto& page : printer.pages) {
        for (const auto& drawn : page) texts.push_back(drawn.text);
        texts.emplace_back("(page end)");
    }
    return texts;
}

// What is printed and copied is what the companion tells of the same file; a wizard has computed it
// on its way to the results.
TEST_P(DataFileTest, PrintsAndCopies) {
    const std::string path = Example();
    const ProfileFile file = ProfileFile::Parse(Bytes());
    const Assessment assessment = AssessedKindOf(file)->assess(file);
    FakePrinter expected;
    PrintPages(expected, assessment.printout);
    FakePrinter printer;
    UiDriver ui;
    Open(ui, path).Do([] { TheProgram().context().open_printer = [] { return nullptr; }; });
    Print(ui).Do([&] {
        TheProgram().context().open_printer = [&] {
            return std::make_unique<BorrowedPrinter>(printer);
        };
    });
    if (IsWizard()) {
        Lead(ui, kNext, kResultsTitle).Click(IDC_WIZARD_PRINT);
        Lead(ui, kBack, Title());
    } else {
        Print(ui);
    }
    ui.OnWindow(Title(), [&](HWND) {
        EXPECT_TRUE(printer.ended);
        EXPECT_EQ(printer.document, expected.document);
        EXPECT_EQ(PrintedTexts(printer), PrintedTexts(expected));
    });
    if (!IsWizard()) {
        ui.Command(CMD_COPY).Do([&] {
            const std::string csv = ClipboardBytes(TheProgram().context().clipboard.csv).c_str();
            EXPECT_EQ(Windows1252ToUtf8(csv), assessment.summarize(ListSeparator()));
            const std::string wide = ClipboardBytes(CF_UNICODETEXT);
            EXPECT_EQ(Narrow(reinterpret_cast<const wchar_t*>(wide.data())),
                      Windows1252ToUtf8(csv));
        });
    }
    Close(ui);
    RunToEnd(ui);
}

class WizardTest : public CalculatorTest {};

TEST_P(WizardTest, LeadsFromTheFileToTheResultsAndBack) {
    const std::string path = Example();
    std::vector<std::string> shown;
    UiDriver ui;
    Open(ui, path).OnWindow(Title(), [&](HWND window) { shown = Shown(window); });
    Lead(ui, kNext, kResultsTitle);
    ui.Screenshot(std::string("results_") + GetParam().name);
    Lead(ui, kBack, Title()).OnWindow(Title(), [&](HWND window) {
        EXPECT_EQ(Shown(window), shown);
    });
    Lead(ui, kNext, kResultsTitle).Click(kFinish).WaitClosed(kResultsTitle);
    RunToEnd(ui);
}

class QuestionTest : public CalculatorTest {};

TEST_P(QuestionTest, ShowsCopiesAndPrintsItsAnswer) {
    FakePrinter printer;
    UiDriver ui;
    Open(ui).Press({VK_RETURN}).WaitClosed(Title()).OnWindowOfClass(kMainClass, [&](HWND) {
        EXPECT_FALSE(TheProgram().views().ShowsDocument());
        EXPECT_EQ(TheProgram().results().kind(), ViewKind::kTable);
        TheProgram().context().open_printer = [&] {
            return std::make_unique<BorrowedPrinter>(printer);
        };
    });
    for (int view : {CMD_VIEW_CHART, CMD_VIEW_AUDIOGRAM, CMD_VIEW_TABLE}) {
        ui.OnWindowOfClass(kMainClass).Command(view);
        ui.OnWindowOfClass(kMainClass).Screenshot(GetParam().name + std::to_string(view));
    }
    ui.Command(CMD_COPY).Command(CMD_PRINT).OnWindow(kNotesTitle).Click(IDOK);
    ui.WaitClosed(kNotesTitle).OnWindowOfClass(kMainClass, [&](HWND) {
        const std::string csv = ClipboardBytes(TheProgram().context().clipboard.csv).c_str();
        EXPECT_EQ(Windows1252ToUtf8(csv),
                  TheProgram().results().result()->table_text(ListSeparator()));
        EXPECT_TRUE(printer.ended);
    });
    RunToEnd(ui);
}

TEST_P(CalculatorTest, HelpsAndIsUsedByKeys) {
    RecordingHelp help;
    const std::string path = Example();
    UiDriver ui;
    Open(ui, path).OnWindow(Title(), [&](HWND) { TheProgram().context().help = &help; });
    ui.Press({VK_F1}).WaitUntil("help", [&] { return help.topics.size() == 1; });
    if (IsWizard()) {
        ui.Click(IDHELP);
    } else {
        ui.Command(CMD_DIALOG_HELP);
    }
    ui.OnWindow(Title(), [&](HWND) { EXPECT_EQ(help.topics.back(), GetParam().help); });
    HWND first = nullptr;
    ui.Do([&] { first = GetFocus(); }).Press({VK_TAB}).OnWindow(Title(), [&](HWND window) {
        EXPECT_NE(GetFocus(), first);
        EXPECT_TRUE(IsChild(window, GetFocus()));
    });
    PressAll(ui).OnWindow(Title()).Press({VK_ESCAPE}).WaitClosed(Title());
    RunToEnd(ui);
}

TEST_P(CalculatorTest, LeavesNothingBehind) {
    constexpr int kWarmUp = 2, kTimes = 4;
    const std::string path = Example();
    std::map<std::string, int> before;
    UiDriver ui;
    CloseSplash(ui);
    for (int i = 0; i < kWarmUp + kTimes; ++i) {
        if (i == kWarmUp) ui.OnWindowOfClass(kMainClass).Do([&] { before = CountHeldObjects(); });
        Open(ui, path);
        PressAll(ui);
        Close(ui);
    }
    ui.OnWindowOfClass(kMainClass).Do([&] { EXPECT_EQ(CountHeldObjects(), before); });
    RunToEnd(ui);
}

std::string NameOfCalculator(const testing::TestParamInfo<Calculator>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(All, CalculatorTest, testing::ValuesIn(kCalculators), NameOfCalculator);
INSTANTIATE_TEST_SUITE_P(All, DataFileTest,
                         testing::ValuesIn(CalculatorsOf({CalculatorForm::kDialog,
                                                          CalculatorForm::kWizard})),
                         NameOfCalculator);
INSTANTIATE_TEST_SUITE_P(All, WizardTest,
                         testing::ValuesIn(CalculatorsOf({CalculatorForm::kWizard})),
                         NameOfCalculator);
INSTANTIATE_TEST_SUITE_P(All, QuestionTest,
                         testing::ValuesIn(CalculatorsOf({CalculatorForm::kQuestion})),
                         NameOfCalculator);

class CalculatorsTest : public MainWindowTest {};

TEST_F(CalculatorsTest, AreThoseOfTheMenu) {
    UiDriver ui;
    ui.OnWindowOfClass(kMainClass, [](HWND main) {
        // The last menus but that of the help.
        const int help = GetMenuItemCount(GetMenu(main)) - 1;
        for (int menu = help - 3; menu < help; ++menu) {
            for (const MenuCommand& item : OpenPopup(main, GetSubMenu(GetMenu(main), menu))) {
                const bool has_row =
                    std::any_of(std::begin(kCalculators), std::end(kCalculators),
                                [&](const Calculator& row) { return row.command == item.id; });
                EXPECT_EQ(has_row, item.enabled) << item.text;
            }
        }
    });
    RunToEnd(ui);
}

// Files whose results are not what their inputs give: of most, the result is shown as it is stored
// until it is computed, as it is when a file is dropped.
TEST_F(CalculatorsTest, ShowStoredResultsUntilTheyAreComputed) {
    const struct {
        const char* file;
        const char* title;
        int command;
        int result;
        const char* opened;
        const char* dropped;
    } rows[] = {
        {"ritoccato.lep", "Calcolo Lep,d", CMD_DAILY_EXPOSURE, IDC_DAILY_LEVEL, "84.4", "87.4"},
        {"giorni_mancanti.lew", "Calcolo Lep,w", CMD_WEEKLY_EXPOSURE, IDC_WEEKLY_LEVEL, "90.0",
         " inf"},
        {"due_campioni.leg", "Livello equivalente per gruppi di lavoratori", CMD_GROUP_STATISTICS,
         IDC_EQUIVALENT_LEVEL, "85.6", "85.6"},
        {"ripida.ilg", "Calcolo Danno Uditivo", CMD_AUDIOGRAM_DAMAGE, IDC_DAMAGE, "  12", "   1"}};
    UiDriver ui;
    for (const auto& row : rows) {
        const std::string path =
            WriteFile(row.file, ExampleBytes(std::string("../tests/golden/cases/") + row.file));
        ui.OnWindowOfClass(kMainClass).Command(row.command).OnWindow(row.title);
        ui.Command(CMD_FILE_OPEN);
        ChooseFile(ui, kOpenTitle, path);
        ui.WaitClosed(kOpenTitle).OnWindow(row.title).ExpectText(row.result, row.opened);
        ui.OnWindow(row.title, [=](HWND dialog) { tonvale::Drop(dialog, {path}); });
        ui.ExpectText(row.result, row.dropped).Command(CMD_FILE_CLOSE).WaitClosed(row.title);
    }
    // One that cannot be computed stays as it is stored.
    const std::string refused =
        WriteFile("zero.lep", ExampleBytes("../tests/golden/cases/uno_zero.lep"));
    Drop(ui, {refused});
    ui.AnswerMessage("Errore", "Errore nei valori!", IDOK).OnWindow(kDailyExposureTitle);
    ui.ExpectText(IDC_DAILY_LEVEL, "84.4");
    ExpectDailyExposure(ui, "zero.lep");
    RunToEnd(ui);
}

}  // namespace
}  // namespace tonvale
