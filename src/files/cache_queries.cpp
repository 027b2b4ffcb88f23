// KARCACHEFILE: what a cache holds, and copies into and out of one.
// Comparisons are made on 64-bit values so that extreme positions cannot wrap into a cache's range; a
// null record answers "nothing".
#include <algorithm>

#include "files/file_arith.h"
#include "vextools/cachefile.h"
#include "vextools/frame.h"

namespace {

std::int64_t End(const tagFILECACHE& cache) { return std::int64_t{cache.start} + cache.used; }

}  // namespace

int KARCACHEFILE::IsPosInUsedCache(tagFILECACHE* cache, std::int32_t position) {
  if (!cache || cache->used < 1) return 0;
  return cache->start <= position && position <= End(*cache) ? 1 : 0;
}

int KARCACHEFILE::IsPosInCache(tagFILECACHE* cache, std::int32_t position) {
  if (!cache) return 0;
  return cache->start <= position && position <= std::int64_t{cache->start} + cache->size ? 1 : 0;
}

int KARCACHEFILE::IsDataInCache(tagFILECACHE* cache, std::int32_t size, std::int32_t position) {
  return IsPosInUsedCache(cache, position) && IsPosInUsedCache(cache, vex::files::AddWrap(position, size)) ? 1 : 0;
}

std::int32_t KARCACHEFILE::OffsetInCache(tagFILECACHE* cache, std::int32_t position) {
  return cache ? vex::files::SubWrap(position, cache->start) : 0;
}

std::int32_t KARCACHEFILE::AvailableInCache(tagFILECACHE* cache, std::int32_t position) {
  if (!cache || cache->used < 1) return 0;
  return vex::files::SubWrap(vex::files::AddWrap(cache->start, cache->used), position);
}

char* KARCACHEFILE::CachePointer(tagFILECACHE* cache, std::int32_t position) {
  if (!cache || !cache->data) return nullptr;
  return cache->data + OffsetInCache(cache, position);
}

int KARCACHEFILE::IsDataIntersectCache(tagFILECACHE* cache, std::int32_t size, std::int32_t position) {
  if (!cache || cache->used == 0) return 0;
  return std::int64_t{position} + size > cache->start && position < End(*cache) ? 1 : 0;
}

void KARCACHEFILE::InvalidateCache(tagFILECACHE* cache) {
  if (!cache) return;
  cache->used = 0;
  cache->start = 0;
}

std::int32_t KARCACHEFILE::ReadFromCache(tagFILECACHE* cache, char* buffer, std::int32_t size,
                                         std::int32_t position) {
  if (!IsPosInUsedCache(cache, position) || !buffer || !cache->data) return 0;
  const std::int64_t offset = std::int64_t{position} - cache->start;
  // Never past the buffer, whatever the used count claims.
  const std::int64_t count = std::min({std::int64_t{size}, End(*cache) - position, cache->size - offset});
  if (count < 1) return 0;
  HugeMemCopy(buffer, cache->data + offset, static_cast<std::int32_t>(count));
  return static_cast<std::int32_t>(count);
}

// Copies the part of a written block that falls into the cache.
std::int32_t KARCACHEFILE::UpdateCache(tagFILECACHE* cache, char* buffer, std::int32_t size,
                                       std::int32_t position) {
  if (!cache) return 0;
  if (cache->used < 1) cache->start = cache->next_position = position;
  std::int64_t offset = 0, count = 0;
  char* from = buffer;
  if (position <= cache->start) {  // the block starts at or before the cache
    const std::int64_t skip = std::int64_t{cache->start} - position;
    if (skip < size) count = std::min<std::int64_t>(size - skip, cache->size);
    from = buffer + (count > 0 ? skip : 0);
  } else {
    offset = std::int64_t{position} - cache->start;
    if (offset <= cache->used) count = std::min<std::int64_t>(size, cache->size - offset);
  }
  if (count < 1 || !buffer || !cache->data) return 0;
  HugeMemCopy(cache->data + offset, from, static_cast<std::int32_t>(count));
  // Kept: the end of the copy is measured as a file position, which is exact only for a cache that
  // starts at 0. Capped at the buffer so the cache never claims bytes it cannot hold.
  const std::int64_t end = std::int64_t{cache->start} + offset + count;
  cache->used = static_cast<std::int32_t>(std::min<std::int64_t>(std::max<std::int64_t>(cache->used, end), cache->size));
  return static_cast<std::int32_t>(count);
}
