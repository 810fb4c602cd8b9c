// Tests in a folder of their own, which goes with them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace tonvale {

// Names, paths and texts are UTF-8.
class FolderTest : public testing::Test {
  protected:
    FolderTest() { std::filesystem::create_directories(folder_); }
    ~FolderTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string Path(const std::string& name) const {
        const std::u8string path = InFolder(name).u8string();
        return {path.begin(), path.end()};
    }
    std::string WriteFile(const std::string& name, const std::string& bytes) const {
        std::ofstream(InFolder(name), std::ios::binary) << bytes;
        return Path(name);
    }
    std::string ReadFile(const std::string& name) const {
        std::ifstream file(InFolder(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool FileExists(const std::string& name) const {
        return std::filesystem::exists(InFolder(name));
    }
    std::ptrdiff_t FileCount() const {
        return std::distance(std::filesystem::directory_iterator(folder_), {});
    }

    // Tests may run side by side.
    const std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() /
        (std::filesystem::path(u8"tonvale però ") += std::to_string(std::random_device{}()));

  private:
    std::filesystem::path InFolder(const std::string& name) const {
        return folder_ / std::u8string(name.begin(), name.end());
    }
};

}  // namespace tonvale
