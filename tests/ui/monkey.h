// Uses the program at random, from within: keys, mouse, menu commands, buttons, dropped files,
// whatever the clipboard holds. It knows nothing of the calculators: commands come from the menu of
// the main window, controls from the windows that are open.
#pragma once

#include <windows.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace tonvale {

class Monkey {
  public:
    // `files` are paths of files to drop. The same seed gives the same choices.
    Monkey(unsigned seed, int events, std::vector<std::string> files);

    // Does the next few things and prints them, or looks for the way out when a window has been
    // open for long or all events are done. To be called whenever the program has nothing to do;
    // when there are as many events left for long, a window does not close or there is none to use.
    void Tick();
    int events_left() const { return events_left_; }

  private:
    struct Visit {
        int ticks = 0;  // in front
        int exits = 0;  // that were tried
    };

    int Random(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
    bool OneIn(int count) { return Random(count) == 0; }
    template <typename List>
    const auto& OneOf(const List& list) {
        return list[static_cast<std::size_t>(Random(static_cast<int>(std::size(list))))];
    }

    void Note(const std::string& deed);
    void Play(HWND window);
    void Leave(HWND window, Visit& visit);

    void PressKeys(HWND window);
    void UseMouse(HWND window);
    void RunMenuCommand(HWND window);
    void ClickButton(HWND window);
    void DropFile(HWND window);
    void FillClipboard(HWND window);
    void ResizeWindow(HWND window);
    POINT RandomPlace(HWND window);

    std::mt19937 random_;
    int events_left_;
    std::vector<std::string> files_;
    std::map<HWND, Visit> visits_;
};

}  // namespace tonvale
