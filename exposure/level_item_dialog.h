// The bases of the dialogs that edit one level (control 1111), which may come from another
// calculator's file, alone or as a part of an item of a list.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "common/file_kinds.h"
#include "dialogs/dialog_win.h"
#include "dialogs/file_dialogs_win.h"
#include "dialogs/item_list_win.h"
#include "resources/resource.h"

namespace tonvale {

// Rows that the tables of these dialogs share.
inline constexpr ControlTip kReadLevelTip{IDC_READ_LEVEL,
                                          L"Carica il valore del livello da un file"};
inline constexpr ControlTip kConfirmItemTip{
    IDOK, L"Aggiunge / Modifica / Elimina un elemento della lista"};
inline constexpr ControlTextLimit kLevelLimit{IDC_LEVEL_EDIT, kMaxValueCharacters};

// Which files a level comes from: by "Apri" or dropped.
struct LevelSource {
    FileKind kind;
    std::string_view key;  // of the header section
    std::optional<std::string> (*choose)(AppContext& app, HWND owner);
};

inline constexpr LevelSource kLevelOfSpectrum{FileKind::kSpr, "LAEQ", ReadSpectrumLevel};
inline constexpr LevelSource kLevelOfDay{FileKind::kLepd, "LEPD", ReadDailyLevel};

class LevelItemDialog : public ModalDialog {
  protected:
    LevelItemDialog(AppContext& app, const DialogDescription& description,
                    const LevelSource& source)
        : ModalDialog(app, description), source_(source) {}

    bool OnCommand(int id, int notification) override;
    void OnDrop(const std::string& path) override;

  private:
    void TakeLevel(const std::optional<std::string>& level_dba);

    const LevelSource& source_;
};

// Adds, modifies or deletes an item: title and buttons tell which. What is to be deleted can only
// be looked at.
class ListItemDialog : public LevelItemDialog {
  protected:
    ListItemDialog(AppContext& app, const DialogDescription& description, const LevelSource& source,
                   ItemAction action)
        : LevelItemDialog(app, description, source), action_(action) {}

    // Fills the fields from the item.
    virtual void ShowItem() = 0;
    // Takes the fields over into the item; false when they are refused, and the user knows why.
    virtual bool TakeItem() = 0;

    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    void OnDrop(const std::string& path) override;

    bool deletes() const { return action_ == ItemAction::kDelete; }

  private:
    ItemAction action_;
};

}  // namespace tonvale
