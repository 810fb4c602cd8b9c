// The dialog ERROR_ADD_LEQ: one sampled level of the uncertainty wizard.
#pragma once

#include <windows.h>

#include "dialogs/app_context_win.h"
#include "dialogs/item_list_win.h"
#include "exposure/uncertainty_study.h"

namespace tonvale {

// Shows `sample`, whose time is in the time unit of index `time_unit`. True when the user confirms;
// `sample` then holds the texts as typed, whatever they are.
bool EditSample(AppContext& app, HWND owner, ItemAction action, int time_unit, SampleRow& sample);

}  // namespace tonvale
