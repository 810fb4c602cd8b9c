// The data files of a folder.
#pragma once

#include <string>
#include <vector>

#include "common/file_kinds.h"

namespace tonvale {

// `path` itself, or when it is a folder the files below it that have the extension of `kind`, in
// the order of their names; folders that cannot be read are passed over, links are not followed.
std::vector<std::string> DataFilesAt(const std::string& path, FileKind kind);

}  // namespace tonvale
