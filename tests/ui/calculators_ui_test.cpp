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

#include "calc/assessment_table.h"
#include "common/print_frame.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/clipboard_win.h"
#include "tests/common/golden.h"
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

void LendPrinter(FakePrinter& printer) {
    TheProgram().context().open_printer = [&] {
        return std::make_unique<BorrowedPrinter>(printer);
    };
}

std::string PrintedTexts(const FakePrinter& printer) {
    std::string texts = printer.document + (printer.ended ? "" : " (not ended)");
    for (const auto& page : printer.pages) {
        for (const auto& drawn : page) texts += "\n" + drawn.text;
        texts += "\n(page end)";
    }
    return texts;
}

std::string CopiedCsv() {
    return Windows1252ToUtf8(ClipboardBytes(TheProgram().context().clipboard.csv).c_str());
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

    // Opens the calculator from the menu or, when `path` is not empty, by the dropped file.
    static UiDriver& Open(UiDriver& ui, const std::string& path = {}) {
        if (path.empty()) {
            ui.OnWindowOfClass(kMainClass).Command(GetParam().command);
        } else {
            Drop(ui, {path});
        }
        return ui.OnWindow(Title());
    }
    // A command of a dialog's menu, or of a wizard's button.
    static UiDriver& Run(UiDriver& ui, int command, int button = 0) {
        return IsWizard() ? ui.Click(button ? button : command) : ui.Command(command);
    }
    static UiDriver& Print(UiDriver& ui) { return Run(ui, CMD_FILE_PRINT, IDC_WIZARD_PRINT); }
    static UiDriver& Close(UiDriver& ui) {
        return ui.OnWindow(Title(), LeaveByKey).WaitClosed(Title());
    }
};

class DataFileTest : public CalculatorTest {
  protected:
    // Presses a button of the wizard's sheet until the page with this title is there; before, all
    // the buttons of each page on the way.
    static UiDriver& Lead(UiDriver& ui, ButtonWalk& walk, int button, const std::string& title) {
        return ui.WaitUntil("page \"" + title + "\"", [=, &ui, &walk] {
            if (!walk.Step(ui)) return false;
            if (WindowText(walk.dialog()) == title) return true;
            HWND control = GetDlgItem(walk.dialog(), button);
            if (IsWindowEnabled(control)) PostMessageW(control, BM_CLICK, 0, 0);
            return false;
        });
    }
};

TEST_P(DataFileTest, OpensFilesOfItsKindOnly) {
    const std::string right = Example();
    const std::string wrong_name = WriteFile("giusto.txt", Bytes());
    const std::string wrong_kind =
        WriteFile("altro" + Extension(),
                  ExampleBytes(Extension() == ".lep" ? "settimana.lew" : "giornata.lep"));
    std::string before;
    std::string shown;
    UiDriver ui;
    Open(ui).OnWindow(Title(), [&](HWND window) {
        before = Shown(window);
        for (const std::string& path : {wrong_kind, wrong_name})
            tonvale::Drop(PageOf(window), {path});
        tonvale::Drop(PageOf(window), {right, right});
    });
    Run(ui, CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, wrong_kind);
    ui.Expect(Status, kNoFile).OnWindow(Title(), [&](HWND window) {
        EXPECT_EQ(Shown(window), before);
    });
    Run(ui, CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, right);
    ui.Expect(Status, GetParam().example).OnWindow(Title(), [&](HWND window) {
        shown = Shown(window);
        EXPECT_NE(shown, before);
    });
    Close(ui.Screenshot(std::string("calculator_") + GetParam().name));
    // Dropped on the main window, and on the dialog itself.
    for (int round = 0; round < 2; ++round) {
        Open(ui, right).Expect(Status, GetParam().example).OnWindow(Title(), [&](HWND window) {
            EXPECT_EQ(Shown(window), shown);
            tonvale::Drop(PageOf(window), {right});
            EXPECT_EQ(Shown(window), shown);
        });
        Close(ui);
    }
    Close(Open(ui, wrong_kind).Expect(Status, kNoFile));
    RunToEnd(ui);
}

TEST_P(DataFileTest, SavesWhatItShows) {
    const std::string path = Example();
    const std::string fresh = Path("nuovo" + Extension());
    const std::string full = "Impossibile salvare: il disco è pieno.";
    FaultyFileSystem disk(SystemFiles());
    std::string shown;
    std::optional<HeldFile> held;
    UiDriver ui;
    Open(ui, path).OnWindow(Title(), [&](HWND window) {
        TheProgram().context().files = &disk;
        shown = Shown(window);
    });
    Run(ui, CMD_FILE_SAVE).OnWindow(Title(), [&](HWND) {
        EXPECT_EQ(ReadFile(GetParam().example), Bytes());
        disk.is_full = true;
    });
    Run(ui, CMD_FILE_SAVE).AnswerMessage(path, full, IDOK);
    Run(ui, CMD_FILE_SAVE_AS);
    SaveNewFile(ui, fresh);
    ui.AnswerMessage(fresh, full, IDOK).Expect(Status, GetParam().example).Do([&] {
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
    Close(ui.Expect(Status, "nuovo" + Extension()));
    Open(ui, fresh).OnWindow(Title(), [&](HWND window) { EXPECT_EQ(Shown(window), shown); });
    Close(ui);
    RunToEnd(ui);
}

// Of every example; a wizard of the odd files, too, on the way that each of them says.
TEST_P(DataFileTest, PrintsAndCopiesWhatTheCompanionTells) {
    ButtonWalk walk;
    for (const std::string folder : {"examples/", "tests/golden/cases/"}) {
        for (const std::string& name : FilesIn(folder)) {
            const std::string bytes = ExampleBytes(("../" + folder).append(name));
            const ProfileFile file = ProfileFile::Parse(bytes);
            const Assessment assessment = AssessedKindOf(file)->assess(file);
            if (FileExtension(name) != Extension() || !assessment.computed) continue;
            if (folder != "examples/" && !IsWizard()) continue;
            SCOPED_TRACE(name);
            FakePrinter expected;
            PrintPages(expected, assessment.printout);
            FakePrinter printer;
            std::string shown;
            UiDriver ui;
            Open(ui, WriteFile(name, bytes)).OnWindow(Title(), [&](HWND window) {
                shown = Shown(window);
                TheProgram().context().open_printer = [] { return nullptr; };
            });
            Print(ui).OnWindow(Title(), [&](HWND) { LendPrinter(printer); });
            if (IsWizard()) Lead(ui, walk, kNext, kResultsTitle).Screenshot("results_" + name);
            Print(ui);
            if (IsWizard()) {
                Lead(ui, walk, kBack, Title());
            } else {
                ui.Command(CMD_COPY).OnWindow(Title(), [&](HWND) {
                    EXPECT_EQ(CopiedCsv(), assessment.summarize(ListSeparator()));
                    const std::string wide = ClipboardBytes(CF_UNICODETEXT);
                    EXPECT_EQ(Narrow(reinterpret_cast<const wchar_t*>(wide.data())), CopiedCsv());
                });
            }
            ui.OnWindow(Title(), [&](HWND window) {
                EXPECT_EQ(PrintedTexts(printer), PrintedTexts(expected));
                EXPECT_EQ(Shown(window), shown);
            });
            if (IsWizard()) Lead(ui, walk, kNext, kResultsTitle).Click(kFinish);
            if (!IsWizard()) Close(ui);
            RunToEnd(ui);
        }
    }
}

class QuestionTest : public CalculatorTest {};

TEST_P(QuestionTest, ShowsCopiesAndPrintsItsAnswer) {
    FakePrinter printer;
    UiDriver ui;
    Open(ui).Press({VK_RETURN}).WaitClosed(Title()).OnWindowOfClass(kMainClass, [&](HWND) {
        EXPECT_FALSE(TheProgram().views().ShowsDocument());
        EXPECT_EQ(TheProgram().results().kind(), ViewKind::kTable);
        LendPrinter(printer);
    });
    for (int view : {CMD_VIEW_CHART, CMD_VIEW_AUDIOGRAM, CMD_VIEW_TABLE}) {
        ui.Command(view).Screenshot(GetParam().name + std::to_string(view));
    }
    ui.Command(CMD_COPY).Command(CMD_PRINT).OnWindow(kNotesTitle).Click(IDOK);
    ui.WaitClosed(kNotesTitle).OnWindowOfClass(kMainClass, [&](HWND) {
        EXPECT_EQ(CopiedCsv(), TheProgram().results().result()->table_text(ListSeparator()));
        EXPECT_TRUE(printer.ended);
    });
    RunToEnd(ui);
}

TEST_P(CalculatorTest, HelpsAndIsUsedByKeys) {
    RecordingHelp help;
    const std::string path = Example();
    HWND first = nullptr;
    UiDriver ui;
    Open(ui, path).OnWindow(Title(), [&](HWND) { TheProgram().context().help = &help; });
    ui.Press({VK_F1}).WaitUntil("help", [&] { return help.topics.size() == 1; });
    Run(ui, CMD_DIALOG_HELP, IDHELP).OnWindow(Title(), [&](HWND) {
        EXPECT_EQ(help.topics.back(), GetParam().help);
        first = GetFocus();
    });
    ui.Press({VK_TAB}).OnWindow(Title(), [&](HWND window) {
        EXPECT_NE(GetFocus(), first);
        EXPECT_TRUE(IsChild(window, GetFocus()));
    });
    ui.Press({VK_ESCAPE}).WaitClosed(Title());
    RunToEnd(ui);
}

TEST_P(CalculatorTest, LeavesNothingBehind) {
    constexpr int kWarmUp = 2;
    constexpr int kTimes = 4;
    const std::string path = Example();
    std::map<std::string, int> before;
    UiDriver ui;
    // It would go while objects are counted.
    ui.OnWindowOfClass("Tonvale_Splash",
                       [](HWND splash) { PostMessageW(splash, WM_LBUTTONDOWN, 0, 0); });
    for (int i = 0; i < kWarmUp + kTimes; ++i) {
        if (i == kWarmUp) ui.OnWindowOfClass(kMainClass).Do([&] { before = CountHeldObjects(); });
        const auto walk = std::make_shared<ButtonWalk>();
        Open(ui, path).WaitUntil("all buttons pressed", [=, &ui] { return walk->Step(ui); });
        Close(ui);
    }
    ui.OnWindowOfClass(kMainClass).Do([&] { EXPECT_EQ(CountHeldObjects(), before); });
    RunToEnd(ui);
}

std::string NameOfCalculator(const testing::TestParamInfo<Calculator>& info) {
    return info.param.name;
}

constexpr const Calculator* kFirstQuestion = kCalculators + kDataFileCalculators;
INSTANTIATE_TEST_SUITE_P(All, CalculatorTest, testing::ValuesIn(kCalculators), NameOfCalculator);
INSTANTIATE_TEST_SUITE_P(All, DataFileTest, testing::ValuesIn(kCalculators, kFirstQuestion),
                         NameOfCalculator);
INSTANTIATE_TEST_SUITE_P(All, QuestionTest,
                         testing::ValuesIn(kFirstQuestion, std::end(kCalculators)),
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
        int result;
        const char* opened;
        const char* dropped;
    } rows[] = {{"ritoccato.lep", IDC_DAILY_LEVEL, "84.4", "87.4"},
                {"giorni_mancanti.lew", IDC_WEEKLY_LEVEL, "90.0", " inf"},
                {"due_campioni.leg", IDC_EQUIVALENT_LEVEL, "85.6", "85.6"},
                {"ripida.ilg", IDC_DAMAGE, "  12", "   1"}};
    UiDriver ui;
    for (const auto& [file, result, opened, dropped] : rows) {
        const std::string path =
            WriteFile(file, ExampleBytes(std::string("../tests/golden/cases/") + file));
        const Calculator* row =
            std::find_if(kCalculators, kFirstQuestion, [&](const Calculator& candidate) {
                return FileExtension(candidate.example) == FileExtension(path);
            });
        ui.OnWindowOfClass(kMainClass).Command(row->command).OnWindow(row->title);
        ui.Command(CMD_FILE_OPEN);
        ChooseFile(ui, kOpenTitle, path);
        ui.ExpectText(result, opened).OnWindow(row->title, [=](HWND dialog) {
            tonvale::Drop(dialog, {path});
        });
        ui.ExpectText(result, dropped).Command(CMD_FILE_CLOSE).WaitClosed(row->title);
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
