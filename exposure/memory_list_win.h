// The list of the results kept by "M+" (control 1602) and the button "M&R" (1603), with which the
// dialogs of a period and of a day take a result over.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/dialog_win.h"
#include "dialogs/item_list_win.h"
#include "exposure/uncertainty_study.h"
#include "resources/resource.h"

namespace tonvale {

// Rows that the tables of both dialogs share.
inline constexpr ControlTip kMemoryListTip{
    IDC_MEMORY_LIST, L"Lista con i livelli memorizzati e i loro errori ambientali"};
inline constexpr ControlTip kRecallTip{IDC_RECALL,
                                       L"Riprende il livello e l'errore selezionati nella lista"};

class MemoryList : public DialogPart, private ItemListClient {
  public:
    // `recall` is given the row that the user wants. `memory` outlives the list.
    MemoryList(const std::vector<RememberedResult>& memory,
               std::function<void(const RememberedTexts&)> recall)
        : memory_(memory), recall_(std::move(recall)) {}

    // Takes over the controls of `dialog`.
    void TakeControls(HWND dialog);
    // What is on show is to be looked at only.
    void Disable() const;

    bool OnCommand(int id, int notification) override;
    // A double click or Enter in the list takes over, too.
    bool OnNotify(NMHDR& header, LRESULT& result) override;
    void OnResize() override { list_.OnResize(); }

  private:
    std::size_t ItemCount() const override { return memory_.size(); }
    std::string ItemText(std::size_t row, std::size_t column) const override;
    bool ModifyItem(std::size_t row) override;
    void OnItemsChanged() override {}

    const std::vector<RememberedResult>& memory_;
    std::function<void(const RememberedTexts&)> recall_;
    ItemList list_{*this};
    HWND dialog_ = nullptr;
};

}  // namespace tonvale
