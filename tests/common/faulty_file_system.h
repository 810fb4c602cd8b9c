// A disk in memory whose n-th step fails.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "common/file_system.h"

namespace tonvale {

class FaultyFileSystem : public FileSystem {
  public:
    std::map<std::string, std::string> contents;  // path -> bytes
    int steps_to_failure = 0;                     // 1: the next step fails; 0: none does

    std::optional<std::string> Read(const std::string& path) override {
        const auto found = contents.find(path);
        if (Fails() || found == contents.end()) return std::nullopt;
        return found->second;
    }

    // Fails as on a full disk: half of the bytes are there.
    bool WriteNew(const std::string& path, std::string_view bytes) override {
        const bool fails = Fails();
        const bool is_new =
            contents.emplace(path, bytes.substr(0, fails ? bytes.size() / 2 : bytes.size())).second;
        return is_new && !fails;
    }

    // Fails as on a file that another program holds open.
    bool Replace(const std::string& from, const std::string& to) override {
        if (Fails() || contents.count(from) == 0) return false;
        contents[to] = contents[from];
        contents.erase(from);
        return true;
    }

    void Remove(const std::string& path) override { contents.erase(path); }

  private:
    bool Fails() { return steps_to_failure > 0 && --steps_to_failure == 0; }
};

}  // namespace tonvale
