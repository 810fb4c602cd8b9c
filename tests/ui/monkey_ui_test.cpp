// Random use of the report document and, where scripts/monkey.sh asks for it, of the whole program.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <sstream>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "tests/ui/main_window_fixture.h"
#include "tests/ui/monkey.h"
#include "tests/ui/report_fixture.h"

namespace tonvale {
namespace {

class ReportMonkeyTest : public ReportTest, public testing::WithParamInterface<unsigned> {
  protected:
    int Random(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
    template <typename List>
    auto OneOf(const List& list) {
        return list[static_cast<std::size_t>(Random(static_cast<int>(std::size(list))))];
    }

    // Does one of the things that users do, some of them more often.
    void Act() {
        const std::pair<int, std::function<void()>> habits[] = {
            {30, [this] { Send(WM_CHAR, OneOf(std::wstring_view(L"abcdè 12;\t ")), 1); }},
            {30, [this] { PressKey(); }},
            {8, [this] { Drag(); }},
            {8, [this] { RunFormatCommand(); }},
            {1, [this] { document_.Cut(); }},
            {1, [this] { document_.Copy(); }},
            {2, [this] { document_.Paste(); }},
            {2, [this] { document_.Undo(); }},
            {1, [this] { document_.Redo(); }},
            {2, [this] { FillClipboard(); }},
            {2, [this] { SelectAll(); }},
            {1,
             [this] { MoveWindow(host_.window(), 0, 0, 200 + Random(600), 150 + Random(400), 1); }},
        };
        int chosen = Random(88);  // of all the weights together
        for (const auto& [weight, act] : habits) {
            chosen -= weight;
            if (chosen < 0) return act();
        }
    }

    void FillClipboard() {
        const bool is_text = Random(2) == 0;
        PutAlone(is_text ? CF_UNICODETEXT : app_.clipboard.csv,
                 is_text ? WideBytes("incollato\r\nsu due righe\r\n") : "85.0;8.00\r\n;90.0\r\n");
    }

    // Nothing in the control is beyond its text, and all line ends are whole.
    void ExpectSound() const {
        CHARRANGE selection{};
        Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
        EXPECT_LE(selection.cpMin, selection.cpMax);
        EXPECT_LE(selection.cpMax, GetWindowTextLengthW(Editor()));
        const std::string text = Text();
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool is_whole = text[i] == '\r' ? text.substr(i + 1, 1) == "\n"
                                                  : text[i] != '\n' || text[i - 1] == '\r';
            ASSERT_TRUE(is_whole) << "line end at " << i << " of " << text;
        }
    }

  private:
    void PressKey() {
        constexpr std::array<BYTE, 14> kKeys = {VK_LEFT,   VK_LEFT, VK_RIGHT,  VK_RIGHT, VK_UP,
                                                VK_DOWN,   VK_HOME, VK_END,    VK_NEXT,  VK_PRIOR,
                                                VK_RETURN, VK_BACK, VK_DELETE, VK_RETURN};
        std::array<BYTE, 256> held{};
        held[VK_SHIFT] = Random(4) == 0 ? 0x80 : 0;
        held[VK_CONTROL] = Random(6) == 0 ? 0x80 : 0;
        SetKeyboardState(held.data());
        const BYTE key = OneOf(kKeys);
        Send(WM_KEYDOWN, key, 1);
        if (key == VK_RETURN || key == VK_BACK) Send(WM_CHAR, key, 1);
        SetKeyboardState(std::array<BYTE, 256>{}.data());
    }

    void Drag() {
        const auto place = [this] { return MAKELPARAM(Random(600), Random(350)); };
        Send(Random(5) == 0 ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, MK_LBUTTON, place());
        for (int moves = Random(3); moves > 0; --moves) Send(WM_MOUSEMOVE, MK_LBUTTON, place());
        Send(WM_LBUTTONUP, 0, place());
    }

    // Any but those that open a window.
    void RunFormatCommand() {
        const int command = CMD_BULLETS + Random(CMD_WORD_WRAP - CMD_BULLETS + 1);
        if (command != CMD_FONT && command != CMD_COLOR_MENU) Command(command);
    }

    std::mt19937 random_{GetParam()};
};

// Whatever keys, mouse, commands and clipboard do in whatever order, the control stays sound and
// what is saved is what was typed.
TEST_P(ReportMonkeyTest, StaysSoundAndIsSavedWhole) {
    FillClipboard();  // what stands there may not fit, and to paste it would ask somebody
    for (int i = 0; i < 1000 && !HasFailure(); ++i) {
        Act();
        if (i % 20 == 0) ExpectSound();
    }
    ExpectSound();
    const std::string text = Text();
    ASSERT_TRUE(document_.SaveTo(Path("scimmia.tnv")));
    ASSERT_TRUE(document_.Open(Path("scimmia.tnv")));
    EXPECT_EQ(Text(), text);
}

// Two of these find it out when new paragraphs join the lists of others.
INSTANTIATE_TEST_SUITE_P(Seeds, ReportMonkeyTest, testing::Values(12U, 16U, 24U));

// TONVALE_MONKEY is "SEED EVENTS". It may save and delete whatever files are in reach, and drops
// those in the folder "files" on the program, which starts again when it has been closed.
TEST(ProgramMonkeyTest, AlwaysFindsAWayOut) {
    const char* task = std::getenv("TONVALE_MONKEY");
    if (!task) GTEST_SKIP() << "run by scripts/monkey.sh only";
    unsigned seed = 0;
    int events = 0;
    std::istringstream(task) >> seed >> events;
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator("files")) {
        files.push_back(Narrow(std::filesystem::absolute(entry.path()).wstring()));
    }
    Monkey monkey(seed, events, files);
    std::atomic<ULONGLONG> last_tick{GetTickCount64()};
    const std::jthread watch([&last_tick](const std::stop_token& stop) {
        constexpr ULONGLONG kDeadlineMs = 60000;
        while (!stop.stop_requested()) {
            if (GetTickCount64() - last_tick > kDeadlineMs)
                TerminateProcess(GetCurrentProcess(), 1);
            Sleep(200);
        }
    });
    UiDriver ui;
    ui.WaitUntil("all events", [&] {
        last_tick = GetTickCount64();
        const int before = monkey.events_left();
        monkey.Tick();
        if (monkey.events_left() < before) ui.RestartDeadline();
        return monkey.events_left() <= 0 && !Main();
    });
    while (monkey.events_left() > 0 && !ui.failed()) RunProgram();
    ui.Run();
}

}  // namespace
}  // namespace tonvale
