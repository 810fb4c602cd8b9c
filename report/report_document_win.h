// The report document: rich-text editor (child 13) and formatting toolbar (child 14) of the main
// window, with everything that the document commands do.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "dialogs/app_context_win.h"

namespace tonvale {

class ReportDocument {
  public:
    explicit ReportDocument(AppContext& app);
    ~ReportDocument();
    ReportDocument(const ReportDocument&) = delete;
    ReportDocument& operator=(const ReportDocument&) = delete;

    // Creates the children in `parent`, the main window; false when the editor cannot be created.
    bool Create(HWND parent);
    // Places the children within `area` of the parent.
    void Layout(const RECT& area);
    void Show(bool visible);
    void OnDpiChanged();
    void SetFocus();

    // Path of the current document; empty when it has none.
    const std::string& path() const;
    bool IsModified() const;

    // Asks whether to save a modified document. False when the user cancels, or when it is still
    // modified after saving: then nothing may be lost.
    bool MayDiscard();

    // Each keeps the current document when it fails or the user cancels, having told why.
    bool New();
    bool Open(const std::string& path);
    bool Save();    // to its path, else as SaveAs
    bool SaveAs();  // asks for a name
    bool SaveTo(const std::string& path);

    void Cut();
    bool Copy();
    void Paste();           // the first available of the formats it takes
    bool CanPaste() const;  // one of these formats is on the clipboard
    bool CanCut() const;    // something is selected
    void Undo();
    void Redo();
    void Print();

    // Puts the menu of the formatting commands into the menu bar of the main window.
    void AddMenuTo(HMENU bar, UINT position);
    // Marks the formatting commands in `menu` that is about to be shown as the selection has them;
    // enables them when they are `usable`.
    void MarkMenu(HMENU menu, bool usable) const;

    // Formatting commands CMD_BULLETS to CMD_WORD_WRAP; true when `id` is one.
    bool OnCommand(int id);
    // Notifications of the editor and the formatting toolbar; true when handled.
    bool OnNotify(const NMHDR& header, LRESULT& result);

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace tonvale
