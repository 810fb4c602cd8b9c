#include "dialogs/item_list_win.h"

#include <shlwapi.h>

#include <algorithm>

#include "common/unicode_win.h"
#include "resources/resource.h"

namespace tonvale {

namespace {

// Lets a list with a selected item have the Enter key, which else presses the default button of the
// dialog, or of the sheet around it.
LRESULT CALLBACK TakeEnter(HWND list, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                           DWORD_PTR /*data*/) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(list, TakeEnter, id);
    if (message == WM_CHAR && wparam == VK_RETURN) return 0;  // no letter to search for
    const LRESULT result = DefSubclassProc(list, message, wparam, lparam);
    if (message != WM_GETDLGCODE || lparam == 0 || ListView_GetSelectedCount(list) == 0) {
        return result;
    }
    const MSG& key = *reinterpret_cast<const MSG*>(lparam);
    return key.message == WM_KEYDOWN && key.wParam == VK_RETURN ? result | DLGC_WANTMESSAGE
                                                                : result;
}

}  // namespace

std::string_view ItemActionName(ItemAction action) {
    switch (action) {
        case ItemAction::kAdd:
            return "Aggiungi";
        case ItemAction::kModify:
            return "Modifica";
        case ItemAction::kDelete:
            break;
    }
    return "Elimina";
}

void ItemList::TakeControl(HWND list, std::span<const ItemListColumn> columns) {
    list_ = list;
    columns_ = columns;
    SetWindowSubclass(list_, TakeEnter, 0, 0);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    LVCOLUMNW column{};
    column.mask = LVCF_FMT | LVCF_TEXT | LVCF_SUBITEM;
    column.fmt = LVCFMT_LEFT;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        std::wstring title = columns_[i].title;
        column.pszText = title.data();
        column.iSubItem = static_cast<int>(i);
        ListView_InsertColumn(list_, column.iSubItem, &column);
        shares_ += columns_[i].share;
    }
}

void ItemList::ShowItems() {
    ListView_SetItemState(list_, -1, 0, LVIS_SELECTED);
    RefreshItems();
}

void ItemList::RefreshItems() {
    ListView_SetItemCountEx(list_, static_cast<int>(client_.ItemCount()), 0);
    // The vertical scroll bar comes and goes with the rows.
    FitColumns();
}

void ItemList::FitColumns() {
    RECT area{};
    GetClientRect(list_, &area);
    if (area.right == fitted_width_) return;
    fitted_width_ = area.right;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        ListView_SetColumnWidth(list_, static_cast<int>(i),
                                area.right * columns_[i].share / shares_);
    }
}

std::optional<std::size_t> ItemList::SelectedItem() const {
    const int row = ListView_GetNextItem(list_, -1, LVNI_SELECTED);
    if (row < 0) return std::nullopt;
    return static_cast<std::size_t>(row);
}

void ItemList::SelectAnItem() {
    if (client_.ItemCount() == 0) return;
    const int selected = ListView_GetNextItem(list_, -1, LVNI_SELECTED);
    const int focused = ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
    // -1 stands for none.
    const int first =
        selected < 0 || focused < 0 ? std::max(selected, focused) : std::min(selected, focused);
    Select(static_cast<std::size_t>(std::max(first, 0)));
}

bool ItemList::OnCommand(int id, int /*notification*/) {
    switch (id) {
        case IDC_ADD:
            Add();
            return true;
        case IDC_MODIFY:
            Modify();
            return true;
        case IDC_DELETE:
            Delete();
            return true;
        default:
            return false;
    }
}

bool ItemList::OnNotify(NMHDR& header, LRESULT& result) {
    if (header.hwndFrom != list_) return false;
    switch (header.code) {
        case LVN_GETDISPINFOW:
            FillText(header);
            break;
        case NM_DBLCLK:
            if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0) Modify();
            break;
        case NM_SETFOCUS:
            if (items_ == Items::kFixed) SelectAnItem();
            break;
        case LVN_KEYDOWN:
            OnKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
            break;
        case LVN_ODFINDITEMW:
            result = FindItem(reinterpret_cast<const NMLVFINDITEMW&>(header));
            break;
        default:
            return false;
    }
    return true;
}

void ItemList::Add() {
    if (!client_.AddItem()) return;
    ShowItems();
    Select(client_.ItemCount() - 1);
    client_.OnItemsChanged();
}

void ItemList::Modify() {
    const std::optional<std::size_t> item = ItemToEdit("Modifica");
    if (!item || !client_.ModifyItem(*item)) return;
    const int row = static_cast<int>(*item);
    ListView_RedrawItems(list_, row, row);
    client_.OnItemsChanged();
}

void ItemList::Delete() {
    const std::optional<std::size_t> item = ItemToEdit("Elimina");
    if (!item || !client_.DeleteItem(*item)) return;
    ShowItems();
    const std::size_t count = client_.ItemCount();
    if (count > 0) Select(std::min(*item, count - 1));
    client_.OnItemsChanged();
}

std::optional<std::size_t> ItemList::ItemToEdit(const char* message_caption) const {
    const std::optional<std::size_t> item = SelectedItem();
    if (!item) {
        ShowMessageBox(GetParent(list_), {message_caption, "Attenzione! Nessun dato selezionato."});
    }
    return item;
}

void ItemList::Select(std::size_t item) {
    const int row = static_cast<int>(item);
    ListView_SetItemState(list_, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list_, row, FALSE);
}

void ItemList::FillText(NMHDR& header) const {
    LVITEMW& cell = reinterpret_cast<NMLVDISPINFOW&>(header).item;
    const auto item = static_cast<std::size_t>(cell.iItem);
    if ((cell.mask & LVIF_TEXT) == 0 || cell.cchTextMax <= 0 || item >= client_.ItemCount()) return;
    const std::wstring text =
        Widen(client_.ItemText(item, static_cast<std::size_t>(cell.iSubItem)));
    const std::size_t units = std::min(text.size(), static_cast<std::size_t>(cell.cchTextMax) - 1);
    *std::copy_n(text.begin(), units, cell.pszText) = L'\0';
}

// The next item from the start of the search on, the first ones last; -1 when there is none.
int ItemList::FindItem(const NMLVFINDITEMW& search) const {
    if ((search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0) return -1;
    const int count = static_cast<int>(client_.ItemCount());
    const int length = lstrlenW(search.lvfi.psz);
    for (int i = 0; i < count; ++i) {
        const int item = (std::max(search.iStart, 0) + i) % count;
        const std::wstring text = Widen(client_.ItemText(static_cast<std::size_t>(item), 0));
        if (StrCmpNIW(text.c_str(), search.lvfi.psz, length) == 0) return item;
    }
    return -1;
}

void ItemList::OnKey(WORD key) {
    if (key == VK_INSERT) Add();
    if (key == VK_RETURN && SelectedItem()) Modify();
    if (key == VK_DELETE && SelectedItem()) Delete();
}

}  // namespace tonvale
