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
        // Whatever may have happened to the text since; what is told of a selection asks for its
        // format before this guard could see to it.
        const bool uses =
            message == WM_KEYDOWN || message == WM_CHAR || message == EM_GETCHARFORMAT;
        if (uses) PullOut(Selection());
        if (ReplacesSelection(message, wparam)) SettleRange();
        if (message == EM_STREAMIN && (wparam & SFF_SELECTION) != 0) PartParagraphs(false);
        const LRESULT result = message == EM_SETPARAFORMAT
                                   ? SetParagraphFormat(*reinterpret_cast<PARAFORMAT*>(lparam))
                                   : Pass(message, wparam, lparam);
        if (message == EM_STREAMIN) PartParagraphs(true);
        const bool steps = message == WM_KEYDOWN && (wparam == VK_LEFT || wparam == VK_RIGHT);
        if (steps && !IsGood(Selection())) {
            Pass(message, wparam, lparam);  // over the other half of the line end
        }
        const CHARRANGE selection = Selection();
        if (!(selection == good_)) PullOut(selection);
        if (message == WM_KEYDOWN || message == EM_UNDO || message == EM_REDO) SettleCaret();
        return result;
    }

  private:
    static bool ReplacesSelection(UINT message, WPARAM wparam) {
        constexpr std::array<UINT, 7> kMessages = {
            WM_CHAR, WM_CLEAR, WM_CUT, WM_PASTE, EM_REPLACESEL, EM_SETTEXTEX, EM_STREAMIN};
        if (message == WM_KEYDOWN) return wparam == VK_DELETE || wparam == VK_BACK;
        return std::find(kMessages.begin(), kMessages.end(), message) != kMessages.end();
    }

    // A step over words, or an undone change, may leave the caret or an end of the selection where
    // the next change goes wrong, though its position is right. To set it once more mends it; but
    // for a selection, which then grows from its other end, only when it is about to be replaced.
    void SettleCaret() const {
        if (good_.cpMin == good_.cpMax) Select(good_);
    }
    void SettleRange() const {
        const CHARRANGE selection = Selection();
        if (selection.cpMin != selection.cpMax) Select(selection);
    }

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

    // Paragraphs of the same numbering, also of none, are a list to the control, which loses count
    // of them when one is added in the middle. Where each begins a list of its own, which nobody
    // sees, it does not.
    LRESULT SetParagraphFormat(const PARAFORMAT& wanted) const {
        PARAFORMAT2 format{};
        std::memcpy(&format, &wanted, std::min(std::size_t{wanted.cbSize}, sizeof(format)));
        if ((format.dwMask & PFM_NUMBERING) != 0) {
            format.dwMask |= PFM_NUMBERINGSTYLE;
            format.wNumberingStyle |= PFNS_NEWNUMBER;
        }
        return Pass(EM_SETPARAFORMAT, format);
    }

    // The same for all of the text, in which the control itself has made or read some.
    void PartParagraphs(bool only_with_bullets) const {
        const CHARRANGE selection = Selection();
        const LRESULT event_mask = Pass(EM_SETEVENTMASK, 0, 0);
        Select({0, -1});
        PARAFORMAT2 format{};
        Pass(EM_GETPARAFORMAT, format);
        const bool has_bullets = (format.dwMask & PFM_NUMBERING) == 0 || format.wNumbering != 0;
        const bool is_parted = (format.dwMask & PFM_NUMBERINGSTYLE) != 0 &&
                               (format.wNumberingStyle & PFNS_NEWNUMBER) != 0;
        if ((has_bullets || !only_with_bullets) && !is_parted) {
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
