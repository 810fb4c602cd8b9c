// The data files that a command line names, one by one or by their folders.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "archive/data_folder.h"
#include "calc/assessment_table.h"
#include "calc/companion.h"

namespace tonvale {

// Tells on standard error what is wrong with a file or folder.
void ReportFile(Console& console, std::string_view path, std::string_view what);

struct GivenFiles {
    std::vector<FoundFile> files;
    bool all_found = true;  // false when a folder could not be read, or has no such file
};

// The files that `paths` stand for (FindDataFiles). Standard error tells of folders passed over.
GivenFiles FindGivenFiles(std::span<const std::string> paths, FileSystem& files, Console& console,
                          std::optional<FileKind> kind = {});

struct OpenedFile {
    const FoundFile& found;
    ProfileFile file = {};
    const AssessedKind* kind = nullptr;
    std::string_view problem = {};  // why it cannot be recomputed; empty when it can
};

OpenedFile OpenDataFile(const FoundFile& found, FileSystem& files);

}  // namespace tonvale
