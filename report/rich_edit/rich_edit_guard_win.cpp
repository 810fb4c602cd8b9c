#include "report/rich_edit/rich_edit_guard_win.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>

namespace tonvale {

namespace {

bool operator==(const CHARRANGE& one, const CHARRANGE& other) {
    return one.cpMin == other.cpMin && one.cpMax == other.cpMax;
}

constexpr WPARAM kUndoSteps = 100;  // the control's own number

class EditorGuard {
  public:
    LRESULT Handle(HWND editor, UINT message, WPARAM wparam, LPARAM lparam) {
        editor_ = editor;
        // Whatever may have happened to the text since.
        if (message == WM_KEYDOWN || message == WM_CHAR) PullOut(Selection());
        const LRESULT result = message == EM_SETPARAFORMAT
                                   ? SetParagraphFormat(*reinterpret_cast<PARAFORMAT*>(lparam))
                                   : Pass(message, wparam, lparam);
        if (message == EM_STREAMIN) PartAllBullets();
        CHARRANGE selection = Selection();
        if (selection == good_) return result;
        const bool steps = message == WM_KEYDOWN && (wparam == VK_LEFT || wparam == VK_RIGHT);
        if (steps && !IsGood(selection)) {
            Pass(message, wparam, lparam);  // over the other half of the line end
            selection = Selection();
        }
        PullOut(selection);
        return result;
    }

  private:
    // Past this guard, which it does not concern.
    LRESULT Pass(UINT message, WPARAM wparam, LPARAM lparam) const {
        return DefSubclassProc(editor_, message, wparam, lparam);
    }
    LRESULT Pass(UINT message, PARAFORMAT2& format) const {
        format.cbSize = sizeof(format);
        return Pass(message, 0, reinterpret_cast<LPARAM>(&format));
    }

    CHARRANGE Selection() const {
        CHARRANGE range{};
        Pass(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return range;
    }

    void Select(CHARRANGE range) const { Pass(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range)); }

    LONG TextLength() const {
        GETTEXTLENGTHEX options{GTL_NUMCHARS | GTL_PRECISE, 1200};
        return static_cast<LONG>(Pass(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&options), 0));
    }

    bool IsWithinLineEnd(LONG position) const {
        if (position == 0) return false;
        std::array<char, 8> text{};  // of two characters: a control with this fault gives bytes
        TEXTRANGEA around{{position - 1, position + 1}, text.data()};
        Pass(EM_GETTEXTRANGE, 0, reinterpret_cast<LPARAM>(&around));
        return text[0] == '\r' && text[1] == '\n';
    }

    bool IsGood(const CHARRANGE& range) const {
        return range.cpMax <= TextLength() && !IsWithinLineEnd(range.cpMin) &&
               !IsWithinLineEnd(range.cpMax);
    }

    void PullOut(const CHARRANGE& selection) {
        good_ = selection;
        if (IsGood(selection)) return;
        const LONG length = TextLength();
        const auto place = [&](LONG position) {
            position = std::min(position, length);
            return IsWithinLineEnd(position) ? position - 1 : position;
        };
        good_ = {place(selection.cpMin), place(selection.cpMax)};
        Select(good_);
    }

    // Paragraphs with bullets are a list to the control, which loses count of them when one is
    // added in the middle. Where each begins a list of its own, which nobody sees, it does not.
    LRESULT SetParagraphFormat(const PARAFORMAT& wanted) const {
        PARAFORMAT2 format{};
        std::memcpy(&format, &wanted, std::min(std::size_t{wanted.cbSize}, sizeof(format)));
        if ((format.dwMask & PFM_NUMBERING) != 0) {
            format.dwMask |= PFM_NUMBERINGSTYLE;
            format.wNumberingStyle |= PFNS_NEWNUMBER;
        }
        return Pass(EM_SETPARAFORMAT, format);
    }

    // The same for a text that has been read.
    void PartAllBullets() const {
        const CHARRANGE selection = Selection();
        const LRESULT event_mask = Pass(EM_SETEVENTMASK, 0, 0);
        Select({0, -1});
        PARAFORMAT2 format{};
        Pass(EM_GETPARAFORMAT, format);
        const bool has_bullets = (format.dwMask & PFM_NUMBERING) == 0 || format.wNumbering != 0;
        const bool is_parted = (format.dwMask & PFM_NUMBERINGSTYLE) != 0 &&
                               (format.wNumberingStyle & PFNS_NEWNUMBER) != 0;
        if (has_bullets && !is_parted) {
            format.dwMask = PFM_NUMBERINGSTYLE;
            format.wNumberingStyle = PFNS_NEWNUMBER;
            Pass(EM_SETUNDOLIMIT, 0, 0);
            Pass(EM_SETPARAFORMAT, format);
            Pass(EM_SETUNDOLIMIT, kUndoSteps, 0);
        }
        Select(selection);
        Pass(EM_SETEVENTMASK, 0, event_mask);
    }

    HWND editor_ = nullptr;
    CHARRANGE good_{};
};

LRESULT CALLBACK GuardEditor(HWND editor, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                             DWORD_PTR data) {
    auto* guard = reinterpret_cast<EditorGuard*>(data);
    if (message != WM_NCDESTROY) return guard->Handle(editor, message, wparam, lparam);
    RemoveWindowSubclass(editor, GuardEditor, id);
    delete guard;
    return DefSubclassProc(editor, message, wparam, lparam);
}

}  // namespace

bool NeedsGuard(RichEdit& edit) {
    edit.Send(WM_KEYDOWN, VK_RIGHT, 1);
    CHARRANGE range{};
    edit.Send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    edit.Select({0, 0});
    return range.cpMax > 0;
}

void Guard(HWND editor) {
    auto guard = std::make_unique<EditorGuard>();
    if (SetWindowSubclass(editor, GuardEditor, 0, reinterpret_cast<DWORD_PTR>(guard.get()))) {
        static_cast<void>(guard.release());  // the editor's, until it is destroyed
    }
}

}  // namespace tonvale
