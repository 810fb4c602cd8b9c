// The data files of folders and of all that lies below them.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/file_kinds.h"
#include "common/file_system.h"

namespace tonvale {

struct FoundFile {
    std::string path;  // to open it by
    // The folder it lies in, from the one that was asked for on, parted by "/"; empty for a file
    // that was itself asked for. Nothing of what lies above is told.
    std::string folder = {};
    std::string name = {};
};

struct FolderSearch {
    FileSystem& files;
    // Only files of this kind; nullopt: data files of every kind. The extension tells.
    std::optional<FileKind> kind = {};
    // Told of every folder that is passed over, and why.
    std::function<void(const std::string& path, std::string_view reason)> report = {};
    // Whether to go on; asked at every step, with how many files are found.
    std::function<bool(std::size_t found)> goes_on = {};
};

// The data files of the folders among `paths`, which come in the order given; what is no folder
// stands for itself. Within a folder those below it come first, then its files, both in the order
// in which a person sorts their names. Links are not followed and no folder is searched twice, so
// that the search ends and never leads out of the folders given.
std::vector<FoundFile> FindDataFiles(std::span<const std::string> paths,
                                     const FolderSearch& search);

}  // namespace tonvale
