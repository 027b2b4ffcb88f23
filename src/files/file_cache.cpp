#include "files/file_cache.h"

namespace vex::files {

void ReleaseCache(tagFILECACHE& cache) {
  if (cache.memory) {
    GlobalUnlock(cache.memory);
    GlobalFree(cache.memory);
  }
  cache.memory = nullptr;
  cache.data = nullptr;
  cache.size = 0;
  cache.used = 0;
  cache.start = 0;
  cache.next_position = 0;
}

bool SetUpCache(tagFILECACHE& cache, std::int32_t size, char* buffer) {
  ReleaseCache(cache);
  if (!buffer && size != 0) {
    // Zero-filled, so bytes the cache holds but never received are zeros, not old heap contents.
    HGLOBAL memory = size > 0 ? GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(size)) : nullptr;
    buffer = memory ? static_cast<char*>(GlobalLock(memory)) : nullptr;
    if (!buffer) {
      if (memory) GlobalFree(memory);
      return false;
    }
    cache.memory = memory;
  }
  cache.data = buffer;
  cache.size = size;
  return true;
}

}  // namespace vex::files
