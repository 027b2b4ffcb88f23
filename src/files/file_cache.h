// Set-up and release of one tagFILECACHE record.
#pragma once

#include <cstdint>

#include "vextools/cachefile.h"

namespace vex::files {

// Frees what the record allocated (a caller's buffer is left alone) and empties it; the ID stays.
void ReleaseCache(tagFILECACHE& cache);

// Releases the record, then gives it the caller's buffer or, for a positive size, a movable block of
// its own. On allocation failure the size is 0 and the result false.
bool SetUpCache(tagFILECACHE& cache, std::int32_t size, char* buffer);

}  // namespace vex::files
