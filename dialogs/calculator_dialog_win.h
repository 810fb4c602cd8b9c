// The base of the calculators' dialogs: menu FILE_OPERATION, status bar, current file, notes,
// dropped data files, copy and print. A calculator supplies what to load, store, show and compute.
#pragma once

#include <string>
#include <string_view>

#include "common/notes.h"
#include "dialogs/data_file_session_win.h"
#include "dialogs/dialog_win.h"
#include "resources/resource.h"

namespace tonvale {

// Rows that the tables of several calculators share.
inline constexpr ControlTip kStatusBarTip{IDC_STATUS_BAR,
                                          L"Visualizza il nome del file correntemente selezionato"};
inline constexpr ControlTip kNotesTip{IDC_NOTES_EDIT,
                                      L"Inserire qui delle note da salvare insieme ai dati"};
inline constexpr ControlTextLimit kNotesLimit{IDC_NOTES_EDIT, kMaxNotesCharacters};

class CalculatorDialog : public ModalDialog, private DataFileClient {
  public:
    // `path`, when not empty, is loaded while the dialog opens.
    CalculatorDialog(AppContext& app, const DialogDescription& description, FileKind kind,
                     std::string path);

  protected:
    // Fills the dialog from the kept state, before a path is loaded.
    virtual void ShowKeptState() = 0;
    bool LoadFrom(const ProfileFile& file) override = 0;
    void StoreTo(ProfileFile& file) override = 0;
    Printout CurrentPrintout() override = 0;
    // Recomputes and shows the results; after opening and after a dropped file.
    virtual void RecomputeResults() = 0;
    virtual std::string CurrentSummary(std::string_view list_separator) = 0;
    // Keeps the dialog's content for its next opening.
    virtual void KeepState() = 0;

    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    void OnDrop(const std::string& path) override;

  private:
    // Shows the current file as far as the bar has room for it.
    class StatusBar : public DialogPart {
      public:
        explicit StatusBar(CalculatorDialog& dialog) : dialog_(dialog) {}
        void OnResize() override { dialog_.ShowCurrentFile(dialog_.session_.current_file()); }

      private:
        CalculatorDialog& dialog_;
    };

    HWND FileOwner() const override { return window(); }
    void ShowCurrentFile(const std::string& path) override;

    std::string initial_path_;
    DataFileSession session_;
    StatusBar status_bar_{*this};
};

}  // namespace tonvale
