// KARCACHEFILE: a KARBASICFILE with memory caches in front of it: one write cache, one default read
// cache and any number of further read caches, named by a cache ID, of which one is the current read
// cache. The logical length includes data still waiting in the write cache.
#pragma once

#include <cstdint>

#include "basicfile.h"
#include "export.h"
#include "types.h"

// One cache. Positions are file positions; used counts the valid bytes from the cache's first byte.
struct tagFILECACHE {
  std::int16_t id;             // 0 for the write cache and the default read cache
  HGLOBAL memory;              // the buffer's block when the cache allocated it, else null
  char* data;                  // the locked buffer, or the caller's
  std::int32_t size;           // capacity in bytes
  std::int32_t used;           // valid bytes (0 = empty)
  std::int32_t start;          // file position of the first cached byte
  std::int32_t next_position;  // next read (read caches) or write (write cache) position
};

// Bits added to the access-mode word.
enum : std::int32_t {
  KARCACHE_READ_CACHING = 0x100,
  KARCACHE_WRITE_CACHING = 0x200,
  KARCACHE_WRITE_PENDING = 0x400,  // the write cache holds data not yet in the file
};

class VEXTOOLS_API KARCACHEFILE : public KARBASICFILE {
 public:
  KARCACHEFILE();
  // Copies share the file and the cache buffers of the original but never free them: the copy must
  // not outlive the original.
  KARCACHEFILE(const KARCACHEFILE& other);
  KARCACHEFILE& operator=(const KARCACHEFILE& other);
  ~KARCACHEFILE() override;

  std::int32_t Open(char* name, unsigned short mode, std::int32_t readCacheSize, std::int32_t writeCacheSize);
  std::int32_t ReOpen(unsigned short mode);
  // Flushes; a nonzero release frees every cache buffer. Always -3.
  std::int32_t Close(int release) override;
  std::int32_t FileLength() override;  // the logical length

  // A negative position means the next read (or write) position of the cache concerned.
  std::int32_t ReadDirect(char* buffer, std::int32_t size, std::int32_t position) override;
  std::int32_t WriteDirect(char* buffer, std::int32_t size, std::int32_t position) override;
  std::int32_t ReadData(char* buffer, std::int32_t size, std::int32_t position) override;
  std::int32_t WriteData(char* buffer, std::int32_t size, std::int32_t position) override;
  std::int32_t ReadAvailable(char* buffer, std::int32_t size, std::int32_t position);
  char* BringData(std::int32_t size, std::int32_t position);
  void FlushFile();

  // Extra read caches: IDs 1, 2, 3, ... never reused. A negative size means 64000 bytes.
  std::int16_t CreateNewCache(std::int32_t size, char* buffer);
  void DestroyCache(std::int16_t id);
  void ResetCache(std::int16_t id);
  void SetCurrentCache(std::int16_t id);
  void SetReadCache(std::int16_t id);
  void SetWriteCache(std::int16_t id);  // recorded only: the embedded write cache is always used
  std::int16_t CacheIndexFromID(std::int16_t id);
  tagFILECACHE* CacheFromIndex(std::int16_t index);
  tagFILECACHE* CacheFromID(std::int16_t id);

  // Cache queries; ranges include their end.
  int IsPosInUsedCache(tagFILECACHE* cache, std::int32_t position);
  int IsPosInCache(tagFILECACHE* cache, std::int32_t position);
  int IsDataInCache(tagFILECACHE* cache, std::int32_t size, std::int32_t position);
  std::int32_t OffsetInCache(tagFILECACHE* cache, std::int32_t position);
  std::int32_t AvailableInCache(tagFILECACHE* cache, std::int32_t position);
  char* CachePointer(tagFILECACHE* cache, std::int32_t position);
  int IsDataIntersectCache(tagFILECACHE* cache, std::int32_t size, std::int32_t position);
  std::int32_t UpdateCache(tagFILECACHE* cache, char* buffer, std::int32_t size, std::int32_t position);
  void InvalidateCache(tagFILECACHE* cache);
  std::int32_t ReadFromCache(tagFILECACHE* cache, char* buffer, std::int32_t size, std::int32_t position);

  // Each returns the previous position.
  std::int32_t SetNextReadPos(std::int32_t position);
  std::int32_t JumpReadSize(std::int32_t size);
  std::int32_t GetNextReadPos();
  std::int32_t SetNextWritePos(std::int32_t position);
  std::int32_t GetNextWritePos();

 protected:
  tagFILECACHE* CurrentReadCache();
  tagFILECACHE* CurrentWriteCache();

  std::int32_t logical_length_;
  tagFILECACHE write_cache_;
  tagFILECACHE read_cache_;
  std::int16_t last_id_;
  std::uint16_t allocated_slots_;
  std::uint16_t used_slots_;
  std::int16_t current_read_index_;   // 0 = default read cache, n = n-th extra cache
  std::int16_t current_write_index_;  // stored, never consulted
  tagFILECACHE* caches_;              // extra caches, in a locked movable block
  HGLOBAL caches_memory_;

 private:
  std::int32_t ReadFromFile(char* buffer, std::int32_t size, std::int32_t position);
  void UpdateReadCaches(char* buffer, std::int32_t size, std::int32_t position);
  void WriteThrough(char* buffer, std::int32_t size, std::int32_t position);
  bool GrowCacheArray();
  void ReleaseAllCaches();
  void BorrowCaches(const KARCACHEFILE& other);
};
