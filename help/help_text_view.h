// The text of a help topic: read-only rich text whose links are followed with the mouse or, chosen
// with Tab, with Enter. The control is the one of RICHED20: it counts the end of a paragraph as one
// character, as the positions of links do, and can be zoomed to the resolution of any monitor.
#pragma once

#include <windows.h>

#include <richedit.h>

#include <cstddef>
#include <optional>

#include "dialogs/handles_win.h"
#include "help/help_rtf.h"
#include "help/help_topics.h"

namespace tonvale {

class HelpTextView {
  public:
    // Posted to the parent when a link is followed; `lparam` is the link's context.
    static constexpr UINT kFollowLink = WM_APP + 1;

    HelpTextView();
    HelpTextView(const HelpTextView&) = delete;
    HelpTextView& operator=(const HelpTextView&) = delete;

    // The control is destroyed with its parent and may then be created anew.
    bool Create(HINSTANCE instance, HWND parent, int id);
    HWND window() const { return window_; }

    // Shows a topic from its beginning, or from one of its blocks on, which is marked.
    void Show(const HelpTopic& topic, std::optional<std::size_t> block);
    // The position of the first character that is seen, and how to see it there again.
    LONG ScrollPosition() const;
    void ScrollTo(LONG position);

    // The parent passes on its EN_LINK notifications and the resolution of its monitor.
    void OnLink(const ENLINK& link);
    void SetDpi(UINT dpi);

  private:
    struct LibraryCloser {
        static void Close(HMODULE library) noexcept { FreeLibrary(library); }
    };

    static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                     UINT_PTR id, DWORD_PTR self);
    bool TakesKey(const MSG& message) const;
    bool OnKey(WPARAM key);
    void FitMargins();
    void Load(const std::string& rtf);
    void MarkLinks();
    void MarkBlock(std::size_t block);
    void Select(LONG start, LONG end);
    CHARRANGE Selection() const;
    const HelpLinkRange* NeighbourLink(bool backwards) const;
    std::optional<unsigned long> SelectedLink() const;
    void Follow(unsigned long context) const;

    UniqueHandle<HMODULE, LibraryCloser> library_;
    HWND window_ = nullptr;
    int margin_ = 0;
    HelpRtf shown_;
};

}  // namespace tonvale
