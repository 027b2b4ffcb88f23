// GTFILE: the read cache, its position bookkeeping and saved states.
#include <algorithm>
#include <cstring>
#include <new>

#include "vextools/streamfile.h"

int GTFILE::IsCacheEmpty() { return cacheUsed_ == 0; }
int GTFILE::IsCacheReady() { return cacheUsed_ >= 1 && readPosition_ >= 0; }
char* GTFILE::GetUnreadCachePointer() { return cache_ + readPosition_; }
std::int32_t GTFILE::GetUnreadCacheSize() { return cacheUsed_ - readPosition_; }
std::int32_t GTFILE::GetReadCacheSize() { return readPosition_; }

int GTFILE::IsFilePosInCache(std::int32_t position) {
  return position >= cacheOffset_ && position - cacheOffset_ < cacheSize_;
}

int GTFILE::IsFilePosInUsedCache(std::int32_t position) {
  return position >= cacheOffset_ && position - cacheOffset_ < cacheUsed_;
}

int GTFILE::NoMoreToRead() { return cacheOffset_ + cacheUsed_ >= fileLength_; }

void GTFILE::SetCacheOffset(std::int32_t position) {
  cacheOffset_ = position;
  cacheUsed_ = 0;
  readPosition_ = 0;
}

// A failed seek (a negative offset after a bad fseek) leaves the cache as it was.
std::int32_t GTFILE::UpdateCache() {
  if (file_.SeekFromBegin(cacheOffset_) < 0) return 0;
  const std::int32_t count = cache_ ? file_.Read(cache_, cacheSize_) : 0;
  cacheUsed_ = count > 0 ? count : 0;
  readPosition_ = 0;
  return 0;
}

std::int32_t GTFILE::UpdateCache(std::int32_t position) {
  SetCacheOffset(position);
  return UpdateCache();
}

void GTFILE::SeekInCache(std::int32_t offset, int origin) {
  std::int32_t target;
  switch (origin) {
    case 0: target = offset; break;
    case 1: target = readPosition_ + offset; break;
    case 2: target = cacheUsed_ - offset; break;
    default: target = 0; break;
  }
  if (target >= 0 && target <= cacheUsed_) readPosition_ = target;
}

// Only reachable through the in-cache test of Write, which never holds; kept for derived classes.
void GTFILE::CopyToCache(std::int32_t position, const void* buffer, std::int32_t size) {
  const std::int32_t index = position - cacheOffset_;
  if (!cache_ || index < 0 || index > cacheUsed_) {
    UpdateCache(position);
    return;
  }
  const std::int32_t count = std::min(size, cacheSize_ - index);
  if (count <= 0) return;
  std::memcpy(cache_ + index, buffer, static_cast<std::size_t>(count));
  cacheUsed_ = std::max(cacheUsed_, index + count);
}

void GTFILE::SaveCache(GTCACHEPARAMS& params, int copyData) {
  params.size = cacheSize_;
  params.offset = cacheOffset_;
  params.used = cacheUsed_;
  params.readPosition = readPosition_;
  params.data = nullptr;
  if (cacheUsed_ == 0 || !copyData) return;
  params.data = new (std::nothrow) char[static_cast<std::size_t>(cacheUsed_)];
  if (params.data) {
    std::memcpy(params.data, cache_, static_cast<std::size_t>(cacheUsed_));
  } else {
    params.used = 0;
    params.readPosition = 0;
  }
}

void GTFILE::RestoreCache(GTCACHEPARAMS& params) {
  cacheSize_ = params.size;
  cacheOffset_ = params.offset;
  cacheUsed_ = params.used;
  readPosition_ = params.readPosition;
  if (params.used != 0 && params.data) {
    std::memcpy(cache_, params.data, static_cast<std::size_t>(params.used));
    params.used = 0;
  } else {
    UpdateCache();
  }
  delete[] params.data;
  params.data = nullptr;
}
