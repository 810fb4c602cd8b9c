// The report document and the clipboard.
#pragma once

#include <windows.h>

#include <optional>

#include "common/user_message.h"
#include "dialogs/app_context_win.h"
#include "report/rich_edit/rich_edit_gaps_win.h"
#include "report/rich_edit/rich_edit_win.h"

namespace tonvale {

// True when one of the formats that the document takes is on the clipboard.
bool CanPasteInReport(const AppContext& app);

// Puts the first available format in place of the selection. Gives what the user has to be told
// when it cannot: nothing has changed then.
std::optional<UserMessage> PasteInReport(const AppContext& app, RichEdit& edit,
                                         const RichEditGaps& gaps);

// Puts the selection on the clipboard; false when that cannot be had. Without a selection there is
// nothing to do.
bool CopyFromReport(const AppContext& app, RichEdit& edit, const RichEditGaps& gaps);

}  // namespace tonvale
