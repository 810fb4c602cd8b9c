// The base of the calculators' dialogs that edit a list of items (control 1110).
#pragma once

#include <span>

#include "dialogs/calculator_dialog_win.h"
#include "dialogs/item_list_win.h"

namespace tonvale {

inline constexpr ControlTip kAddItemTip{IDC_ADD, L"Aggiunge un elemento alla lista"};
inline constexpr ControlTip kModifyItemTip{IDC_MODIFY, L"Modifica un elemento della lista"};
inline constexpr ControlTip kDeleteItemTip{IDC_DELETE, L"Elimina un elemento dalla lista"};

class ListCalculatorDialog : public CalculatorDialog, protected ItemListClient {
  protected:
    using CalculatorDialog::CalculatorDialog;

    virtual std::span<const ItemListColumn> Columns() const = 0;

    bool OnInit() override;
    bool OnCommand(int id, int notification) override;
    LRESULT OnNotify(const NMHDR& header) override;
    bool OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result) override;

    void OnItemsChanged() override { RecomputeResults(); }

    ItemList& list() { return list_; }

  private:
    ItemList list_{*this};
};

}  // namespace tonvale
