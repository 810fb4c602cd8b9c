#include "dialogs/wizard_win.h"

#include "common/unicode_win.h"
#include "dialogs/dialog_tips_win.h"
#include "dialogs/help_viewer_win.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr std::string_view kNoFile = "Nessun file selezionato";
constexpr WizardPageInfo kResultsPage{IDD_RESULTS_PAGE, L"Risultati del calcolo"};

// Does what has to wait, by a message posted to a page, until the sheet has shown it.
class ShownPage : public DialogPart {
  public:
    // The sheet takes its final size after its first page has opened only.
    static constexpr UINT kCenterSheet = WM_APP + 1;
    // The first control of the page has the focus.
    static constexpr UINT kPlaceFocus = WM_APP + 2;

    bool OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR&) override {
        HWND sheet = reinterpret_cast<HWND>(wparam);
        if (message == kCenterSheet) CenterOnScreen(sheet);
        if (message == kPlaceFocus) PlaceFocus(reinterpret_cast<HWND>(lparam), sheet);
        return message == kCenterSheet || message == kPlaceFocus;
    }

  private:
    // A text of several lines would keep the Enter key from the sheet.
    static void PlaceFocus(HWND page, HWND sheet) {
        HWND first = GetNextDlgTabItem(page, nullptr, FALSE);
        const bool takes_text = (SendMessageW(first, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0;
        if (takes_text && (GetWindowLongW(first, GWL_STYLE) & ES_MULTILINE) != 0) {
            SetFocus(GetDlgItem(sheet, LOWORD(SendMessageW(sheet, DM_GETDEFID, 0, 0))));
        } else {
            SendMessageW(page, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
        }
    }
};

}  // namespace

WizardPage::WizardPage(Wizard& wizard, AppContext& app, const WizardPageInfo& info,
                       const DialogDescription& description)
    : Dialog(app, description), wizard_(wizard), info_(info) {}

// A page is told the description that it was made of, with its object in it.
INT_PTR CALLBACK WizardPage::PageProcedure(HWND window, UINT message, WPARAM wparam,
                                           LPARAM lparam) {
    if (message == WM_INITDIALOG) lparam = reinterpret_cast<const PROPSHEETPAGEW*>(lparam)->lParam;
    return Procedure(window, message, wparam, lparam);
}

PROPSHEETPAGEW WizardPage::SheetPage() {
    PROPSHEETPAGEW page{};
    page.dwSize = sizeof page;
    page.dwFlags = PSP_USETITLE | PSP_HASHELP;
    page.hInstance = app().instance;
    page.pszTemplate = MAKEINTRESOURCEW(info_.id);
    page.pszTitle = info_.title;
    page.pfnDlgProc = PageProcedure;
    page.lParam = CreationParameter();
    return page;
}

void WizardPage::UpdateButtons() const {
    // Posted, as the sheet asks: what it does by itself while it changes pages comes before.
    PostMessageW(wizard_.window(), PSM_SETWIZBUTTONS, 0, static_cast<LPARAM>(Buttons()));
}

bool WizardPage::OnInit() {
    wizard_.OnPageInit(*this);
    return true;
}

void WizardPage::OnDrop(const std::string& path) {
    wizard_.session_.LoadDropped(path);
}

LRESULT WizardPage::OnNotify(NMHDR& header) {
    switch (header.code) {
        case PSN_SETACTIVE:
            wizard_.OnPageActive(*this);
            return 0;
        case PSN_WIZNEXT:
            StoreState();
            return NextPage();
        case PSN_WIZBACK:
            StoreState();
            return PreviousPage();
        case PSN_WIZFINISH:
        case PSN_QUERYCANCEL:  // what has been entered stays for the next opening
            StoreState();
            return 0;
        case PSN_HELP:
            app().help->ShowTopic(wizard_.window(), description().main_help_context);
            return 0;
        default:
            return 0;
    }
}

Wizard::Wizard(AppContext& app, FileKind kind, std::string path)
    : app_(app), initial_path_(std::move(path)), session_(app, kind, *this) {}

Wizard::~Wizard() = default;

void Wizard::Run(HWND owner) {
    HWND served_before = app_.tips ? app_.tips->served() : nullptr;
    std::vector<PROPSHEETPAGEW> pages;
    pages.reserve(pages_.size());
    for (const auto& page : pages_) pages.push_back(page->SheetPage());
    PROPSHEETHEADERW sheet{};
    sheet.dwSize = sizeof sheet;
    sheet.dwFlags = PSH_PROPSHEETPAGE | PSH_WIZARD | PSH_HASHELP | PSH_NOAPPLYNOW;
    sheet.hwndParent = owner;
    sheet.hInstance = app_.instance;
    sheet.nPages = static_cast<UINT>(pages.size());
    sheet.ppsp = pages.data();
    PropertySheetW(&sheet);
    sheet_ = nullptr;
    page_in_front_ = nullptr;
    if (served_before && IsWindow(served_before)) app_.tips->Serve(served_before);
}

void Wizard::GoTo(int page_id) const {
    SendMessageW(sheet_, PSM_SETCURSELID, 0, page_id);
}

void Wizard::ShowPageInFront() {
    if (!page_in_front_) return;
    page_in_front_->ShowState();
    page_in_front_->UpdateButtons();
}

void Wizard::BeforeFileCommand() {
    if (page_in_front_) page_in_front_->StoreState();
}

void Wizard::ShowCurrentFile(const std::string& path) {
    if (!page_in_front_) return;
    page_in_front_->SetControlText(IDC_WIZARD_FILE, path.empty() ? kNoFile : path);
}

void Wizard::OnPageInit(WizardPage& page) {
    static ShownPage shown_page;
    page.Attach(session_);
    page.Attach(shown_page);
    if (sheet_) return;
    sheet_ = GetParent(page.window());
    PostMessageW(page.window(), ShownPage::kCenterSheet, reinterpret_cast<WPARAM>(sheet_), 0);
    if (!initial_path_.empty()) session_.Load(initial_path_);
}

void Wizard::OnPageActive(WizardPage& page) {
    page_in_front_ = &page;
    ShowPageInFront();
    ShowCurrentFile(session_.current_file());
    page.ServeTips();
    // Posted: the page is not shown yet, and that of before takes the focus away with it.
    PostMessageW(page.window(), ShownPage::kPlaceFocus, reinterpret_cast<WPARAM>(sheet_),
                 reinterpret_cast<LPARAM>(page.window()));
}

ResultsPage::ResultsPage(Wizard& wizard, AppContext& app, const DialogDescription& description,
                         Content content)
    : WizardPage(wizard, app, kResultsPage, description), content_(std::move(content)) {}

void ResultsPage::ShowState() {
    SetControlText(IDC_RESULT_TEXT, content_.text());
    SetControlText(IDC_NOTES_EDIT, content_.notes);
}

void ResultsPage::StoreState() {
    content_.notes = FieldText(IDC_NOTES_EDIT);
}

}  // namespace tonvale
