// The base of the calculators' dialogs: menu FILE_OPERATION, status bar, current file, notes,
// dropped data files, copy and print. A calculator supplies what to load, store, show and compute.
#pragma once

#include <string>
#include <string_view>

#include "dialogs/data_file_session_win.h"
#include "dialogs/dialog_win.h"

namespace tonvale {

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
