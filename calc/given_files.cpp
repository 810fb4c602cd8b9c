#include "calc/given_files.h"

#include "calc/progress_line.h"
#include "common/text.h"

namespace tonvale {

void ReportFile(Console& console, std::string_view path, std::string_view what) {
    console.WriteError(SingleLine(path).append(": ").append(what).append("\n"));
}

GivenFiles FindGivenFiles(std::span<const std::string> paths, FileSystem& files, Console& console,
                          std::optional<FileKind> kind) {
    GivenFiles given;
    FolderSearch search{files, kind};
    search.report = [&](const std::string& path, std::string_view reason) {
        ReportFile(console, path, reason);
        given.all_found = false;
    };
    ProgressLine progress(console);
    search.goes_on = [&](std::size_t found) {
        progress.Show("File di dati trovati:", found);
        return !console.IsInterrupted();
    };
    given.files = FindDataFiles(paths, search);
    return given;
}

OpenedFile OpenDataFile(const FoundFile& found, FileSystem& files) {
    OpenedFile opened{found};
    const FileError error = ProfileFile::Read(files, found.path, opened.file);
    opened.kind = AssessedKindOf(opened.file);
    if (error != FileError::kNone) {
        opened.problem = Reason(error);
    } else if (opened.kind == nullptr) {
        opened.problem = "tipo di file sconosciuto";
    }
    return opened;
}

}  // namespace tonvale
