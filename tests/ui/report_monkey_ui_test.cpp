// Random use of the report document: whatever keys, mouse, commands and clipboard do in whatever
// order, the control stays sound and what is saved is what was typed.
#include <windows.h>

#include <gtest/gtest.h>
#include <richedit.h>

#include <array>
#include <random>
#include <string>

#include "resources/resource.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

class ReportMonkeyTest : public ReportTest, public testing::WithParamInterface<unsigned> {
  protected:
    static constexpr int kEvents = 1000;
    static constexpr int kCheckEvery = 20;

    struct Habit {
        int weight;
        void (ReportMonkeyTest::*act)();
    };

    void Act() {
        static constexpr std::array<Habit, 9> kHabits = {{
            {30, &ReportMonkeyTest::TypeCharacter},
            {30, &ReportMonkeyTest::PressKey},
            {8, &ReportMonkeyTest::Drag},
            {8, &ReportMonkeyTest::RunFormatCommand},
            {4, &ReportMonkeyTest::UseClipboard},
            {3, &ReportMonkeyTest::UndoOrRedo},
            {2, &ReportMonkeyTest::FillClipboard},
            {2, &ReportMonkeyTest::SelectEverything},
            {1, &ReportMonkeyTest::Resize},
        }};
        int total = 0;
        for (const Habit& habit : kHabits) total += habit.weight;
        int chosen = Random(total);
        for (const Habit& habit : kHabits) {
            if (chosen < habit.weight) return (this->*habit.act)();
            chosen -= habit.weight;
        }
    }

    void FillClipboard() {
        if (Random(2) == 0) {
            PutAlone(CF_UNICODETEXT, WideBytes("incollato\r\nsu due righe\r\n"));
        } else {
            PutAlone(app_.clipboard.csv, "85.0;8.00\r\n;90.0\r\n");
        }
    }

    // Nothing in the control is beyond its text, and all line ends are whole.
    void ExpectSound() {
        CHARRANGE selection{};
        Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
        const std::wstring text = RawText();
        EXPECT_LE(selection.cpMin, selection.cpMax);
        EXPECT_LE(static_cast<std::size_t>(selection.cpMax), text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool is_whole = text[i] == L'\r' ? text.substr(i + 1, 1) == L"\n"
                                                   : text[i] != L'\n' || text[i - 1] == L'\r';
            ASSERT_TRUE(is_whole) << "line end at " << i << " of " << Narrow(text);
        }
    }

    void ExpectSavedWhole() {
        const std::string text = Text();
        ASSERT_TRUE(host_->document.SaveTo(Path("scimmia.tnv")));
        ASSERT_TRUE(host_->document.Open(Path("scimmia.tnv")));
        EXPECT_EQ(Text(), text);
    }

  private:
    int Random(int count) {
        return static_cast<int>(random_() % static_cast<std::mt19937::result_type>(count));
    }

    std::wstring RawText() const {
        std::wstring text(static_cast<std::size_t>(Send(WM_GETTEXTLENGTH)) + 1, L'\0');
        const LRESULT count = Send(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<std::size_t>(count));
        return text;
    }

    static void Hold(bool shift, bool control) {
        std::array<BYTE, 256> keys{};
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        keys[VK_CONTROL] = control ? 0x80 : 0;
        SetKeyboardState(keys.data());
    }

    void TypeCharacter() {
        constexpr std::wstring_view kCharacters = L"abcdè 12;\t ";
        Send(WM_CHAR, kCharacters[static_cast<std::size_t>(Random(kCharacters.size()))], 1);
    }

    void PressKey() {
        constexpr std::array<WPARAM, 14> kKeys = {VK_LEFT,   VK_LEFT, VK_RIGHT,  VK_RIGHT, VK_UP,
                                                  VK_DOWN,   VK_HOME, VK_END,    VK_NEXT,  VK_PRIOR,
                                                  VK_RETURN, VK_BACK, VK_DELETE, VK_RETURN};
        const WPARAM key = kKeys.at(static_cast<std::size_t>(Random(kKeys.size())));
        Hold(Random(4) == 0, Random(6) == 0);
        Send(WM_KEYDOWN, key, 1);
        if (key == VK_RETURN || key == VK_BACK) Send(WM_CHAR, key == VK_RETURN ? '\r' : '\b', 1);
        Send(WM_KEYUP, key, 1);
        Hold(false, false);
    }

    LPARAM RandomPoint() {
        RECT area{};
        GetClientRect(host_->editor(), &area);
        return MAKELPARAM(Random(area.right), Random(area.bottom));
    }

    void Drag() {
        Send(Random(5) == 0 ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, MK_LBUTTON, RandomPoint());
        for (int moves = Random(3); moves > 0; --moves) {
            Send(WM_MOUSEMOVE, MK_LBUTTON, RandomPoint());
        }
        Send(WM_LBUTTONUP, 0, RandomPoint());
    }

    // Any but those that open a window.
    void RunFormatCommand() {
        const int command = CMD_BULLETS + Random(CMD_WORD_WRAP - CMD_BULLETS + 1);
        if (command != CMD_FONT && command != CMD_COLOR_MENU) Command(command);
    }

    void UseClipboard() {
        switch (Random(4)) {
            case 0:
                return host_->document.Cut();
            case 1:
                host_->document.Copy();
                return;
            default:
                if (host_->document.CanPaste()) host_->document.Paste();
        }
    }

    void UndoOrRedo() {
        if (Random(3) == 0) {
            host_->document.Redo();
        } else {
            host_->document.Undo();
        }
    }

    void SelectEverything() { SelectAll(); }

    void Resize() {
        SetWindowPos(host_->window, nullptr, 0, 0, 200 + Random(600), 150 + Random(400),
                     SWP_NOMOVE | SWP_NOZORDER);
        RECT area{};
        GetClientRect(host_->window, &area);
        host_->document.Layout(area);
    }

    std::mt19937 random_{GetParam()};
};

TEST_P(ReportMonkeyTest, StaysSoundAndIsSavedWhole) {
    FillClipboard();  // what stands there may not fit, and to paste it would ask somebody
    for (int i = 0; i < kEvents && !HasFatalFailure(); ++i) {
        Act();
        if (i % kCheckEvery == 0) ExpectSound();
    }
    ExpectSound();
    ExpectSavedWhole();
}

INSTANTIATE_TEST_SUITE_P(Seeds, ReportMonkeyTest, testing::Values(3U, 4U, 5U));

}  // namespace
}  // namespace tonvale
