// Folders in memory, some of which cannot be read.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "tests/common/faulty_file_system.h"

namespace tonvale {

class FolderTree : public FaultyFileSystem {
  public:
    std::map<std::string, FolderContents> folders;
    std::map<std::string, FileError> errors;

    // Where the search for data files looks for what lies in a folder.
    static std::string In(const std::string& folder, const std::string& name) {
        return folder + static_cast<char>(std::filesystem::path::preferred_separator) + name;
    }

    void Add(const std::string& folder, const std::string& name, const std::string& bytes) {
        folders[folder].identity = folder;
        folders[folder].items.push_back({name, false});
        contents[In(folder, name)] = bytes;
    }

    FileError ReadFolder(const std::string& path, FolderContents& contents_out) override {
        if (errors.contains(path)) return errors[path];
        if (!folders.contains(path)) return FileError::kMissingFolder;
        contents_out = folders[path];
        return FileError::kNone;
    }

    // The 2nd of January 1970, whatever the time zone.
    std::optional<std::int64_t> ModifiedTime(const std::string& path) override {
        if (!contents.contains(path)) return std::nullopt;
        return 36 * 3600;
    }
};

}  // namespace tonvale
