#include "dialogs/list_calculator_dialog_win.h"

#include "resources/resource.h"

namespace tonvale {

bool ListCalculatorDialog::OnInit() {
    list_.Attach(Control(IDC_ITEM_LIST), Columns());
    return CalculatorDialog::OnInit();
}

bool ListCalculatorDialog::OnCommand(int id, int notification) {
    return list_.OnCommand(id) || CalculatorDialog::OnCommand(id, notification);
}

LRESULT ListCalculatorDialog::OnNotify(const NMHDR& header) {
    const LRESULT result = list_.OnNotify(header);
    return result != 0 ? result : CalculatorDialog::OnNotify(header);
}

bool ListCalculatorDialog::OnMessage(UINT message, WPARAM wparam, LPARAM lparam, INT_PTR& result) {
    const bool handled = CalculatorDialog::OnMessage(message, wparam, lparam, result);
    if (message == WM_SIZE) list_.FitColumns();
    return handled;
}

}  // namespace tonvale
