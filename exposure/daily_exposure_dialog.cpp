#include "exposure/daily_exposure_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

#include "common/calculator_dialog_win.h"
#include "common/notes.h"
#include "common/unicode_win.h"
#include "exposure/exposure_item_dialog.h"
#include "exposure/time_unit.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

constexpr unsigned long kHelpTopic = 100110;

constexpr ControlTip kTips[] = {
    {IDC_ITEM_LIST, L"Lista con livelli e tempi d'esposizione"},
    {IDC_ADD, L"Aggiunge un elemento alla lista"},
    {IDC_MODIFY, L"Modifica un elemento della lista"},
    {IDC_DELETE, L"Elimina un elemento dalla lista"},
    {IDC_TIME_UNIT, L"Per scegliere il formato del tempo"},
    {IDC_TOTAL_TIME, L"Tempo d'esposizione totale quotidiano"},
    {IDC_DAILY_LEVEL, L"Valore risultante del livello d'esposizione quotidiano"},
    {IDC_EQUIVALENT_LEVEL, L"Valore risultante del livello equivalente di rumore"},
    {IDC_STATUS_BAR, L"Visualizza il nome del file correntemente selezionato"},
    {IDC_NOTES_EDIT, L"Inserire qui delle note da salvare insieme ai dati"},
};

constexpr ControlTextLimit kTextLimits[] = {{IDC_NOTES_EDIT, kMaxNotesCharacters}};

constexpr ControlHelp kHelp[] = {
    {IDC_ITEM_LIST, kHelpTopic},   {IDC_ADD, kHelpTopic},
    {IDC_MODIFY, kHelpTopic},      {IDC_DELETE, kHelpTopic},
    {IDC_TIME_UNIT, kHelpTopic},   {IDC_EQUIVALENT_LEVEL, kHelpTopic},
    {IDC_TOTAL_TIME, kHelpTopic},  {IDC_TOTAL_TIME_LABEL, kHelpTopic},
    {IDC_DAILY_LEVEL, kHelpTopic}, {IDC_NOTES_EDIT, kHelpTopic},
    {IDC_STATUS_BAR, kHelpTopic},
};

constexpr DialogDescription kDescription = {
    .template_name = L"LEPD",
    .tips = kTips,
    .text_limits = kTextLimits,
    .help = kHelp,
    .main_help_context = kHelpTopic,
    .help_file = "LEPD.HLP",
    .accepts_files = true,
};

constexpr std::string_view kNothingSelected = "Attenzione! Nessun dato selezionato.";

// The list asks for the texts of the rows that it draws (LVS_OWNERDATA), so that the form alone
// holds the items and thousands of them cost nothing.
class DailyExposureDialog : public CalculatorDialog {
  public:
    DailyExposureDialog(AppContext& app, DailyExposureState& state, const std::string& path)
        : CalculatorDialog(app, kDescription, FileKind::kLepd, path), state_(state) {}

  protected:
    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    LRESULT OnNotify(const NMHDR& header) override;
    bool OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result) override;

    void ShowKeptState() override;
    bool LoadFrom(const ProfileFile& file) override;
    void StoreTo(ProfileFile& file) override { StoreForm(ReadForm(), file); }
    void RecomputeResults() override;
    std::string MakeSummary(std::string_view separator) override {
        return Summary(ReadForm(), separator);
    }
    Report MakeReport() override { return tonvale::MakeReport(ReadForm()); }
    void KeepState() override { KeepForm(ReadForm(), state_); }

  private:
    // The form with the notes as they are now.
    const DailyExposureForm& ReadForm();
    void ShowForm();
    void ShowItems();
    void ShowResults();
    void ShowTimeUnit();
    void CreateColumns();
    void FitColumns();
    void FillItemText(LVITEMW& cell) const;
    void OnListKey(WORD key);

    std::optional<std::size_t> SelectedItem() const;
    void SelectItem(std::size_t index);
    void AddItem();
    void ModifyItem();
    void DeleteItem();
    void ChooseTimeUnit();
    bool Edit(ExposureItemAction action, ExposureItem& item);

    DailyExposureState& state_;
    DailyExposureForm form_;
    int fitted_width_ = 0;  // of the list, when its columns were last made to fit
};

bool DailyExposureDialog::OnInit() {
    ListView_SetExtendedListViewStyle(Control(IDC_ITEM_LIST),
                                      LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    CreateColumns();
    for (const TimeUnit& unit : TimeUnits()) {
        SendMessageW(Control(IDC_TIME_UNIT), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(Widen(unit.name).c_str()));
    }
    return CalculatorDialog::OnInit();
}

bool DailyExposureDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_ADD:
            AddItem();
            return true;
        case IDC_MODIFY:
            ModifyItem();
            return true;
        case IDC_DELETE:
            DeleteItem();
            return true;
        case IDC_TIME_UNIT:
            if (notification == CBN_SELCHANGE) ChooseTimeUnit();
            return true;
        case IDOK:  // the Enter key; there is no such button
            if (GetFocus() == Control(IDC_ITEM_LIST) && SelectedItem()) ModifyItem();
            return true;
        default:
            return CalculatorDialog::OnCommand(id, notification);
    }
}

LRESULT DailyExposureDialog::OnNotify(const NMHDR& header) {
    if (header.idFrom != IDC_ITEM_LIST) return 0;
    switch (header.code) {
        case LVN_GETDISPINFOW:
            // The notification is the list's to be filled in.
            FillItemText(
                const_cast<NMLVDISPINFOW&>(reinterpret_cast<const NMLVDISPINFOW&>(header)).item);
            break;
        case NM_DBLCLK:
            if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0) ModifyItem();
            break;
        case LVN_KEYDOWN:
            OnListKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
            break;
        default:
            break;
    }
    return 0;
}

bool DailyExposureDialog::OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result) {
    const bool handled = CalculatorDialog::OnMessage(message, wparam, lparam, result);
    if (message == WM_SIZE) FitColumns();
    return handled;
}

void DailyExposureDialog::ShowKeptState() {
    form_ = FormFromState(state_);
    ShowForm();
}

bool DailyExposureDialog::LoadFrom(const ProfileFile& file) {
    ReadForm();
    if (!LoadForm(file, form_)) return false;
    ShowForm();
    return true;
}

void DailyExposureDialog::RecomputeResults() {
    const std::optional<UserMessage> refusal = Recompute(form_, state_);
    if (refusal) {
        ShowMessage(*refusal);
    } else {
        ShowResults();
    }
}

const DailyExposureForm& DailyExposureDialog::ReadForm() {
    form_.notes = ControlText(IDC_NOTES_EDIT);
    return form_;
}

void DailyExposureDialog::ShowForm() {
    ShowItems();
    ShowResults();
    ShowTimeUnit();
    SetControlText(IDC_NOTES_EDIT, form_.notes);
}

void DailyExposureDialog::ShowItems() {
    HWND list = Control(IDC_ITEM_LIST);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemCountEx(list, static_cast<int>(form_.items.size()), 0);
    // The vertical scroll bar comes and goes with the rows.
    FitColumns();
}

void DailyExposureDialog::ShowResults() {
    SetControlText(IDC_EQUIVALENT_LEVEL, form_.equivalent_level_dba);
    SetControlText(IDC_TOTAL_TIME, form_.total_time);
    SetControlText(IDC_DAILY_LEVEL, form_.daily_level_dba);
}

void DailyExposureDialog::ShowTimeUnit() {
    SendMessageW(Control(IDC_TIME_UNIT), CB_SETCURSEL, static_cast<WPARAM>(form_.time_unit), 0);
    SetControlText(IDC_TOTAL_TIME_LABEL,
                   "Tempo esposizione " + std::string(TimeUnitAt(form_.time_unit).suffix));
}

void DailyExposureDialog::CreateColumns() {
    std::wstring titles[] = {L"Livelli equivalenti", L"Tempi esposizione"};
    LVCOLUMNW column{};
    column.mask = LVCF_FMT | LVCF_TEXT | LVCF_SUBITEM;
    column.fmt = LVCFMT_LEFT;
    for (int i = 0; i < 2; ++i) {
        column.pszText = titles[i].data();
        column.iSubItem = i;
        ListView_InsertColumn(Control(IDC_ITEM_LIST), i, &column);
    }
}

void DailyExposureDialog::FitColumns() {
    HWND list = Control(IDC_ITEM_LIST);
    RECT area{};
    GetClientRect(list, &area);
    if (area.right == fitted_width_) return;
    fitted_width_ = area.right;
    for (int i = 0; i < 2; ++i) ListView_SetColumnWidth(list, i, area.right / 2);
}

void DailyExposureDialog::FillItemText(LVITEMW& cell) const {
    const auto index = static_cast<std::size_t>(cell.iItem);
    if ((cell.mask & LVIF_TEXT) == 0 || cell.cchTextMax <= 0 || index >= form_.items.size()) return;
    const ExposureItem& item = form_.items[index];
    const std::wstring text = Widen(cell.iSubItem == 0 ? item.level_dba : item.duration);
    const std::size_t units = std::min(text.size(), static_cast<std::size_t>(cell.cchTextMax) - 1);
    *std::copy_n(text.begin(), units, cell.pszText) = L'\0';
}

void DailyExposureDialog::OnListKey(WORD key) {
    if (key == VK_INSERT) AddItem();
    if (key == VK_DELETE && SelectedItem()) DeleteItem();
}

std::optional<std::size_t> DailyExposureDialog::SelectedItem() const {
    const int index = ListView_GetNextItem(Control(IDC_ITEM_LIST), -1, LVNI_SELECTED);
    if (index < 0) return std::nullopt;
    return static_cast<std::size_t>(index);
}

void DailyExposureDialog::SelectItem(std::size_t index) {
    HWND list = Control(IDC_ITEM_LIST);
    const int row = static_cast<int>(index);
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list, row, FALSE);
}

bool DailyExposureDialog::Edit(ExposureItemAction action, ExposureItem& item) {
    return EditExposureItem(app(), window(), action, form_.time_unit, item);
}

void DailyExposureDialog::AddItem() {
    ExposureItem item = state_.last_item;
    if (!Edit(ExposureItemAction::kAdd, item)) return;
    state_.last_item = item;
    form_.items.push_back(item);
    ShowItems();
    SelectItem(form_.items.size() - 1);
    RecomputeResults();
}

void DailyExposureDialog::ModifyItem() {
    const std::optional<std::size_t> index = SelectedItem();
    if (!index) {
        ShowMessage({"Modifica", std::string(kNothingSelected)});
        return;
    }
    ExposureItem item = form_.items[*index];
    if (!Edit(ExposureItemAction::kModify, item)) return;
    state_.last_item = item;
    form_.items[*index] = item;
    const int row = static_cast<int>(*index);
    ListView_RedrawItems(Control(IDC_ITEM_LIST), row, row);
    RecomputeResults();
}

void DailyExposureDialog::DeleteItem() {
    const std::optional<std::size_t> index = SelectedItem();
    if (!index) {
        ShowMessage({"Elimina", std::string(kNothingSelected)});
        return;
    }
    ExposureItem item = form_.items[*index];
    if (!Edit(ExposureItemAction::kDelete, item)) return;
    form_.items.erase(form_.items.begin() + static_cast<std::ptrdiff_t>(*index));
    ShowItems();
    if (!form_.items.empty()) SelectItem(std::min(*index, form_.items.size() - 1));
    RecomputeResults();
}

void DailyExposureDialog::ChooseTimeUnit() {
    form_.time_unit = static_cast<int>(SendMessageW(Control(IDC_TIME_UNIT), CB_GETCURSEL, 0, 0));
    ShowTimeUnit();
    if (!form_.items.empty()) RecomputeResults();
}

}  // namespace

void OpenDailyExposure(AppContext& app, DailyExposureState& state, HWND owner,
                       const std::string& path) {
    DailyExposureDialog(app, state, path).RunModal(owner);
}

}  // namespace tonvale
