#include "tests/monkey/monkey_win.h"

#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string_view>
#include <utility>

#include "app/main_window.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/clipboard_win.h"
#include "dialogs/handles_win.h"
#include "wine/window_picture.h"

namespace tonvale {

namespace {

// How long one window stays in front before it is left.
constexpr int kMainTicks = 400;
constexpr int kOtherTicks = 40;
constexpr int kMenuTicks = 6;
constexpr int kMostExits = 300;
constexpr int kMostIdleTicks = 3000;

constexpr std::array<WORD, 18> kPlainKeys = {
    VK_LEFT, VK_RIGHT, VK_UP,  VK_DOWN,   VK_HOME,   VK_END,    VK_PRIOR, VK_NEXT, VK_RETURN,
    VK_BACK, VK_TAB,   VK_TAB, VK_DELETE, VK_INSERT, VK_ESCAPE, VK_SPACE, VK_F1,   VK_F10};
constexpr std::array<WORD, 5> kHeldKeys = {VK_SHIFT, VK_SHIFT, VK_CONTROL, VK_CONTROL, VK_MENU};
constexpr std::wstring_view kCharacters = L"abcdeè019.,;- ";
constexpr std::wstring_view kLetters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZ";

INPUT KeyInput(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    return input;
}

INPUT CharacterInput(wchar_t character, DWORD flags) {
    INPUT input = KeyInput(0, KEYEVENTF_UNICODE | flags);
    input.ki.wScan = character;
    return input;
}

INPUT MouseInput(DWORD flags, DWORD data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    return input;
}

INPUT MoveInput(POINT place) {
    constexpr int kWhole = 65536;
    INPUT input = MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    input.mi.dx = MulDiv(static_cast<int>(place.x), kWhole, width) + 1;
    input.mi.dy = MulDiv(static_cast<int>(place.y), kWhole, height) + 1;
    return input;
}

void SendInputs(std::vector<INPUT>& inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool IsMain(HWND window) {
    return ClassOf(window) == kMainWindowClass;
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
    EnumChildWindows(
        window,
        [](HWND child, LPARAM list) -> BOOL {
            if (IsWindowVisible(child))
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&children));
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

HDROP MakeDrop(const std::wstring& path) {
    const std::wstring names = path + std::wstring(2, L'\0');
    const SIZE_T bytes = names.size() * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + bytes);
    auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    std::memcpy(drop + 1, names.data(), bytes);
    GlobalUnlock(memory);
    return static_cast<HDROP>(memory);
}

bool ClickDialogButton(HWND window, int id) {
    HWND button = GetDlgItem(window, id);
    if (!button || !IsWindowEnabled(button)) return false;
    PostMessageW(button, BM_CLICK, 0, 0);
    return true;
}

}  // namespace

struct Monkey::Habit {
    std::size_t weight;
    void (Monkey::*act)(HWND window);
};

Monkey::Monkey(unsigned seed, int events, std::vector<std::wstring> files)
    : random_(seed), events_left_(events), files_(std::move(files)) {}

void Monkey::Note(const std::string& deed) {
    std::printf("%d: %s\n", events_left_, deed.c_str());
    std::fflush(stdout);
    --events_left_;
}

void Monkey::Tick() {
    HWND window = FrontWindow();
    if (!window) return WaitForWindow();
    idle_ticks_ = 0;
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
        return;
    }
    const bool is_over =
        events_left_ <= 0 || visit.ticks > (IsMain(window) ? kMainTicks : kOtherTicks);
    if (is_over) {
        Leave(window, visit);
    } else {
        Play(window);
    }
}

// The splash window, for one, stands alone for a while. Keys may open the menu of a dialog that has
// not been shown yet: it waits for the menu.
void Monkey::WaitForWindow() {
    if (HasMenuOpen()) EndMenu();
    if (++idle_ticks_ < kMostIdleTicks) return;
    is_trapped_ = true;
    for (HWND window : VisibleWindows()) {
        std::printf("open: %s%s\n", Describe(window).c_str(),
                    IsWindowEnabled(window) ? "" : " (disabled)");
    }
}

void Monkey::Play(HWND window) {
    static constexpr std::array<Habit, 7> kHabits = {{{30, &Monkey::PressKeys},
                                                      {30, &Monkey::UseMouse},
                                                      {12, &Monkey::ClickButton},
                                                      {10, &Monkey::RunMenuCommand},
                                                      {2, &Monkey::FillClipboard},
                                                      {1, &Monkey::DropFile},
                                                      {1, &Monkey::ResizeWindow}}};
    std::size_t total = 0;
    for (const Habit& habit : kHabits) total += habit.weight;
    std::size_t chosen = Random(total);
    for (const Habit& habit : kHabits) {
        if (chosen < habit.weight) return (this->*habit.act)(window);
        chosen -= habit.weight;
    }
}

// Nothing is kept and nothing confirmed where there is a choice.
void Monkey::Leave(HWND window, Visit& visit) {
    if (++visit.exits > kMostExits) is_trapped_ = true;
    // Buttons that a mouse may still hold.
    std::vector<INPUT> release = {MouseInput(MOUSEEVENTF_LEFTUP)};
    SendInputs(release);
    if (IsMain(window) && events_left_ > 0) {
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
    std::vector<INPUT> inputs;
    const std::size_t count = 1 + Random(8);
    std::string keys;
    for (std::size_t i = 0; i < count; ++i) {
        if (OneIn(2)) {
            const wchar_t character = OneOf(kCharacters);
            inputs.push_back(CharacterInput(character, 0));
            inputs.push_back(CharacterInput(character, KEYEVENTF_KEYUP));
            keys += ' ' + Narrow(std::wstring(1, character));
            continue;
        }
        const WORD held = OneIn(3) ? OneOf(kHeldKeys) : WORD{0};
        const bool is_letter = held > VK_SHIFT && OneIn(2);
        const WORD key = is_letter ? static_cast<WORD>(OneOf(kLetters)) : OneOf(kPlainKeys);
        if (held) inputs.push_back(KeyInput(held, 0));
        inputs.push_back(KeyInput(key, 0));
        inputs.push_back(KeyInput(key, KEYEVENTF_KEYUP));
        if (held) inputs.push_back(KeyInput(held, KEYEVENTF_KEYUP));
        keys += " VK" + std::to_string(held) + "+" + std::to_string(key);
    }
    events_left_ -= static_cast<int>(count) - 1;
    Note("keys in " + Describe(window) + ":" + keys);
    SendInputs(inputs);
}

POINT Monkey::RandomPlace(HWND window) {
    std::vector<HWND> targets = VisibleChildren(window);
    targets.push_back(window);
    RECT area{};
    GetWindowRect(OneOf(targets), &area);
    const auto within = [this](LONG first, LONG last) {
        return first +
               static_cast<LONG>(Random(static_cast<std::size_t>(std::max(last - first, LONG{1}))));
    };
    return {within(area.left, area.right), within(area.top, area.bottom)};
}

void Monkey::UseMouse(HWND window) {
    const POINT place = RandomPlace(window);
    const bool is_right = OneIn(8);
    const DWORD down = is_right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN;
    const DWORD up = is_right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP;
    std::vector<INPUT> inputs = {MoveInput(place)};
    std::string what = is_right ? "right click" : "click";
    if (OneIn(10)) {
        what = "wheel";
        inputs.push_back(MouseInput(MOUSEEVENTF_WHEEL, static_cast<DWORD>(OneIn(2) ? -120 : 120)));
    } else if (OneIn(4)) {
        what = "drag";
        inputs.push_back(MouseInput(down));
        for (std::size_t moves = Random(3) + 1; moves > 0; --moves) {
            inputs.push_back(MoveInput(RandomPlace(window)));
        }
        inputs.push_back(MouseInput(up));
    } else {
        for (std::size_t clicks = OneIn(5) ? 2 : 1; clicks > 0; --clicks) {
            inputs.push_back(MouseInput(down));
            inputs.push_back(MouseInput(up));
        }
    }
    Note(what + " at " + std::to_string(place.x) + "," + std::to_string(place.y) + " in " +
         Describe(window) + ", over " + Describe(WindowFromPoint(place)));
    SendInputs(inputs);
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
    std::vector<HWND> buttons;
    for (HWND child : VisibleChildren(window)) {
        if (IsWindowEnabled(child) && ClassOf(child) == L"Button") buttons.push_back(child);
    }
    if (buttons.empty()) return;
    HWND button = OneOf(buttons);
    Note("button " + Describe(button) + " of " + Describe(window));
    PostMessageW(button, BM_CLICK, 0, 0);
}

void Monkey::DropFile(HWND window) {
    if (files_.empty()) return;
    const std::wstring& file = OneOf(files_);
    Note("drop " + Narrow(file) + " on " + Describe(window));
    if ((GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) == 0) return;
    PostMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(MakeDrop(file)), 0);
}

void Monkey::FillClipboard(HWND /*window*/) {
    OpenedClipboard clipboard(nullptr);
    if (!clipboard) return;
    switch (Random(3)) {
        case 0: {
            const std::string text = Utf8ToUtf16Le("una riga\r\n85.0\t8.00\r\nl'ultima");
            Note("text to the clipboard");
            clipboard.Put(CF_UNICODETEXT, text + std::string(2, '\0'));
            break;
        }
        case 1:
            Note("table to the clipboard");
            clipboard.Put(RegisterClipboardFormatW(L"Csv"), "85.0;8.00\r\n90.0;;x\r\n");
            break;
        default:
            Note("rich text to the clipboard");
            clipboard.Put(RegisterClipboardFormatW(L"Rich Text Format"),
                          "{\\rtf1 uno {\\b due\\par} {\\up6 tre}\\par\\bullet}");
    }
}

void Monkey::ResizeWindow(HWND window) {
    if ((GetWindowLongW(window, GWL_STYLE) & WS_THICKFRAME) == 0 || IsZoomed(window)) return;
    const int width = 150 + static_cast<int>(Random(900));
    const int height = 100 + static_cast<int>(Random(700));
    Note("size " + std::to_string(width) + " x " + std::to_string(height) + " of " +
         Describe(window));
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOMOVE);
}

}  // namespace tonvale
