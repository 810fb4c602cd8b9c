// The base of every modal dialog: message dispatch, control texts, and the services that all
// dialogs share (tool tips, text limits, centring, context help, dropped files).
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "dialogs/app_context_win.h"
#include "common/user_message.h"

namespace tonvale {

struct ControlTip {
    int control;
    const wchar_t* text;
};

struct ControlTextLimit {
    int control;
    int characters;
};

struct ControlHelp {
    int control;
    unsigned long context;
};

// What a dialog is made of besides its procedure; one constant of each dialog's file.
struct DialogDescription {
    const wchar_t* template_name;
    std::span<const ControlTip> tips;
    std::span<const ControlTextLimit> text_limits;
    std::span<const ControlHelp> help;
    unsigned long main_help_context;  // of "&?"
    const char* help_file;            // told to close with the dialog; nullptr: none
    bool accepts_files;               // OnDrop is called
};

class Dialog {
  public:
    Dialog(AppContext& app, const DialogDescription& description);
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Runs the dialog until it ends and gives its result; IDCANCEL when it cannot be created.
    INT_PTR RunModal(HWND owner);

  protected:
    // Fills the dialog; true lets the system give the focus to the first control. Text limits,
    // centring, tool tips and acceptance of files are set around it.
    virtual bool OnInit() { return true; }
    // One menu, button or control notification; true when handled. IDCANCEL that is not handled
    // ends the dialog with IDCANCEL, "&?" shows the main help topic.
    virtual bool OnCommand(int id, int notification);
    virtual LRESULT OnNotify(const NMHDR& header);
    // Exactly one file was dropped.
    virtual void OnDrop(const std::string& path);
    virtual void OnDestroy() {}
    // Messages that none of the above covers; true when handled, with its result in `result`.
    virtual bool OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result);

    void End(INT_PTR result);

    HWND window() const { return window_; }
    AppContext& app() const { return app_; }
    HWND Control(int id) const;
    std::string ControlText(int id) const;
    std::string ControlText(int id, std::size_t max_characters) const;
    void SetControlText(int id, std::string_view text);
    // Shows `message` over the dialog; `buttons` is MB_OK, MB_YESNOCANCEL... Gives the answer.
    int ShowMessage(const UserMessage& message, UINT buttons = MB_OK) const;
    // The focus goes to an edit control, whose text is selected.
    void FocusOnField(int id);
    // Shows why a typed value is refused; the user can type it anew.
    void Refuse(const UserMessage& refusal, int field);

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    INT_PTR Dispatch(UINT message, WPARAM wparam, LPARAM lparam);
    INT_PTR Open();
    INT_PTR Notify(NMHDR& header);
    void TakeDrop(HDROP drop);
    bool ShowControlHelp(int control);
    bool ShowHelpUnderMouse(HWND clicked, POINT screen_position);
    void ReleaseServices();

    AppContext& app_;
    const DialogDescription& description_;
    HWND window_ = nullptr;
};

// The hourglass, for as long as this lives.
class WaitCursor {
  public:
    WaitCursor() : previous_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(previous_); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

  private:
    HCURSOR previous_;
};

// Shows a message box; MessageIcon gives its icon.
int ShowMessageBox(HWND owner, const UserMessage& message, UINT buttons = MB_OK);

// Answers a static's WM_CTLCOLORSTATIC: its text stands on the system's menu colour.
INT_PTR PaintOnMenuColor(HDC device);

// Centres `window` on the work area of the monitor it is on, keeping its size.
void CenterOnScreen(HWND window);

}  // namespace tonvale
