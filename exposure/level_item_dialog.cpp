#include "exposure/level_item_dialog.h"

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

bool LevelItemDialog::ConfirmsDeletion() const {
    const UserMessage question{"Conferma operazione",
                               "Sei sicuro di voler eliminare questo elemento dalla lista?"};
    return ShowMessage(question, MB_YESNOCANCEL) == IDYES;
}

void LevelItemDialog::TakeLevel(const std::optional<std::string>& level_dba) {
    if (level_dba) SetControlText(IDC_LEVEL_EDIT, *level_dba);
}

}  // namespace tonvale
