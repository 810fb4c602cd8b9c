#include "calc/picture.h"

namespace tonvale {

int SavePicture(const SvgCanvas& picture, const std::string& path, FileSystem& files,
                Console& console) {
    if (WriteFileSafely(files, path, picture.Document())) return kExitSuccess;
    console.WriteError(path + ": impossibile scrivere il file\n");
    return kExitFailure;
}

}  // namespace tonvale
