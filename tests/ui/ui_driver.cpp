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

std::string ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return Narrow(name);
}

HWND FindVisible(const std::function<bool(HWND)>& matches) {
    const std::vector<HWND> windows = VisibleWindows();
    const auto found = std::find_if(windows.begin(), windows.end(), matches);
    return found == windows.end() ? nullptr : *found;
}

HWND FindReady(const std::function<bool(HWND)>& matches) {
    return FindVisible([&](HWND window) { return IsWindowEnabled(window) && matches(window); });
}

std::string DescribeWindows() {
    std::string text;
    for (HWND window : VisibleWindows()) {
        text += "\n  [" + ClassOf(window) + "] \"" + WindowText(window) + "\"";
        if (!IsWindowEnabled(window)) text += " (disabled)";
        const std::string message = TextOf(window, kMessageBoxText);
        if (!message.empty()) text += ": \"" + message + "\"";
    }
    return text.empty() ? "none" : text;
}

bool IsDialog(HWND window) {
    return ClassOf(window) == "#32770";
}

// Ends one open menu, dialog or, when there is none left, window with a caption.
void CloseOneWindow() {
    EndMenu();
    if (HWND dialog = FindReady(IsDialog)) {
        const bool is_sheet = SendMessageW(dialog, PSM_GETCURRENTPAGEHWND, 0, 0) != 0;
        if (is_sheet) {
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        } else {
            EndDialog(dialog, IDCANCEL);
        }
        return;
    }
    HWND window = FindReady([](HWND candidate) {
        return (GetWindowLongW(candidate, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    });
    if (window) DestroyWindow(window);
}

void PostText(HWND control, const std::string& text) {
    for (wchar_t character : Widen(text)) PostMessageW(control, WM_CHAR, character, 1);
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
    timer_ = SetTimer(nullptr, 0, kTickMs, OnTimer);
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

void CALLBACK UiDriver::OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (active_driver) active_driver->Tick();
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

UiDriver& UiDriver::Add(std::string what, std::function<bool()> attempt) {
    steps_.push_back({std::move(what), std::move(attempt)});
    waiting_since_ = 0;
    return *this;
}

UiDriver& UiDriver::AddForWindow(std::string what, std::function<bool(HWND)> matches,
                                 WindowAction action) {
    return Add(std::move(what), [this, matches = std::move(matches), action = std::move(action)] {
        HWND window = FindReady(matches);
        if (!window) return false;
        current_ = window;
        if (action) action(window);
        return true;
    });
}

UiDriver& UiDriver::OnWindow(const std::string& title, WindowAction action) {
    return AddForWindow(
        "window \"" + title + "\"", [title](HWND window) { return WindowText(window) == title; },
        std::move(action));
}

UiDriver& UiDriver::OnWindowOfClass(const std::string& class_name, WindowAction action) {
    return AddForWindow(
        "window of class " + class_name,
        [class_name](HWND window) { return ClassOf(window) == class_name; }, std::move(action));
}

UiDriver& UiDriver::WaitClosed(std::string title) {
    std::string what = "\"" + title + "\" closed";
    return Add(std::move(what), [title = std::move(title)] {
        return !FindVisible([&](HWND candidate) { return WindowText(candidate) == title; });
    });
}

UiDriver& UiDriver::WaitUntil(std::string what, std::function<bool()> condition) {
    return Add(std::move(what), std::move(condition));
}

UiDriver& UiDriver::Do(std::function<void()> action) {
    return Add("action", [action = std::move(action)] {
        action();
        return true;
    });
}

UiDriver& UiDriver::AnswerMessage(std::string caption, std::string text, int button) {
    std::string what = "message \"" + caption + "\": \"" + text + "\"";
    return Add(std::move(what), [caption = std::move(caption), text = std::move(text), button] {
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

UiDriver& UiDriver::AddForControl(const std::string& what, int control, WindowAction action) {
    return Add(what + " " + std::to_string(control), [this, control, action = std::move(action)] {
        HWND window = ControlOf(current_, control);
        if (!window || !IsWindowVisible(window) || !IsWindowEnabled(window)) return false;
        action(window);
        return true;
    });
}

UiDriver& UiDriver::Click(int control) {
    return AddForControl("click", control,
                         [](HWND window) { PostMessageW(window, BM_CLICK, 0, 0); });
}

UiDriver& UiDriver::Type(int control, std::string text) {
    return AddForControl("type into", control, [text = std::move(text)](HWND window) {
        SetFocus(window);
        PostText(window, text);
    });
}

UiDriver& UiDriver::SetText(int control, std::string text) {
    return AddForControl("set text of", control, [text = std::move(text)](HWND window) {
        SetWindowTextUtf8(window, text);
    });
}

UiDriver& UiDriver::Command(int id) {
    return Do([this, id] { PostMessageW(current_, WM_COMMAND, static_cast<WPARAM>(id), 0); });
}

UiDriver& UiDriver::ExpectText(int control, std::string text, int line) {
    return Do([this, control, text = std::move(text), line] {
        EXPECT_EQ(TextOf(current_, control), text) << "expected in line " << line;
    });
}

UiDriver& UiDriver::Screenshot(std::string name) {
    return Do([this, name = std::move(name)] { SaveScreenshot(current_, name); });
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
