#include "dialogs/data_file_session_win.h"

#include <memory>
#include <optional>

#include "common/print_frame.h"
#include "dialogs/file_dialogs_win.h"
#include "resources/resource.h"

namespace tonvale {

bool DataFileSession::Load(const std::string& path) {
    const std::optional<ProfileFile> file = ReadDataFile(*app_.files, path, kind_);
    if (!file || !client_.LoadFrom(*file)) return false;
    SetCurrent(path);
    return true;
}

bool DataFileSession::LoadDropped(const std::string& path) {
    const FileKindInfo* info = FileKindOfPath(path);
    return info && info->kind == kind_ && Load(path);
}

bool DataFileSession::OnCommand(int id, int /*notification*/) {
    struct Command {
        int id;
        void (DataFileSession::*run)();
    };
    static constexpr Command kCommands[] = {
        {CMD_FILE_OPEN, &DataFileSession::Open},      {CMD_FILE_SAVE, &DataFileSession::Save},
        {CMD_FILE_SAVE_AS, &DataFileSession::SaveAs}, {CMD_FILE_PRINT, &DataFileSession::Print},
        {IDC_WIZARD_PRINT, &DataFileSession::Print},
    };
    for (const Command& command : kCommands) {
        if (command.id != id) continue;
        client_.BeforeFileCommand();
        (this->*command.run)();
        return true;
    }
    return false;
}

void DataFileSession::Open() {
    const std::optional<std::string> path =
        ChooseFileToOpen(app_, client_.FileOwner(), InfoOf(kind_).filter_text, kOpenDataTitle);
    if (path && Load(*path)) client_.AfterOpenCommand();
}

void DataFileSession::Save() {
    if (current_file_.empty()) {
        SaveAs();
    } else {
        SaveTo(current_file_);
    }
}

void DataFileSession::SaveAs() {
    const std::optional<std::string> path =
        ChooseFileToSave(app_, client_.FileOwner(), InfoOf(kind_).filter_text, kSaveDataTitle);
    if (path) SaveTo(*path);
}

void DataFileSession::SaveTo(const std::string& path) {
    // What the program does not know of an existing file survives.
    const FileError error =
        UpdateProfileFile(*app_.files, path, [this](ProfileFile& file) { client_.StoreTo(file); });
    if (error == FileError::kNone) {
        SetCurrent(path);
    } else {
        ShowMessageBox(client_.FileOwner(), SaveFailure(path, Reason(error)));
    }
}

void DataFileSession::Print() {
    const WaitCursor wait;
    const std::unique_ptr<Printer> printer = app_.open_printer ? app_.open_printer() : nullptr;
    if (printer) PrintPages(*printer, client_.CurrentPrintout());
}

void DataFileSession::SetCurrent(const std::string& path) {
    current_file_ = path;
    client_.ShowCurrentFile(current_file_);
}

}  // namespace tonvale
