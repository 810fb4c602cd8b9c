#include "common/file_system.h"

#include <random>

#include "common/numbers.h"

namespace tonvale {
namespace {

// A new name in the folder of `path`. Short, so that a path that is just short enough for the
// system does not grow past its limit.
std::string TemporaryBeside(const std::string& path) {
    // A ":" ends the folder too: "C:a.lep" lies in the current folder of drive C.
    const std::size_t folder_length = path.find_last_of("/\\:") + 1;  // npos + 1 is 0
    return path.substr(0, folder_length) + "~" + FormatInteger(std::random_device{}()) + ".tmp";
}

}  // namespace

bool WriteFileSafely(FileSystem& files, const std::string& path, std::string_view bytes) {
    const std::string target = files.ResolveLinks(path);
    const std::string temporary = TemporaryBeside(target);
    if (files.WriteNew(temporary, bytes) && files.Replace(temporary, target)) return true;
    files.Remove(temporary);
    return false;
}

std::string_view FileName(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);  // npos + 1 is 0
}

std::string_view FileExtension(std::string_view path) {
    const std::string_view name = FileName(path);
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string_view() : name.substr(point);
}

}  // namespace tonvale
