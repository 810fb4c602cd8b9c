// The list of a calculator: its columns, its keys and mouse, and the adding, modifying and deleting
// of its items.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dialogs/dialog_win.h"
#include "resources/resource.h"

namespace tonvale {

// Rows that the tables of several dialogs share.
inline constexpr ControlTip kAddItemTip{IDC_ADD, L"Aggiunge un elemento alla lista"};
inline constexpr ControlTip kModifyItemTip{IDC_MODIFY, L"Modifica un elemento della lista"};
inline constexpr ControlTip kDeleteItemTip{IDC_DELETE, L"Elimina un elemento dalla lista"};

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

enum class ItemAction { kAdd, kModify, kDelete };

// Title of the dialog that does it, and text of its first button.
std::string_view ItemActionName(ItemAction action);

// The client of a list whose items are a vector, each edited in a dialog of its own.
template <typename Item>
class ItemVectorClient : public ItemListClient {
  public:
    std::size_t ItemCount() const override { return Items().size(); }
    bool AddItem() override {
        Item item = NewItem();
        if (!EditItem(ItemAction::kAdd, item)) return false;
        Items().push_back(item);
        return true;
    }
    bool ModifyItem(std::size_t position) override {
        Item item = Items()[position];
        if (!EditItem(ItemAction::kModify, item)) return false;
        Items()[position] = item;
        return true;
    }
    bool DeleteItem(std::size_t position) override {
        Item item = Items()[position];
        if (!EditItem(ItemAction::kDelete, item)) return false;
        Items().erase(Items().begin() + static_cast<std::ptrdiff_t>(position));
        return true;
    }

  protected:
    virtual const std::vector<Item>& Items() const = 0;
    std::vector<Item>& Items() {
        return const_cast<std::vector<Item>&>(std::as_const(*this).Items());
    }
    // What the dialog for a new item shows at first.
    virtual Item NewItem() const = 0;
    // Lets the user edit, or look at what is to be deleted; false when the user has cancelled.
    virtual bool EditItem(ItemAction action, Item& item) = 0;
};

// Drives a list control of the styles LVS_REPORT, LVS_OWNERDATA and LVS_SINGLESEL. The control asks
// for the texts of the rows that it draws, so that the client alone holds the items, and thousands
// of them cost nothing.
class ItemList : public DialogPart {
  public:
    // A list of fixed items always has a selected one while it has the focus.
    enum class Items { kAnyNumber, kFixed };

    explicit ItemList(ItemListClient& client, Items items = Items::kAnyNumber)
        : client_(client), items_(items) {}
    ItemList(const ItemList&) = delete;
    ItemList& operator=(const ItemList&) = delete;

    // Takes over the control `list`, still without columns.
    void TakeControl(HWND list, std::span<const ItemListColumn> columns);

    // Shows the client's items anew; none is selected.
    void ShowItems();
    // The same, but what is selected stays so.
    void RefreshItems();
    std::optional<std::size_t> SelectedItem() const;
    void Select(std::size_t item);

    // The buttons 1210, 1211 and 1212.
    bool OnCommand(int id, int notification) override;
    // A double click or Enter modifies an item, Ins adds one, Del deletes one, letters and digits
    // go to the next item that begins with them.
    bool OnNotify(NMHDR& header, LRESULT& result) override;
    void OnResize() override { FitColumns(); }

  private:
    void FitColumns();
    // Selects the first item that is selected or has the focus, else the first of all.
    void SelectAnItem();
    void Add();
    void Modify();
    void Delete();
    std::optional<std::size_t> ItemToEdit(const char* message_caption) const;
    void FillText(NMHDR& header) const;
    int FindItem(const NMLVFINDITEMW& search) const;
    void OnKey(WORD key);

    ItemListClient& client_;
    Items items_;
    HWND list_ = nullptr;
    std::span<const ItemListColumn> columns_;
    int shares_ = 0;        // of all columns
    int fitted_width_ = 0;  // of the control, when its columns were last made to fit
};

}  // namespace tonvale
