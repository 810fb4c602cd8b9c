// The current data file of a calculator's dialog or wizard, and the commands that work on it: open,
// save, save as, print.
#pragma once

#include <windows.h>

#include <string>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/printout.h"
#include "common/profile_file.h"
#include "dialogs/app_context_win.h"
#include "dialogs/dialog_win.h"
#include "resources/resource.h"

namespace tonvale {

// Rows that the tables of several calculators share.
inline constexpr ControlTip kStatusBarTip{IDC_STATUS_BAR,
                                          L"Visualizza il nome del file correntemente selezionato"};
inline constexpr ControlTip kNotesTip{IDC_NOTES_EDIT,
                                      L"Inserire qui delle note da salvare insieme ai dati"};
inline constexpr ControlTextLimit kNotesLimit{IDC_NOTES_EDIT, kMaxNotesCharacters};

// Who shows and edits what the file holds.
class DataFileClient {
  public:
    virtual ~DataFileClient() = default;

    // The window over which files are chosen.
    virtual HWND FileOwner() const = 0;
    // What is on the screen is to be taken over: a command is about to work on it.
    virtual void BeforeFileCommand() {}
    // Takes a data file over; false, and nothing changed, when it is refused.
    virtual bool LoadFrom(const ProfileFile& file) = 0;
    // The command "Apri" has taken a file over.
    virtual void AfterOpenCommand() {}
    virtual void StoreTo(ProfileFile& file) = 0;
    virtual Printout CurrentPrintout() = 0;
    // `path` is the current file; empty: none.
    virtual void ShowCurrentFile(const std::string& path) = 0;
};

class DataFileSession : public DialogPart {
  public:
    DataFileSession(AppContext& app, FileKind kind, DataFileClient& client)
        : app_(app), kind_(kind), client_(client) {}

    const std::string& current_file() const { return current_file_; }

    // Loads a file and makes it the current one. False, and nothing changed, when it is refused.
    bool Load(const std::string& path);
    // The same for a dropped file, which must have the extension of the session's kind.
    bool LoadDropped(const std::string& path);

    // The commands of menu FILE_OPERATION and of the wizards' buttons.
    bool OnCommand(int id, int notification) override;

  private:
    void Open();
    void Save();
    void SaveAs();
    void Print();
    // On failure the user is told, and the current file stays.
    void SaveTo(const std::string& path);
    void SetCurrent(const std::string& path);

    AppContext& app_;
    FileKind kind_;
    DataFileClient& client_;
    std::string current_file_;
};

}  // namespace tonvale
