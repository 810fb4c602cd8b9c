// What the tests of the dialogs share: the item list, the status bar, tips, dropped files, file
// dialogs, the clipboard.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <dlgs.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/ui/dialog_fixture.h"
#include "tests/ui/ui_driver.h"

namespace tonvale {

inline constexpr char kOpenTitle[] = "Caricamento file di dati";
inline constexpr char kSaveTitle[] = "Salvataggio file di dati";
inline constexpr char kNoFile[] = "Nessun file selezionato";
inline constexpr char kNotNumeric[] = "Errore. Inserire valori numerici!";
inline constexpr char kNothingSelected[] = "Attenzione! Nessun dato selezionato.";
inline constexpr char kDeletionQuestion[] =
    "Sei sicuro di voler eliminare questo elemento dalla lista?";
inline constexpr int kFileNameField = cmb13;  // of the common file dialogs
inline constexpr int kBack = 0x3023, kNext = 0x3024, kFinish = 0x3025;  // of a property sheet

inline HWND List(HWND dialog) {
    return GetDlgItem(dialog, IDC_ITEM_LIST);
}

inline std::string Cell(HWND dialog, int row, int column) {
    wchar_t text[32] = {};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = static_cast<int>(std::size(text));
    SendMessageW(List(dialog), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return Narrow(text);
}

// The rows of a list of two columns.
inline std::vector<std::string> Rows(HWND dialog) {
    const int count = ListView_GetItemCount(List(dialog));
    std::vector<std::string> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        rows.push_back(Cell(dialog, i, 0) + " x " + Cell(dialog, i, 1));
    }
    return rows;
}

inline void Select(HWND dialog, int row) {
    ListView_SetItemState(List(dialog), row, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
}

inline int SelectedRow(HWND dialog) {
    return ListView_GetNextItem(List(dialog), -1, LVNI_SELECTED);
}

// What the user does to choose an item of a drop-down list.
inline void Choose(HWND dialog, int list, int item) {
    HWND control = ControlOf(dialog, list);
    SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(control));
}

// Expects that the next key typed replaces what the field holds.
inline void ExpectAllSelected(HWND field) {
    EXPECT_EQ(GetFocus(), field);
    EXPECT_EQ(SendMessageW(field, EM_GETSEL, 0, 0), MAKELRESULT(0, GetWindowTextLengthW(field)));
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

// Fills the file dialog `title` with `path` and confirms it.
inline void ChooseFile(UiDriver& ui, const std::string& title, const std::string& path) {
    ui.OnWindow(title).SetText(kFileNameField, path).Command(IDOK);
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

// The name of the file that the status bar shows.
inline std::string Status(HWND window) {
    const std::string path = TextOf(window, IDC_STATUS_BAR);
    return path.substr(path.find_last_of('\\') + 1);
}

// The texts of several controls, "85.0|   480".
inline std::string TextsOf(HWND dialog, std::initializer_list<int> controls) {
    std::string texts;
    for (const int control : controls) {
        texts += (control == *controls.begin() ? "" : "|") + TextOf(dialog, control);
    }
    return texts;
}

// The tip of a control as the tool-tip window asks for it.
inline std::string TipOf(HWND dialog, int control) {
    NMTTDISPINFOW request{};
    HWND window = GetDlgItem(dialog, control);
    request.hdr = {nullptr, reinterpret_cast<UINT_PTR>(window), TTN_GETDISPINFOW};
    request.lpszText = request.szText;
    request.uFlags = TTF_IDISHWND;
    SendMessageW(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&request));
    return Narrow(request.lpszText);
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
