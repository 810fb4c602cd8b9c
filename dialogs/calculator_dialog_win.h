// The base of the calculators' dialogs: menu FILE_OPERATION, status bar, current file, notes,
// dropped data files, copy and print. A calculator supplies what to load, store, show and compute.
#pragma once

#include <string>
#include <string_view>

#include "dialogs/dialog_win.h"
#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "resources/resource.h"

namespace tonvale {

// Rows that the tables of several calculators share.
inline constexpr ControlTip kStatusBarTip{IDC_STATUS_BAR,
                                          L"Visualizza il nome del file correntemente selezionato"};
inline constexpr ControlTip kNotesTip{IDC_NOTES_EDIT,
                                      L"Inserire qui delle note da salvare insieme ai dati"};
inline constexpr ControlTextLimit kNotesLimit{IDC_NOTES_EDIT, kMaxNotesCharacters};

class CalculatorDialog : public Dialog {
  public:
    // `path`, when not empty, is loaded while the dialog opens.
    CalculatorDialog(AppContext& app, const DialogDescription& description, FileKind kind,
                     std::string path);

  protected:
    // Fills the dialog from the kept state, before a path is loaded.
    virtual void ShowKeptState() = 0;
    // Takes a data file over into the dialog; false, and nothing changed, when it is refused.
    virtual bool LoadFrom(const ProfileFile& file) = 0;
    virtual void StoreTo(ProfileFile& file) = 0;
    // Recomputes and shows the results; after opening and after a dropped file.
    virtual void RecomputeResults() = 0;
    virtual std::string CurrentSummary(std::string_view list_separator) = 0;
    virtual Printout CurrentPrintout() = 0;
    // Keeps the dialog's content for its next opening.
    virtual void KeepState() = 0;

    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    void OnDrop(const std::string& path) override;
    bool OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result) override;

  private:
    void OpenFile();
    void SaveFile();
    void SaveFileAs();
    void Print();
    // False, and nothing changed, when the file is refused.
    bool LoadPath(const std::string& path);
    // On failure the user is told, and the current file stays.
    void SavePath(const std::string& path);
    void ShowCurrent();

    FileKind kind_;
    std::string initial_path_;
    std::string current_file_;
};

}  // namespace tonvale
