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
    Monkey(unsigned seed, int events, std::vector<std::wstring> files);

    // Does the next few things and prints them, or finds the way out when a window has been open
    // for long or all events are done. To be called whenever the program has nothing to do.
    void Tick();
    int events_left() const { return events_left_; }
    // A window that would not close, or none at all to use.
    bool is_trapped() const { return is_trapped_; }

  private:
    struct Habit;
    struct Visit {
        int ticks = 0;  // in front
        int exits = 0;  // that were tried
    };

    std::size_t Random(std::size_t count) { return random_() % count; }
    bool OneIn(std::size_t count) { return Random(count) == 0; }
    template <typename List>
    const auto& OneOf(const List& list) {
        return list[Random(std::size(list))];
    }

    void Note(const std::string& deed);
    void WaitForWindow();
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
    std::vector<std::wstring> files_;
    std::map<HWND, Visit> visits_;
    int idle_ticks_ = 0;  // without a window to use
    bool is_trapped_ = false;
};

}  // namespace tonvale
