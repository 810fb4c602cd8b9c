// Drives real windows and dialogs from a test, on the one user-interface thread: a timer runs
// queued steps inside whatever message loop is active, also that of a modal dialog, a message box
// or a menu. A step runs when the message queue is empty, so that all that was posted before is
// done. No step sleeps: each waits for its condition, and fails the test at its deadline; then
// every dialog that is still open is closed, so that nothing hangs.
//
//     UiDriver ui;
//     ui.OnWindow("Calcolo Lep,d").Click(IDC_ADD);
//     ui.OnWindow("Aggiungi").Type(IDC_LEVEL_EDIT, "85").Click(IDOK);
//     ui.AnswerMessage("Errore", "Errore nei valori!", IDOK);
//     ui.OnWindow("Calcolo Lep,d", [](HWND dialog) { EXPECT_...; }).Click(IDCANCEL);
//     OpenDailyExposure(app, state, owner, "");  // modal: returns when the steps have closed it
//     ui.Finish();
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
    // this class), makes it the current window and calls `action` with it.
    UiDriver& OnWindow(const std::string& title, WindowAction action = {});
    UiDriver& OnWindowOfClass(const std::string& class_name, WindowAction action = {});
    // Waits until no visible window of this thread has the title.
    UiDriver& WaitClosed(std::string title);
    UiDriver& WaitUntil(std::string what, std::function<bool()> condition);
    // To be called by a condition that takes many turns, each of which has a deadline of its own.
    void RestartDeadline() { waiting_since_ = 0; }
    // Calls `action`, which may open a modal dialog: the next steps then run inside it.
    UiDriver& Do(std::function<void()> action);

    // Waits for a message box with this caption, expects this text and answers with the button.
    UiDriver& AnswerMessage(std::string caption, std::string text, int button);

    // On the current window. A control must be there, visible and enabled before it is used.
    UiDriver& Click(int control);
    UiDriver& Type(int control, std::string text);  // as posted WM_CHAR, seen by message filters
    UiDriver& SetText(int control, std::string text);
    UiDriver& Command(int id);  // a menu command
    // Expects that a control of the current window shows the text.
    UiDriver& ExpectText(int control, std::string text, int line = __builtin_LINE());
    UiDriver& Screenshot(std::string name);
    // Presses the keys together, the last one last ({VK_CONTROL, 'G'}), as from the keyboard.
    UiDriver& Press(std::initializer_list<WORD> keys);

    // Runs a message loop of its own until all steps are done (or one has failed).
    void Run();
    // Fails the test when steps are left, and stops driving.
    void Finish();
    // True when a step has missed its deadline.
    bool failed() const { return failed_; }

  private:
    struct Step {
        std::string what;
        std::function<bool()> attempt;  // true when done
    };

    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
    void Tick();
    void Fail(const std::string& what);
    UiDriver& Add(std::string what, std::function<bool()> attempt);
    UiDriver& AddForWindow(std::string what, std::function<bool(HWND)> matches,
                           WindowAction action);
    UiDriver& AddForControl(const std::string& what, int control, WindowAction action);

    std::deque<Step> steps_;
    HWND current_ = nullptr;
    UINT_PTR timer_ = 0;
    ULONGLONG waiting_since_ = 0;
    bool failed_ = false;
};

// The text of a control; empty when it does not exist.
// The control of a dialog, or of the page that a sheet shows; nullptr when there is none.
HWND ControlOf(HWND window, int control);
std::string TextOf(HWND window, int control);

// A WM_DROPFILES handle as the shell makes it; its receiver frees it with DragFinish.
HDROP MakeDrop(const std::vector<std::string>& paths);

// Writes a picture of the window, its frame included, to NAME.png in the folder that the
// environment variable TONVALE_SCREENSHOTS names, else in "screenshots" of the build folder.
void SaveScreenshot(HWND window, const std::string& name);

}  // namespace tonvale
