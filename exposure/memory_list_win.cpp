#include "exposure/memory_list_win.h"

#include <optional>

namespace tonvale {

namespace {

constexpr ItemListColumn kColumns[] = {{L"Livello", 1}, {L"Errore", 1}};

}  // namespace

void MemoryList::TakeControls(HWND dialog) {
    dialog_ = dialog;
    list_.TakeControl(GetDlgItem(dialog, IDC_MEMORY_LIST), kColumns);
    list_.ShowItems();
}

void MemoryList::Disable() const {
    for (const int control : {IDC_MEMORY_LIST, IDC_RECALL}) {
        EnableWindow(GetDlgItem(dialog_, control), FALSE);
    }
}

bool MemoryList::OnCommand(int id, int /*notification*/) {
    if (id != IDC_RECALL) return false;
    if (const std::optional<std::size_t> row = list_.SelectedItem()) {
        ModifyItem(*row);
    } else {
        ShowMessageBox(dialog_, NothingToRecall());
    }
    return true;
}

bool MemoryList::OnNotify(NMHDR& header, LRESULT& result) {
    return list_.OnNotify(header, result);
}

std::string MemoryList::ItemText(std::size_t row, std::size_t column) const {
    const RememberedTexts texts = TextsOf(memory_[row]);
    return column == 0 ? texts.level_dba : texts.error_db;
}

// The list itself stays as it is.
bool MemoryList::ModifyItem(std::size_t row) {
    recall_(TextsOf(memory_[row]));
    return false;
}

}  // namespace tonvale
