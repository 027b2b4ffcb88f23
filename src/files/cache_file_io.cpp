// KARCACHEFILE: cached and direct reads and writes.
#include <algorithm>

#include "files/file_arith.h"
#include "vextools/cachefile.h"
#include "vextools/frame.h"

using vex::files::AddWrap;

namespace {

std::int64_t End(const tagFILECACHE& cache) { return std::int64_t{cache.start} + cache.used; }

// A count for the next piece of a read: what is left of the request, bounded by a distance in the file.
std::int32_t Piece(std::int32_t left, std::int64_t distance) {
  return static_cast<std::int32_t>(std::min<std::int64_t>(left, distance));
}

}  // namespace

std::int32_t KARCACHEFILE::ReadFromFile(char* buffer, std::int32_t size, std::int32_t position) {
  return KARBASICFILE::ReadDirect(buffer, size, position);
}

void KARCACHEFILE::FlushFile() {
  // The cache keeps its content and start: a flushed cache still answers reads.
  if ((access_mode_ & 2) && write_cache_.used != 0) {
    KARBASICFILE::WriteDirect(write_cache_.data, write_cache_.used, write_cache_.start);
  }
  access_mode_ &= ~KARCACHE_WRITE_PENDING;
}

// The current read cache takes every written block; the other extra caches only a block that starts
// inside their range.
void KARCACHEFILE::UpdateReadCaches(char* buffer, std::int32_t size, std::int32_t position) {
  tagFILECACHE* current = CurrentReadCache();
  UpdateCache(current, buffer, size, position);
  for (std::uint16_t i = 0; i < used_slots_; ++i) {
    tagFILECACHE* cache = &caches_[i];
    if (cache != current && IsPosInCache(cache, position)) UpdateCache(cache, buffer, size, position);
  }
}

std::int32_t KARCACHEFILE::WriteData(char* buffer, std::int32_t size, std::int32_t position) {
  if (!(access_mode_ & KARCACHE_WRITE_CACHING)) {
    WriteDirect(buffer, size, position);
    return 0;
  }
  if (!IsFileOpened()) return 0;
  if (size < 0 || (size > 0 && !buffer)) return 0;  // nothing that could be written
  tagFILECACHE& w = write_cache_;
  if (position < 0) position = w.next_position;
  // A position past the end of the cached bytes is treated like one outside the cache: the bytes in
  // between were never written and must not reach the file.
  if (!IsPosInCache(&w, position) || (w.used >= 1 && position > End(w))) {
    FlushFile();
    w.used = 0;
    w.start = 0;
  }
  if (w.used < 1) w.start = position;
  const std::int64_t offset = std::int64_t{position} - w.start;
  // Kept: the room is measured from the used count, not from the offset.
  const std::int32_t first = std::max(0, std::min(size, w.size - w.used));
  HugeMemCopy(w.data + offset, buffer, first);
  w.used = static_cast<std::int32_t>(std::max<std::int64_t>(w.used, offset + first));
  if (first < size) {
    FlushFile();
    WriteThrough(buffer + first, size - first, AddWrap(position, first));
  }
  w.next_position = AddWrap(position, size);
  logical_length_ = static_cast<std::int32_t>(std::max<std::int64_t>(logical_length_, End(w)));
  access_mode_ |= KARCACHE_WRITE_PENDING;
  if (access_mode_ & KARCACHE_READ_CACHING) UpdateReadCaches(buffer, size, position);
  return size;
}

// The rest of a block after a flush: it starts the write cache again. What does not fit the cache goes
// straight to the file, so that the cache keeps the block's last bytes.
void KARCACHEFILE::WriteThrough(char* buffer, std::int32_t size, std::int32_t position) {
  tagFILECACHE& w = write_cache_;
  const std::int32_t direct = std::max(0, size - w.size);
  if (direct > 0) KARBASICFILE::WriteDirect(buffer, direct, position);
  HugeMemCopy(w.data, buffer + direct, size - direct);
  w.start = AddWrap(position, direct);
  w.used = size - direct;
}

std::int32_t KARCACHEFILE::WriteDirect(char* buffer, std::int32_t size, std::int32_t position) {
  if (!IsFileOpened()) return 0;
  if (position < 0) position = write_cache_.next_position;
  if (access_mode_ & KARCACHE_WRITE_CACHING) {
    if (IsPosInCache(&write_cache_, position)) UpdateCache(&write_cache_, buffer, size, position);
    const std::int64_t end = std::int64_t{position} + size;
    const bool keep = position <= physical_length_ && (end <= physical_length_ || end >= logical_length_);
    if ((access_mode_ & KARCACHE_WRITE_PENDING) && !keep) FlushFile();
  } else {
    position = FileLength();  // kept: without a write cache, direct writes always append
  }
  if (access_mode_ & KARCACHE_READ_CACHING) UpdateReadCaches(buffer, size, position);
  KARBASICFILE::WriteDirect(buffer, size, position);
  logical_length_ = std::max(logical_length_, AddWrap(position, size));
  return 0;
}

std::int32_t KARCACHEFILE::ReadData(char* buffer, std::int32_t size, std::int32_t position) {
  if (!IsFileOpened() || !(access_mode_ & 1) || position >= FileLength()) return 0;
  tagFILECACHE* r = CurrentReadCache();
  if (position < 0) position = r->next_position;
  std::int32_t got = 0;
  if (IsDataInCache(r, size, position)) {
    got = ReadFromCache(r, buffer, size, position);
    r->next_position = AddWrap(r->next_position, got);
    if (got >= size) return got;
  }
  InvalidateCache(r);
  const std::int32_t at = AddWrap(position, got);
  const std::int32_t filled = ReadDirect(r->data, r->size, at);
  r->used = std::clamp(filled, 0, std::max(r->size, 0));  // a failed refill leaves the cache empty
  r->start = r->next_position = at;
  const std::int32_t rest = ReadFromCache(r, buffer ? buffer + got : nullptr, size - got, at);
  r->next_position = AddWrap(r->next_position, rest);
  return got + rest;
}

// Merges the file with the current read cache and the write cache so that unflushed writes are seen.
std::int32_t KARCACHEFILE::ReadDirect(char* buffer, std::int32_t size, std::int32_t position) {
  tagFILECACHE* a = CurrentReadCache();
  tagFILECACHE* b = &write_cache_;
  if (position < 0) position = a->next_position;
  if (a->start > b->start) std::swap(a, b);
  const std::int64_t p = position;
  std::int32_t got = 0;
  // A failed file read ends the merge: what it returned is added to the count, and nothing more is
  // placed relative to a count that may now be negative.
  if (a->used >= 1) {
    if (p < a->start) {
      const std::int32_t r = ReadFromFile(buffer, Piece(size, a->start - p), position);
      got += r;
      if (r < 0) return got;
    }
    if (got < size && p + got < End(*a)) {
      got += ReadFromCache(a, buffer + got, Piece(size - got, End(*a) - p - got), AddWrap(position, got));
    }
  }
  if (b->used > 0) {
    if (got < size && p + got < b->start) {
      // Kept: this piece goes to the start of the buffer, not after what is already there.
      const std::int32_t r = ReadFromFile(buffer, Piece(size - got, b->start - p - got), AddWrap(position, got));
      got += r;
      if (r < 0) return got;
    }
    if (got < size && p + got < End(*b)) {
      got += ReadFromCache(b, buffer + got, Piece(size - got, End(*b) - p - got), AddWrap(position, got));
    }
  }
  if (got < size) return got + ReadFromFile(buffer ? buffer + got : nullptr, size - got, AddWrap(position, got));
  return got;
}

std::int32_t KARCACHEFILE::ReadAvailable(char* buffer, std::int32_t size, std::int32_t position) {
  if (!IsFileOpened() || !(access_mode_ & 1)) return 0;
  std::int32_t got = ReadFromCache(CurrentReadCache(), buffer, size, position);
  if (got < size && buffer) {
    got += ReadFromCache(&write_cache_, buffer + got, size - got, AddWrap(position, got));
  }
  return got;
}

char* KARCACHEFILE::BringData(std::int32_t, std::int32_t position) {
  tagFILECACHE* r = CurrentReadCache();
  if (position < 0) position = r->next_position;
  // The size asked for is not looked at: a whole cache's worth must be present.
  if (IsDataInCache(r, r->size, position)) return CachePointer(r, position);
  InvalidateCache(r);
  const std::int32_t filled = ReadDirect(r->data, r->size, position);
  r->used = std::clamp(filled, 0, std::max(r->size, 0));
  r->start = r->next_position = position;
  return r->data;
}
