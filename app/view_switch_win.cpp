#include "app/view_switch_win.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "common/unicode_win.h"
#include "dialogs/dialog_win.h"
#include "resources/resource.h"

namespace tonvale {
namespace {

struct KindCommand {
    ViewKind kind;
    int command;
};

// In the order of the menu.
constexpr KindCommand kKinds[] = {
    {ViewKind::kAudiogram, CMD_VIEW_AUDIOGRAM},
    {ViewKind::kChart, CMD_VIEW_CHART},
    {ViewKind::kTable, CMD_VIEW_TABLE},
};

// The popup of `menu` that holds the views; nullptr when there is none.
HMENU ViewPopup(HMENU menu) {
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        HMENU popup = GetSubMenu(menu, position);
        if (popup && GetMenuState(popup, CMD_VIEW_DOCUMENT, MF_BYCOMMAND) != UINT_MAX) return popup;
    }
    return nullptr;
}

// The items of the kinds that `result` has, with its texts, at the top of the popup.
void FillViewPopup(HMENU popup, const ResultView& result) {
    UINT position = 0;
    for (const auto& [kind, command] : kKinds) {
        DeleteMenu(popup, static_cast<UINT>(command), MF_BYCOMMAND);
        const ResultPage* page = result.Page(kind);
        if (!page) continue;
        InsertMenuW(popup, position++, MF_BYPOSITION | MF_STRING, static_cast<UINT_PTR>(command),
                    Widen(page->menu_text).c_str());
    }
}

}  // namespace

void ViewSwitch::ShowResult(HMENU menu, ResultView result) {
    shows_document_ = false;
    if (HMENU popup = ViewPopup(menu)) FillViewPopup(popup, result);
    for (const auto& [kind, button] : kKinds) toolbar_.ShowButton(button, result.Page(kind));
    toolbar_.ShowPredictionImages(result.subject == ResultSubject::kPredictions);
    document_.Show(false);
    results_.ShowResult(std::move(result));
    MarkButtons();
}

void ViewSwitch::ShowKind(ViewKind kind) {
    if (!CanShow(kind)) return;
    const WaitCursor wait;
    shows_document_ = false;
    document_.Show(false);
    results_.ShowKind(kind);
    MarkButtons();
}

void ViewSwitch::ShowDocument() {
    shows_document_ = true;
    results_.Hide();
    document_.Show(true);
    document_.SetFocus();
    MarkButtons();
}

bool ViewSwitch::CanShow(ViewKind kind) const {
    const ResultView* result = results_.result();
    return result && result->Page(kind) && (ShowsDocument() || results_.kind() != kind);
}

void ViewSwitch::MarkButtons() const {
    for (const auto& [kind, command] : kKinds) {
        toolbar_.CheckButton(command, !ShowsDocument() && results_.kind() == kind);
    }
}

void ViewSwitch::MarkMenu(HMENU popup) const {
    for (const auto& [kind, command] : kKinds) {
        const bool marked = !ShowsDocument() && results_.kind() == kind;
        CheckMenuItem(popup, static_cast<UINT>(command),
                      MF_BYCOMMAND | static_cast<UINT>(marked ? MF_CHECKED : MF_UNCHECKED));
    }
}

std::string ViewSwitch::Tip(int command) const {
    const auto* row =
        std::find_if(std::begin(kKinds), std::end(kKinds),
                     [command](const KindCommand& k) { return k.command == command; });
    const ResultPage* page = row == std::end(kKinds) || !results_.result()
                                 ? nullptr
                                 : results_.result()->Page(row->kind);
    if (!page) return {};
    std::string tip = page->menu_text;
    tip.erase(std::remove(tip.begin(), tip.end(), '&'), tip.end());
    return tip;
}

}  // namespace tonvale
