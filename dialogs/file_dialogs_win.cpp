#include "dialogs/file_dialogs_win.h"

#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>

#include <algorithm>
#include <array>
#include <exception>
#include <vector>

#include "common/file_kinds.h"
#include "common/notes.h"
#include "common/text.h"
#include "common/unicode_win.h"
#include "dialogs/dialog_win.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr std::size_t kPathUnits = 32768;
constexpr std::size_t kFileTitleUnits = 16;
constexpr std::string_view kOpenAnyTitle = "Apri";
constexpr char kConfirmCaption[] = "Conferma operazione";
// The place in a list of filters whose files are shown without notes.
constexpr DWORD kFilterWithoutNotes = 8;
constexpr std::array<std::string_view, 3> kExtensionsWithoutNotes = {".tnv", ".bmp", ".csv"};
constexpr std::array<int, 3> kNotesControls = {IDC_NOTES_LABEL, IDC_NOTES_EDIT, IDC_MODIFY_NOTES};

bool CanHoldNotes(std::string_view extension) {
    return std::none_of(
        kExtensionsWithoutNotes.begin(), kExtensionsWithoutNotes.end(),
        [extension](std::string_view other) { return EqualsIgnoringCase(other, extension); });
}

// The names that a save dialog takes. Extensions have their points.
struct SaveNames {
    std::string default_extension;               // empty in an open dialog
    std::vector<std::string_view> extensions{};  // empty: any
};

UserMessage UnsuitableExtension(const std::string& path,
                                const std::vector<std::string_view>& extensions) {
    std::string text = "Il nome del file deve terminare con ";
    for (std::size_t i = 0; i < extensions.size(); ++i) {
        text.append(i == 0 ? "\"" : " oppure \"").append(extensions[i]).append("\"");
    }
    return {path, text + ".", MessageIcon::kExclamation};
}

// The notes panel below the controls of a file dialog. It is the dialog's hook, too, also where
// there is no panel.
class NotesPanel {
  public:
    NotesPanel(FileSystem& files, SaveNames save_names)
        : files_(files), save_names_(std::move(save_names)) {}

    // A save dialog of files without notes is not left with an empty band.
    bool IsWanted() const { return !saves() || CanHoldNotes(save_names_.default_extension); }
    static UINT_PTR CALLBACK Hook(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  private:
    UINT_PTR Dispatch(UINT message, WPARAM wparam, LPARAM lparam);
    static LRESULT CALLBACK WatchHelpButton(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam,
                                            UINT_PTR id, DWORD_PTR data);
    void Open();
    void OnCommand(int id, int notification);
    // True when the choice of a file is refused.
    bool OnNotify(const OFNOTIFYW& notification);
    void ShowFor(bool holds_notes);
    void ShowNotesOfSelection();
    void ClearNotes();
    std::string SelectedPath() const;
    void ModifyNotes();
    bool RefusesName(const std::string& path) const;
    bool saves() const { return !save_names_.default_extension.empty(); }

    FileSystem& files_;
    SaveNames save_names_;
    HWND window_ = nullptr;
    std::string shown_path_;                    // whose notes are shown; empty when there is none
    FileError shown_error_ = FileError::kNone;  // why they are not, after all
    bool is_filling_ = false;
};

UINT_PTR CALLBACK NotesPanel::Hook(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        const auto* dialog = reinterpret_cast<const OPENFILENAMEW*>(lparam);
        SetWindowLongPtrW(window, GWLP_USERDATA, static_cast<LONG_PTR>(dialog->lCustData));
        reinterpret_cast<NotesPanel*>(dialog->lCustData)->window_ = window;
    }
    auto* panel = reinterpret_cast<NotesPanel*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!panel) return 0;
    try {
        return panel->Dispatch(message, wparam, lparam);
    } catch (const std::exception&) {  // a file too long for the memory has no notes
        return 0;
    }
}

UINT_PTR NotesPanel::Dispatch(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) Open();
    if (message == WM_COMMAND) OnCommand(LOWORD(wparam), HIWORD(wparam));
    if (message != WM_NOTIFY) return 0;
    const bool refused = OnNotify(*reinterpret_cast<const OFNOTIFYW*>(lparam));
    SetWindowLongPtrW(window_, DWLP_MSGRESULT, refused);
    return refused;
}

void ShowHelpNotice(HWND owner) {
    ShowMessageBox(owner, {"Avviso", "Funzione non implementata"});
}

// Not every system turns the Help button into a notification.
LRESULT CALLBACK NotesPanel::WatchHelpButton(HWND dialog, UINT message, WPARAM wparam,
                                             LPARAM lparam, UINT_PTR id, DWORD_PTR /*data*/) {
    if (message == WM_COMMAND && LOWORD(wparam) == pshHelp) {
        ShowHelpNotice(dialog);
        return 0;
    }
    if (message == WM_NCDESTROY) RemoveWindowSubclass(dialog, WatchHelpButton, id);
    return DefSubclassProc(dialog, message, wparam, lparam);
}

void NotesPanel::Open() {
    SendDlgItemMessageW(window_, IDC_NOTES_EDIT, EM_LIMITTEXT, kMaxNotesCharacters, 0);
    // There is no file yet that edited notes could go to.
    SendDlgItemMessageW(window_, IDC_NOTES_EDIT, EM_SETREADONLY, saves(), 0);
    ShowFor(true);
    SetWindowSubclass(GetParent(window_), WatchHelpButton, 0, 0);
}

void NotesPanel::OnCommand(int id, int notification) {
    if (id == IDC_MODIFY_NOTES && notification == BN_CLICKED) ModifyNotes();
    if (id != IDC_NOTES_EDIT || notification != EN_CHANGE || is_filling_) return;
    if (GetWindowTextLengthW(GetDlgItem(window_, IDC_NOTES_EDIT)) > 0) {
        EnableWindow(GetDlgItem(window_, IDC_MODIFY_NOTES), TRUE);
    }
}

bool NotesPanel::OnNotify(const OFNOTIFYW& notification) {
    switch (notification.hdr.code) {
        case CDN_FILEOK:
            return RefusesName(Narrow(notification.lpOFN->lpstrFile));
        case CDN_TYPECHANGE:
            ShowFor(saves() || notification.lpOFN->nFilterIndex != kFilterWithoutNotes);
            break;
        case CDN_SELCHANGE:
            ShowNotesOfSelection();
            break;
        case CDN_FOLDERCHANGE:
            ClearNotes();
            break;
        default:
            break;
    }
    return false;
}

// The dialogs of the system do not agree on OFN_CREATEPROMPT when a file is saved.
bool NotesPanel::RefusesName(const std::string& path) const {
    if (!saves()) return false;
    HWND dialog = GetParent(window_);
    const auto& wanted = save_names_.extensions;
    const auto is_its_own = [extension = FileExtension(path)](std::string_view other) {
        return EqualsIgnoringCase(extension, other);
    };
    if (!wanted.empty() && std::none_of(wanted.begin(), wanted.end(), is_its_own)) {
        ShowMessageBox(dialog, UnsuitableExtension(path, wanted));
        return true;
    }
    if (GetFileAttributesW(Widen(path).c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    const UserMessage question{kConfirmCaption, path + "\r\nIl file non esiste. Crearlo?"};
    return ShowMessageBox(dialog, question, MB_YESNO) != IDYES;
}

void NotesPanel::ShowFor(bool holds_notes) {
    for (int control : kNotesControls) {
        const bool shown = holds_notes && !(saves() && control == IDC_MODIFY_NOTES);
        ShowWindow(GetDlgItem(window_, control), shown ? SW_SHOWNA : SW_HIDE);
    }
}

void NotesPanel::ClearNotes() {
    shown_path_.clear();
    is_filling_ = true;
    SetDlgItemTextW(window_, IDC_NOTES_EDIT, L"");
    is_filling_ = false;
    EnableWindow(GetDlgItem(window_, IDC_MODIFY_NOTES), FALSE);
}

void NotesPanel::ShowNotesOfSelection() {
    ClearNotes();
    const std::string path = SelectedPath();
    const DWORD attributes = GetFileAttributesW(Widen(path).c_str());
    const bool is_folder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool is_pattern = FileName(path).starts_with('*');
    if (path.empty() || is_folder || is_pattern || !CanHoldNotes(FileExtension(path))) return;
    shown_path_ = path;
    std::string notes;
    shown_error_ = ReadNotesOfFile(files_, path, notes);
    is_filling_ = true;
    SetWindowTextUtf8(GetDlgItem(window_, IDC_NOTES_EDIT), notes);
    is_filling_ = false;
}

std::string NotesPanel::SelectedPath() const {
    std::vector<wchar_t> path(kPathUnits);
    const LRESULT units = SendMessageW(GetParent(window_), CDM_GETFILEPATH, path.size(),
                                       reinterpret_cast<LPARAM>(path.data()));
    return units > 0 ? Narrow(path.data()) : std::string();
}

void NotesPanel::ModifyNotes() {
    if (shown_path_.empty()) return;
    HWND dialog = GetParent(window_);
    const UserMessage question{kConfirmCaption, "Volete procedere con la modifica?"};
    if (ShowMessageBox(dialog, question, MB_YESNOCANCEL) != IDYES) return;
    const std::string notes = WindowText(GetDlgItem(window_, IDC_NOTES_EDIT));
    FileError error = shown_error_;  // notes that nobody has seen are not written over
    if (error == FileError::kNone) {
        error =
            WriteNotesOfFile(files_, shown_path_, CutToCharacters(notes, kMaxKeptNotesCharacters));
    }
    if (error != FileError::kNone) ShowMessageBox(dialog, SaveFailure(shown_path_, Reason(error)));
}

// A list of filters as the dialogs want it: its last character everywhere replaced by a NUL, and
// one more at the end.
std::wstring FilterList(std::string_view filter_text) {
    std::wstring list = Widen(filter_text);
    if (!list.empty()) std::replace(list.begin(), list.end(), wchar_t{list.back()}, L'\0');
    list += L'\0';
    return list;
}

// From the last "." of the filter text up to its separator: the default extension, point included.
std::string ExtensionOfFilter(std::string_view filter_text) {
    const std::size_t point = filter_text.rfind('.');
    if (point == std::string_view::npos) return {};
    const std::string_view rest = filter_text.substr(point);
    return std::string(rest.substr(0, rest.find(filter_text.back())));
}

// One run of a common file dialog; owns all that its structure points to.
class FileDialog {
  public:
    FileDialog(AppContext& app, HWND owner, std::string_view filter_text, std::string_view title,
               const SaveNames& save_names);
    std::optional<ChosenFile> Run();

  private:
    std::wstring filters_;
    std::wstring title_;
    std::wstring folder_;
    std::wstring default_extension_;
    std::vector<wchar_t> path_ = std::vector<wchar_t>(kPathUnits);
    std::array<wchar_t, kFileTitleUnits> file_title_{};
    NotesPanel panel_;
    OPENFILENAMEW parameters_{};
};

FileDialog::FileDialog(AppContext& app, HWND owner, std::string_view filter_text,
                       std::string_view title, const SaveNames& save_names)
    : filters_(FilterList(filter_text)),
      title_(Widen(title)),
      folder_(Widen(app.program_folder)),
      panel_(*app.files, save_names) {
    const bool saves = !save_names.default_extension.empty();
    if (saves) default_extension_ = Widen(save_names.default_extension.substr(1));
    parameters_.lStructSize = sizeof(parameters_);
    parameters_.hwndOwner = owner;
    parameters_.hInstance = app.instance;
    parameters_.lpstrFilter = filters_.c_str();
    parameters_.nFilterIndex = 1;
    parameters_.lpstrFile = path_.data();
    parameters_.nMaxFile = static_cast<DWORD>(path_.size());
    parameters_.lpstrFileTitle = file_title_.data();
    parameters_.nMaxFileTitle = static_cast<DWORD>(file_title_.size());
    parameters_.lpstrInitialDir = folder_.c_str();
    parameters_.lpstrTitle = title_.c_str();
    parameters_.lpstrDefExt = saves ? default_extension_.c_str() : nullptr;
    parameters_.lCustData = reinterpret_cast<LPARAM>(&panel_);
    parameters_.lpfnHook = NotesPanel::Hook;
    parameters_.lpTemplateName = L"IDD_ADDENDUM";
    parameters_.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_ENABLEHOOK | OFN_SHOWHELP |
                        OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    if (panel_.IsWanted()) parameters_.Flags |= OFN_ENABLETEMPLATE;
    parameters_.Flags |= saves ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST;
}

std::optional<ChosenFile> FileDialog::Run() {
    const bool saves = parameters_.lpstrDefExt != nullptr;
    const BOOL chosen = saves ? GetSaveFileNameW(&parameters_) : GetOpenFileNameW(&parameters_);
    if (!chosen) return std::nullopt;
    return ChosenFile{Narrow(path_.data()), static_cast<int>(parameters_.nFilterIndex)};
}

// Lets the user choose a data file of `kind` and gives the value of a key of its header.
std::optional<std::string> ReadValueOfChosenFile(AppContext& app, HWND owner, FileKind kind,
                                                 std::string_view key) {
    const std::optional<std::string> path =
        ChooseFileToOpen(app, owner, InfoOf(kind).filter_text, kOpenDataTitle);
    if (!path) return std::nullopt;
    return ReadHeaderValue(*app.files, *path, kind, key);
}

std::optional<std::string> PathOf(const std::optional<ChosenFile>& file) {
    if (!file) return std::nullopt;
    return file->path;
}

}  // namespace

std::optional<std::string> ChooseFileToOpen(AppContext& app, HWND owner,
                                            std::string_view filter_text, std::string_view title) {
    return PathOf(FileDialog(app, owner, filter_text, title, {}).Run());
}

std::optional<std::string> ChooseFileToSave(AppContext& app, HWND owner,
                                            std::string_view filter_text, std::string_view title) {
    const SaveNames names{ExtensionOfFilter(filter_text)};
    return PathOf(FileDialog(app, owner, filter_text, title, names).Run());
}

std::optional<std::string> ChooseFileToSaveAs(AppContext& app, HWND owner,
                                              std::string_view filter_text,
                                              std::initializer_list<std::string_view> extensions) {
    const SaveNames names{ExtensionOfFilter(filter_text), extensions};
    return PathOf(FileDialog(app, owner, filter_text, kSaveDataTitle, names).Run());
}

std::optional<ChosenFile> ChooseAnyFile(AppContext& app, HWND owner) {
    std::string filters;
    for (const FileKindInfo& kind : FileKinds()) filters += kind.filter_text;
    return FileDialog(app, owner, filters, kOpenAnyTitle, {}).Run();
}

UserMessage SaveFailure(const std::string& path, std::string_view reason) {
    std::string text = "Impossibile salvare: ";
    return {path, text.append(reason).append("."), MessageIcon::kStop};
}

std::optional<std::string> ReadSpectrumLevel(AppContext& app, HWND owner) {
    return ReadValueOfChosenFile(app, owner, FileKind::kSpr, "LAEQ");
}

std::optional<std::string> ReadDailyLevel(AppContext& app, HWND owner) {
    return ReadValueOfChosenFile(app, owner, FileKind::kLepd, "LEPD");
}

std::string DroppedFileName(HDROP drop) {
    constexpr UINT kCount = 0xFFFFFFFF;
    if (DragQueryFileW(drop, kCount, nullptr, 0) != 1) return {};
    const UINT length = DragQueryFileW(drop, 0, nullptr, 0);
    std::wstring path(length + 1, L'\0');
    DragQueryFileW(drop, 0, path.data(), length + 1);
    return Narrow(path.c_str());
}

}  // namespace tonvale
