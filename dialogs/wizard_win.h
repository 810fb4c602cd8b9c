// Wizards: property sheets whose pages lead from one to the next, over one kind of data file.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/data_file_session_win.h"
#include "dialogs/dialog_win.h"
#include "resources/help_contexts.h"
#include "resources/resource.h"

namespace tonvale {

class Wizard;

// What the tables of every page's description have for the data file, before the page's own rows.
inline constexpr std::array<ControlTip, 5> kWizardFileTips{{
    {CMD_FILE_OPEN, L"Carica i dati da un file"},
    {CMD_FILE_SAVE, L"Salva i dati nel file corrente"},
    {CMD_FILE_SAVE_AS, L"Salva i dati in un file con un nuovo nome"},
    {IDC_WIZARD_PRINT, L"Stampa il rapporto finale e le note"},
    {IDC_WIZARD_FILE, kStatusBarTip.text},
}};
inline constexpr std::array<ControlHelp, 5> kWizardFileHelp{{
    {CMD_FILE_OPEN, kHelpWizardFile},
    {CMD_FILE_SAVE, kHelpWizardFile},
    {CMD_FILE_SAVE_AS, kHelpWizardFile},
    {IDC_WIZARD_PRINT, kHelpWizardFile},
    {IDC_WIZARD_FILE, kHelpWizardFile},
}};

// Where a page leads to besides another page's number.
inline constexpr int kNextInOrder = 0;
inline constexpr int kStay = -1;

struct WizardPageInfo {
    int id;  // of its template, and its number
    const wchar_t* title;
};

// A page. Its template has the buttons 1223, 1225, 1222 and 1560 of the data file and the field
// 1577 that shows its name.
class WizardPage : public Dialog {
  public:
    // `description`'s template name is not used.
    WizardPage(Wizard& wizard, AppContext& app, const WizardPageInfo& info,
               const DialogDescription& description);

    int id() const { return info_.id; }
    // Shows what the wizard's state holds: whenever the page comes to the front and when a file
    // has been loaded.
    virtual void ShowState() = 0;
    // Takes what the page shows over into the wizard's state: before a command on the data file,
    // when the page is left, and when the wizard is.
    virtual void StoreState() {}

  protected:
    // The page that "Avanti" or "Indietro" leads to, kNextInOrder or kStay. The state is stored
    // before.
    virtual int NextPage() { return kNextInOrder; }
    virtual int PreviousPage() { return kNextInOrder; }
    // PSWIZB_BACK, PSWIZB_NEXT and PSWIZB_FINISH, as they can be pressed now.
    virtual DWORD Buttons() const = 0;
    // To be called when Buttons may give something else.
    void UpdateButtons() const;

    Wizard& wizard() const { return wizard_; }

    // A page fills itself when it comes to the front.
    bool OnInit() override;
    void OnDrop(const std::string& path) override;
    LRESULT OnNotify(NMHDR& header) override;

  private:
    friend class Wizard;
    static INT_PTR CALLBACK PageProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    PROPSHEETPAGEW SheetPage();

    Wizard& wizard_;
    WizardPageInfo info_;
};

class Wizard : protected DataFileClient {
  public:
    // `path`, when not empty, is loaded when the first page opens.
    Wizard(AppContext& app, FileKind kind, std::string path);
    ~Wizard() override;
    Wizard(const Wizard&) = delete;
    Wizard& operator=(const Wizard&) = delete;

    // Runs the wizard until it is finished or cancelled.
    void Run(HWND owner);

    // The sheet; nullptr unless it is shown.
    HWND window() const { return sheet_; }
    void GoTo(int page_id) const;

  protected:
    template <typename Page, typename... Arguments>
    void AddPage(Arguments&&... arguments) {
        pages_.push_back(std::make_unique<Page>(std::forward<Arguments>(arguments)...));
    }
    void AddPage(std::unique_ptr<WizardPage> page) { pages_.push_back(std::move(page)); }
    AppContext& app() const { return app_; }
    // nullptr before the first one has come to the front.
    WizardPage* page_in_front() const { return page_in_front_; }
    // Has the page in front show the state anew.
    void ShowPageInFront();

  private:
    friend class WizardPage;

    HWND FileOwner() const override { return sheet_; }
    void BeforeFileCommand() override;
    void ShowCurrentFile(const std::string& path) override;

    void OnPageInit(WizardPage& page);
    void OnPageActive(WizardPage& page);

    AppContext& app_;
    std::string initial_path_;
    DataFileSession session_;
    std::vector<std::unique_ptr<WizardPage>> pages_;
    WizardPage* page_in_front_ = nullptr;
    HWND sheet_ = nullptr;
};

// Page 107 of every wizard: the result as text, and the notes that are saved with the data.
class ResultsPage : public WizardPage {
  public:
    // What a wizard fills it with.
    struct Content {
        std::function<std::string()> text;
        std::string& notes;  // at most 512 characters
        std::function<int()> previous_page;
    };
    ResultsPage(Wizard& wizard, AppContext& app, const DialogDescription& description,
                Content content);

    void ShowState() override;
    void StoreState() override;

  protected:
    int PreviousPage() override { return content_.previous_page(); }
    DWORD Buttons() const override { return PSWIZB_BACK | PSWIZB_FINISH; }

  private:
    Content content_;
};

}  // namespace tonvale
