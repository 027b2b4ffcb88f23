#pragma once

#include "library_loader.h"

namespace vexhost {

// Reads a delimited text file through the library's reader and reports lines whose field count
// differs from the first data line's into the ".ERR" report beside it. The process exit code.
int ImportFile(const Library& library, const char* path, const char* separator);

}  // namespace vexhost
