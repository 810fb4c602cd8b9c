// The list of a calculator: its columns, its keys and mouse, and the adding, modifying and deleting
// of its items.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace tonvale {

struct ItemListColumn {
    const wchar_t* title;
    int share;  // of the list's width, in parts of all columns' shares
};

// Who holds the items of a list and lets the user edit them.
class ItemListClient {
  public:
    virtual ~ItemListClient() = default;

    virtual std::size_t ItemCount() const = 0;
    virtual std::string ItemText(std::size_t item, std::size_t column) const = 0;

    // One item appended at the end, changed in its place or removed; false when the user has
    // cancelled. A list of fixed items has only the second.
    virtual bool AddItem() { return false; }
    virtual bool ModifyItem(std::size_t item) = 0;
    virtual bool DeleteItem(std::size_t /*item*/) { return false; }

    // One of the three has been done, and the list shows it.
    virtual void OnItemsChanged() = 0;
};

// Drives a list control of the styles LVS_REPORT, LVS_OWNERDATA and LVS_SINGLESEL. The control asks
// for the texts of the rows that it draws, so that the client alone holds the items, and thousands
// of them cost nothing.
class ItemList {
  public:
    explicit ItemList(ItemListClient& client) : client_(client) {}
    ItemList(const ItemList&) = delete;
    ItemList& operator=(const ItemList&) = delete;

    // Takes over the control `list`, still without columns.
    void Attach(HWND list, std::span<const ItemListColumn> columns);

    // Shows the client's items anew; none is selected.
    void ShowItems();
    // The same, but what is selected stays so.
    void RefreshItems();
    // To be called when the dialog may have changed its size.
    void FitColumns();
    std::optional<std::size_t> SelectedItem() const;
    // Selects the first item that is selected or has the focus, else the first of all.
    void SelectAnItem();

    // The buttons 1210, 1211 and 1212, and Enter in the list as IDOK; true when handled.
    bool OnCommand(int id);
    // A double click or Enter modifies an item, Ins adds one, Del deletes one, letters and digits
    // go to the next item that begins with them. The result is the notification's.
    LRESULT OnNotify(const NMHDR& header);

  private:
    void Add();
    void Modify();
    void Delete();
    std::optional<std::size_t> ItemToEdit(const char* message_caption) const;
    void Select(std::size_t item);
    void FillText(NMHDR& header) const;
    int FindItem(const NMLVFINDITEMW& search) const;
    void OnKey(WORD key);

    ItemListClient& client_;
    HWND list_ = nullptr;
    std::span<const ItemListColumn> columns_;
    int shares_ = 0;        // of all columns
    int fitted_width_ = 0;  // of the control, when its columns were last made to fit
};

}  // namespace tonvale
