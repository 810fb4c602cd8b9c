// What the tests of the dialogs share: the item list, the status bar, dropped files, file dialogs,
// the clipboard.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <dlgs.h>

#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/live_dialog.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {

inline constexpr char kOpenTitle[] = "Caricamento file di dati";
inline constexpr char kSaveTitle[] = "Salvataggio file di dati";
inline constexpr char kNoFile[] = "Nessun file selezionato";
inline constexpr char kNotNumeric[] = "Errore. Inserire valori numerici!";
inline constexpr char kNothingSelected[] = "Attenzione! Nessun dato selezionato.";
inline constexpr char kDeletionQuestion[] =
    "Sei sicuro di voler eliminare questo elemento dalla lista?";
inline constexpr int kBack = 0x3023, kNext = 0x3024, kFinish = 0x3025;  // of a property sheet

inline HWND List(HWND window) {
    return ControlOf(window, IDC_ITEM_LIST);
}

inline std::string Rows(HWND window) {
    return RowsOf(List(window));
}

inline void Select(HWND dialog, int row) {
    ListView_SetItemState(List(dialog), row, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
}

inline std::string SelectedRow(HWND dialog) {
    return std::to_string(ListView_GetNextItem(List(dialog), -1, LVNI_SELECTED));
}

inline void DoubleClick(HWND dialog, int row) {
    RECT area{};
    ListView_GetItemRect(List(dialog), row, &area, LVIR_LABEL);
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
        PostMessageW(List(dialog), message, 0, MAKELPARAM(area.left + 4, area.top + 4));
    }
}

inline void Drop(HWND dialog, const std::vector<std::string>& paths) {
    SendMessageW(dialog, WM_DROPFILES, reinterpret_cast<WPARAM>(MakeDrop(paths)), 0);
}

// Fills the name field of the file dialog `title` with `path` and confirms it.
inline void ChooseFile(UiDriver& ui, const std::string& title, const std::string& path) {
    ui.OnWindow(title).SetText(cmb13, path).Command(IDOK);
}

// Chooses a filter of a file dialog, counted from 1.
inline void ChooseFilter(HWND dialog, int index) {
    HWND filter = GetDlgItem(dialog, cmb1);
    SendMessageW(filter, CB_SETCURSEL, static_cast<WPARAM>(index - 1), 0);
    for (WORD notification : {WORD{CBN_SELENDOK}, WORD{CBN_SELCHANGE}}) {
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(cmb1, notification),
                     reinterpret_cast<LPARAM>(filter));
    }
}

// Types the name of a file that is not there into the save dialog, and agrees to make it.
inline void SaveNewFile(UiDriver& ui, const std::string& path) {
    ChooseFile(ui, kSaveTitle, path);
    ui.AnswerMessage("Conferma operazione", path + "\r\nIl file non esiste. Crearlo?", IDYES);
}

// Types a name with an extension that the dialog refuses; the dialog stays.
inline void TypeUnsuitableName(UiDriver& ui, const std::string& path, const std::string& wanted) {
    ChooseFile(ui, kSaveTitle, path);
    ui.AnswerMessage(path, "Il nome del file deve terminare con " + wanted + ".", IDOK);
}

// The name of the file that the status bar or a wizard's page shows.
inline std::string Status(HWND window) {
    const std::string path = TextOf(window, IDC_STATUS_BAR) + TextOf(window, IDC_WIZARD_FILE);
    return path.substr(path.find_last_of('\\') + 1);
}

inline std::string ClipboardBytes(UINT format) {
    if (!OpenClipboard(nullptr)) return "(not open)";
    std::string bytes;
    if (HANDLE memory = GetClipboardData(format)) {
        bytes.assign(static_cast<const char*>(GlobalLock(memory)), GlobalSize(memory));
        GlobalUnlock(memory);
    }
    CloseClipboard();
    return bytes;
}

}  // namespace tonvale
