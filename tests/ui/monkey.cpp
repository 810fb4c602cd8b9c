#include "tests/ui/monkey.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

#include "app/main_window.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/clipboard_win.h"
#include "tests/ui/ui_driver.h"
#include "wine/window_picture.h"

namespace tonvale {

namespace {

// How long one window stays in front before it is left.
constexpr int kMainTicks = 400;
constexpr int kOtherTicks = 40;
constexpr int kMenuTicks = 6;

constexpr std::array<WORD, 18> kPlainKeys = {
    VK_LEFT, VK_RIGHT, VK_UP,  VK_DOWN,   VK_HOME,   VK_END,    VK_PRIOR, VK_NEXT, VK_RETURN,
    VK_BACK, VK_TAB,   VK_TAB, VK_DELETE, VK_INSERT, VK_ESCAPE, VK_SPACE, VK_F1,   VK_F10};
constexpr std::array<WORD, 5> kHeldKeys = {VK_SHIFT, VK_SHIFT, VK_CONTROL, VK_CONTROL, VK_MENU};
constexpr std::wstring_view kCharacters = L"abcdeè019.,;- ";
// Those of the clipboard, of undo and redo more often.
constexpr std::wstring_view kLetters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZCVVXYZZCVVXYZZ";

void SendKey(WORD key, wchar_t character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

void PressKey(WORD key, wchar_t character, DWORD flags) {
    SendKey(key, character, flags);
    SendKey(key, character, flags | KEYEVENTF_KEYUP);
}

void SendMouse(DWORD flags, int turn = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = static_cast<DWORD>(turn);
    SendInput(1, &input, sizeof input);
}

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

std::string Describe(HWND window) {
    return Narrow(ClassOf(window)) + " \"" + WindowText(window) + "\" " +
           std::to_string(GetDlgCtrlID(window));
}

bool HasMenuOpen() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    return (info.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) != 0;
}

// The window that a user could use now.
HWND FrontWindow() {
    HWND active = GetActiveWindow();
    if (active && IsWindowVisible(active) && IsWindowEnabled(active)) return active;
    for (HWND window : VisibleWindows()) {
        const bool has_caption = (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
        if (has_caption && IsWindowEnabled(window)) return window;
    }
    return nullptr;
}

std::vector<HWND> VisibleChildren(HWND window) {
    std::vector<HWND> children;
    const auto add = [](HWND child, LPARAM list) -> BOOL {
        if (IsWindowVisible(child)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
        return TRUE;
    };
    EnumChildWindows(window, add, reinterpret_cast<LPARAM>(&children));
    return children;
}

// The commands of a menu that are not greyed when it opens.
void CollectCommands(HWND window, HMENU menu, std::vector<UINT>& commands) {
    SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        if (HMENU popup = GetSubMenu(menu, position)) {
            CollectCommands(window, popup, commands);
            continue;
        }
        const UINT id = GetMenuItemID(menu, position);
        const UINT state = GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION);
        if (id != 0 && (state & (MF_GRAYED | MF_DISABLED)) == 0) commands.push_back(id);
    }
}

bool ClickDialogButton(HWND window, int id) {
    HWND button = GetDlgItem(window, id);
    if (!button || !IsWindowEnabled(button)) return false;
    PostMessageW(button, BM_CLICK, 0, 0);
    return true;
}

}  // namespace

Monkey::Monkey(unsigned seed, int events, std::vector<std::string> files)
    : random_(seed), events_left_(events), files_(std::move(files)) {}

void Monkey::Note(const std::string& deed) {
    std::printf("%d: %s\n", events_left_, deed.c_str());
    std::fflush(stdout);
    --events_left_;
}

void Monkey::Tick() {
    HWND window = FrontWindow();
    if (!window) {
        // The splash window, for one, stands alone for a while. Keys may open the menu of a dialog
        // that has not been shown yet: it waits for the menu.
        if (HasMenuOpen()) EndMenu();
        return;
    }
    if (GetForegroundWindow() != window) SetForegroundWindow(window);
    if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
    Visit& visit = visits_[window];
    ++visit.ticks;
    if (HasMenuOpen()) {
        if (visit.ticks % kMenuTicks == 0 || events_left_ <= 0) {
            EndMenu();
        } else {
            PressKeys(window);
        }
    } else if (events_left_ <= 0 ||
               visit.ticks > (ClassOf(window) == kMainWindowClass ? kMainTicks : kOtherTicks)) {
        Leave(window, visit);
    } else {
        Play(window);
    }
}

void Monkey::Play(HWND window) {
    static constexpr std::array kHabits = {
        &Monkey::PressKeys,     &Monkey::UseMouse, &Monkey::ClickButton, &Monkey::RunMenuCommand,
        &Monkey::FillClipboard, &Monkey::DropFile, &Monkey::ResizeWindow};
    std::discrete_distribution<std::size_t> choose({30, 30, 12, 10, 2, 1, 1});
    (this->*kHabits.at(choose(random_)))(window);
}

// Nothing is kept and nothing confirmed where there is a choice.
void Monkey::Leave(HWND window, Visit& visit) {
    ++visit.exits;
    SendMouse(MOUSEEVENTF_LEFTUP);  // a button may still be held
    if (ClassOf(window) == kMainWindowClass && events_left_ > 0) {
        visit = {};
        return;
    }
    switch (visit.exits % 4) {
        case 1:
            if (!ClickDialogButton(window, IDNO)) PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
            break;
        case 2:
            PostMessageW(window, WM_CLOSE, 0, 0);
            break;
        case 3:
            ClickDialogButton(window, IDOK);
            break;
        default:
            ClickButton(window);
    }
}

void Monkey::PressKeys(HWND window) {
    std::string keys;
    for (int left = 1 + Random(8); left > 0; --left) {
        if (OneIn(2)) {
            const wchar_t character = OneOf(kCharacters);
            PressKey(0, character, KEYEVENTF_UNICODE);
            keys += ' ' + Narrow(std::wstring(1, character));
        } else {
            const WORD held = OneIn(3) ? OneOf(kHeldKeys) : WORD{0};
            const bool is_letter = held > VK_SHIFT && OneIn(2);
            const WORD key = is_letter ? static_cast<WORD>(OneOf(kLetters)) : OneOf(kPlainKeys);
            if (held) SendKey(held, 0, 0);
            PressKey(key, 0, 0);
            if (held) SendKey(held, 0, KEYEVENTF_KEYUP);
            keys += " VK" + std::to_string(held) + "+" + std::to_string(key);
        }
        if (left > 1) --events_left_;
    }
    Note("keys in " + Describe(window) + ":" + keys);
}

POINT Monkey::RandomPlace(HWND window) {
    std::vector<HWND> targets = VisibleChildren(window);
    targets.push_back(window);
    RECT area{};
    GetWindowRect(OneOf(targets), &area);
    const int width = std::max<int>(area.right - area.left, 1);
    const int height = std::max<int>(area.bottom - area.top, 1);
    return {area.left + Random(width), area.top + Random(height)};
}

void Monkey::UseMouse(HWND window) {
    const POINT place = RandomPlace(window);
    const bool is_right = OneIn(8);
    const DWORD down = is_right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN;
    const DWORD up = is_right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP;
    std::string what = is_right ? "right click" : "click";
    SetCursorPos(place.x, place.y);
    if (OneIn(10)) {
        what = "wheel";
        SendMouse(MOUSEEVENTF_WHEEL, OneIn(2) ? -WHEEL_DELTA : WHEEL_DELTA);
    } else if (OneIn(4)) {
        what = "drag";
        SendMouse(down);
        for (int moves = Random(3) + 1; moves > 0; --moves) {
            const POINT next = RandomPlace(window);
            SetCursorPos(next.x, next.y);
        }
        SendMouse(up);
    } else {
        for (int clicks = OneIn(5) ? 2 : 1; clicks > 0; --clicks) {
            SendMouse(down);
            SendMouse(up);
        }
    }
    Note(what + " at " + std::to_string(place.x) + "," + std::to_string(place.y) + " in " +
         Describe(window) + ", over " + Describe(WindowFromPoint(place)));
}

void Monkey::RunMenuCommand(HWND window) {
    std::vector<UINT> commands;
    if (HMENU menu = GetMenu(window)) CollectCommands(window, menu, commands);
    if (commands.empty()) return ClickButton(window);
    const UINT command = OneOf(commands);
    Note("command " + std::to_string(command));
    PostMessageW(window, WM_COMMAND, command, 0);
}

void Monkey::ClickButton(HWND window) {
    std::vector<HWND> buttons = VisibleChildren(window);
    std::erase_if(
        buttons, [](HWND child) { return !IsWindowEnabled(child) || ClassOf(child) != L"Button"; });
    if (buttons.empty()) return;
    HWND button = OneOf(buttons);
    Note("button " + Describe(button) + " of " + Describe(window));
    PostMessageW(button, BM_CLICK, 0, 0);
}

void Monkey::DropFile(HWND window) {
    if (files_.empty()) return;
    const std::string& file = OneOf(files_);
    Note("drop " + file + " on " + Describe(window));
    if ((GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) == 0) return;
    PostMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(MakeDrop({file})), 0);
}

void Monkey::FillClipboard(HWND /*window*/) {
    const std::pair<UINT, std::string> contents[] = {
        {CF_UNICODETEXT, Utf8ToUtf16Le("una riga\r\n85.0\t8.00\r\nl'ultima") + std::string(2, 0)},
        {RegisterClipboardFormatW(L"Csv"), "85.0;8.00\r\n90.0;;x\r\n"},
        {RegisterClipboardFormatW(L"Rich Text Format"),
         "{\\rtf1 uno {\\b due\\par} {\\up6 tre}\\par\\bullet}"}};
    const auto& [format, bytes] = OneOf(contents);
    Note("clipboard in format " + std::to_string(format));
    OpenedClipboard(nullptr).Put(format, bytes);
}

void Monkey::ResizeWindow(HWND window) {
    if ((GetWindowLongW(window, GWL_STYLE) & WS_THICKFRAME) == 0 || IsZoomed(window)) return;
    const int width = 150 + Random(900);
    const int height = 100 + Random(700);
    Note("size " + std::to_string(width) + " x " + std::to_string(height) + " of " +
         Describe(window));
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOMOVE);
}

}  // namespace tonvale
