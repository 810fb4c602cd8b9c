// What the errors of the system say of a file.
#pragma once

#include "common/file_system.h"

namespace tonvale {

// Of a file that is to be read. `error` is the system's last error.
FileError ReadingError(unsigned long error);

// Of one that is to be written: all that can be missing then is its folder.
FileError WritingError(unsigned long error);

}  // namespace tonvale
