// The option buttons that choose a damage table, in every dialog that has them.
#pragma once

#include "dialogs/dialog_win.h"
#include "hearing/damage_table.h"
#include "resources/resource.h"

namespace tonvale {

// The buttons have the codes of what they select.
static_assert(static_cast<int>(DamageTable::kNew) == IDC_TABLE_NEW &&
              static_cast<int>(DamageTable::kOld) == IDC_TABLE_OLD &&
              static_cast<int>(DamageTable::kBiological) == IDC_TABLE_BIOLOGICAL);

inline constexpr ControlTip kNewTableTip{IDC_TABLE_NEW,
                                         L"Seleziona la tabella di calcolo del 1994"};
inline constexpr ControlTip kOldTableTip{IDC_TABLE_OLD,
                                         L"Seleziona la tabella di calcolo del 1991"};
inline constexpr ControlTip kBiologicalTableTip{
    IDC_TABLE_BIOLOGICAL, L"Seleziona la tabella di calcolo del 2000 (danno biologico)"};

}  // namespace tonvale
