#include "dialogs/wizard_win.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "resources/resource.h"
#include "tests/ui/calculator_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {
namespace {

constexpr int kBack = 0x3023;
constexpr int kNext = 0x3024;
constexpr int kFinish = 0x3025;
constexpr int kHelpButton = IDHELP;
constexpr int kSkip = 2999;
constexpr char kFirst[] = "Prima pagina";
constexpr char kSecond[] = "Seconda pagina";
constexpr char kResults[] = "Risultati del calcolo";

// What the small wizard keeps: two inputs and the notes.
struct SmallState {
    std::string level = "80";
    bool skips = false;
    std::string notes;
};

constexpr ControlTip kTips[] = {{IDC_NOISE_A_LEVEL, L"Livello"}};
constexpr ControlTextLimit kLimits[] = {{IDC_NOISE_A_LEVEL, 8}, {IDC_NOTES_EDIT, 512}};
constexpr DialogDescription Described(unsigned long topic) {
    return {.template_name = L"",
            .tips = kTips,
            .text_limits = kLimits,
            .help = {},
            .main_help_context = topic,
            .accepts_files = true};
}
constexpr DialogDescription kFirstDescription = Described(1);
constexpr DialogDescription kSecondDescription = Described(2);
constexpr DialogDescription kResultsDescription = Described(3);

class FirstPage : public WizardPage {
  public:
    FirstPage(Wizard& wizard, AppContext& app, SmallState& state, int& edits)
        : WizardPage(wizard, app, {901, L"Prima pagina"}, kFirstDescription),
          state_(state),
          edits_(edits) {}
    void ShowState() override { SetControlText(IDC_NOISE_A_LEVEL, state_.level); }
    void StoreState() override { state_.level = FieldText(IDC_NOISE_A_LEVEL); }

  protected:
    // Empty: it stays; "90" skips the second page; "9" fails.
    int NextPage() override {
        if (state_.level == "9") throw std::bad_alloc();
        if (state_.level.empty()) return kStay;
        return state_.level == "90" ? IDD_RESULTS_PAGE : kNextInOrder;
    }
    DWORD Buttons() const override { return PSWIZB_NEXT; }
    void OnEdited(int) override { ++edits_; }

  private:
    SmallState& state_;
    int& edits_;
};

class SecondPage : public WizardPage {
  public:
    SecondPage(Wizard& wizard, AppContext& app, SmallState& state)
        : WizardPage(wizard, app, {902, L"Seconda pagina"}, kSecondDescription), state_(state) {}
    void ShowState() override { Check(kSkip, state_.skips); }
    void StoreState() override { state_.skips = IsChecked(kSkip); }

  protected:
    DWORD Buttons() const override { return PSWIZB_BACK | PSWIZB_NEXT; }

  private:
    SmallState& state_;
};

class SmallWizard : public Wizard {
  public:
    SmallWizard(AppContext& app, SmallState& state, int& edits, std::string path)
        : Wizard(app, FileKind::kErr, std::move(path)), state_(state) {
        AddPage<FirstPage>(*this, app, state, edits);
        AddPage<SecondPage>(*this, app, state);
        AddPage<ResultsPage>(
            *this, app, kResultsDescription,
            ResultsPage::Content{[&state] { return "Livello " + state.level; }, state.notes,
                                 [&state] { return state.skips ? 902 : 901; }});
    }

  protected:
    bool LoadFrom(const ProfileFile& file) override {
        TakeHeaderText(file, "LIVELLO", state_.level);
        state_.notes = ReadNotes(file);
        if (page_in_front()) GoTo(901);
        return true;
    }
    void StoreTo(ProfileFile& file) override {
        file.Set(kHeaderSection, kKindKey, "ERR");
        file.Set(kHeaderSection, "LIVELLO", state_.level);
        WriteNotes(file, state_.notes);
    }
    Printout CurrentPrintout() override {
        return {.document_name = "Prova", .lines = {{state_.level}}, .notes = state_.notes};
    }

  private:
    SmallState& state_;
};

class WizardUiTest : public DialogTest {
  protected:
    void Run(const std::string& path = {}) { SmallWizard(app_, state_, edits_, path).Run(owner_); }
    SmallState state_;
    int edits_ = 0;
};

TEST_F(WizardUiTest, LeadsFromPageToPageAndBack) {
    UiDriver ui;
    ui.OnWindow(kFirst, [this](HWND sheet) {
        EXPECT_EQ(TextOf(sheet, IDC_WIZARD_FILE), kNoFile);
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(sheet, kBack)));
        EXPECT_EQ(edits_, 0);  // what the program fills in is no edit
        EXPECT_EQ(tips_->served(), GetParent(ControlOf(sheet, IDC_NOISE_A_LEVEL)));
        EXPECT_EQ(TipOf(GetParent(ControlOf(sheet, IDC_NOISE_A_LEVEL)), IDC_NOISE_A_LEVEL),
                  "Livello");
    });
    ui.Screenshot("wizard_first").SetText(IDC_NOISE_A_LEVEL, "").Click(kNext);
    // The keystroke filter works within a sheet, and the filter's loop edits.
    ui.OnWindow(kFirst).Type(IDC_NOISE_A_LEVEL, "8a5.-2.1").ExpectText(IDC_NOISE_A_LEVEL, "85.21");
    ui.Do([this] { EXPECT_GE(edits_, 5); }).Click(kHelpButton).Click(kNext);
    ui.OnWindow(kSecond).Click(kSkip).Click(kNext).OnWindow(kResults);
    ui.ExpectText(IDC_RESULT_TEXT, "Livello 85.21").SetText(IDC_NOTES_EDIT, "una").Click(kBack);
    ui.OnWindow(kSecond).Click(kSkip).Click(kBack);
    ui.OnWindow(kFirst).SetText(IDC_NOISE_A_LEVEL, "90").Click(kNext).OnWindow(kResults);
    ui.ExpectText(IDC_NOTES_EDIT, "una").Screenshot("wizard_results").Click(kBack);
    ui.OnWindow(kFirst).Click(kNext).OnWindow(kResults).Click(kFinish);
    Run();
    ui.Finish();
    EXPECT_EQ(help_.topics, std::vector<unsigned long>{1});
    EXPECT_EQ(state_.notes, "una");
}

TEST_F(WizardUiTest, WorksOnItsDataFileFromEveryPage) {
    const std::string stored = WriteFile("misura.err",
                                         "[TONVALE]\r\nTipo=ERR\r\nLIVELLO=70\r\n"
                                         "[NOTE]\r\n1=vecchia\r\nNum=1\r\n");
    const std::string other = WriteFile("altro.err", "[TONVALE]\r\nTipo=LEPD\r\n");
    FakePrinter printer;
    app_.open_printer = [&] { return std::make_unique<BorrowedPrinter>(printer); };
    UiDriver ui;
    ui.OnWindow(kFirst).ExpectText(IDC_NOISE_A_LEVEL, "70").ExpectText(IDC_WIZARD_FILE, stored);
    ui.SetText(IDC_NOISE_A_LEVEL, "71").Click(IDC_WIZARD_PRINT).Click(CMD_FILE_SAVE).Click(kNext);
    ui.OnWindow(kSecond, [=, this](HWND sheet) {
        HWND page = GetParent(ControlOf(sheet, kSkip));
        Drop(page, {other});  // of another kind
        EXPECT_TRUE(ReadFile("misura.err").find("LIVELLO=71\r\n") != std::string::npos);
    });
    ui.Do([&] { WriteFile("misura.err", "[TONVALE]\r\nTipo=err\r\nLIVELLO=60\r\n"); });
    ui.Click(CMD_FILE_OPEN);
    ChooseFile(ui, kOpenTitle, stored);
    ui.WaitClosed(kOpenTitle).OnWindow(kFirst).ExpectText(IDC_NOISE_A_LEVEL, "60").Click(kNext);
    ui.OnWindow(kSecond).Click(kBack).OnWindow(kFirst).ExpectText(IDC_NOISE_A_LEVEL, "60");
    // A failure inside a page leaves it in front.
    ui.SetText(IDC_NOISE_A_LEVEL, "9").Click(kNext);
    ui.AnswerMessage("Errore", "Memoria insufficiente.", IDOK).OnWindow(kFirst);
    ui.Press({VK_ESCAPE});
    Run(stored);
    ui.Finish();
    ASSERT_EQ(printer.pages.size(), 1u);
    EXPECT_EQ(printer.pages[0].back().text, "vecchia");
}

}  // namespace
}  // namespace tonvale
