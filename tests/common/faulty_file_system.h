// A disk, in memory or a real one, whose n-th step fails or that is full.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "common/file_system.h"

namespace tonvale {

class FaultyFileSystem : public FileSystem {
  public:
    FaultyFileSystem() = default;
    explicit FaultyFileSystem(FileSystem& disk) : disk_(&disk) {}

    std::map<std::string, std::string> contents;  // path -> bytes, in memory
    int steps_to_failure = 0;                     // 1: the next step fails; 0: none does
    bool is_full = false;

    // Fails as on a file that another program has locked.
    FileError Read(const std::string& path, std::string& bytes) override {
        if (Fails()) return FileError::kInUse;
        if (disk_) return disk_->Read(path, bytes);
        const auto found = contents.find(path);
        if (found == contents.end()) return FileError::kMissing;
        bytes = found->second;
        return FileError::kNone;
    }

    // Fails as on a full disk: half of the bytes are there.
    FileError WriteNew(const std::string& path, std::string_view bytes) override {
        const bool fails = Fails() || is_full;
        if (disk_) return fails ? FileError::kNoRoom : disk_->WriteNew(path, bytes);
        const bool is_new =
            contents.emplace(path, bytes.substr(0, fails ? bytes.size() / 2 : bytes.size())).second;
        if (!is_new) return FileError::kDiskFailure;
        return fails ? FileError::kNoRoom : FileError::kNone;
    }

    // Fails as on a file that another program holds open.
    FileError Replace(const std::string& from, const std::string& to) override {
        if (Fails()) return FileError::kInUse;
        if (disk_) return disk_->Replace(from, to);
        if (contents.count(from) == 0) return FileError::kInUse;
        contents[to] = contents[from];
        contents.erase(from);
        return FileError::kNone;
    }

    void Remove(const std::string& path) override {
        if (disk_) return disk_->Remove(path);
        contents.erase(path);
    }

    std::vector<FolderEntry> FilesBeside(const std::string& path,
                                         std::string_view name_start) override {
        return disk_ ? disk_->FilesBeside(path, name_start) : std::vector<FolderEntry>();
    }

  private:
    bool Fails() { return steps_to_failure > 0 && --steps_to_failure == 0; }

    FileSystem* disk_ = nullptr;  // the real one
};

}  // namespace tonvale
