#include "calc/picture.h"

namespace tonvale {

int SavePicture(const SvgCanvas& picture, const std::string& path, FileSystem& files,
                Console& console) {
    const FileError error = WriteFileSafely(files, path, picture.Document());
    if (error == FileError::kNone) return kExitSuccess;
    console.WriteError(path + ": impossibile scrivere il file: " + std::string(Reason(error)) +
                       "\n");
    return kExitFailure;
}

}  // namespace tonvale
