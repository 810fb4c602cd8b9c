#include "dialogs/wizard_win.h"

#include "common/unicode_win.h"
#include "dialogs/dialog_tips_win.h"
#include "dialogs/help_viewer_win.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr std::string_view kNoFile = "Nessun file selezionato";
constexpr WizardPageInfo kResultsPage{IDD_RESULTS_PAGE, L"Risultati del calcolo"};

// Centres the sheet, which takes its final size after its first page has opened only.
class SheetPlacement : public DialogPart {
  public:
    static constexpr UINT kMessage = WM_APP + 1;

    bool OnMessage(UINT message, WPARAM wparam, LPARAM, INT_PTR&) override {
        if (message == kMessage) CenterOnScreen(reinterpret_cast<HWND>(wparam));
        return message == kMessage;
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

void Wizard::BeforeFileCommand() {
    if (page_in_front_) page_in_front_->StoreState();
}

void Wizard::ShowCurrentFile(const std::string& path) {
    if (!page_in_front_) return;
    page_in_front_->SetControlText(IDC_WIZARD_FILE, path.empty() ? kNoFile : path);
}

void Wizard::OnPageInit(WizardPage& page) {
    page.Attach(session_);
    if (sheet_) return;
    static SheetPlacement placement;
    page.Attach(placement);
    sheet_ = GetParent(page.window());
    PostMessageW(page.window(), SheetPlacement::kMessage, reinterpret_cast<WPARAM>(sheet_), 0);
    if (!initial_path_.empty()) session_.Load(initial_path_);
}

void Wizard::OnPageActive(WizardPage& page) {
    page_in_front_ = &page;
    page.ShowState();
    ShowCurrentFile(session_.current_file());
    page.UpdateButtons();
    page.ServeTips();
    // Posted: the page is not shown yet, and that of before takes the focus away with it.
    HWND first = GetNextDlgTabItem(page.window(), nullptr, FALSE);
    PostMessageW(page.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
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
