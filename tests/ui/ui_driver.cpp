#include "tests/ui/ui_driver.h"

#include <gtest/gtest.h>
#include <prsht.h>
#include <shlobj.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "common/unicode_win.h"
#include "wine/window_picture.h"

namespace tonvale {
namespace {

constexpr UINT kTickMs = 10;
constexpr ULONGLONG kDeadlineMs = 15000;
constexpr int kMessageBoxText = 0xffff;

UiDriver* active_driver = nullptr;

std::string NameOfClass(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return Narrow(name);
}

HWND FindReady(const std::function<bool(HWND)>& matches) {
    for (HWND window : VisibleWindows()) {
        if (IsWindowEnabled(window) && matches(window)) return window;
    }
    return nullptr;
}

std::string DescribeWindows() {
    std::string text;
    for (HWND window : VisibleWindows()) {
        text += "\n  [" + NameOfClass(window) + "] \"" + WindowText(window) + "\"";
        if (!IsWindowEnabled(window)) text += " (disabled)";
        text += " " + TextOf(window, kMessageBoxText);
    }
    return text;
}

bool IsDialog(HWND window) {
    return NameOfClass(window) == "#32770";
}

// Ends one open menu, dialog or, when there is none left, window with a caption.
void CloseOneWindow() {
    EndMenu();
    if (HWND dialog = FindReady(IsDialog)) {
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);  // of a sheet
        if (!SendMessageW(dialog, PSM_GETCURRENTPAGEHWND, 0, 0)) EndDialog(dialog, IDCANCEL);
        return;
    }
    HWND window = FindReady([](HWND candidate) {
        return (GetWindowLongW(candidate, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    });
    if (window) DestroyWindow(window);
}

void SendKeys(const std::vector<WORD>& keys) {
    std::vector<INPUT> inputs;
    const auto add = [&](WORD key, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags;
        inputs.push_back(input);
    };
    for (WORD key : keys) add(key, 0);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) add(*key, KEYEVENTF_KEYUP);
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

}  // namespace

UiDriver::UiDriver() {
    active_driver = this;
    timer_ = SetTimer(nullptr, 0, kTickMs, [](HWND, UINT, UINT_PTR, DWORD) {
        if (active_driver) active_driver->Tick();
    });
}

UiDriver::~UiDriver() {
    Finish();
}

void UiDriver::Finish() {
    if (!timer_) return;
    KillTimer(nullptr, timer_);
    timer_ = 0;
    active_driver = nullptr;
    if (!steps_.empty()) Fail("never came to: " + steps_.front().what);
}

void UiDriver::Run() {
    MSG message;
    while (!steps_.empty() && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void UiDriver::Tick() {
    if (failed_) {
        CloseOneWindow();
        return;
    }
    if (!steps_.empty()) {
        // Taken out first: what it opens may be modal, and the next steps run inside it.
        Step step = std::move(steps_.front());
        steps_.pop_front();
        if (step.attempt()) {
            waiting_since_ = 0;
            return;
        }
        steps_.push_front(std::move(step));
    }
    const ULONGLONG now = GetTickCount64();
    if (waiting_since_ == 0) waiting_since_ = now;
    if (now - waiting_since_ < kDeadlineMs) return;
    Fail(steps_.empty() ? "all steps are done, but a window is still open"
                        : "waited too long for: " + steps_.front().what);
}

void UiDriver::Fail(const std::string& what) {
    ADD_FAILURE() << what << "\nWindows open: " << DescribeWindows();
    failed_ = true;
    steps_.clear();
}

UiDriver& UiDriver::WaitUntil(std::string what, std::function<bool()> condition) {
    steps_.push_back({std::move(what), std::move(condition)});
    waiting_since_ = 0;
    return *this;
}

HWND UiDriver::Current() {
    while (!windows_.empty() && !IsWindow(windows_.back())) windows_.pop_back();
    return windows_.empty() ? nullptr : windows_.back();
}

UiDriver& UiDriver::AddForWindow(std::string (*name_of)(HWND), const std::string& name,
                                 const WindowAction& action) {
    return WaitUntil("window \"" + name + "\"", [=, this] {
        HWND window = FindReady([&](HWND candidate) { return name_of(candidate) == name; });
        if (!window) return false;
        windows_.push_back(window);
        if (action) action(window);
        return true;
    });
}

UiDriver& UiDriver::AddForCurrent(const std::string& what, const WindowAction& action) {
    return WaitUntil(what, [=, this] {
        HWND window = Current();
        if (!IsWindowEnabled(window)) return false;
        action(window);
        return true;
    });
}

UiDriver& UiDriver::AddForControl(const std::string& what, int control,
                                  const WindowAction& action) {
    return WaitUntil(what + " " + std::to_string(control), [=, this] {
        HWND window = ControlOf(Current(), control);
        if (!IsWindowVisible(window) || !IsWindowEnabled(window) || !IsWindowEnabled(Current())) {
            return false;
        }
        action(window);
        return true;
    });
}

UiDriver& UiDriver::OnWindow(const std::string& title, const WindowAction& action) {
    return AddForWindow(WindowText, title, action);
}

UiDriver& UiDriver::OnWindowOfClass(const std::string& class_name, const WindowAction& action) {
    return AddForWindow(NameOfClass, class_name, action);
}

UiDriver& UiDriver::WaitClosed(const std::string& title) {
    return WaitUntil("\"" + title + "\" closed", [title] {
        const std::vector<HWND> windows = VisibleWindows();
        return std::none_of(windows.begin(), windows.end(),
                            [&](HWND window) { return WindowText(window) == title; });
    });
}

UiDriver& UiDriver::Do(const std::function<void()>& action) {
    return WaitUntil("action", [action] {
        action();
        return true;
    });
}

UiDriver& UiDriver::AnswerMessage(const std::string& caption, const std::string& text, int button) {
    return WaitUntil("message \"" + caption + "\": \"" + text + "\"", [=] {
        HWND box = FindReady([&](HWND candidate) {
            return IsDialog(candidate) && WindowText(candidate) == caption &&
                   GetDlgItem(candidate, kMessageBoxText);
        });
        if (!box) return false;
        EXPECT_EQ(TextOf(box, kMessageBoxText), text);
        HWND answer = GetDlgItem(box, button);
        EXPECT_NE(answer, nullptr) << "the message has no button " << button;
        if (answer) PostMessageW(answer, BM_CLICK, 0, 0);
        return true;
    });
}

UiDriver& UiDriver::Click(int control) {
    return AddForControl("click", control,
                         [](HWND window) { PostMessageW(window, BM_CLICK, 0, 0); });
}

UiDriver& UiDriver::Type(int control, const std::string& text) {
    return AddForControl("type into", control, [text](HWND window) {
        SetFocus(window);
        for (wchar_t character : Widen(text)) PostMessageW(window, WM_CHAR, character, 1);
    });
}

UiDriver& UiDriver::SetText(int control, const std::string& text) {
    return AddForControl("set text of", control,
                         [text](HWND window) { SetWindowTextUtf8(window, text); });
}

UiDriver& UiDriver::Choose(int list, int item) {
    return AddForControl("choose from", list, [=](HWND window) {
        SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(window));
    });
}

UiDriver& UiDriver::Command(int id) {
    return AddForCurrent("command", [=](HWND window) {
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
    });
}

UiDriver& UiDriver::Screenshot(const std::string& name) {
    return AddForCurrent("screenshot", [=](HWND window) { SaveScreenshot(window, name); });
}

UiDriver& UiDriver::Expect(const std::function<std::string(HWND)>& shown, const std::string& text,
                           int line) {
    return AddForCurrent("texts", [=](HWND window) {
        EXPECT_EQ(shown(window), text) << "expected in line " << line;
    });
}

UiDriver& UiDriver::ExpectText(int control, const std::string& text, int line) {
    return ExpectTexts({control}, text, line);
}

UiDriver& UiDriver::ExpectTexts(const std::vector<int>& controls, const std::string& texts,
                                int line) {
    const auto shown = [=](HWND window) {
        std::string all;
        for (const int control : controls) all += "|" + TextOf(window, control);
        return all.substr(1);
    };
    return Expect(shown, texts, line);
}

UiDriver& UiDriver::ExpectEach(const std::vector<int>& controls,
                               const std::function<bool(HWND)>& is, bool expected, int line) {
    return AddForCurrent("controls", [=](HWND window) {
        for (const int id : controls) {
            EXPECT_EQ(is(ControlOf(window, id)), expected) << id << " in line " << line;
        }
    });
}

UiDriver& UiDriver::ExpectFocus(int control, int line) {
    return ExpectEach(
        {control}, [](HWND window) { return window == GetFocus(); }, true, line);
}

UiDriver& UiDriver::Press(std::initializer_list<WORD> keys) {
    return Do([keys = std::vector<WORD>(keys)] { SendKeys(keys); });
}

HWND ControlOf(HWND window, int control) {
    if (HWND child = GetDlgItem(window, control)) return child;
    for (HWND page = GetWindow(window, GW_CHILD); page; page = GetWindow(page, GW_HWNDNEXT)) {
        HWND child = IsWindowVisible(page) ? GetDlgItem(page, control) : nullptr;
        if (child) return child;
    }
    return nullptr;
}

std::string TextOf(HWND window, int control) {
    HWND child = ControlOf(window, control);
    return child ? WindowText(child) : std::string();
}

bool IsChecked(HWND button) {
    return SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

HDROP MakeDrop(const std::vector<std::string>& paths) {
    std::wstring names;
    for (const std::string& path : paths) names += Widen(path) + L'\0';
    names += L'\0';
    const SIZE_T bytes = names.size() * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + bytes);
    auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    std::memcpy(drop + 1, names.data(), bytes);
    GlobalUnlock(memory);
    return static_cast<HDROP>(memory);
}

void SaveScreenshot(HWND window, const std::string& name) {
    const wchar_t* wanted = _wgetenv(L"TONVALE_SCREENSHOTS");
    const std::filesystem::path folder = wanted && *wanted ? wanted : TONVALE_SCREENSHOT_FOLDER;
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    const std::filesystem::path file = folder / Widen(name + ".png");
    EXPECT_TRUE(SavePicture({window}, file.c_str())) << name;
}

}  // namespace tonvale
