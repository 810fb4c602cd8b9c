#include "exposure/level_item_dialog.h"

#include "common/unicode_win.h"

namespace tonvale {

bool LevelItemDialog::OnCommand(int id, int notification) {
    if (id != IDC_READ_LEVEL) return ModalDialog::OnCommand(id, notification);
    TakeLevel(source_.choose(app(), window()));
    return true;
}

void LevelItemDialog::OnDrop(const std::string& path) {
    const FileKindInfo* info = FileKindOfPath(path);
    if (!info || info->kind != source_.kind) return;
    TakeLevel(ReadHeaderValue(*app().files, path, source_.kind, source_.key));
}

void LevelItemDialog::TakeLevel(const std::optional<std::string>& level_dba) {
    if (level_dba) SetControlText(IDC_LEVEL_EDIT, *level_dba);
}

bool ListItemDialog::OnInit() {
    const std::string_view action = ItemActionName(action_);
    SetWindowTextUtf8(window(), action);
    if (action_ != ItemAction::kAdd) {
        SetControlText(IDOK, action);
        SetControlText(IDCANCEL, "Annulla");
    }
    ShowItem();
    for (const ControlTextLimit& field : description().text_limits) {
        SendMessageW(Control(field.control), EM_SETREADONLY, deletes(), 0);
    }
    Enable(IDC_READ_LEVEL, !deletes());
    FocusOnField(IDC_LEVEL_EDIT);
    return false;
}

bool ListItemDialog::OnCommand(int id, int notification) {
    if (id != IDOK) return LevelItemDialog::OnCommand(id, notification);
    if (deletes() ? ConfirmsDeletion() : TakeItem()) End(IDOK);
    return true;
}

void ListItemDialog::OnDrop(const std::string& path) {
    if (!deletes()) LevelItemDialog::OnDrop(path);
}

}  // namespace tonvale
