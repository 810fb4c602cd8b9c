// Drives real windows and dialogs from a test, on the one user-interface thread: a timer runs
// queued steps inside whatever message loop is active, also that of a modal dialog, a message box
// or a menu. A step runs when the message queue is empty, so that all that was posted before is
// done. No step sleeps: each waits for its condition, and fails the test at its deadline; then
// every dialog that is still open is closed, so that nothing hangs.
//
//     UiDriver ui;
//     ui.OnWindow("Calcolo Lep,d").Click(IDC_ADD);
//     ui.OnWindow("Aggiungi", [](HWND dialog) { EXPECT_...; }).Click(IDCANCEL);
//     OpenDailyExposure(app, state, owner, "");  // modal: returns when the steps have closed it
//
// Texts are UTF-8.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace tonvale {

class UiDriver {
  public:
    using WindowAction = std::function<void(HWND)>;

    UiDriver();
    ~UiDriver();  // as Finish
    UiDriver(const UiDriver&) = delete;
    UiDriver& operator=(const UiDriver&) = delete;

    // Waits for a visible, enabled top-level window of this thread with exactly this title (or of
    // this class), makes it the current window and calls `action` with it. When it has closed, the
    // window that was current before is so again.
    UiDriver& OnWindow(const std::string& title, const WindowAction& action = {});
    UiDriver& OnWindowOfClass(const std::string& class_name, const WindowAction& action = {});
    // Waits until no visible window of this thread has the title.
    UiDriver& WaitClosed(const std::string& title);
    UiDriver& WaitUntil(std::string what, std::function<bool()> condition);
    // To be called by a condition that takes many turns, each of which has a deadline of its own.
    void RestartDeadline() { waiting_since_ = 0; }
    // Calls `action`, which may open a modal dialog: the next steps then run inside it.
    UiDriver& Do(const std::function<void()>& action);

    // Waits for a message box with this caption, expects this text and answers with the button.
    UiDriver& AnswerMessage(const std::string& caption, const std::string& text, int button);

    // On the current window, as soon as it is enabled; a control must be there, visible and enabled
    // before it is used.
    UiDriver& Click(int control);
    UiDriver& Type(int control, const std::string& text);  // as posted WM_CHAR, which filters see
    UiDriver& SetText(int control, const std::string& text);
    UiDriver& Choose(int list, int item);  // of a drop-down list
    UiDriver& Command(int id);             // a menu command
    UiDriver& Screenshot(const std::string& name);
    // Expects what `shown` tells of the current window.
    UiDriver& Expect(const std::function<std::string(HWND)>& shown, const std::string& text,
                     int line = __builtin_LINE());
    UiDriver& ExpectText(int control, const std::string& text, int line = __builtin_LINE());
    // The texts of several controls, "85.0|   480".
    UiDriver& ExpectTexts(const std::vector<int>& controls, const std::string& texts,
                          int line = __builtin_LINE());
    // IsWindowVisible, IsWindowEnabled or IsChecked, and what each of the controls is.
    UiDriver& ExpectEach(const std::vector<int>& controls, const std::function<bool(HWND)>& is,
                         bool expected = true, int line = __builtin_LINE());
    UiDriver& ExpectFocus(int control, int line = __builtin_LINE());
    // Presses the keys together, the last one last ({VK_CONTROL, 'G'}), as from the keyboard.
    UiDriver& Press(std::initializer_list<WORD> keys);

    // Runs a message loop of its own until all steps are done (or one has failed).
    void Run();
    // Fails the test when steps are left, and stops driving.
    void Finish();
    bool failed() const { return failed_; }  // a step ran past its deadline

  private:
    struct Step {
        std::string what;
        std::function<bool()> attempt;  // true when done
    };

    void Tick();
    void Fail(const std::string& what);
    HWND Current();
    UiDriver& AddForWindow(std::string (*name_of)(HWND), const std::string& name,
                           const WindowAction& action);
    UiDriver& AddForCurrent(const std::string& what, const WindowAction& action);
    UiDriver& AddForControl(const std::string& what, int control, const WindowAction& action);

    std::deque<Step> steps_;
    std::vector<HWND> windows_;  // the current one is the last that is still there
    UINT_PTR timer_ = 0;
    ULONGLONG waiting_since_ = 0;
    bool failed_ = false;
};

// The control of a dialog, or of the page that a sheet shows; nullptr when there is none.
HWND ControlOf(HWND window, int control);
// Its text; empty when it does not exist.
std::string TextOf(HWND window, int control);
bool IsChecked(HWND button);

// A WM_DROPFILES handle as the shell makes it; its receiver frees it with DragFinish.
HDROP MakeDrop(const std::vector<std::string>& paths);

// Writes a picture of the window, its frame included, to NAME.png in the folder that the
// environment variable TONVALE_SCREENSHOTS names, else in "screenshots" of the build folder.
void SaveScreenshot(HWND window, const std::string& name);

}  // namespace tonvale
