// The common open and save dialogs with the notes panel IDD_ADDENDUM below them.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "common/user_message.h"
#include "dialogs/app_context_win.h"

namespace tonvale {

inline constexpr std::string_view kOpenDataTitle = "Caricamento file di dati";
inline constexpr std::string_view kSaveDataTitle = "Salvataggio file di dati";

// `filter_text` is a list of (description, pattern) pairs parted by its own last character. The
// start folder is the program's. nullopt when the user cancels.
std::optional<std::string> ChooseFileToOpen(AppContext& app, HWND owner,
                                            std::string_view filter_text, std::string_view title);
std::optional<std::string> ChooseFileToSave(AppContext& app, HWND owner,
                                            std::string_view filter_text, std::string_view title);

// As ChooseFileToSave; a name without one of `extensions` is refused, and the dialog stays with it.
std::optional<std::string> ChooseFileToSaveAs(AppContext& app, HWND owner,
                                              std::string_view filter_text,
                                              std::initializer_list<std::string_view> extensions);

// What the user is told when `path` could not be written; `reason` is a clause, as of a FileError.
UserMessage SaveFailure(const std::string& path, std::string_view reason);

struct ChosenFile {
    std::string path;
    int filter_index;  // from 1
};
// The main window's "Apri": the filters of all kinds, the chosen one told.
std::optional<ChosenFile> ChooseAnyFile(AppContext& app, HWND owner);

// Lets the user choose a noise spectrum (.spr) and gives its LAEQ; likewise the Lep,d of a daily
// exposure file (.lep). nullopt when cancelled or when the file has none.
std::optional<std::string> ReadSpectrumLevel(AppContext& app, HWND owner);
std::optional<std::string> ReadDailyLevel(AppContext& app, HWND owner);

// The path of a drop of exactly one file; empty otherwise. The handle stays the caller's.
std::string DroppedFileName(HDROP drop);

}  // namespace tonvale
