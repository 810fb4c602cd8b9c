// The rich-text edit control, in the terms of its own messages.
#pragma once

#include <windows.h>

#include <richedit.h>

#include <optional>
#include <string>
#include <string_view>

namespace tonvale {

class RichEdit {
  public:
    // Creates an empty editor without formats of its own; false when it cannot be.
    bool Create(HINSTANCE instance, HWND parent, int id, DWORD style, DWORD extended_style);
    HWND window() const { return window_; }

    // The whole text, or the selection only, in Rich Text Format; nullopt when the control says
    // that it failed. Some controls cut the text short without saying so. `as_utf8` asks for a kind
    // of the format ("\\urtf") whose text is plain UTF-8, which not every control knows.
    std::optional<std::string> WriteRtf(bool selection_only, bool as_utf8) const;
    // Replaces the whole text, or the selection; false when the control could not make sense of all
    // of it: it then holds a part.
    bool ReadRtf(std::string_view rtf, bool selection_only);
    // Replaces the selection; may be undone.
    void InsertText(std::wstring_view text);
    void Clear();

    int TextLength() const;
    std::wstring SelectedText() const;

    // Within the text.
    CHARRANGE Selection() const;
    // True when the selection reaches beyond the text, as that of everything does.
    bool SelectsEndOfText() const;
    void Select(CHARRANGE range);
    // Where the first line is higher than the window, to select its start shows its end.
    void ScrollToTop();

    // Of the selection. `dwMask` tells which attributes are the same all over it.
    CHARFORMAT2W CharacterFormat() const;
    void SetCharacterFormat(CHARFORMAT2W& format, WPARAM range = SCF_SELECTION);
    PARAFORMAT ParagraphFormat() const;
    void SetParagraphFormat(PARAFORMAT& format);

    void SetWordWrap(bool on);
    bool IsModified() const;
    void SetModified(bool modified);

    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
        return SendMessageW(window_, message, wparam, lparam);
    }

  private:
    HWND window_ = nullptr;
};

// Nothing is redrawn, nor is the selection's change told, while this lives; then the selection and
// what is seen of the text are as they were.
class QuietEdit {
  public:
    explicit QuietEdit(RichEdit& edit);
    ~QuietEdit();
    QuietEdit(const QuietEdit&) = delete;
    QuietEdit& operator=(const QuietEdit&) = delete;

  private:
    RichEdit& edit_;
    CHARRANGE selection_;
    LRESULT event_mask_;
    POINT scrolled_{};
};

}  // namespace tonvale
