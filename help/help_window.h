// The program's help: a window with the list of the topics of "tonvale.hlp" and the text of one. It
// has no owner, so that it can be used while a modal dialog is open, beside or above it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/app_context_win.h"
#include "dialogs/handles_win.h"
#include "dialogs/help_viewer_win.h"
#include "dialogs/window_win.h"
#include "help/help_text_view.h"
#include "help/help_topics.h"

namespace tonvale {

inline constexpr wchar_t kHelpWindowClass[] = L"Tonvale_Help";

// One instance, on the user-interface thread.
class HelpWindow final : public HelpViewer, public Window {
  public:
    // Of `app`, `instance`, `program_folder` and `files` are used, and `main_window` where set.
    explicit HelpWindow(AppContext& app);
    ~HelpWindow() override;

    // Opens the window or brings it to the front; an unknown context shows the index. Without a
    // help file the user is told so. `owner` is the window that asks.
    void ShowTopic(HWND owner, unsigned long context) override;
    // The program's own help file closes the window; a calculator's one only when a dialog was the
    // last to show a topic.
    void Close(std::string_view help_file) override;

  private:
    // What is shown, and how far it is scrolled once left.
    struct Visit {
        HelpPlace place;
        LONG scroll_position = 0;
    };

    static LRESULT CALLBACK WatchKeys(int code, WPARAM removal, LPARAM lparam);
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wparam, LPARAM lparam) override;
    std::optional<LRESULT> DispatchToFrame(UINT message, WPARAM wparam, LPARAM lparam);
    void OnCommand(int id, int notification);
    void OnEnter();
    void OnNotify(const NMHDR& header);
    void KeepFocus();
    void Erase(HDC dc) const;
    void OnDpiChanged(const RECT& suggested);
    void KeepPlacement();
    void Forget();
    bool TakeKey(MSG& message);
    bool TakeShortcut(const MSG& message);

    bool LoadBook();
    bool Create(HWND owner);
    bool CreateControls();
    HWND CreateChild(int id, const wchar_t* class_name, const wchar_t* text, DWORD style,
                     DWORD extended_style);
    void SetFirstPlace(HWND owner);
    void SetFonts();
    void Layout();
    void LayoutBar(const RECT& bar, int gap);
    void DestroyAndGoBackToWork();

    HelpPlace PlaceOf(unsigned long context) const;
    void GoTo(const HelpPlace& place);
    void Show(const HelpPlace& place);
    void GoBack();
    void UpdateBackButton();

    // The list holds all topics, or those that a search has found.
    void ListAllTopics();
    void ListHits();
    void FillList(std::vector<HelpPlace> places, bool indented, const std::string& heading);
    void SelectInList(std::size_t topic);
    // Searches for the words in the field and shows the first hit; when they were already searched
    // for, the next one, or the one before.
    void Find(bool backwards);

    HWND Control(int id) const { return GetDlgItem(window(), id); }
    int Scaled(int pixels) const;
    int WidthWithText(HWND control) const;

    AppContext& app_;
    HHOOK key_hook_ = nullptr;
    HWND asked_by_ = nullptr;      // the window that has shown the last topic
    HWND last_focus_ = nullptr;    // the control that has the focus when the window is active
    WINDOWPLACEMENT placement_{};  // of the last opening; length 0 before
    UniqueFont font_;
    HelpTextView text_;
    HelpBook book_;
    std::vector<HelpPlace> listed_;
    std::vector<HTREEITEM> list_items_;  // of listed_
    std::string searched_;               // what listed_ answers; empty: it holds all topics
    std::size_t hit_ = 0;                // in listed_, the last one shown by Find
    std::optional<Visit> current_;
    std::vector<Visit> history_;  // the last one is what Back leads to
};

}  // namespace tonvale
