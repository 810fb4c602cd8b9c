#include "report/report_document_win.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "common/file_kinds.h"
#include "dialogs/clipboard_win.h"
#include "dialogs/dialog_win.h"
#include "dialogs/file_dialogs_win.h"
#include "dialogs/handles_win.h"
#include "report/format_menus_win.h"
#include "report/format_toolbar_win.h"
#include "report/report_clipboard_win.h"
#include "report/report_file_win.h"
#include "report/report_printing_win.h"
#include "report/rich_edit/rich_edit_feet_win.h"
#include "report/rich_edit/rich_edit_guard_win.h"
#include "report/rich_edit/rich_edit_objects_win.h"
#include "report/rich_edit/rich_edit_pictures_win.h"
#include "report/text_colors.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr COLORREF kPaper = RGB(255, 255, 210);
constexpr char kUntitled[] = "Senza titolo";

struct Command {
    int id;
    void (*run)(RichEdit& edit);
};

// Commands that change the selection's format and need nothing else.
constexpr std::array<Command, 10> kCommands = {{
    {CMD_BULLETS, ToggleBullets},
    {CMD_COLOR_AUTOMATIC, SetAutomaticColor},
    {CMD_BOLD, ToggleBold},
    {CMD_ITALIC, ToggleItalic},
    {CMD_UNDERLINE, ToggleUnderline},
    {CMD_SUPERSCRIPT, ToggleSuperscript},
    {CMD_SUBSCRIPT, ToggleSubscript},
    {CMD_ALIGN_LEFT, [](RichEdit& edit) { SetAlignment(edit, Alignment::kLeft); }},
    {CMD_ALIGN_CENTER, [](RichEdit& edit) { SetAlignment(edit, Alignment::kCenter); }},
    {CMD_ALIGN_RIGHT, [](RichEdit& edit) { SetAlignment(edit, Alignment::kRight); }},
}};

bool IsAlignment(int command) {
    return command >= CMD_ALIGN_LEFT && command <= CMD_ALIGN_RIGHT;
}

bool IsColor(int command) {
    return command >= CMD_COLOR_FIRST && command <= CMD_COLOR_LAST;
}

UserMessage NoReport(const std::string& path) {
    return {path, "Il file non è un documento di Tonvale. Impossibile aprire!", MessageIcon::kStop};
}

UserMessage TooLongReport(const std::string& path) {
    return {path, "Il testo del file è troppo lungo per il documento. Impossibile aprire!",
            MessageIcon::kStop};
}

UserMessage DamagedReport(const std::string& path) {
    return {path,
            "Il file è incompleto o danneggiato: viene aperto ciò che si può leggere, come "
            "documento senza titolo. Il file resta com'è.",
            MessageIcon::kExclamation};
}

UserMessage LeftOutOfReport(const std::string& path) {
    return {path,
            "Tonvale non può mostrare tutto ciò che il file contiene (per esempio oggetti, note, "
            "intestazioni, certe immagini o troppi apici e pedici). Il resto viene aperto come "
            "documento senza titolo; il file rimane com'è.",
            MessageIcon::kExclamation};
}

UserMessage NotWhole(const std::string& path) {
    return {path,
            "Il documento contiene un oggetto che non può essere scritto. Impossibile salvare!\r\n"
            "Il file resta com'era: eliminare l'oggetto e salvare di nuovo.",
            MessageIcon::kStop};
}

// The editor's own keys would pass the document's rules by.
bool RunEditKey(ReportDocument& document, WPARAM key) {
    if (GetKeyState(VK_CONTROL) >= 0 || GetKeyState(VK_MENU) < 0) return false;
    switch (key) {
        case 'C':
            document.Copy();
            return true;
        case 'X':
            document.Cut();
            return true;
        case 'V':
            if (document.CanPaste()) document.Paste();
            return true;
        case 'Y':
            document.Redo();
            return true;
        case 'Z':
            document.Undo();
            return true;
        default:
            return false;
    }
}

}  // namespace

struct ReportDocument::Parts {
    explicit Parts(AppContext& context) : app(context), menus(context) {}

    AppContext& app;
    HWND parent = nullptr;
    RichEdit edit;
    FormatToolbar toolbar;
    FormatMenus menus;
    std::optional<RichEditGaps> gaps;  // once they have been looked for
    RECT area{};
    bool visible = true;
    bool word_wrap = true;
    std::string path;

    void ShowState() { toolbar.ShowState(ReadFormatState(edit), word_wrap); }
    int Tell(const UserMessage& message, UINT buttons = MB_OK) const {
        return ShowMessageBox(parent, message, buttons);
    }
    const RichEditGaps& Gaps();
    void DrawWhatIsMissing();
    bool CreateEditor();
    void SetUpEditor();
    void MakeEmpty();
    void Place();
    void Adopt(const std::string& new_path, bool modified);
    HMENU MakeMenu();
    void RunCommand(int id);
};

// Looked for when they are first needed: that takes a sixth of the program's start.
const RichEditGaps& ReportDocument::Parts::Gaps() {
    if (!gaps) {
        gaps = FindRichEditGaps(app.instance, parent);
        DrawWhatIsMissing();
    }
    return *gaps;
}

void ReportDocument::Parts::DrawWhatIsMissing() {
    if (gaps->blank_pictures) DrawPicturesOf(edit.window());
    if (gaps->cuts_lowered_text) DrawFeetOf(edit.window());
}

// The editor is a new one; false, and the old one stays, when there is none to be had.
bool ReportDocument::Parts::CreateEditor() {
    constexpr DWORD kStyle =
        WS_VSCROLL | WS_HSCROLL | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_WANTRETURN | ES_NOHIDESEL;
    RichEdit created;
    if (!created.Create(app.instance, parent, IDC_REPORT_EDITOR, kStyle, WS_EX_CLIENTEDGE)) {
        return false;
    }
    edit = created;
    return true;
}

void ReportDocument::Parts::SetUpEditor() {
    if (NeedsGuard(edit)) Guard(edit.window());
    edit.Send(EM_EXLIMITTEXT, 0, kMaxReportCharacters);
    edit.Send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(kPaper));
    edit.SetWordWrap(word_wrap);
    edit.Send(EM_SETEVENTMASK, 0, ENM_KEYEVENTS | ENM_MOUSEEVENTS | ENM_SELCHANGE | ENM_DROPFILES);
    if (gaps) DrawWhatIsMissing();
    ServeObjects(edit.window(), parent, [this] { return MakeMenu(); });
    SetDefaultFormats(edit);
}

// A new editor takes the place of the old one, which some systems take a minute to clear of a long
// text.
void ReportDocument::Parts::MakeEmpty() {
    HWND old = edit.window();
    if (CreateEditor()) {
        SetUpEditor();
        Place();
        if (GetFocus() == old) ::SetFocus(edit.window());
        DestroyWindow(old);
    } else {
        edit.Clear();
        SetDefaultFormats(edit);
    }
    Adopt({}, false);
}

// What stands in the editor is now the document of `new_path`.
void ReportDocument::Parts::Adopt(const std::string& new_path, bool modified) {
    path = new_path;
    edit.SetModified(modified);
    edit.Send(EM_EMPTYUNDOBUFFER);
    ShowState();
}

// With the toolbar above it. Not while nobody sees it: to wrap a long text anew takes some controls
// seconds.
void ReportDocument::Parts::Place() {
    if (!visible) {
        ShowWindow(edit.window(), SW_HIDE);
        return;
    }
    const int width = static_cast<int>(area.right - area.left);
    const int top = static_cast<int>(area.top) + toolbar.Layout({area.left, area.top}, width);
    SetWindowPos(edit.window(), toolbar.window(), area.left, top, width,
                 std::max(static_cast<int>(area.bottom) - top, 0), SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

// For the right mouse button; the editor destroys it.
HMENU ReportDocument::Parts::MakeMenu() {
    HMENU menu = menus.MakeFormatMenu();
    if (menu) MarkFormatMenu(menu, ReadFormatState(edit), word_wrap, true);
    return menu;
}

void ReportDocument::Parts::RunCommand(int id) {
    if (id == CMD_FONT) return ChooseTextFont(edit, parent);
    if (id == CMD_COLOR_MENU) return RunCommand(menus.ChooseColor(parent));
    if (id == CMD_WORD_WRAP) {
        const WaitCursor wait;  // a long text takes some controls seconds
        word_wrap = !word_wrap;
        return edit.SetWordWrap(word_wrap);
    }
    if (IsColor(id)) {
        const Color color = kTextColors.at(static_cast<std::size_t>(id - CMD_COLOR_FIRST));
        return SetTextColor(edit, RGB(color.red, color.green, color.blue));
    }
    if (id == CMD_SUBSCRIPT) Gaps();
    const auto* command =
        std::find_if(kCommands.begin(), kCommands.end(),
                     [id](const Command& candidate) { return candidate.id == id; });
    if (command != kCommands.end() && (word_wrap || !IsAlignment(id))) command->run(edit);
}

ReportDocument::ReportDocument(AppContext& app) : parts_(std::make_unique<Parts>(app)) {}

ReportDocument::~ReportDocument() = default;

bool ReportDocument::Create(HWND parent) {
    Parts& parts = *parts_;
    parts.parent = parent;
    if (!parts.CreateEditor() || !parts.toolbar.Create(parts.app.instance, parent)) return false;
    parts.SetUpEditor();
    parts.Adopt({}, false);
    return true;
}

void ReportDocument::Layout(const RECT& area) {
    parts_->area = area;
    parts_->Place();
}

void ReportDocument::Show(bool visible) {
    const WaitCursor wait;
    parts_->visible = visible;
    ShowWindow(parts_->toolbar.window(), visible ? SW_SHOW : SW_HIDE);
    parts_->Place();
}

void ReportDocument::OnDpiChanged() {
    parts_->toolbar.Create(parts_->app.instance, parts_->parent);
    parts_->ShowState();
    Layout(parts_->area);
    Show(parts_->visible);
}

void ReportDocument::SetFocus() {
    ::SetFocus(parts_->edit.window());
}

const std::string& ReportDocument::path() const {
    return parts_->path;
}

bool ReportDocument::IsModified() const {
    return parts_->edit.IsModified();
}

bool ReportDocument::MayDiscard() {
    if (!IsModified()) return true;
    const int answer =
        parts_->Tell({"Attenzione", "Il documento è stato modificato. Salvare le modifiche?",
                      MessageIcon::kExclamation},
                     MB_YESNOCANCEL);
    if (answer == IDYES) Save();
    return answer == IDNO || (answer == IDYES && !IsModified());
}

bool ReportDocument::New() {
    if (!MayDiscard()) return false;
    parts_->MakeEmpty();
    return true;
}

bool ReportDocument::Open(const std::string& path) {
    if (!MayDiscard()) return false;
    Parts& parts = *parts_;
    const auto refuse = [&parts](const UserMessage& message) {
        parts.Tell(message);
        return false;
    };
    const WaitCursor wait;
    const std::optional<std::string> rtf = ReadAlone(path);
    if (!rtf) return refuse(OpenLockMessage(path));
    if (!rtf->empty() && !IsRtf(*rtf)) return refuse(NoReport(path));
    RichText text = ReadReport(*rtf);
    if (IsTooLong(text, parts.Gaps())) return refuse(TooLongReport(path));
    parts.MakeEmpty();
    if (rtf->empty()) {
        parts.Adopt(path, false);
        return true;
    }
    ReadOutcome outcome = ReadReportRtf(parts.edit, parts.Gaps(), *rtf, std::move(text), false);
    if (!IsWholeRtf(*rtf)) outcome = ReadOutcome::kDamaged;
    parts.edit.Select({0, 0});
    parts.edit.ScrollToTop();
    const bool is_whole = outcome == ReadOutcome::kWhole;
    parts.Adopt(is_whole ? path : std::string(), !is_whole);
    if (outcome == ReadOutcome::kDamaged) parts.Tell(DamagedReport(path));
    if (outcome == ReadOutcome::kLeftOut) parts.Tell(LeftOutOfReport(path));
    return true;
}

bool ReportDocument::Save() {
    return parts_->path.empty() ? SaveAs() : SaveTo(parts_->path);
}

bool ReportDocument::SaveAs() {
    const FileKindInfo& kind = InfoOf(FileKind::kReport);
    const std::optional<std::string> target =
        ChooseFileToSaveAs(parts_->app, parts_->parent, kind.filter_text, {kind.extension});
    return target && SaveTo(*target);
}

bool ReportDocument::SaveTo(const std::string& path) {
    Parts& parts = *parts_;
    const auto refuse = [&parts](const UserMessage& message) {
        parts.Tell(message);
        return false;
    };
    const WaitCursor wait;
    const FileError lock = TryWritingAlone(path);
    if (lock != FileError::kNone) return refuse(SaveLockMessage(path, lock));
    const std::optional<std::string> rtf = WriteReportRtf(parts.edit, parts.Gaps(), false);
    if (!rtf || !IsWholeRtf(*rtf)) return refuse(NotWhole(path));
    const FileError error = WriteFileSafely(*parts.app.files, path, *rtf);
    if (error != FileError::kNone) return refuse(SaveFailure(path, Reason(error)));
    parts.path = path;
    parts.edit.SetModified(false);
    return true;
}

void ReportDocument::Cut() {
    if (!CanCut() || !Copy()) return;
    parts_->edit.Send(WM_CLEAR);
    parts_->edit.SetModified(true);  // not every control does
}

bool ReportDocument::Copy() {
    const bool copied = CopyFromReport(parts_->app, parts_->edit, parts_->Gaps());
    if (!copied) ShowCopyFailure(parts_->parent);
    return copied;
}

void ReportDocument::Paste() {
    const std::optional<UserMessage> failure =
        PasteInReport(parts_->app, parts_->edit, parts_->Gaps());
    if (failure) parts_->Tell(*failure);
    parts_->ShowState();
}

bool ReportDocument::CanPaste() const {
    return CanPasteInReport(parts_->app);
}

bool ReportDocument::CanCut() const {
    const CHARRANGE selection = parts_->edit.Selection();
    return selection.cpMin != selection.cpMax;
}

void ReportDocument::Undo() {
    if (parts_->edit.Send(EM_UNDO)) parts_->edit.SetModified(true);
}

void ReportDocument::Redo() {
    if (parts_->edit.Send(EM_REDO)) parts_->edit.SetModified(true);
}

void ReportDocument::Print() {
    const WaitCursor wait;
    const std::string name = parts_->path.empty() ? kUntitled : parts_->path;
    const std::optional<UserMessage> failure =
        PrintReportDocument(parts_->app, parts_->edit, parts_->Gaps(), name);
    if (failure) parts_->Tell(*failure);
}

void ReportDocument::AddMenuTo(HMENU bar, UINT position) {
    parts_->menus.AddTo(bar, position);
}

void ReportDocument::MarkMenu(HMENU menu, bool usable) const {
    MarkFormatMenu(menu, ReadFormatState(parts_->edit), parts_->word_wrap, usable);
}

bool ReportDocument::OnCommand(int id) {
    if (id < CMD_BULLETS || id > CMD_WORD_WRAP) return false;
    parts_->RunCommand(id);
    parts_->ShowState();
    return true;
}

bool ReportDocument::OnNotify(const NMHDR& header, LRESULT& result) {
    result = 0;
    if (header.code == TTN_GETDISPINFOW) {
        auto& request = const_cast<NMTTDISPINFOW&>(reinterpret_cast<const NMTTDISPINFOW&>(header));
        if ((request.uFlags & TTF_IDISHWND) != 0) return false;  // of a window, not a command
        const wchar_t* tip = FormatToolbar::TipOf(static_cast<int>(header.idFrom));
        if (tip) request.lpszText = const_cast<wchar_t*>(tip);  // only read
        return tip != nullptr;
    }
    if (header.hwndFrom != parts_->edit.window()) return false;
    if (header.code == EN_SELCHANGE) {
        parts_->ShowState();
        return true;
    }
    if (header.code == EN_MSGFILTER) {
        const auto& filter = reinterpret_cast<const MSGFILTER&>(header);
        result = filter.msg == WM_KEYDOWN && RunEditKey(*this, filter.wParam);
        return true;
    }
    if (header.code == EN_DROPFILES) {
        ForwardDrop(parts_->parent, reinterpret_cast<const ENDROPFILES&>(header).hDrop);
        return true;
    }
    return false;
}

}  // namespace tonvale
