// What came out of the program once, looked through and kept in tests/golden.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "tests/exposure/example_file.h"

namespace tonvale {

// Without the last decimals of a number, which are the C library's.
inline std::string Rounded(const std::string& text) {
    constexpr int kDecimals = 9;
    std::string rounded;
    int decimals = -1;  // of the number at hand; -1: no point yet
    for (const char character : text) {
        const bool is_digit = character >= '0' && character <= '9';
        if (character == '.' && decimals < 0) {
            decimals = 0;
        } else if (!is_digit) {
            decimals = -1;
        } else if (decimals >= 0) {
            ++decimals;
        }
        if (decimals <= kDecimals) rounded += character;
    }
    return rounded;
}

inline std::string SourceFolder() {
    const char* examples = std::getenv("TONVALE_EXAMPLES");
    return std::string(examples ? examples : "examples") + "/../";
}

// The names of the files in a folder of the sources, in their order.
inline std::vector<std::string> FilesIn(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() + folder)) {
        names.insert(entry.path().filename().string());
    }
    EXPECT_FALSE(names.empty());
    return {names.begin(), names.end()};
}

// Expects what tests/golden/NAME.golden holds; where TONVALE_WRITE_GOLDEN is set, writes it anew.
inline void ExpectGolden(const std::string& name, const std::string& output) {
    const std::string path = "tests/golden/" + name + ".golden";
    if (std::getenv("TONVALE_WRITE_GOLDEN") != nullptr) {
        std::ofstream(SourceFolder() + path, std::ios::binary) << output;
    }
    EXPECT_EQ(Rounded(output), Rounded(ExampleBytes("../" + path))) << name;
}

}  // namespace tonvale
