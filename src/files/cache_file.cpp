// KARCACHEFILE: opening and closing, the extra read caches and the next read and write positions.
// Reads, writes and the cache queries are in cache_file_io.cpp and cache_queries.cpp.
#include <cstdint>
#include <cstring>

#include "files/file_arith.h"
#include "files/file_cache.h"
#include "vextools/cachefile.h"

using vex::files::ReleaseCache;
using vex::files::SetUpCache;

namespace {

constexpr std::int32_t kDefaultExtraCacheSize = 64000;
constexpr std::int32_t kReadOverwrite = static_cast<std::int32_t>(0xFFFFFEFFu);
constexpr std::int32_t kWriteOverwrite = static_cast<std::int32_t>(0xFFFFFDFFu);

}  // namespace

KARCACHEFILE::KARCACHEFILE()
    : logical_length_(physical_length_), write_cache_{}, read_cache_{}, last_id_(0), allocated_slots_(0),
      used_slots_(0), current_read_index_(0), current_write_index_(0), caches_(nullptr),
      caches_memory_(nullptr) {}

KARCACHEFILE::KARCACHEFILE(const KARCACHEFILE& other)
    : KARBASICFILE(other), write_cache_{}, read_cache_{}, caches_(nullptr), caches_memory_(nullptr) {
  BorrowCaches(other);
}

KARCACHEFILE& KARCACHEFILE::operator=(const KARCACHEFILE& other) {
  if (this == &other) return *this;
  KARBASICFILE::operator=(other);
  ReleaseAllCaches();
  BorrowCaches(other);
  return *this;
}

// Memberwise, except that the copy's records do not own the buffers they point to and its extra-cache
// records live in a block of its own, so neither object frees what the other still uses.
void KARCACHEFILE::BorrowCaches(const KARCACHEFILE& other) {
  logical_length_ = other.logical_length_;
  write_cache_ = other.write_cache_;
  read_cache_ = other.read_cache_;
  write_cache_.memory = read_cache_.memory = nullptr;
  last_id_ = other.last_id_;
  current_read_index_ = other.current_read_index_;
  current_write_index_ = other.current_write_index_;
  allocated_slots_ = used_slots_ = 0;
  if (other.used_slots_ == 0) return;
  const SIZE_T bytes = sizeof(tagFILECACHE) * other.used_slots_;
  caches_memory_ = GlobalAlloc(GMEM_MOVEABLE, bytes);
  caches_ = caches_memory_ ? static_cast<tagFILECACHE*>(GlobalLock(caches_memory_)) : nullptr;
  if (!caches_) {
    if (caches_memory_) GlobalFree(caches_memory_);
    caches_memory_ = nullptr;
    return;
  }
  std::memcpy(caches_, other.caches_, bytes);
  for (std::uint16_t i = 0; i < other.used_slots_; ++i) caches_[i].memory = nullptr;
  allocated_slots_ = used_slots_ = other.used_slots_;
}

KARCACHEFILE::~KARCACHEFILE() {
  if (IsFileOpened()) Close(1);
  ReleaseAllCaches();
}

// Both embedded caches, every extra cache and the array that holds them.
void KARCACHEFILE::ReleaseAllCaches() {
  ReleaseCache(write_cache_);
  ReleaseCache(read_cache_);
  for (std::uint16_t i = 0; i < used_slots_; ++i) ReleaseCache(caches_[i]);
  if (caches_memory_) {
    GlobalUnlock(caches_memory_);
    GlobalFree(caches_memory_);
  }
  caches_memory_ = nullptr;
  caches_ = nullptr;
  allocated_slots_ = used_slots_ = 0;
}

std::int32_t KARCACHEFILE::Open(char* name, unsigned short mode, std::int32_t readCacheSize,
                                std::int32_t writeCacheSize) {
  const std::int32_t result = KARBASICFILE::Open(name, mode);
  // A zero size overwrites the whole access word rather than clearing its bit; callers rely on it.
  if (access_mode_ & 1) {
    if (readCacheSize != 0) access_mode_ |= KARCACHE_READ_CACHING;
    else access_mode_ = kReadOverwrite;
  } else {
    readCacheSize = 0;
  }
  if (access_mode_ & 2) {
    if (writeCacheSize != 0) access_mode_ |= KARCACHE_WRITE_CACHING;
    else access_mode_ = kWriteOverwrite;
  } else {
    writeCacheSize = 0;
  }
  const bool readOk = SetUpCache(read_cache_, readCacheSize, nullptr);
  const bool writeOk = SetUpCache(write_cache_, writeCacheSize, nullptr);
  logical_length_ = physical_length_;
  return readOk && writeOk ? result : -14;
}

std::int32_t KARCACHEFILE::ReOpen(unsigned short mode) {
  const std::int32_t result = KARBASICFILE::ReOpen(mode);
  if (access_mode_ & 1) access_mode_ |= KARCACHE_READ_CACHING;
  if (access_mode_ & 2) access_mode_ |= KARCACHE_WRITE_CACHING;
  logical_length_ = physical_length_;
  InvalidateCache(&write_cache_);
  InvalidateCache(&read_cache_);
  for (std::uint16_t i = 0; i < used_slots_; ++i) {
    if (caches_[i].size != 0) InvalidateCache(&caches_[i]);
  }
  return result;
}

std::int32_t KARCACHEFILE::Close(int release) {
  FlushFile();
  if (release) {
    ReleaseAllCaches();  // the last ID and the write index survive
    current_read_index_ = 0;
  }
  return KARBASICFILE::Close(release);
}

std::int32_t KARCACHEFILE::FileLength() { return logical_length_; }

bool KARCACHEFILE::GrowCacheArray() {
  const SIZE_T bytes = sizeof(tagFILECACHE) * (allocated_slots_ + 1u);
  if (!caches_memory_) {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    void* data = memory ? GlobalLock(memory) : nullptr;
    if (!data) {
      if (memory) GlobalFree(memory);
      return false;
    }
    caches_memory_ = memory;
    caches_ = static_cast<tagFILECACHE*>(data);
  } else {
    GlobalUnlock(caches_memory_);
    HGLOBAL memory = GlobalReAlloc(caches_memory_, bytes, GMEM_MOVEABLE);
    if (memory) caches_memory_ = memory;
    caches_ = static_cast<tagFILECACHE*>(GlobalLock(caches_memory_));
    if (!memory) return false;
  }
  ++allocated_slots_;
  return true;
}

std::int16_t KARCACHEFILE::CreateNewCache(std::int32_t size, char* buffer) {
  // IDs are 16-bit and never reused; past the last one the answer is "no cache" rather than a
  // negative ID that would name the default read cache.
  if (last_id_ == INT16_MAX) return 0;
  if (used_slots_ == allocated_slots_ && allocated_slots_ < UINT16_MAX) GrowCacheArray();
  if (used_slots_ == allocated_slots_ || !caches_) return 0;
  if (size < 0) size = kDefaultExtraCacheSize;
  tagFILECACHE& cache = caches_[used_slots_];
  cache = tagFILECACHE{};
  SetUpCache(cache, size, buffer);  // a failed allocation leaves a cache of size 0
  cache.id = ++last_id_;
  ++used_slots_;
  return cache.id;
}

void KARCACHEFILE::DestroyCache(std::int16_t id) {
  if (id < 1) return;
  const std::int16_t index = CacheIndexFromID(id);
  if (index == 0) return;
  ReleaseCache(caches_[index - 1]);
  // The last record fills the hole, so other caches' indices change; the current index is kept as is.
  if (index != used_slots_) caches_[index - 1] = caches_[used_slots_ - 1];
  if (--used_slots_ == 0) {
    GlobalUnlock(caches_memory_);
    GlobalFree(caches_memory_);
    caches_memory_ = nullptr;
    caches_ = nullptr;
    allocated_slots_ = 0;
  }
}

void KARCACHEFILE::ResetCache(std::int16_t id) {
  if (tagFILECACHE* cache = CacheFromID(id)) ReleaseCache(*cache);
}

void KARCACHEFILE::SetCurrentCache(std::int16_t id) { current_read_index_ = CacheIndexFromID(id); }

void KARCACHEFILE::SetReadCache(std::int16_t id) { current_read_index_ = CacheIndexFromID(id); }

void KARCACHEFILE::SetWriteCache(std::int16_t id) { current_write_index_ = CacheIndexFromID(id); }

std::int16_t KARCACHEFILE::CacheIndexFromID(std::int16_t id) {
  if (id < 1) return 0;
  for (std::uint16_t i = 0; i < used_slots_; ++i) {
    if (caches_[i].id == id) return static_cast<std::int16_t>(i + 1);
  }
  return 0;
}

// Index 0 (and below) is the default read cache; an index past the live caches names none.
tagFILECACHE* KARCACHEFILE::CacheFromIndex(std::int16_t index) {
  if (index < 1) return &read_cache_;
  if (index > used_slots_) return nullptr;
  return &caches_[index - 1];
}

tagFILECACHE* KARCACHEFILE::CacheFromID(std::int16_t id) {
  if (id < 1) return &read_cache_;
  const std::int16_t index = CacheIndexFromID(id);
  return index ? &caches_[index - 1] : nullptr;
}

// The current index is not adjusted when caches are destroyed; once it points past the live caches
// the default read cache serves instead of a record that no longer exists.
tagFILECACHE* KARCACHEFILE::CurrentReadCache() {
  tagFILECACHE* cache = CacheFromIndex(current_read_index_);
  return cache ? cache : &read_cache_;
}

tagFILECACHE* KARCACHEFILE::CurrentWriteCache() { return &write_cache_; }

std::int32_t KARCACHEFILE::SetNextReadPos(std::int32_t position) {
  tagFILECACHE* cache = CurrentReadCache();
  const std::int32_t previous = cache->next_position;
  cache->next_position = position;
  return previous;
}

std::int32_t KARCACHEFILE::JumpReadSize(std::int32_t size) {
  tagFILECACHE* cache = CurrentReadCache();
  const std::int32_t previous = cache->next_position;
  cache->next_position = vex::files::AddWrap(previous, size);
  return previous;
}

std::int32_t KARCACHEFILE::GetNextReadPos() { return CurrentReadCache()->next_position; }

std::int32_t KARCACHEFILE::SetNextWritePos(std::int32_t position) {
  const std::int32_t previous = write_cache_.next_position;
  write_cache_.next_position = position;
  return previous;
}

std::int32_t KARCACHEFILE::GetNextWritePos() { return write_cache_.next_position; }
