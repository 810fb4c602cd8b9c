// Reading and writing in a folder of the real disk.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "common/file_system.h"
#include "tests/common/folder_test.h"

namespace tonvale {

class FileSystemTest : public FolderTest {
  protected:
    FileSystem& files_ = SystemFiles();

    std::string Read(const std::string& path) {
        std::string bytes;
        EXPECT_EQ(files_.Read(path, bytes), FileError::kNone) << path;
        return bytes;
    }
    FileError Write(const std::string& path, std::string_view bytes) {
        return WriteFileSafely(files_, path, bytes);
    }
};

}  // namespace tonvale
