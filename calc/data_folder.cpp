#include "calc/data_folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tonvale {

namespace {

namespace fs = std::filesystem;

std::string Utf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace

std::vector<std::string> DataFilesAt(const std::string& path, FileKind kind) {
    const fs::path system_path(std::u8string(path.begin(), path.end()));
    std::error_code error;
    if (!fs::is_directory(system_path, error)) return {path};
    std::vector<std::string> paths;
    const fs::recursive_directory_iterator end;
    for (fs::recursive_directory_iterator entry(
             system_path, fs::directory_options::skip_permission_denied, error);
         !error && entry != end; entry.increment(error)) {
        std::string file = Utf8(entry->path());
        const FileKindInfo* info = FileKindOfPath(file);
        if (info == nullptr || info->kind != kind || entry->is_directory(error)) continue;
        paths.push_back(std::move(file));
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace tonvale
