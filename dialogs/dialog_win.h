// The base of everything that is made from a dialog template: message dispatch, control texts, and
// the services that all dialogs share (tool tips, text limits, lists, colours, context help,
// dropped files). How it runs is told by ModalDialog here and by WizardPage in
// dialogs/wizard_win.h.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/user_message.h"
#include "dialogs/app_context_win.h"

namespace tonvale {

struct ControlTip {
    int control;
    const wchar_t* text;
};

// Of the dialogs that edit an item of a list.
inline constexpr ControlTip kCancelTip{IDCANCEL,
                                       L"Annulla l'operazione e chiude la finestra di dialogo"};

struct ControlTextLimit {
    int control;
    int characters;
};

struct ControlHelp {
    int control;
    unsigned long context;
};

// What a text stands on.
enum class Surface { kWhite, kYellow, kMenu };

// How a static or an edit control is coloured.
struct ControlColors {
    int control;
    Surface surface;
    std::optional<COLORREF> text = {};  // none: as the system has it
};

inline constexpr COLORREF kRedText = RGB(255, 0, 0);
inline constexpr COLORREF kBlueText = RGB(0, 0, 255);

// What a drop-down list offers.
struct ControlItems {
    int control;
    const std::vector<std::string>& (*items)();
};

// The rows of two tables in one.
template <typename Row, std::size_t kFirst, std::size_t kSecond>
constexpr std::array<Row, kFirst + kSecond> Joined(const std::array<Row, kFirst>& first,
                                                   const std::array<Row, kSecond>& second) {
    std::array<Row, kFirst + kSecond> rows{};
    std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), rows.begin()));
    return rows;
}

// What a dialog is made of besides its procedure; one constant of each dialog's file.
struct DialogDescription {
    const wchar_t* template_name;
    std::span<const ControlTip> tips;
    std::span<const ControlTextLimit> text_limits = {};
    std::span<const ControlItems> items = {};
    std::span<const ControlColors> colors = {};
    std::span<const ControlHelp> help;
    unsigned long main_help_context;  // of "&?"
    const char* help_file = nullptr;  // told to close with the dialog; nullptr: none
    bool accepts_files = false;       // OnDrop is called
};

// A piece of a dialog that takes part in its messages: a list, a drawing, the current data file.
class DialogPart {
  public:
    virtual ~DialogPart() = default;
    // One menu, button or control notification; true when handled.
    virtual bool OnCommand(int /*id*/, int /*notification*/) { return false; }
    // True when handled, with the notification's result in `result`.
    virtual bool OnNotify(NMHDR& /*header*/, LRESULT& /*result*/) { return false; }
    // Exactly one file was dropped; true when it was this part's.
    virtual bool OnDrop(const std::string& /*path*/) { return false; }
    // The dialog may have changed its size.
    virtual void OnResize() {}
    // Any other message; true when handled, with its result in `result`.
    virtual bool OnMessage(UINT /*message*/, WPARAM /*wparam*/, LPARAM /*lparam*/,
                           INT_PTR& /*result*/) {
        return false;
    }
};

// A text of a form and the control that shows it.
template <typename Form>
struct FormField {
    int control;
    std::string Form::*text;
};

class Dialog {
  public:
    Dialog(AppContext& app, const DialogDescription& description);
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    HWND window() const { return window_; }
    const DialogDescription& description() const { return description_; }

  protected:
    // The dialog procedure; WM_INITDIALOG brings CreationParameter.
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

    // Fills the dialog; true lets the system give the focus to the first control. Text limits,
    // lists, centring, tool tips and acceptance of files are set around it.
    virtual bool OnInit() { return true; }
    // One menu, button or control notification; true when handled. "&?" shows the main help topic.
    virtual bool OnCommand(int id, int notification);
    // The user has changed the text of an edit control; not called while the program fills it.
    virtual void OnEdited(int /*control*/) {}
    // The user has chosen an item of a drop-down list.
    virtual void OnItemChosen(int /*control*/) {}
    virtual LRESULT OnNotify(NMHDR& /*header*/) { return 0; }
    // Exactly one file was dropped, which no part has taken.
    virtual void OnDrop(const std::string& /*path*/) {}
    virtual void OnDestroy() {}

    // `part` takes part in all messages from now on, before the dialog itself; it must live on as
    // long as the window.
    void Attach(DialogPart& part) { parts_.push_back(&part); }

    AppContext& app() const { return app_; }
    HWND Control(int id) const;
    // The control that a window inside the dialog is or belongs to, as a combo box's edit control.
    int OwningControl(HWND part) const;
    std::string ControlText(int id) const;
    // Cut to the control's text limit.
    std::string FieldText(int id) const;
    // Shows a text, which does not count as an edit.
    void SetControlText(int id, std::string_view text);
    // Shows all texts of a form that `fields` tells, or takes them over into it.
    template <typename Form>
    void FillFields(const Form& form, std::span<const FormField<Form>> fields) {
        for (const auto& [control, text] : fields) SetControlText(control, form.*text);
    }
    template <typename Form>
    void ReadFields(Form& form, std::span<const FormField<Form>> fields) const {
        for (const auto& [control, text] : fields) form.*text = FieldText(control);
    }
    // The position of a drop-down list's chosen item; -1: none.
    int ChosenItem(int control) const;
    // A position outside the list chooses none.
    void ChooseItem(int control, int position) const;
    void Check(int control, bool checked) const;
    bool IsChecked(int control) const;
    // Checks one option button of a group; 0: none. Either way the Tab key reaches the group.
    void ShowChoice(std::span<const int> buttons, int chosen) const;
    void Enable(int control, bool enabled) const;
    void Enable(std::span<const int> controls, bool enabled) const;
    void Show(std::span<const int> controls, bool shown) const;
    // Shows `message` over the dialog; `buttons` is MB_OK, MB_YESNOCANCEL... Gives the answer.
    int ShowMessage(const UserMessage& message, UINT buttons = MB_OK) const;
    // The focus goes to an edit control, whose text is selected.
    void FocusOnField(int id) const;
    // The focus goes to an edit control, with the caret behind its text.
    void FocusBehindText(int id) const;
    // Shows why a typed value is refused; the user can type it anew.
    void Refuse(const UserMessage& refusal, int field) const;

    LPARAM CreationParameter() { return reinterpret_cast<LPARAM>(this); }
    // The window is gone.
    void Forget() { window_ = nullptr; }
    // The tips of this dialog from now on.
    void ServeTips() const;
    // Where the window is to be placed when it opens.
    virtual void Place() {}

  private:
    INT_PTR Dispatch(UINT message, WPARAM wparam, LPARAM lparam);
    INT_PTR Open();
    void Command(int id, int notification);
    INT_PTR Notify(NMHDR& header);
    bool AnswerTip(NMHDR& header) const;
    INT_PTR Paint(HDC device, HWND control) const;
    void TakeDrop(HDROP drop);
    int HelpedControl(const HELPINFO& request) const;
    bool ShowControlHelp(int control);
    bool ShowHelpUnderMouse(HWND clicked, POINT screen_position);
    INT_PTR OfferToParts(UINT message, WPARAM wparam, LPARAM lparam);
    void ReleaseServices();

    AppContext& app_;
    const DialogDescription& description_;
    HWND window_ = nullptr;
    std::vector<DialogPart*> parts_;
    int filling_ = 0;  // how many texts are being shown by the program right now
};

// A dialog that runs until it is ended.
class ModalDialog : public Dialog {
  public:
    using Dialog::Dialog;

    // Runs the dialog, centred, until it ends and gives its result; IDCANCEL when it cannot be
    // created.
    INT_PTR RunModal(HWND owner);

  protected:
    // IDCANCEL ends the dialog with IDCANCEL.
    bool OnCommand(int id, int notification) override;
    void Place() override;
    // Asks whether an item of a list is to be deleted.
    bool ConfirmsDeletion() const;
    void End(INT_PTR result) { EndDialog(window(), result); }
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

// Centres `window` on the work area of the monitor it is on, keeping its size.
void CenterOnScreen(HWND window);

}  // namespace tonvale
