// Prints the report document on the default printer.
#pragma once

#include <optional>
#include <string>

#include "common/user_message.h"
#include "dialogs/app_context_win.h"
#include "report/rich_edit/rich_edit_gaps_win.h"
#include "report/rich_edit/rich_edit_win.h"

namespace tonvale {

// Prints the selection, or the whole text when nothing is selected, as document `name`. Without a
// printer nothing happens. The message tells why nothing could be printed.
std::optional<UserMessage> PrintReportDocument(AppContext& app, RichEdit& edit,
                                               const RichEditGaps& gaps, const std::string& name);

}  // namespace tonvale
